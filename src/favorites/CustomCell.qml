import QtQuick
import QtQuick.Controls
import Tavlo

// One favorite as a card: the sign picture in a coloured circle, the name
// above the birthday, the star for a birthday still to come, and the age.
// Tap to choose it, hold to edit it, swipe it away from the right to delete.
// With the keyboard or a screen reader: the row is a button that chooses
// it (Enter, Space), and while it has focus it shows its edit and delete
// buttons (also F2 or the menu key, and Delete).
SwipeDelegate {
    id: cell

    required property int index
    required property string name
    required property string birthday
    required property string age
    required property url signImage
    required property string star
    required property string spoken
    readonly property FavViewController controller: (ListView.view as FavoritesList).controller

    readonly property real ageLeft: width - 8 - 56
    readonly property bool keyboardInside: activeFocus || editButton.activeFocus
                                           || deleteButton.activeFocus

    objectName: "cell" + index
    width: ListView.view.width
    height: 66
    padding: 0
    background: Item {}
    focusPolicy: Qt.StrongFocus
    Accessible.name: spoken
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onDeletePressed: controller.deleteRow(index)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F2 || event.key === Qt.Key_Menu) {
            controller.longPressed(index)
            event.accepted = true
        }
    }
    onActiveFocusChanged: if (activeFocus) ListView.view.positionViewAtIndex(index, ListView.Contain)

    onClicked: controller.selectRow(index)
    onPressAndHold: controller.longPressed(index)
    swipe.onCompleted: controller.deleteRow(index)

    swipe.right: DeleteAction {}

    Binding {
        target: cell.swipe.rightItem
        property: "label"
        value: cell.controller.accessibleName("delete")
    }

    Connections {
        target: cell.swipe.rightItem
        ignoreUnknownSignals: true
        function onTapped() { cell.controller.deleteRow(cell.index) }
    }

    contentItem: Item {
        Rectangle {
            objectName: "cellBlur"
            x: 6
            y: 2
            width: cell.width - 12
            height: 56
            radius: 28
            color: cell.controller.cardColor
            border.color: cell.controller.cardBorderColor
            border.width: 0.4
        }

        Rectangle {
            objectName: "img"
            x: 8
            y: 4
            width: 52
            height: 52
            radius: height / 2
            color: cell.controller.signCircleColor
            clip: true

            Image {
                anchors.fill: parent
                source: cell.signImage
                sourceSize.width: 104
                sourceSize.height: 104
                smooth: true
            }
        }

        Text {
            objectName: "labelName"
            x: 68
            y: 2
            width: cell.ageLeft - 4 - x
            height: 29
            text: cell.name
            color: cell.controller.theme.labelColor
            font.family: "Inter"
            font.weight: Font.Thin
            font.pixelSize: 24
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 12
            elide: Text.ElideRight
            maximumLineCount: 1
            verticalAlignment: Text.AlignVCenter
        }

        Text {
            objectName: "labelStar"
            x: cell.ageLeft + 2 - width
            y: 34
            width: 18
            height: 21
            text: cell.star
            color: cell.controller.starColor
            font.family: "Inter"
            font.weight: Font.Light
            font.pixelSize: 12
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            style: Text.Raised
            styleColor: Qt.rgba(0, 0, 0, 0.3)
        }

        Text {
            objectName: "labelBD"
            x: 68
            y: 34
            width: cell.ageLeft + 2 - 18 - x
            height: 21
            text: cell.birthday
            color: cell.controller.birthdayColor
            font.family: "Inter"
            font.weight: Font.Light
            font.pixelSize: 18
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 9
            elide: Text.ElideRight
            maximumLineCount: 1
            verticalAlignment: Text.AlignVCenter
        }

        Text {
            objectName: "labelAge"
            x: cell.ageLeft
            y: 0
            width: 56
            height: 56
            text: cell.age
            color: "white"
            font.family: "Inter"
            font.weight: Font.Thin
            font.pixelSize: 32
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 16
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            // White on a pale card needs an outline to be read.
            style: cell.controller.theme.dark ? Text.Raised : Text.Outline
            styleColor: cell.controller.theme.dark ? "#545458" : "#8e8e93"
        }

        FocusRing {
            anchors.margins: 4
            radius: 28
            shown: cell.visualFocus
            ringColor: cell.controller.theme.labelColor
        }
    }

    // The row's own edit and delete buttons, for the keyboard and a
    // screen reader; a finger holds or swipes the row instead.
    Rectangle {
        objectName: "rowActions"
        // Over the age and the star, which it hides while shown.
        z: 1
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -3
        width: rowButtons.width + 8
        height: 40
        radius: 20
        visible: cell.keyboardInside
        color: cell.controller.theme.dark ? "#2c2c2e" : "#f2f2f7"

        Row {
            id: rowButtons

            anchors.centerIn: parent

            TextButton {
                id: editButton

                objectName: "editRow" + cell.index
                text: cell.controller.editText
                textColor: cell.controller.theme.labelColor
                pixelSize: 15
                Accessible.name: cell.controller.accessibleName("edit").arg(cell.name)
                onClicked: cell.controller.longPressed(cell.index)
            }
            TextButton {
                id: deleteButton

                objectName: "deleteRow" + cell.index
                text: cell.controller.accessibleName("delete")
                textColor: "#ff3b30"
                pixelSize: 15
                Accessible.name: cell.controller.accessibleName("deleteRow").arg(cell.name)
                onClicked: cell.controller.deleteRow(cell.index)
            }
        }
    }
}
