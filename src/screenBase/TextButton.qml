// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A text-only button that gives the press feedback when tapped.
AbstractButton {
    id: button

    property color textColor: "white"
    property int pixelSize: 18

    implicitWidth: Math.max(contentItem ? contentItem.implicitWidth : 0, 44) + 16
    implicitHeight: 32
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: if (enabled) clicked()
    // Return presses a button too, as everywhere on the desktop.
    Keys.onReturnPressed: if (enabled) clicked()
    Keys.onEnterPressed: if (enabled) clicked()
    onClicked: feedback.restart()

    PressFeedback {
        id: feedback

        target: button
    }

    contentItem: Text {
        text: button.text
        color: button.textColor
        font.pixelSize: button.pixelSize
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Item {}

    HoverRing {
        shown: button.hovered && button.enabled && !button.visualFocus
        ringColor: button.textColor
    }

    FocusRing {
        shown: button.visualFocus
        ringColor: button.textColor
    }
}
