// SPDX-License-Identifier: MIT
import QtQuick

// The list behind a date wheel: its labels stand in rows, the middle one
// chosen, and carry how they are drawn for the labels to read.
ListView {
    // The labels' colour, and the least opacity the outer ones fade to.
    property color textColor: "white"
    property real fadedOpacity: 0.2
    // How many rows are seen.
    property int rows: 5

    snapMode: ListView.SnapToItem
    highlightRangeMode: ListView.StrictlyEnforceRange
    highlightMoveDuration: 1000
    preferredHighlightBegin: height / 2 - (height / rows / 2)
    preferredHighlightEnd: height / 2 + (height / rows / 2)
    clip: true
    // Labels are made for the rows in sight and handed on as the wheel
    // turns: a wheel made far from its first entry (a year) makes the rows
    // it shows, not those it passed on the way.
    reuseItems: true
    cacheBuffer: 0
}
