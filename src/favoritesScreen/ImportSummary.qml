// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// What an import did, in the interface language.
Alert {
    id: summary

    required property FavoritesScreenController controller

    objectName: "importSummary"
    theme: controller.theme
    title: controller.importSummary

    footer: AlertButtonRow {
        theme: summary.theme

        AlertButton {
            objectName: "btnImportDone"
            Layout.fillWidth: true
            text: summary.controller.texts.Ok
            tint: summary.theme.labelColor
            onClicked: summary.close()
        }
    }
}
