// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// Asks for a name and adds the shown birth date to the favorites.
Alert {
    id: dialog

    required property MainScreenController controller

    objectName: "addDialog"
    theme: controller.theme
    title: controller.texts.EnterAName
    onOpened: {
        nameField.text = ""
        nameField.forceActiveFocus()
    }
    onAccepted: controller.addFavorite(nameField.text)

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        Label {
            objectName: "addDialogMessage"
            Layout.fillWidth: true
            text: dialog.controller.texts.AddThisBirthday
            color: dialog.theme.labelColor
            font.pixelSize: 13
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        AlertTextField {
            id: nameField

            objectName: "addNameField"
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.addDialogPlaceholder
            clearLabel: dialog.controller.texts.ClearText
            Accessible.name: dialog.controller.texts.EnterAName
            onAccepted: dialog.accept()
        }
    }

    footer: AlertButtonRow {
        theme: dialog.theme

        AlertButton {
            objectName: "addCancelButton"
            Layout.fillWidth: true
            text: dialog.controller.texts.Cancel
            tint: dialog.theme.labelColor
            onClicked: dialog.reject()
        }
        AlertButton {
            objectName: "addOkButton"
            Layout.fillWidth: true
            text: "OK"
            tint: dialog.theme.labelColor
            font.weight: Font.DemiBold
            onClicked: dialog.accept()
        }
    }
}
