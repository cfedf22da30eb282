// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// The CardDAV account: server, user and password to set one up, how the
// last sync went, and syncing now or removing the account.
Alert {
    id: dialog

    required property SettingsScreenController controller

    objectName: "syncDialog"
    theme: controller.theme
    title: controller.texts.SyncRow
    firstFocus: serverField
    onAboutToShow: {
        serverField.text = controller.syncServer
        userField.text = controller.syncUser
        passwordField.text = ""
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 10

        Label {
            objectName: "syncDialogStatus"
            Layout.fillWidth: true
            text: dialog.controller.syncStatus
            color: dialog.theme.labelColor
            font.pixelSize: 13
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        AlertTextField {
            id: serverField

            objectName: "syncServerField"
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.texts.SyncServer
            clearLabel: dialog.controller.texts.ClearText
            inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
            KeyNavigation.tab: userField
        }
        AlertTextField {
            id: userField

            objectName: "syncUserField"
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.texts.SyncUser
            clearLabel: dialog.controller.texts.ClearText
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            KeyNavigation.tab: passwordField
        }
        AlertTextField {
            id: passwordField

            objectName: "syncPasswordField"
            Layout.fillWidth: true
            theme: dialog.theme
            placeholderText: dialog.controller.texts.SyncPassword
            clearLabel: dialog.controller.texts.ClearText
            echoMode: TextInput.Password
            inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
            onAccepted: setUpButton.clicked()
        }
        // One above the other: side by side they do not fit in every
        // language at 360 px.
        ColumnLayout {
            Layout.fillWidth: true
            visible: dialog.controller.syncAccount
            spacing: 0

            TextButton {
                objectName: "btnSyncNow"
                Layout.fillWidth: true
                text: dialog.controller.texts.SyncNow
                textColor: dialog.theme.labelColor
                pixelSize: 15
                enabled: !dialog.controller.syncBusy
                onClicked: dialog.controller.syncNow()
            }
            TextButton {
                objectName: "btnSyncRemove"
                Layout.fillWidth: true
                text: dialog.controller.texts.SyncRemove
                textColor: dialog.theme.labelColor
                pixelSize: 15
                enabled: !dialog.controller.syncBusy
                onClicked: dialog.controller.syncRemove()
            }
        }
    }

    footer: AlertButtonRow {
        theme: dialog.theme

        AlertButton {
            objectName: "syncCloseButton"
            Layout.fillWidth: true
            text: dialog.controller.texts.Cancel
            tint: dialog.theme.labelColor
            onClicked: dialog.close()
        }
        AlertButton {
            id: setUpButton

            objectName: "syncSetUpButton"
            Layout.fillWidth: true
            text: dialog.controller.texts.SyncSetUp
            tint: dialog.theme.labelColor
            font.weight: Font.DemiBold
            opacity: enabled ? 1 : 0.45
            enabled: !dialog.controller.syncBusy && serverField.text.length > 0
                     && userField.text.length > 0 && passwordField.text.length > 0
            onClicked: dialog.controller.syncSetUp(serverField.text, userField.text,
                                                   passwordField.text)
        }
    }
}
