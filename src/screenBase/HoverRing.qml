// SPDX-License-Identifier: MIT
import QtQuick

// A faint outline around the control under the mouse, so that a desktop
// shows what a click would take. It lies around the control's content,
// never under its text, and gives way to the keyboard's focus ring.
Rectangle {
    required property bool shown
    property color ringColor: "white"

    anchors.fill: parent
    anchors.margins: -1
    radius: 8
    color: "transparent"
    border.width: 1
    border.color: ringColor
    opacity: 0.5
    visible: shown
}
