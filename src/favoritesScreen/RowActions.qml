// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// A card's own edit and delete buttons, shown while the keyboard or a
// screen reader is on the card.
Rectangle {
    id: actions

    required property FavoriteRow cell

    objectName: "rowActions"
    width: rowButtons.width + 8
    height: 40
    radius: 20
    color: cell.controller.theme.alertBackground

    Row {
        id: rowButtons

        anchors.centerIn: parent

        TextButton {
            id: editButton

            objectName: "editRow" + actions.cell.index
            text: actions.cell.controller.texts.Edit
            textColor: actions.cell.controller.theme.labelColor
            pixelSize: 15
            Accessible.name: actions.cell.controller.accessibleName("edit").arg(actions.cell.name)
            onClicked: actions.cell.controller.longPressed(actions.cell.index)
        }
        TextButton {
            id: deleteButton

            objectName: "deleteRow" + actions.cell.index
            text: actions.cell.controller.accessibleName("delete")
            textColor: actions.cell.controller.theme.alertRedColor
            pixelSize: 15
            Accessible.name: actions.cell.controller.accessibleName("deleteRow").arg(actions.cell.name)
            onClicked: actions.cell.controller.deleteRow(actions.cell.index, true)
        }
    }
}
