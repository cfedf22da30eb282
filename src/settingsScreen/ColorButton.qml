// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Tavlo
import QtQuick.Controls.impl

// One colour theme as a cube in its colour; the chosen one is framed and
// filled, its cube in white or black by the appearance. To a screen reader
// the ten are radio buttons, the chosen one checked.
RadioButton {
    id: button

    required property int tag
    required property color themeColor
    required property bool chosen
    required property color frameColor
    required property color chosenSymbolColor

    objectName: "colorButton" + tag
    implicitHeight: 34
    padding: 0
    checked: chosen
    indicator: null
    Accessible.onPressAction: clicked()
    // Return chooses a theme too, as Space does.
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        IconImage {
            anchors.centerIn: parent
            width: 22
            height: 22
            sourceSize.width: 44
            sourceSize.height: 44
            source: "qrc:/qt/qml/Tavlo/screenBase/icons/deployed_code-fill.svg"
            color: button.chosen ? button.chosenSymbolColor : button.themeColor
        }
    }
    background: Rectangle {
        radius: 12
        color: button.chosen ? button.themeColor : "transparent"
        border.width: button.chosen ? 1 : 0
        border.color: button.frameColor
    }

    FocusRing {
        anchors.margins: -1
        radius: 13
        shown: button.visualFocus
        ringColor: button.frameColor
    }
}
