// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The birth date as three wheels (day, month, year) in the order the
// language writes dates. The wheels follow the controller's date; a wheel
// the user turns to another date tells the controller once it settles.
Item {
    id: wheels

    required property ViewController controller
    // The weekday line sits in the strip below the wheels.
    readonly property real weekdayStrip: 30
    readonly property real spacing: 4

    // Where a wheel goes: after the wheels that the language writes first.
    function xOf(field) {
        let x = 0
        for (const other of controller.wheelOrder) {
            if (other === field)
                return x
            x += widthOf(other) + spacing
        }
        return x
    }

    function widthOf(field) {
        return field === "month" ? 150 : (field === "year" ? 84 : 56)
    }

    function picked() {
        if (dayWheel.moving || monthWheel.moving || yearWheel.moving)
            return
        const d = dayWheel.currentIndex + 1, m = monthWheel.currentIndex + 1
        const y = yearWheel.currentIndex + controller.firstYear
        if (d !== controller.pickerDay || m !== controller.pickerMonth || y !== controller.pickerYear)
            controller.pickDate(d, m, y)
    }

    // Reports after the wheels' bindings have all settled, once per burst.
    Timer {
        id: settle

        interval: 0
        onTriggered: wheels.picked()
    }

    implicitWidth: widthOf("day") + widthOf("month") + widthOf("year") + 2 * spacing

    DateWheel {
        id: dayWheel

        objectName: "dayWheel"
        x: wheels.xOf("day")
        width: wheels.widthOf("day")
        height: wheels.height - wheels.weekdayStrip
        textColor: wheels.controller.theme.labelColor
        fadedOpacity: wheels.controller.theme.fadedTextOpacity
        model: wheels.controller.dayLabels
        currentIndex: wheels.controller.pickerDay - 1
        onMovingChanged: settle.restart()
        onCurrentIndexChanged: settle.restart()
        spokenLabel: wheels.controller.accessibleName("day")
        onStepRequested: index => wheels.controller.pickDate(index + 1, monthWheel.currentIndex + 1,
                                                             yearWheel.currentIndex + wheels.controller.firstYear)
    }
    DateWheel {
        id: monthWheel

        objectName: "monthWheel"
        x: wheels.xOf("month")
        width: wheels.widthOf("month")
        height: wheels.height - wheels.weekdayStrip
        textColor: wheels.controller.theme.labelColor
        fadedOpacity: wheels.controller.theme.fadedTextOpacity
        model: wheels.controller.monthNames
        currentIndex: wheels.controller.pickerMonth - 1
        onMovingChanged: settle.restart()
        onCurrentIndexChanged: settle.restart()
        spokenLabel: wheels.controller.accessibleName("month")
        onStepRequested: index => wheels.controller.pickDate(dayWheel.currentIndex + 1, index + 1,
                                                             yearWheel.currentIndex + wheels.controller.firstYear)
    }
    DateWheel {
        id: yearWheel

        objectName: "yearWheel"
        x: wheels.xOf("year")
        width: wheels.widthOf("year")
        height: wheels.height - wheels.weekdayStrip
        textColor: wheels.controller.theme.labelColor
        fadedOpacity: wheels.controller.theme.fadedTextOpacity
        model: wheels.controller.yearLabels
        currentIndex: wheels.controller.pickerYear - wheels.controller.firstYear
        onMovingChanged: settle.restart()
        onCurrentIndexChanged: settle.restart()
        spokenLabel: wheels.controller.accessibleName("year")
        firstValue: wheels.controller.firstYear
        onStepRequested: index => wheels.controller.pickDate(dayWheel.currentIndex + 1,
                                                             monthWheel.currentIndex + 1,
                                                             index + wheels.controller.firstYear)
    }
}
