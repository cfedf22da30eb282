// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// A birth date as three wheels, day, month and year, side by side in the
// order the language writes a date. Its owner keeps the date: it either
// binds shownDay, shownMonth and shownYear, or sets the wheels with
// setDate() and jumpTo(); it hears of turns through turned and answers
// dateRequested when a screen reader or the keyboard steps a wheel.
Item {
    id: row

    required property ScreenController controller
    property real fadedOpacity: controller.theme.fadedTextOpacity
    // The labels of the day wheel; by default the days of the month shown.
    property var dayModel: controller.wheels.dayLabels(month, year)
    // 0 stands the year wheel on "no year".
    property int shownDay: 1
    property int shownMonth: 1
    property int shownYear: controller.wheels.firstYear
    property real dayWidth: 56
    property real monthWidth: 150
    property real yearWidth: 84
    property real spacing: 4
    property list<string> wheelNames: ["dayWheel", "monthWheel", "yearWheel"]
    // What a turn changed, said after the new entry.
    property string spokenResult
    // Where the wheels pass the keys they do not use.
    property Item keysTo: null

    // The date the wheels stand on now; year 0 is "no year".
    readonly property int day: dayWheel.currentIndex + 1
    readonly property int month: monthWheel.currentIndex + 1
    readonly property int year: controller.wheels.yearAt(yearWheel.currentIndex)
    readonly property int dayCount: dayWheel.count
    readonly property bool moving: dayWheel.moving || monthWheel.moving || yearWheel.moving
    readonly property bool dayMoving: dayWheel.moving

    // A screen reader or the keyboard asks for this date.
    signal dateRequested(int day, int month, int year)
    // A wheel moved, started or stopped moving.
    signal turned

    function setDate(day, month, year) {
        yearWheel.currentIndex = controller.wheels.yearIndex(year)
        monthWheel.currentIndex = month - 1
        dayWheel.currentIndex = day - 1
    }

    // New day labels put the day wheel on the first day; this puts it back
    // on shownDay.
    function showDayAgain() {
        dayWheel.currentIndex = Qt.binding(() => row.shownDay - 1)
    }

    // Stands the day wheel on `day` at once. New day labels (another month)
    // leave the wheel drawn on the first day even where its index is kept.
    function placeDay(day) {
        dayWheel.currentIndex = day - 1
        dayWheel.positionViewAtIndex(day - 1, ListView.Center)
    }

    // Stands the year wheel where it is bound to at once: "no year" lies
    // two centuries past the years of birth, too far to ride to.
    function showYearAtOnce() {
        yearWheel.positionViewAtIndex(yearWheel.currentIndex, ListView.Center)
    }

    // Stands the wheels where they are bound to at once.
    function showAtOnce() {
        for (const wheel of [dayWheel, monthWheel, yearWheel])
            wheel.positionViewAtIndex(wheel.currentIndex, ListView.Center)
    }

    // Stands the wheels on a date at once, without a ride across the years.
    function jumpTo(day, month, year) {
        setDate(day, month, year)
        for (const wheel of [dayWheel, monthWheel, yearWheel])
            wheel.positionViewAtIndex(wheel.currentIndex, ListView.Center)
    }

    function xOf(field) {
        let x = 0
        for (const other of controller.wheels.order) {
            if (other === field)
                return x
            x += (other === "day" ? dayWidth : (other === "month" ? monthWidth : yearWidth)) + spacing
        }
        return x
    }

    implicitWidth: dayWidth + monthWidth + yearWidth + 2 * spacing

    DateWheel {
        id: dayWheel

        objectName: row.wheelNames[0]
        x: row.xOf("day")
        width: row.dayWidth
        height: row.height
        textColor: row.controller.theme.labelColor
        fadedOpacity: row.fadedOpacity
        model: row.dayModel
        spokenLabel: row.controller.accessibleName("day")
        spokenResult: row.spokenResult
        keysTo: row.keysTo
        shownIndex: row.shownDay - 1
        onMovingChanged: row.turned()
        onCurrentIndexChanged: row.turned()
        onStepRequested: index => row.dateRequested(index + 1, row.month, row.year)
    }
    DateWheel {
        id: monthWheel

        objectName: row.wheelNames[1]
        x: row.xOf("month")
        width: row.monthWidth
        height: row.height
        textColor: row.controller.theme.labelColor
        fadedOpacity: row.fadedOpacity
        model: row.controller.wheels.monthNames
        shownIndex: row.shownMonth - 1
        spokenLabel: row.controller.accessibleName("month")
        spokenResult: row.spokenResult
        keysTo: row.keysTo
        onMovingChanged: row.turned()
        onCurrentIndexChanged: row.turned()
        onStepRequested: index => row.dateRequested(row.day, index + 1, row.year)
    }
    DateWheel {
        id: yearWheel

        objectName: row.wheelNames[2]
        x: row.xOf("year")
        width: row.yearWidth
        height: row.height
        textColor: row.controller.theme.labelColor
        fadedOpacity: row.fadedOpacity
        model: row.controller.wheels.yearLabels
        shownIndex: row.controller.wheels.yearIndex(row.shownYear)
        firstValue: row.controller.wheels.firstYear
        spokenLabel: row.controller.accessibleName("year")
        spokenResult: row.spokenResult
        keysTo: row.keysTo
        onMovingChanged: row.turned()
        onCurrentIndexChanged: row.turned()
        onStepRequested: index => row.dateRequested(row.day, row.month,
                                                   row.controller.wheels.yearAt(index))
    }
}
