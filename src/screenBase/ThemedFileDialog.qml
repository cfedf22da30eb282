// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.impl
import QtQuick.Dialogs.quickimpl
import QtQuick.Layouts
import Qt.labs.folderlistmodel
import Tavlo

// Qt Quick Dialogs' own file dialog as Tavlo draws it, where no system
// chooser answers: a rounded card in the colours of the screen that asked,
// one column (folder, files, name, filter, buttons) that fits a 360-px
// phone. Qt keeps the logic: the folder shown, the filter, the file chosen.
FileDialogImpl {
    id: control

    objectName: "themedFileDialog"
    anchors.centerIn: parent
    width: parent ? Math.min(parent.width - 16, 560) : 360
    height: parent ? Math.min(parent.height - 32, 720) : 640
    modal: true
    padding: 0
    topPadding: 0
    bottomPadding: 0
    standardButtons: Dialog.Open | Dialog.Cancel

    // The controls inside (text field, filter box and its list, scroll
    // bar) are Qt's Basic ones: the palette gives them the theme.
    palette.window: FallbackFileDialog.cardColor
    palette.windowText: FallbackFileDialog.textColor
    palette.text: FallbackFileDialog.textColor
    palette.buttonText: FallbackFileDialog.textColor
    palette.brightText: FallbackFileDialog.textColor
    palette.base: FallbackFileDialog.fieldColor
    palette.alternateBase: FallbackFileDialog.fieldColor
    palette.button: FallbackFileDialog.fieldColor
    palette.light: FallbackFileDialog.fieldColor
    palette.midlight: FallbackFileDialog.fieldColor
    palette.mid: FallbackFileDialog.lineColor
    palette.dark: FallbackFileDialog.lineColor
    palette.highlight: FallbackFileDialog.lineColor
    palette.highlightedText: FallbackFileDialog.textColor
    palette.placeholderText: FallbackFileDialog.placeholderColor
    palette.shadow: "black"

    // Qt names no file to save under until one of the folder is chosen:
    // the name Tavlo offers stands there meanwhile.
    onOpened: {
        if (fileNameField.visible && fileNameField.text.length === 0) {
            fileNameField.text = FallbackFileDialog.suggestedName
            // As if typed: Qt takes the name when its editing ends.
            fileNameField.editingFinished()
        }
    }

    FileDialogImpl.buttonBox: buttonBox
    FileDialogImpl.nameFiltersComboBox: filterBox
    FileDialogImpl.fileDialogListView: fileList
    FileDialogImpl.breadcrumbBar: breadcrumbBar
    FileDialogImpl.fileNameLabel: fileNameLabel
    FileDialogImpl.fileNameTextField: fileNameField

    background: Rectangle {
        radius: 14
        color: FallbackFileDialog.cardColor
    }

    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }

    header: ColumnLayout {
        spacing: 4

        Label {
            objectName: "fileDialogTitle"
            Layout.fillWidth: true
            Layout.topMargin: 16
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            text: control.title
            color: FallbackFileDialog.textColor
            font.pixelSize: 17
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        // Where the list is: the folders above it to go back to, and an
        // up button.
        FolderBreadcrumbBar {
            id: breadcrumbBar

            objectName: "fileDialogFolder"
            Layout.fillWidth: true
            Layout.leftMargin: 8
            Layout.rightMargin: 8
            dialog: control
            upButtonSpacing: 4
            implicitHeight: 44
            padding: 0
            KeyNavigation.tab: fileList

            contentItem: ListView {
                currentIndex: breadcrumbBar.currentIndex
                model: breadcrumbBar.contentModel
                orientation: ListView.Horizontal
                boundsBehavior: Flickable.StopAtBounds
                highlightMoveDuration: 0
                clip: true
                // The folder shown is the last crumb: it stays in sight.
                onCountChanged: positionViewAtEnd()
                onWidthChanged: positionViewAtEnd()
            }
            buttonDelegate: AbstractButton {
                id: crumb

                required property int index
                required property string folderName

                text: folderName
                implicitHeight: 44
                leftPadding: 6
                rightPadding: 6
                contentItem: Text {
                    text: crumb.text
                    color: FallbackFileDialog.textColor
                    font.pixelSize: 15
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    radius: 8
                    color: crumb.pressed ? Qt.rgba(0.5, 0.5, 0.5, 0.25) : "transparent"

                    FocusRing {
                        shown: crumb.visualFocus
                        ringColor: FallbackFileDialog.textColor
                    }
                }
                Accessible.role: Accessible.Button
                Accessible.name: text
            }
            separatorDelegate: Text {
                text: "›"
                color: FallbackFileDialog.textColor
                font.pixelSize: 15
                height: 44
                verticalAlignment: Text.AlignVCenter
            }
            // The crumbs take a control of Qt Quick Controls here, drawn as
            // the symbol buttons are.
            upButton: AbstractButton {
                id: upButton

                objectName: "fileDialogUp"
                x: 0
                width: 44
                height: 44
                rotation: 90
                focusPolicy: Qt.TabFocus
                Accessible.name: FallbackFileDialog.upText
                contentItem: Item {
                    Image {
                        anchors.centerIn: parent
                        width: 26
                        height: 26
                        sourceSize.width: 52
                        sourceSize.height: 52
                        fillMode: Image.PreserveAspectFit
                        source: "image://symbol/chevron_left/" + FallbackFileDialog.textColor
                    }
                }
                background: Item {}
                HoverRing {
                    shown: upButton.hovered && !upButton.visualFocus
                    ringColor: FallbackFileDialog.textColor
                }
                FocusRing {
                    shown: upButton.visualFocus
                    ringColor: FallbackFileDialog.textColor
                }
            }
            // Typing a path (Ctrl+L) shows it instead of the crumbs.
            textField: TextField {
                text: control.selectedFile
                color: FallbackFileDialog.textColor
                font.pixelSize: 15
                background: Rectangle {
                    radius: 8
                    color: FallbackFileDialog.fieldColor
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: FallbackFileDialog.lineColor
        }
    }

    contentItem: ListView {
        id: fileList

        objectName: "fileDialogListView"
        clip: true
        focus: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar {}

        model: FolderListModel {
            folder: control.currentFolder
            nameFilters: control.selectedNameFilter.globs
            showDirsFirst: true
            sortCaseSensitive: false
        }
        delegate: FileDialogDelegate {
            id: row

            required property int index
            required property string fileName
            required property url fileUrl
            required property bool fileIsDir

            objectName: "fileDialogDelegate" + index
            width: ListView.view.width
            implicitHeight: 48
            leftPadding: 16
            rightPadding: 16
            spacing: 12
            dialog: control
            file: fileUrl
            highlighted: ListView.isCurrentItem
            icon.width: 20
            icon.height: 20
            icon.color: FallbackFileDialog.textColor
            icon.source: "qrc:/qt-project.org/imports/QtQuick/Dialogs/quickimpl/images/"
                         + (fileIsDir ? "folder" : "file") + "-icon-round.png"
            Accessible.name: fileName

            contentItem: RowLayout {
                spacing: row.spacing

                IconImage {
                    Layout.preferredWidth: row.icon.width
                    Layout.preferredHeight: row.icon.height
                    source: row.icon.source
                    sourceSize.width: row.icon.width
                    sourceSize.height: row.icon.height
                    color: row.icon.color
                }
                Label {
                    Layout.fillWidth: true
                    text: row.fileName
                    color: FallbackFileDialog.textColor
                    font.pixelSize: 16
                    elide: Text.ElideMiddle
                }
            }
            background: Rectangle {
                color: row.down || row.highlighted ? Qt.rgba(0.5, 0.5, 0.5, 0.25) : "transparent"

                FocusRing {
                    anchors.margins: 2
                    shown: row.visualFocus
                    ringColor: FallbackFileDialog.textColor
                }
            }
        }
    }

    footer: ColumnLayout {
        spacing: 8

        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: FallbackFileDialog.lineColor
        }

        // Shown by Qt when saving, with the name to save under.
        Label {
            id: fileNameLabel

            Layout.leftMargin: 16
            Layout.rightMargin: 16
            visible: fileNameField.visible
            text: FallbackFileDialog.fileNameText
            color: FallbackFileDialog.textColor
            font.pixelSize: 15
        }
        TextField {
            id: fileNameField

            objectName: "fileNameTextField"
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            visible: false
            text: control.fileName
            color: FallbackFileDialog.textColor
            font.pixelSize: 16
            Accessible.name: FallbackFileDialog.fileNameText
            background: Rectangle {
                implicitHeight: 40
                radius: 8
                color: FallbackFileDialog.fieldColor
                border.color: fileNameField.activeFocus ? FallbackFileDialog.textColor : FallbackFileDialog.lineColor
            }
        }

        ComboBox {
            id: filterBox

            objectName: "fileDialogFilter"
            Layout.fillWidth: true
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            model: control.nameFilters
            font.pixelSize: 15
            // Its list opens over the window, outside the dialog's palette.
            popup.palette.window: FallbackFileDialog.cardColor
            popup.palette.light: FallbackFileDialog.lineColor
            popup.palette.midlight: FallbackFileDialog.lineColor
            popup.palette.dark: FallbackFileDialog.lineColor
            popup.palette.text: FallbackFileDialog.textColor
            popup.palette.highlightedText: FallbackFileDialog.textColor
            Accessible.name: displayText
        }

        DialogButtonBox {
            id: buttonBox

            objectName: "fileDialogButtons"
            Layout.fillWidth: true
            standardButtons: control.standardButtons
            spacing: 0
            padding: 0
            background: null
            delegate: AlertButton {
                // Takes the focus when pressed, so that a name being typed
                // is finished (and taken) before the button acts.
                focusPolicy: Qt.StrongFocus
                tint: FallbackFileDialog.textColor
                leftPadding: 16
                rightPadding: 16
            }
        }
    }
}
