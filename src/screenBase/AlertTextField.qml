// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.impl
import Tavlo

// The text field of an alert, in the appearance's colours, with a clear
// button while it is being edited.
TextField {
    id: field

    required property ScreenTheme theme
    property string clearLabel

    placeholderTextColor: theme.placeholderColor
    color: theme.labelColor
    // A hint longer than the field, as a language with long words may
    // write it, is set smaller (down to 11 px) rather than cut off.
    font.pixelSize: length > 0 || hintWidth.advanceWidth <= hintRoom
                    ? 15 : Math.max(11, Math.floor(15 * hintRoom / hintWidth.advanceWidth))
    leftPadding: 8
    rightPadding: clearButton.visible ? clearButton.width + 4 : 8
    // Qt has no hint for a capital at the start of each word: the field asks
    // for capitals wherever a new word begins and leaves the input method's
    // own automatic capitals and prediction on everywhere else.
    inputMethodHints: cursorPosition === 0 || text.charAt(cursorPosition - 1) === " "
                      ? Qt.ImhPreferUppercase : Qt.ImhNone
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    readonly property real hintRoom: width - leftPadding - rightPadding

    TextMetrics {
        id: hintWidth

        font.family: field.font.family
        font.pixelSize: 15
        text: field.placeholderText
    }

    background: Rectangle {
        radius: 6
        color: field.theme.fieldBackground
        border.color: field.theme.separatorColor
    }

    AbstractButton {
        id: clearButton

        objectName: field.objectName + "Clear"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 30
        height: parent.height
        visible: field.activeFocus && field.length > 0
        focusPolicy: Qt.NoFocus
        Accessible.role: Accessible.Button
        Accessible.name: field.clearLabel
        onClicked: field.clear()

        contentItem: Item {
            IconImage {
                anchors.centerIn: parent
                width: 18
                height: 18
                sourceSize.width: 36
                sourceSize.height: 36
                source: "qrc:/qt/qml/Tavlo/screenBase/icons/cancel-fill.svg"
                color: field.theme.placeholderColor
            }
        }
        background: Item {}
    }
}
