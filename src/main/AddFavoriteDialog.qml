import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// Asks for a name and adds the shown birth date to the favorites.
Dialog {
    id: dialog

    required property ViewController controller

    objectName: "addDialog"
    modal: true
    width: Math.min(parent ? parent.width - 40 : 300, 320)
    title: controller.addDialogTitle
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
            text: dialog.controller.addDialogMessage
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        TextField {
            id: nameField

            objectName: "addNameField"
            Layout.fillWidth: true
            placeholderText: dialog.controller.addDialogPlaceholder
            inputMethodHints: Qt.ImhNoPredictiveText
            Accessible.name: dialog.controller.addDialogPlaceholder
            onAccepted: dialog.accept()
        }
    }

    footer: Row {
        layoutDirection: Qt.RightToLeft
        spacing: 8
        padding: 12

        Button {
            objectName: "addOkButton"
            text: "OK"
            highlighted: true
            onClicked: dialog.accept()
        }
        Button {
            objectName: "addCancelButton"
            text: dialog.controller.cancelText
            onClicked: dialog.reject()
        }
    }
}
