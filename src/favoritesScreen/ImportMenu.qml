// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// Where to import birthdays from (a vCard file or the phone's contacts),
// and the files to export them to.
Alert {
    id: menu

    required property FavoritesScreenController controller

    objectName: "importMenu"
    theme: controller.theme
    // No title on the card: a screen reader says what the menu is for.
    title: controller.texts.ImportOrExport
    titleShown: false
    firstFocus: firstChoice
    padding: 4

    footer: AlertButtonRow {
        theme: menu.theme
        stacked: true

        AlertButton {
            id: firstChoice

            objectName: "btnImportFile"
            Layout.fillWidth: true
            text: menu.controller.texts.ImportVCardFile
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.chooseFile(FavoritesScreenController.ImportVCards)
            }
        }
        AlertButton {
            objectName: "btnImportContacts"
            Layout.fillWidth: true
            text: menu.controller.texts.ImportFromContacts
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.importContacts()
            }
        }
        AlertButton {
            objectName: "btnExportVCards"
            Layout.fillWidth: true
            text: menu.controller.texts.ExportVCardFile
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.chooseFile(FavoritesScreenController.ExportVCards)
            }
        }
        AlertButton {
            objectName: "btnExportCalendar"
            Layout.fillWidth: true
            text: menu.controller.texts.ExportCalendarFile
            tint: menu.theme.labelColor
            onClicked: {
                menu.close()
                menu.controller.chooseFile(FavoritesScreenController.ExportCalendar)
            }
        }
        AlertButton {
            objectName: "btnImportCancel"
            Layout.fillWidth: true
            text: menu.controller.texts.Cancel
            tint: menu.theme.labelColor
            onClicked: menu.close()
        }
    }
}
