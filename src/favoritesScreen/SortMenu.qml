// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// The three orders of the list; one of them must be chosen to close it.
Alert {
    id: menu

    required property FavoritesScreenController controller

    function choose(order) {
        close()
        controller.chooseSort(order)
    }

    objectName: "sortMenu"
    theme: controller.theme
    title: controller.texts.Sort
    // No tap beside it closes it, but Escape does, leaving the order as it was.
    closePolicy: Popup.CloseOnEscape
    firstFocus: firstChoice
    padding: 4

    footer: AlertButtonRow {
        theme: menu.theme
        stacked: true

        AlertButton {
            id: firstChoice

            objectName: "sortChoice0"
            Layout.fillWidth: true
            text: menu.controller.sortChoices[0]
            tint: menu.theme.labelColor
            onClicked: menu.choose(0)
        }
        AlertButton {
            objectName: "sortChoice1"
            Layout.fillWidth: true
            text: menu.controller.sortChoices[1]
            tint: menu.theme.labelColor
            onClicked: menu.choose(1)
        }
        AlertButton {
            objectName: "sortChoice2"
            Layout.fillWidth: true
            text: menu.controller.sortChoices[2]
            tint: menu.theme.labelColor
            onClicked: menu.choose(2)
        }
    }
}
