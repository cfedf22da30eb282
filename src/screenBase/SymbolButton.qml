// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// A symbol-only button, tinted, that shrinks a little while pressed. Made
// of Qt Quick alone, as the main screen's bar is: a screen whose first
// frame needs no Qt Quick Controls opens without loading them.
Item {
    id: button

    // A symbol of screenBase/icons by its file's name: "add", "settings".
    property string iconName
    property color iconColor: "white"
    property int iconSize: 26
    readonly property bool hovered: hover.hovered
    // Keyboard focus that came from the keyboard: only then the ring shows.
    // (KeyboardFocus read first: it is made when first read, and must be
    // there before the focus comes.)
    readonly property bool visualFocus: KeyboardFocus.shown && activeFocus

    signal clicked

    // A screen reader's "press" (Qt calls it by its name).
    function accessiblePressAction() {
        if (enabled)
            clicked()
    }

    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.35
    Accessible.role: Accessible.Button
    Accessible.focusable: true
    // Return, Enter and Space press a button, as everywhere on the desktop.
    Keys.onReturnPressed: if (enabled) clicked()
    Keys.onEnterPressed: if (enabled) clicked()
    Keys.onSpacePressed: if (enabled) clicked()
    onClicked: feedback.restart()

    // A press takes the keyboard, as a control's does: a dialog it opens
    // hands the keyboard back here.
    TapHandler {
        id: tap

        onPressedChanged: if (pressed) button.forceActiveFocus(Qt.MouseFocusReason)
        onTapped: button.clicked()
    }
    HoverHandler {
        id: hover
    }

    PressFeedback {
        id: feedback

        target: button
    }

    Image {
        anchors.centerIn: parent
        width: button.iconSize
        height: button.iconSize
        sourceSize.width: button.iconSize * 2
        sourceSize.height: button.iconSize * 2
        fillMode: Image.PreserveAspectFit
        source: "image://symbol/" + button.iconName + "/" + button.iconColor
    }

    HoverRing {
        shown: button.hovered && button.enabled && !button.visualFocus
        ringColor: button.iconColor
    }

    FocusRing {
        shown: button.visualFocus
        ringColor: button.iconColor
    }
}
