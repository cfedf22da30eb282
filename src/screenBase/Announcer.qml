// SPDX-License-Identifier: MIT
import QtQuick

// Says a short text to a screen reader without moving the keyboard: the
// new report after a swipe or "back to today", the result of a choice. It
// is a notification that appears anew for each text, which screen readers
// speak as it shows; nothing of it is drawn.
Text {
    id: announcer

    function say(words) {
        text = words
        visible = false
        visible = true
        hide.restart()
    }

    width: 1
    height: 1
    opacity: 0
    visible: false
    textFormat: Text.PlainText
    Accessible.role: Accessible.Notification
    Accessible.name: text

    // Gone again soon, so that the screen showing again (after a dialog)
    // does not say it once more.
    Timer {
        id: hide

        interval: 1500
        onTriggered: announcer.visible = false
    }
}
