// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A full-width text button of an alert, in the theme's tint.
AbstractButton {
    id: button

    property color tint: "white"

    implicitHeight: 44
    contentItem: Text {
        text: button.text
        color: button.tint
        font.pixelSize: 17
        font.weight: button.font.weight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        color: button.pressed ? Qt.rgba(0.5, 0.5, 0.5, 0.2) : "transparent"
    }
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    // Return presses a button too, as everywhere on the desktop.
    Keys.onReturnPressed: if (enabled) clicked()
    Keys.onEnterPressed: if (enabled) clicked()

    HoverRing {
        anchors.margins: 3
        shown: button.hovered && button.enabled && !button.visualFocus
        ringColor: button.tint
    }

    FocusRing {
        anchors.margins: 2
        shown: button.visualFocus
        ringColor: button.tint
    }
}
