// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// One wheel of the birth date: its labels, the selected index, and a text
// colour for the labels. A list of Qt Quick's own that stands its chosen
// entry in the middle row: a screen whose first frame needs no Qt Quick
// Controls opens without loading them.
Item {
    id: wheel

    property color textColor: "white"
    // The lowest opacity the outer labels may fade to and still read.
    property real fadedOpacity: 0.2
    // What a screen reader calls the wheel ("Day"), and the value of its
    // first entry (1, or the first year).
    property string spokenLabel
    property int firstValue: 1
    // The entry the wheel stands on when it is made, and follows.
    property int shownIndex: 0
    // The entry in the middle row; set, it moves the wheel there.
    property alias currentIndex: labels.currentIndex
    // With a count for a model, the labels count from 1 (days of a month).
    property alias model: labels.model
    readonly property alias count: labels.count
    readonly property alias moving: labels.moving
    // How many rows are seen.
    property int visibleItemCount: 5
    // What a screen reader says after a turn, besides the new entry: the
    // report that the turn changed.
    property string spokenResult
    // Where the keys go that the wheel does not use (Page Up on the main
    // screen), before anything else sees them.
    property Item keysTo: null
    readonly property string currentText: typeof model === "number"
                                          ? String(currentIndex + 1)
                                          : (model[currentIndex] ?? "")

    // A screen reader or the keyboard asks for the entry at `index`; the
    // owner of the wheel's date moves it there.
    signal stepRequested(int index)

    // Stands entry `index` at `mode` (ListView.Center) at once.
    function positionViewAtIndex(index, mode) {
        labels.positionViewAtIndex(index, mode)
    }

    onCurrentIndexChanged: stepper.value = currentIndex + firstValue

    // The labels' list, standing on the entry shown as it is made. The
    // stepper below stands for the wheel.
    WheelList {
        id: labels

        anchors.fill: parent
        currentIndex: wheel.shownIndex
        rows: wheel.visibleItemCount
        textColor: wheel.textColor
        fadedOpacity: wheel.fadedOpacity
        Accessible.ignored: true
        delegate: Text {
            required property int index
            required property var modelData
            // The label's list, looked up once.
            readonly property WheelList labels: ListView.view as WheelList
            // How many rows this label is away from the middle.
            readonly property real displacement: (labels.contentY + labels.preferredHighlightBegin - y)
                                                 / height

            width: labels.width
            height: labels.height / labels.rows
            text: typeof modelData === "number" ? index + 1 : modelData
            color: labels.textColor
            opacity: Math.max(labels.fadedOpacity,
                              1.0 - Math.abs(displacement) / (labels.rows / 2) * 0.8)
            font.weight: Font.Light
            font.pixelSize: 21
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
    }

    // To a screen reader and the keyboard a wheel is a value to step up and
    // down: a spin button whose name says the entry, announced as it changes.
    Item {
        id: stepper

        property int value: wheel.currentIndex + wheel.firstValue
        readonly property int minimumValue: wheel.firstValue
        readonly property int maximumValue: wheel.firstValue + Math.max(0, wheel.count - 1)
        readonly property int stepSize: 1

        function moveTo(index) {
            const target = Math.max(0, Math.min(wheel.count - 1, index))
            if (target !== wheel.currentIndex)
                wheel.stepRequested(target)
            value = wheel.currentIndex + wheel.firstValue
        }

        // The entry as shown ("March", "no year"), read in place of the
        // number, and what the turn changed: a screen reader reads this text
        // when the value changes, so the new report is heard at once.
        readonly property string accessibleText: wheel.spokenResult.length > 0
                                                 ? wheel.currentText + ". " + wheel.spokenResult
                                                 : wheel.currentText

        objectName: wheel.objectName + "Stepper"
        anchors.fill: parent
        z: 1
        activeFocusOnTab: true
        // A value set from outside (a screen reader's Value interface).
        onValueChanged: if (value !== wheel.currentIndex + wheel.firstValue)
                            moveTo(value - wheel.firstValue)
        Keys.forwardTo: wheel.keysTo ? [wheel.keysTo] : []
        Keys.onUpPressed: moveTo(wheel.currentIndex + 1)
        Keys.onDownPressed: moveTo(wheel.currentIndex - 1)
        // The ends at once: the year wheel's last place is "no year".
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                moveTo(event.key === Qt.Key_Home ? 0 : wheel.count - 1)
                event.accepted = true
            }
        }
        Accessible.role: Accessible.SpinBox
        Accessible.name: wheel.spokenLabel
        Accessible.onIncreaseAction: moveTo(wheel.currentIndex + 1)
        Accessible.onDecreaseAction: moveTo(wheel.currentIndex - 1)

        // A mouse wheel turns the wheel one entry a notch, as the arrow keys
        // do; a touchpad's small steps add up to notches. The stepper lies
        // over the wheel's list, so the list does not scroll by itself.
        WheelHandler {
            property real notches: 0

            target: null
            onWheel: event => {
                notches += event.angleDelta.y / 120
                const whole = Math.trunc(notches)
                if (whole === 0)
                    return
                notches -= whole
                // Turning the wheel away from you shows the entries above.
                stepper.moveTo(wheel.currentIndex - whole)
            }
        }

        FocusRing {
            anchors.margins: 0
            shown: stepper.activeFocus
            ringColor: wheel.textColor
        }
    }
}
