// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// Changes a favorite's name and birth date. The name is stored as typed,
// even empty; the list keeps its order until the next sort.
Alert {
    id: dialog

    required property FavoritesScreenController controller
    // The day the user chose; a shorter month shows the nearest day it has.
    property int day: 1

    objectName: "editDialog"
    theme: controller.theme
    // No title on the card: a screen reader says whom it edits.
    title: controller.accessibleName("edit").arg(controller.editName)
    titleShown: false
    // The wheels stand on the favorite's date at once: no ride across the
    // centuries that an early "OK" could catch halfway.
    onAboutToShow: {
        nameField.text = controller.editName
        day = controller.editDay
        wheels.jumpTo(controller.editDay, controller.editMonth, controller.editYear)
    }
    onOpened: {
        // On the first opening the wheels are laid out only now, and a wheel
        // set near its end before that stops short of it (December showed
        // as October): set them again.
        wheels.setDate(controller.editDay, controller.editMonth, controller.editYear)
        nameField.forceActiveFocus()
    }
    onAccepted: controller.confirmEdit(nameField.text, wheels.day, wheels.month, wheels.year)

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        AlertTextField {
            id: nameField

            objectName: "editNameField"
            // Return keeps the change, as "OK" does.
            onAccepted: dialog.accept()
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.texts.Name
            clearLabel: dialog.controller.texts.ClearText
        }

        Item {
            objectName: "editDatePicker"
            Layout.fillWidth: true
            implicitHeight: 170

            Timer {
                id: placeDayAgain

                interval: 0
                onTriggered: wheels.placeDay(Math.min(dialog.day, wheels.dayCount))
            }

            DateWheelRow {
                id: wheels

                anchors.horizontalCenter: parent.horizontalCenter
                height: parent.height
                controller: dialog.controller
                fadedOpacity: dialog.theme.alertFadedTextOpacity
                dayWidth: 44
                monthWidth: 130
                yearWidth: 70
                wheelNames: ["editDayWheel", "editMonthWheel", "editYearWheel"]
                // Once the wheel has taken its new labels.
                onDayCountChanged: placeDayAgain.restart()
                onDayMovingChanged: if (!wheels.dayMoving) dialog.day = wheels.day
                onDateRequested: (day, month, year) => {
                    if (day !== wheels.day)
                        dialog.day = day
                    wheels.setDate(Math.min(dialog.day, dialog.controller.wheels.daysInMonth(month, year)),
                                   month, year)
                }
            }
        }
    }

    footer: AlertButtonRow {
        theme: dialog.theme

        AlertButton {
            objectName: "editCancelButton"
            Layout.fillWidth: true
            text: dialog.controller.texts.Cancel
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
