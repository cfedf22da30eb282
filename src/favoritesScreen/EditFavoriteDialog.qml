// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// Changes a favorite's name and birth date. The name is stored as typed,
// even empty; the list keeps its order until the next sort.
Alert {
    id: dialog

    required property FavViewController controller
    property int day: 1

    function wheel(field) {
        return field === "day" ? dayWheel : (field === "month" ? monthWheel : yearWheel)
    }

    function xOf(field) {
        let x = 0
        for (const other of controller.wheelOrder) {
            if (other === field)
                return x
            x += wheel(other).width + 4
        }
        return x
    }

    objectName: "editDialog"
    theme: controller.theme
    // The wheels stand on the favorite's date at once: no ride across the
    // centuries that an early "OK" could catch halfway.
    onAboutToShow: {
        nameField.text = controller.editName
        yearWheel.currentIndex = controller.editYear - controller.firstYear
        monthWheel.currentIndex = controller.editMonth - 1
        day = controller.editDay
        dayWheel.currentIndex = day - 1
        for (const wheel of [dayWheel, monthWheel, yearWheel])
            wheel.positionViewAtIndex(wheel.currentIndex, Tumbler.Center)
    }
    onOpened: {
        // On the first opening the wheels are laid out only now, and a wheel
        // set near its end before that stops short of it (December showed
        // as October): set them again.
        yearWheel.currentIndex = controller.editYear - controller.firstYear
        monthWheel.currentIndex = controller.editMonth - 1
        dayWheel.currentIndex = day - 1
        nameField.forceActiveFocus()
    }
    onAccepted: controller.confirmEdit(nameField.text, dayWheel.currentIndex + 1,
                                       monthWheel.currentIndex + 1,
                                       yearWheel.currentIndex + controller.firstYear)

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        AlertTextField {
            id: nameField

            objectName: "editNameField"
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.namePlaceholder
            clearLabel: dialog.controller.clearText
        }

        Item {
            objectName: "editDatePicker"
            Layout.fillWidth: true
            implicitHeight: 170

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: dayWheel.width + monthWheel.width + yearWheel.width + 8
                height: parent.height

                DateWheel {
                    id: dayWheel

                    objectName: "editDayWheel"
                    spokenLabel: dialog.controller.accessibleName("day")
                    onStepRequested: index => {
                        currentIndex = index
                        dialog.day = index + 1
                    }
                    x: dialog.xOf("day")
                    width: 44
                    height: parent.height
                    textColor: dialog.theme.labelColor
                    fadedOpacity: dialog.theme.alertFadedTextOpacity
                    model: dialog.controller.daysInMonth(monthWheel.currentIndex + 1,
                                                         yearWheel.currentIndex
                                                         + dialog.controller.firstYear)
                    // A shorter month keeps the day as near as it can.
                    onCountChanged: currentIndex = Math.min(dialog.day, count) - 1
                    onMovingChanged: if (!moving) dialog.day = currentIndex + 1
                }
                DateWheel {
                    id: monthWheel

                    objectName: "editMonthWheel"
                    spokenLabel: dialog.controller.accessibleName("month")
                    onStepRequested: index => currentIndex = index
                    x: dialog.xOf("month")
                    width: 130
                    height: parent.height
                    textColor: dialog.theme.labelColor
                    fadedOpacity: dialog.theme.alertFadedTextOpacity
                    model: dialog.controller.monthNames
                }
                DateWheel {
                    id: yearWheel

                    objectName: "editYearWheel"
                    spokenLabel: dialog.controller.accessibleName("year")
                    firstValue: dialog.controller.firstYear
                    onStepRequested: index => currentIndex = index
                    x: dialog.xOf("year")
                    width: 70
                    height: parent.height
                    textColor: dialog.theme.labelColor
                    fadedOpacity: dialog.theme.alertFadedTextOpacity
                    model: dialog.controller.yearLabels
                }
            }
        }
    }

    footer: AlertButtonRow {
        theme: dialog.theme

        AlertButton {
            objectName: "editCancelButton"
            Layout.fillWidth: true
            text: dialog.controller.cancelText
            tint: dialog.theme.labelColor
            onClicked: dialog.reject()
        }
        AlertButton {
            objectName: "editOkButton"
            Layout.fillWidth: true
            text: "OK"
            tint: dialog.theme.labelColor
            font.weight: Font.DemiBold
            onClicked: dialog.accept()
        }
    }
}
