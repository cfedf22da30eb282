import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tavlo

// Asks for a name and adds the shown birth date to the favorites.
Dialog {
    id: dialog

    required property ViewController controller
    readonly property color textColor: controller.theme.labelColor

    objectName: "addDialog"
    modal: true
    width: Math.min(parent ? parent.width - 48 : 300, 320)
    padding: 16
    title: controller.addDialogTitle
    onOpened: {
        nameField.text = ""
        nameField.forceActiveFocus()
    }
    onAccepted: controller.addFavorite(nameField.text)

    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }

    background: Rectangle {
        radius: 14
        color: dialog.controller.theme.dark ? "#2c2c2e" : "#f2f2f7"
    }

    header: Label {
        text: dialog.title
        color: dialog.textColor
        font.pixelSize: 17
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        topPadding: 18
        leftPadding: 16
        rightPadding: 16
        wrapMode: Text.Wrap
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 12

        Label {
            objectName: "addDialogMessage"
            Layout.fillWidth: true
            text: dialog.controller.addDialogMessage
            color: dialog.textColor
            font.pixelSize: 13
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        TextField {
            id: nameField

            objectName: "addNameField"
            Layout.fillWidth: true
            placeholderText: dialog.controller.addDialogPlaceholder
            placeholderTextColor: dialog.controller.theme.dark ? "#8e8e93" : "#6c6c70"
            color: dialog.textColor
            font.pixelSize: 15
            leftPadding: 8
            rightPadding: 8
            Accessible.name: dialog.controller.addDialogPlaceholder
            onAccepted: dialog.accept()

            background: Rectangle {
                radius: 6
                color: dialog.controller.theme.dark ? "#1c1c1e" : "white"
                border.color: dialog.controller.theme.dark ? "#48484a" : "#c7c7cc"
            }
        }
    }

    component DialogButton: AbstractButton {
        id: button

        required property color tint

        Layout.fillWidth: true
        implicitHeight: 44
        contentItem: Text {
            text: button.text
            color: button.tint
            font.pixelSize: 17
            font.weight: button.font.weight
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            color: button.pressed ? Qt.rgba(0.5, 0.5, 0.5, 0.2) : "transparent"
        }
        Accessible.role: Accessible.Button
        Accessible.name: text
    }

    footer: ColumnLayout {
        spacing: 0

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: dialog.controller.theme.dark ? "#48484a" : "#c7c7cc"
        }
        RowLayout {
            spacing: 0

            DialogButton {
                objectName: "addCancelButton"
                text: dialog.controller.cancelText
                tint: dialog.controller.theme.accentColor
                onClicked: dialog.reject()
            }
            DialogButton {
                objectName: "addOkButton"
                text: "OK"
                tint: dialog.controller.theme.accentColor
                font.weight: Font.DemiBold
                onClicked: dialog.accept()
            }
        }
    }
}
