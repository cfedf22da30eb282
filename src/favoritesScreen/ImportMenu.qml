// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// Where to import birthdays from: a vCard file or the phone's contacts.
Alert {
    id: menu

    required property FavViewController controller

    signal fileChosen()

    objectName: "importMenu"
    theme: controller.theme
    // No title on the card: a screen reader says what the menu is for.
    title: controller.texts.ImportBirthdays
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
                menu.fileChosen()
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
            objectName: "btnImportCancel"
            Layout.fillWidth: true
            text: menu.controller.texts.Cancel
            tint: menu.theme.labelColor
            onClicked: menu.close()
        }
    }
}
