// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The birth date wheels of the main screen. They follow the controller's
// date; wheels the user turns to another date tell the controller once they
// settle.
Item {
    id: wheels

    required property MainScreenController controller
    // The weekday line sits in the strip below the wheels.
    readonly property real weekdayStrip: 30
    // Where the wheels pass the keys they do not use.
    property Item keysTo: null
    // 0 while the controller shows a birthday without a year.
    readonly property int shownYear: controller.pickerYearKnown ? controller.pickerYear : 0

    function picked() {
        if (row.moving)
            return
        if (row.day !== controller.pickerDay || row.month !== controller.pickerMonth
                || row.year !== shownYear)
            controller.pickDate(row.day, row.month, row.year)
    }

    // Reports after the wheels' bindings have all settled, once per burst.
    Timer {
        id: settle

        interval: 0
        onTriggered: wheels.picked()
    }

    implicitWidth: row.implicitWidth

    Connections {
        function onPickerChanged() {
            row.showDayAgain()
            if (!wheels.controller.pickerYearKnown)
                row.showYearAtOnce()
        }
        function onPickerJumped() {
            row.showDayAgain()
            row.showAtOnce()
        }

        target: wheels.controller
    }

    DateWheelRow {
        id: row

        controller: wheels.controller
        height: wheels.height - wheels.weekdayStrip
        dayModel: wheels.controller.dayLabels
        shownDay: wheels.controller.pickerDay
        shownMonth: wheels.controller.pickerMonth
        shownYear: wheels.shownYear
        spokenResult: wheels.controller.spokenReport
        keysTo: wheels.keysTo
        onTurned: settle.restart()
        onDateRequested: (day, month, year) => wheels.controller.pickDate(day, month, year)
    }
}
