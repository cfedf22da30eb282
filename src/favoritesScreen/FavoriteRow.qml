// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Tavlo

// One favorite as a card: the sign picture in a coloured circle, the name
// above the birthday, the star for a birthday still to come, and the age.
// Tap to choose it, hold to edit it. A swipe to the left shows the red
// delete button, which stays until a tap elsewhere; a tap on it, or a swipe
// past two thirds of the row, deletes.
// With the keyboard or a screen reader: the row is a button that chooses
// it (Enter, Space), and while it has focus it shows its edit and delete
// buttons (also F2 to edit, and Delete). A finger or the mouse never gives
// it focus: those buttons would lie over the red one. A right click, the
// menu key or Shift+F10 asks for the row's menu of Edit and Delete.
ItemDelegate {
    id: cell

    required property int index
    required property string name
    required property string birthday
    required property string age
    required property url signImage
    required property string star
    required property string spoken
    readonly property FavoritesScreenController controller: (ListView.view as FavoritesList).controller

    readonly property real ageLeft: width - 8 - 56
    // The loader of the card's buttons is a focus scope: it has the
    // keyboard while either of them has. Focus the screen gives as it opens
    // or after a swipe leaves them away.
    readonly property bool keyboardInside: (activeFocus && focusReason !== Qt.ActiveWindowFocusReason)
                                           || rowActions.activeFocus
    readonly property real buttonWidth: 80
    // How far the card has moved to the left: where the finger has it, or
    // at rest, open or closed.
    readonly property real restingTravel: controller && controller.openRow === index ? buttonWidth : 0
    property real travel: swipe.active ? Math.max(0, swipe.startTravel - swipe.translation.x)
                                       : restingTravel

    objectName: "cell" + index
    width: ListView.view.width
    height: 66
    padding: 0
    background: Item {}
    focusPolicy: Qt.TabFocus
    Accessible.name: spoken + ", " + controller.positionText(index, ListView.view.count)
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onDeletePressed: controller.deleteRow(index, true)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F2) {
            controller.longPressed(index)
            event.accepted = true
        } else if (event.key === Qt.Key_Menu
                   || (event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier))) {
            (ListView.view as FavoritesList).rowMenuRequested(index, name)
            event.accepted = true
        }
    }
    onActiveFocusChanged: if (activeFocus) ListView.view.positionViewAtIndex(index, ListView.Contain)

    // A tap while a row is open only closes it.
    onClicked: {
        if (controller.openRow >= 0)
            controller.openRow = -1
        else
            controller.selectRow(index)
    }
    onPressAndHold: controller.longPressed(index)

    Behavior on travel {
        enabled: !swipe.active
        NumberAnimation { duration: 200; easing.type: Easing.OutCubic }
    }

    DragHandler {
        id: swipe

        property real startTravel: 0

        target: null
        xAxis.enabled: true
        yAxis.enabled: false
        onActiveChanged: {
            if (active) {
                startTravel = cell.restingTravel
                return
            }
            const outcome = cell.controller.swipeOutcome(cell.travel, cell.width, cell.buttonWidth,
                                                         Screen.pixelDensity)
            if (outcome === FavoritesScreenController.SwipeDelete)
                cell.controller.deleteRow(cell.index)
            else if (outcome === FavoritesScreenController.SwipeOpen)
                cell.controller.openRow = cell.index
            else if (cell.controller.openRow === cell.index)
                cell.controller.openRow = -1
        }
    }

    // The mouse's way to the row's menu. It takes the right button's press
    // before the row, which would take a click of any button for a choice;
    // the left button, a finger and hovering pass through to the row.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: {
            const list = cell.ListView.view as FavoritesList
            cell.controller.openRow = -1
            list.rowMenuRequested(cell.index, cell.name)
        }
    }

    DeleteAction {
        anchors.right: parent.right
        width: cell.travel
        height: cell.height - 10
        y: 2
        visible: cell.travel > 0
        clip: true
        color: cell.controller.theme.redColor
        label: cell.controller.accessibleName("delete")
        onTapped: cell.controller.deleteRow(cell.index)
    }

    contentItem: Item {
        transform: Translate { x: -cell.travel }

        Rectangle {
            objectName: "cellBlur"
            x: 6
            y: 2
            width: cell.width - 12
            height: 56
            radius: 28
            color: cell.controller.cardColor
            // Under the mouse the card's edge shows which one a click takes.
            border.color: cell.hovered ? cell.controller.theme.labelColor
                                       : cell.controller.cardBorderColor
            border.width: cell.hovered ? 1.5 : 0.4
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
                objectName: "signPicture"
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
            textFormat: Text.PlainText
            color: cell.controller.theme.labelColor
            font.weight: cell.controller.nameWeight
            font.pixelSize: 24
            // A long name shrinks only as far as it still reads, and is
            // then cut short; the row's spoken name has all of it.
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 18
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
            textFormat: Text.PlainText
            color: cell.controller.birthdayColor
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
            color: cell.controller.ageColor
            font.weight: cell.controller.ageWeight
            font.pixelSize: 32
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 16
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            style: Text.Raised
            styleColor: cell.controller.theme.darkGreyColor
        }
        FocusRing {
            anchors.margins: 4
            radius: 28
            shown: cell.visualFocus
            ringColor: cell.controller.theme.labelColor
        }
    }

    // The row's own edit and delete buttons, for the keyboard and a
    // screen reader; a finger holds or swipes the row instead. They are
    // made only while the keyboard is on the row: in every row they would
    // cost more than the rest of the card. A row swiped aside has its red
    // button there instead.
    Loader {
        id: rowActions

        // Over the age and the star, which they hide while shown.
        z: 1
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: -3
        active: cell.keyboardInside && cell.travel === 0
        Component.onCompleted: setSource("RowActions.qml", {cell: cell})
    }
}
