// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// What can be done with one favorite, for the mouse (a right click) and the
// menu key: edit it or delete it.
Alert {
    id: menu

    required property FavoritesScreenController controller
    property int row: -1
    // Opened from the keyboard: the delete then hands the keyboard on.
    property bool byKeyboard: false

    function openFor(row, name, byKeyboard) {
        menu.row = row
        menu.title = name
        menu.byKeyboard = byKeyboard
        open()
    }

    objectName: "rowMenu"
    theme: controller.theme
    firstFocus: firstChoice
    padding: 4

    footer: AlertButtonRow {
        theme: menu.theme
        stacked: true

        AlertButton {
            id: firstChoice

            objectName: "rowMenuEdit"
            Layout.fillWidth: true
            text: menu.controller.texts.Edit
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.longPressed(menu.row)
            }
        }
        AlertButton {
            objectName: "rowMenuDelete"
            Layout.fillWidth: true
            text: menu.controller.accessibleName("delete")
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.deleteRow(menu.row, menu.byKeyboard)
            }
        }
        AlertButton {
            objectName: "rowMenuCancel"
            Layout.fillWidth: true
            text: menu.controller.texts.Cancel
            tint: menu.theme.labelColor
            onClicked: menu.close()
        }
    }
}
