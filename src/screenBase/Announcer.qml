// SPDX-License-Identifier: MIT
import QtQuick

// Says a short text to a screen reader without moving the keyboard: the
// new report after a swipe or "back to today", the result of a choice. It
// is a notification that appears anew for each text, which screen readers
// speak as it shows; nothing of it is drawn.
Item {
    id: announcer

    // What was said last.
    property string text

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

    // The notice itself, made when there is first something to say: an
    // empty text would still open a font before the screen's first frame.
    // It shows and hides with the announcer.
    Loader {
        id: notification

        active: announcer.text !== ""
        sourceComponent: Text {
            width: 1
            height: 1
            textFormat: Text.PlainText
            Accessible.role: Accessible.Notification
            Accessible.name: text
        }
    }
    // Handed in from here: the component is checked without the
    // announcer's id in reach.
    Binding {
        target: notification.item
        property: "text"
        value: announcer.text
    }

    // Gone again soon, so that the screen showing again (after a dialog)
    // does not say it once more.
    Timer {
        id: hide

        interval: 1500
        onTriggered: announcer.visible = false
    }
}
