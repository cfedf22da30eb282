// SPDX-License-Identifier: MIT
import QtQuick

// Where a screen's dialog is made when it first opens. The screen names no
// type of the dialog's own: the Qt Quick Controls a dialog is made of are
// then read when it first opens, not before the screen's first frame. The
// dialog (an Alert) keeps `shown` and the signals here.
Loader {
    id: slot

    // Whether the dialog shows.
    property bool shown: false

    // The dialog is asked to open.
    signal openRequested
    // The dialog closed with nowhere to hand the keyboard back to.
    signal closedWithoutFocus

    // Opens the dialog of `file`, made with `properties` the first time.
    function open(file, properties) {
        if (!item)
            setSource(file, Object.assign({slot: slot}, properties))
        openRequested()
    }
}
