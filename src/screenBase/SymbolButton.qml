// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A symbol-only button, tinted, that shrinks a little while pressed.
AbstractButton {
    id: button

    // A symbol of screenBase/icons by its file's name: "add", "settings".
    property string iconName
    property color iconColor: "white"
    property int iconSize: 26

    opacity: enabled ? 1 : 0.35
    Accessible.role: Accessible.Button
    // Qt 6.4 gives a screen reader's "press" only to this handler.
    Accessible.onPressAction: if (enabled) clicked()
    // Return presses a button too, as everywhere on the desktop.
    Keys.onReturnPressed: if (enabled) clicked()
    Keys.onEnterPressed: if (enabled) clicked()
    onClicked: feedback.restart()

    PressFeedback {
        id: feedback

        target: button
    }

    contentItem: Item {
        Image {
            anchors.centerIn: parent
            width: button.iconSize
            height: button.iconSize
            sourceSize.width: button.iconSize * 2
            sourceSize.height: button.iconSize * 2
            fillMode: Image.PreserveAspectFit
            source: "image://symbol/" + button.iconName + "/" + button.iconColor
        }
    }

    background: Item {}

    HoverRing {
        shown: button.hovered && button.enabled && !button.visualFocus
        ringColor: button.iconColor
    }

    FocusRing {
        shown: button.visualFocus
        ringColor: button.iconColor
    }
}
