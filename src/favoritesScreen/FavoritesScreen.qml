// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import Tavlo

// The saved birthdays as cards under a title bar with the back and sort
// buttons, and the number of entries at the end of the list.
Item {
    id: root

    required property FavoritesScreenController controller

    // An open menu or dialog covers the screen: the host shows a still
    // picture of it, so that only the dialog can be reached.
    readonly property bool covered: sortMenu.visible || rowMenu.visible
                                    || (editDialog.item as EditFavoriteDialog)?.visible === true

    signal screenRequested(int screen)

    // Where the keyboard lands when the screen appears: with a screen
    // reader the first card, else (or with no card) the back button. Not as
    // by Tab: a finger that opened the screen must not bring up the card's
    // keyboard buttons.
    function focusFirst() {
        const first = root.controller.screenReaderOn ? tableView.itemAtIndex(0) : null
        if (first)
            first.forceActiveFocus(Qt.ActiveWindowFocusReason)
        else
            btnBack.forceActiveFocus(Qt.ActiveWindowFocusReason)
    }

    objectName: "favView"
    Component.onCompleted: controller.viewWillAppear()

    Connections {
        target: root.controller
        function onScreenRequested(screen) { root.screenRequested(screen) }
        function onSortMenuRequested() { sortMenu.open() }
        function onEditDialogRequested() {
            if (!editDialog.item)
                editDialog.setSource("EditFavoriteDialog.qml", {controller: root.controller})
            const dialog = editDialog.item as EditFavoriteDialog
            dialog.open()
        }
        function onImportFinished() { importSummary.open() }
        function onFileDialogRequested() { fileDialog.open() }
        function onAnnouncement(words) { announcer.say(words) }
        function onRowToFocus(row) {
            tableView.positionViewAtIndex(row, ListView.Contain)
            const item = tableView.itemAtIndex(row)
            if (item)
                item.forceActiveFocus(Qt.TabFocusReason)
            else
                btnBack.forceActiveFocus(Qt.TabFocusReason)
        }
    }

    Announcer {
        id: announcer

        objectName: "announcer"
    }

    // The keyboard's way back after a delete, while "Undo" is offered.
    Shortcut {
        sequence: "Ctrl+Z"
        enabled: root.controller.undoVisible
        onActivated: root.controller.undoDelete(true)
    }

    ThemedBackground {
        anchors.fill: parent
        theme: root.controller.theme
        blurName: "blurredEffectViewFav"
    }

    FavoritesList {
        id: tableView

        property bool footerCountShown: false
        property bool rowsInPlace: false

        objectName: "tableView"
        anchors.fill: parent
        anchors.topMargin: 40
        model: root.controller.model
        controller: root.controller
        clip: true
        // Rows beyond the screen are made ahead only once the rows are in
        // place: while they rise the list takes them for missing and would
        // make half a screen more before the first frame.
        cacheBuffer: rowsInPlace ? 330 : 0
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: null

        delegate: FavoriteRow {}
        onRowMenuRequested: (row, name) => rowMenu.openFor(row, name, root.Window.activeFocusItem
                                                          === tableView.itemAtIndex(row))

        // Each time the rows appear they rise into place one after another.
        populate: Transition {
            id: rowsAppearing

            onRunningChanged: if (!running) tableView.rowsInPlace = true

            SequentialAnimation {
                PauseAnimation {
                    duration: 50 * rowsAppearing.ViewTransition.index
                }
                NumberAnimation {
                    property: "y"
                    from: rowsAppearing.ViewTransition.destination.y + tableView.height
                    duration: 1250
                    easing.type: Easing.OutBack
                    easing.overshoot: 0.6
                }
            }
        }
        remove: Transition {
            NumberAnimation { property: "opacity"; to: 0; duration: 250 }
        }
        removeDisplaced: Transition {
            NumberAnimation { property: "y"; duration: 250 }
        }

        footer: EntriesFooter {}

        Binding {
            target: tableView.footerItem
            property: "width"
            value: tableView.width
        }
        Binding {
            target: tableView.footerItem
            property: "text"
            value: root.controller.entriesText
        }
        Binding {
            target: tableView.footerItem
            property: "color"
            value: root.controller.theme.labelColor
        }
        Binding {
            target: tableView.footerItem
            property: "textOpacity"
            value: root.controller.theme.legibleOpacity(0.7)
        }
        Binding {
            target: tableView.footerItem
            property: "countShown"
            value: tableView.footerCountShown
        }

        // The count shows up after the rows.
        Timer {
            interval: 800
            running: true
            onTriggered: tableView.footerCountShown = true
        }

        // Ordered by birthday, the list moves to the first birthday to come.
        Timer {
            interval: 1000
            running: root.controller.scrollTarget >= 0
            // Rows are all 66 high and the footer 55; while the rows are still
            // flying in, the list's own idea of its height is not yet right.
            onTriggered: {
                const end = Math.max(0, tableView.count * 66 + 55 - tableView.height)
                scroll.to = tableView.originY
                        + Math.min(root.controller.scrollTarget * 66, end)
                scroll.start()
            }
        }

        NumberAnimation {
            id: scroll

            target: tableView
            property: "contentY"
            duration: 400
            easing.type: Easing.InOutQuad
        }
    }

    // An empty list says how to fill it.
    Text {
        objectName: "emptyHint"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 32
        anchors.topMargin: 40 + 48
        visible: text.length > 0
        text: root.controller.emptyHint
        color: root.controller.theme.labelColor
        font.pixelSize: 18
        font.weight: Font.Light
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    TitleBar {
        width: parent.width
        theme: root.controller.theme
        title: root.controller.texts.Favorites
        sideInset: Math.max(12 + 42 + 4 + 42, btnSort.width + 16) + 8
    }

    // Beside the main screen there is nothing to go back to.
    SymbolButton {
        id: btnBack

        objectName: "btnBack"
        visible: !root.controller.besideMain
        x: 12
        y: -4
        width: 42
        height: 42
        iconName: "chevron_left"
        iconColor: root.controller.theme.labelColor
        Accessible.name: root.controller.accessibleName("back")
        onClicked: root.controller.backPressed()
    }

    AbstractButton {
        id: btnSort

        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()
        objectName: "btnSort"
        anchors.right: parent.right
        anchors.rightMargin: 16
        y: -4
        height: 42
        text: root.controller.texts.Sort
        scale: pressed ? 0.9 : 1
        contentItem: Text {
            text: btnSort.text
            color: root.controller.theme.labelColor
            font.pixelSize: 17
            verticalAlignment: Text.AlignVCenter
        }
        background: Item {}
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.onPressAction: clicked()
        onClicked: root.controller.sortPressed()

        FocusRing {
            shown: btnSort.visualFocus
            ringColor: root.controller.theme.labelColor
        }

        Behavior on scale {
            NumberAnimation { duration: 200 }
        }
    }

    // Escape leaves the screen as the back button does.
    Shortcut {
        sequence: "Escape"
        enabled: !root.covered && !root.controller.besideMain
        onActivated: root.controller.backPressed()
    }

    SymbolButton {
        objectName: "btnImport"
        x: btnBack.visible ? 12 + 42 + 4 : 12
        y: -4
        width: 42
        height: 42
        iconName: "add"
        iconColor: root.controller.theme.labelColor
        Accessible.name: root.controller.texts.ImportVCardFile
        onClicked: importMenu.open()
    }

    ImportMenu {
        id: importMenu

        controller: root.controller
    }

    // Only where the system's file chooser does not answer.
    FileDialog {
        id: fileDialog

        objectName: "fileDialog"
        // The screen may be made before it is put into the window.
        parentWindow: root.Window.window
        title: root.controller.fileDialogTitle
        fileMode: root.controller.fileDialogSaves ? FileDialog.SaveFile : FileDialog.OpenFile
        nameFilters: root.controller.fileDialogFilters
        currentFolder: root.controller.fileDialogFolder
        acceptLabel: root.controller.fileDialogAcceptText
        rejectLabel: root.controller.texts.Cancel
        onAccepted: root.controller.fileDialogAccepted(selectedFile)
    }

    ImportSummary {
        id: importSummary

        controller: root.controller
    }

    SortMenu {
        id: sortMenu

        controller: root.controller
    }

    RowMenu {
        id: rowMenu

        controller: root.controller
    }

    // Made when first asked for: its wheels would hold up the list's first
    // rows.
    Loader {
        id: editDialog

        anchors.fill: parent
    }

    // For a few seconds after a delete: what went, and the way back.
    Rectangle {
        objectName: "undoBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 12
        height: 48
        radius: 14
        color: root.controller.theme.alertBackground
        border.color: root.controller.theme.separatorColor
        visible: opacity > 0
        opacity: root.controller.undoVisible ? 1 : 0

        Behavior on opacity {
            NumberAnimation { duration: 200 }
        }

        Text {
            objectName: "undoLabel"
            anchors.left: parent.left
            anchors.leftMargin: 16
            anchors.right: btnUndo.left
            anchors.verticalCenter: parent.verticalCenter
            text: root.controller.undoText
            textFormat: Text.PlainText
            color: root.controller.theme.labelColor
            font.pixelSize: 15
            elide: Text.ElideRight
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        AlertButton {
            id: btnUndo

            objectName: "btnUndo"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(implicitContentWidth, 60) + 32
            text: root.controller.texts.Undo
            tint: root.controller.theme.labelColor
            font.weight: Font.DemiBold
            onClicked: root.controller.undoDelete(visualFocus)
        }
    }

    Rectangle {
        objectName: "dimOverlay"
        anchors.fill: parent
        color: "black"
        opacity: 0.5
        visible: root.controller.dimmed
    }
}
