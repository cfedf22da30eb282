import QtQuick
import QtQuick.Layouts
import Tavlo

// The settings: three switches, the ten colour themes, rating, more apps,
// the version (whose taps hide a language switch) and the info panel.
Item {
    id: root

    required property SetViewController controller
    readonly property color labelColor: controller.theme.labelColor

    signal screenRequested(string identifier)

    objectName: "setView"

    Connections {
        target: root.controller
        function onScreenRequested(identifier) { root.screenRequested(identifier) }
    }

    ThemedBackground {
        anchors.fill: parent
        theme: root.controller.theme
        blurName: "blurredEffectView"
    }

    Flickable {
        objectName: "settingsContent"
        anchors.fill: parent
        anchors.topMargin: 40
        contentHeight: content.implicitHeight + 40
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        ColumnLayout {
            id: content

            x: 20
            y: 24
            width: parent.width - 40
            spacing: 14

            component SwitchRow: RowLayout {
                id: row

                required property string caption
                required property bool on
                required property string switchName
                required property string labelName
                required property color accent
                required property color textColor

                signal switched(bool on)

                Layout.fillWidth: true
                spacing: 12

                ThemedSwitch {
                    id: toggle

                    objectName: row.switchName
                    checked: row.on
                    checkedColor: row.accent
                    Accessible.name: row.caption
                    onToggled: row.switched(checked)
                }
                Text {
                    objectName: row.labelName
                    Layout.fillWidth: true
                    text: row.caption
                    color: row.textColor
                    font.pixelSize: 17
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 9
                    elide: Text.ElideRight
                }
            }

            SwitchRow {
                caption: root.controller.detailsCaption
                on: root.controller.detailsOn
                switchName: "switchDetails"
                accent: root.controller.theme.accentColor
                textColor: root.labelColor
                labelName: "lblDetails"
                onSwitched: on => root.controller.switchDetailsValue(on)
            }
            SwitchRow {
                caption: root.controller.weekdayCaption
                on: root.controller.weekdayOn
                switchName: "switchWeekday"
                accent: root.controller.theme.accentColor
                textColor: root.labelColor
                labelName: "lblWeekday"
                onSwitched: on => root.controller.switchWeekdayValue(on)
            }
            SwitchRow {
                caption: root.controller.starCaption
                on: root.controller.starOn
                switchName: "switchStar"
                accent: root.controller.theme.accentColor
                textColor: root.labelColor
                labelName: "lblStar"
                onSwitched: on => root.controller.switchStarValue(on)
            }
            SwitchRow {
                caption: root.controller.calendarCaption
                on: root.controller.calendarOn
                switchName: "switchCalendar"
                accent: root.controller.theme.accentColor
                textColor: root.labelColor
                labelName: "lblCalendar"
                onSwitched: on => root.controller.switchCalendarValue(on)
            }

            Rectangle {
                objectName: "lblLine"
                Layout.fillWidth: true
                implicitHeight: 1
                color: "#8e8e93"
            }

            Text {
                objectName: "lblBackground"
                text: root.controller.appColorsCaption
                color: root.labelColor
                font.pixelSize: 15
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            RowLayout {
                objectName: "colorButtons"
                Layout.fillWidth: true
                spacing: 8

                Repeater {
                    model: root.controller.colorButtons
                    onItemAdded: (index, item) => item.clicked.connect(
                                     () => root.controller.setColor(index + 1))

                    ColorButton {
                        required property int index
                        required property var modelData

                        Layout.fillWidth: true
                        Layout.preferredWidth: 10
                        tag: index + 1
                        themeColor: modelData.color
                        chosen: modelData.chosen
                        frameColor: modelData.frame
                        chosenSymbolColor: modelData.symbol
                        Accessible.name: modelData.name
                    }
                }
            }

            Rectangle {
                objectName: "lblLine2"
                Layout.fillWidth: true
                implicitHeight: 1
                color: "#8e8e93"
            }

            TextButton {
                objectName: "btnRate"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.rateText
                textColor: root.labelColor
                onClicked: root.controller.ratePressed()
            }
            TextButton {
                objectName: "btnMoreApps"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.moreAppsText
                textColor: root.labelColor
                onClicked: root.controller.moreAppsPressed()
            }
            TextButton {
                objectName: "btnVers"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.versionText
                textColor: root.labelColor
                pixelSize: 15
                onClicked: root.controller.versionTaped()
            }

            Text {
                objectName: "secretLabel"
                Layout.fillWidth: true
                visible: root.controller.secretVisible
                text: root.controller.secretText
                color: root.labelColor
                font.family: "Inter"
                font.weight: Font.Thin
                font.pixelSize: 15
                maximumLineCount: 30
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    TitleBar {
        width: parent.width
        theme: root.controller.theme
        title: root.controller.title
        sideInset: 62
    }

    SymbolButton {
        objectName: "btnBack"
        x: 12
        y: -4
        width: 42
        height: 42
        iconSource: "qrc:/qt/qml/Tavlo/resources/icons/chevron_left.svg"
        iconColor: root.labelColor
        Accessible.name: root.controller.accessibleName("back")
        onClicked: root.controller.backPressed()
    }

    InfoPanel {
        anchors.fill: parent
        controller: root.controller
    }

    // Above the panel: tapping it again while the panel is open is allowed.
    SymbolButton {
        objectName: "btnInfo"
        anchors.right: parent.right
        anchors.rightMargin: 12
        y: -4
        width: 42
        height: 42
        iconSource: "qrc:/qt/qml/Tavlo/resources/icons/info.svg"
        iconColor: root.labelColor
        Accessible.name: root.controller.accessibleName("info")
        onClicked: root.controller.infoPressed()
    }


    Rectangle {
        objectName: "dimOverlay"
        anchors.fill: parent
        color: "black"
        opacity: 0.5
        visible: root.controller.dimmed
    }
}
