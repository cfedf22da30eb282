// SPDX-License-Identifier: MIT
import QtQuick

// The mark around the control that has keyboard focus.
Rectangle {
    required property bool shown
    property color ringColor: "white"

    anchors.fill: parent
    anchors.margins: -2
    radius: 8
    color: "transparent"
    border.width: 2
    border.color: ringColor
    visible: shown
}
