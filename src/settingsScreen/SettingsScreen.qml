// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// The settings: three switches, the ten colour themes, rating, more apps,
// the version (whose taps hide a language switch) and the info panel.
Item {
    id: root

    required property SettingsScreenController controller
    readonly property color labelColor: controller.theme.labelColor

    // Only the sync dialog covers this screen; its info panel hides what
    // lies under it.
    readonly property bool covered: syncDialog.visible

    signal screenRequested(int screen)

    // Where the keyboard lands when the screen appears: the first switch.
    function focusFirst() {
        firstSwitch.focusSwitch()
    }

    objectName: "setView"

    Connections {
        target: root.controller
        function onScreenRequested(screen) { root.screenRequested(screen) }
        // Back from the info panel, the keyboard goes on where it left.
        function onInfoVisibleChanged() {
            if (!root.controller.infoVisible)
                btnInfo.forceActiveFocus()
        }
    }

    Connections {
        target: root.controller
        function onAnnouncement(words) { announcer.say(words) }
    }

    Announcer {
        id: announcer

        objectName: "announcer"
    }

    // Escape closes the info panel, or else leaves the screen.
    Shortcut {
        sequence: "Escape"
        onActivated: root.controller.infoVisible ? root.controller.scrollViewHide()
                                                 : root.controller.backPressed()
    }

    ThemedBackground {
        anchors.fill: parent
        theme: root.controller.theme
        blurName: "blurredEffectView"
    }

    Flickable {
        objectName: "settingsContent"
        anchors.fill: parent
        // Under the opaque info panel nothing of it can be seen or reached.
        visible: !root.controller.infoVisible
        anchors.topMargin: 40
        contentHeight: content.implicitHeight + 40
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        // A column of readable width: all of a phone's, in the middle of
        // anything wider, so that a switch stays beside its words.
        ScreenLayout {
            id: shape
        }

        ColumnLayout {
            id: content

            x: (parent.width - width) / 2
            y: 24
            width: shape.readableWidth(parent.width - 40, Qt.font({ pixelSize: 17 }))
            spacing: 14

            component SwitchRow: RowLayout {
                id: row

                required property string caption
                required property bool on
                required property string switchName
                required property string labelName
                required property color accent
                required property color textColor
                required property color trackOffColor
                required property color knobWhenOn

                signal switched(bool on)

                function focusSwitch() {
                    toggle.forceActiveFocus(Qt.OtherFocusReason)
                }

                Layout.fillWidth: true
                spacing: 12

                ThemedSwitch {
                    id: toggle

                    objectName: row.switchName
                    checked: row.on
                    checkedColor: row.accent
                    offColor: row.trackOffColor
                    checkedKnobColor: row.knobWhenOn
                    // The star of "Mark future birthdays ☆" is not read out.
                    Accessible.name: row.caption.replace(/[☆★]/g, "").trim()
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
                id: firstSwitch

                caption: root.controller.texts.ShowMoreDetails
                on: root.controller.detailsOn
                switchName: "switchDetails"
                accent: root.controller.theme.switchOnColor
                textColor: root.labelColor
                trackOffColor: root.controller.theme.switchOffColor
                knobWhenOn: root.controller.theme.switchOnKnobColor
                labelName: "lblDetails"
                onSwitched: on => root.controller.switchDetailsValue(on)
            }
            SwitchRow {
                caption: root.controller.texts.ShowWeekdayInTable
                on: root.controller.weekdayOn
                switchName: "switchWeekday"
                accent: root.controller.theme.switchOnColor
                textColor: root.labelColor
                trackOffColor: root.controller.theme.switchOffColor
                knobWhenOn: root.controller.theme.switchOnKnobColor
                labelName: "lblWeekday"
                onSwitched: on => root.controller.switchWeekdayValue(on)
            }
            SwitchRow {
                caption: root.controller.texts.MarkFutureBirthdays
                on: root.controller.starOn
                switchName: "switchStar"
                accent: root.controller.theme.switchOnColor
                textColor: root.labelColor
                trackOffColor: root.controller.theme.switchOffColor
                knobWhenOn: root.controller.theme.switchOnKnobColor
                labelName: "lblStar"
                onSwitched: on => root.controller.switchStarValue(on)
            }
            SwitchRow {
                caption: root.controller.texts.ShowBirthdaysInCalendar
                on: root.controller.calendarOn
                switchName: "switchCalendar"
                accent: root.controller.theme.switchOnColor
                textColor: root.labelColor
                trackOffColor: root.controller.theme.switchOffColor
                knobWhenOn: root.controller.theme.switchOnKnobColor
                labelName: "lblCalendar"
                onSwitched: on => root.controller.switchCalendarValue(on)
            }
            SwitchRow {
                caption: root.controller.texts.FollowContacts
                on: root.controller.followContactsOn
                switchName: "switchFollowContacts"
                accent: root.controller.theme.switchOnColor
                textColor: root.labelColor
                trackOffColor: root.controller.theme.switchOffColor
                knobWhenOn: root.controller.theme.switchOnKnobColor
                labelName: "lblFollowContacts"
                onSwitched: on => root.controller.switchFollowContactsValue(on)
            }
            Text {
                objectName: "lblFollowContactsStatus"
                Layout.fillWidth: true
                visible: text.length > 0
                text: root.controller.followContactsStatus
                color: root.labelColor
                font.pixelSize: 13
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            TextButton {
                id: btnSync

                objectName: "btnSync"
                Layout.alignment: Qt.AlignRight
                visible: root.controller.syncAvailable
                text: root.controller.texts.SyncRow + "  ›"
                textColor: root.labelColor
                pixelSize: 17
                Accessible.name: root.controller.texts.SyncRow + ": " + root.controller.syncStatus
                onClicked: syncDialog.open()
            }
            Text {
                objectName: "lblSyncStatus"
                Layout.fillWidth: true
                visible: root.controller.syncAvailable
                text: root.controller.syncStatus
                color: root.labelColor
                font.pixelSize: 13
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignRight
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Rectangle {
                objectName: "lblLine"
                Layout.fillWidth: true
                implicitHeight: 1
                color: root.controller.theme.greyColor
            }

            Text {
                objectName: "lblBackground"
                text: root.controller.texts.AppColors
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
                objectName: "lblLine3"
                Layout.fillWidth: true
                implicitHeight: 1
                color: root.controller.theme.greyColor
            }

            RowLayout {
                objectName: "reminderRow"
                Layout.fillWidth: true
                spacing: 4

                Text {
                    objectName: "lblReminders"
                    Layout.fillWidth: true
                    text: root.controller.texts.Reminders
                    color: root.labelColor
                    font.pixelSize: 17
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 9
                    elide: Text.ElideRight
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                TextButton {
                    objectName: "btnReminderEarlier"
                    text: "−"
                    textColor: root.labelColor
                    Accessible.name: root.controller.texts.Earlier
                    onClicked: root.controller.stepReminderTime(-1)
                }
                Text {
                    objectName: "lblReminderTime"
                    text: root.controller.reminderTimeText
                    color: root.labelColor
                    font.pixelSize: 17
                    Accessible.role: Accessible.StaticText
                    Accessible.name: root.controller.texts.ReminderTime + ": " + text
                }
                TextButton {
                    objectName: "btnReminderLater"
                    text: "+"
                    textColor: root.labelColor
                    Accessible.name: root.controller.texts.Later
                    onClicked: root.controller.stepReminderTime(1)
                }
            }
            TextButton {
                objectName: "btnReminderLead"
                Layout.alignment: Qt.AlignRight
                text: root.controller.reminderLeadText + "  ›"
                textColor: root.labelColor
                pixelSize: 17
                Accessible.name: root.controller.texts.HowEarly + ": "
                                 + root.controller.reminderLeadText
                onClicked: root.controller.nextReminderLead()
            }
            TextButton {
                objectName: "btnSecondReminder"
                Layout.alignment: Qt.AlignRight
                text: root.controller.texts.SecondReminder + ": "
                      + root.controller.secondReminderText + "  ›"
                textColor: root.labelColor
                pixelSize: 17
                Accessible.name: root.controller.texts.SecondReminder + ": "
                                 + root.controller.secondReminderText
                onClicked: root.controller.nextSecondReminder()
            }

            Rectangle {
                objectName: "lblLine2"
                Layout.fillWidth: true
                implicitHeight: 1
                color: root.controller.theme.greyColor
            }

            TextButton {
                objectName: "btnRate"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.texts.RateApp
                textColor: root.labelColor
                onClicked: root.controller.ratePressed()
            }
            TextButton {
                objectName: "btnMoreApps"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.texts.MoreApps
                textColor: root.labelColor
                onClicked: root.controller.moreAppsPressed()
            }
            TextButton {
                objectName: "btnVers"
                Layout.alignment: Qt.AlignHCenter
                text: root.controller.versionText
                Accessible.name: root.controller.versionSpoken
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
                font.weight: root.controller.theme.thinWeight
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
        visible: !root.controller.infoVisible
        theme: root.controller.theme
        title: root.controller.texts.Settings
        sideInset: 62
    }

    SymbolButton {
        objectName: "btnBack"
        x: 12
        y: -4
        width: 42
        height: 42
        iconName: "chevron_left"
        visible: !root.controller.infoVisible
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
        id: btnInfo

        objectName: "btnInfo"
        anchors.right: parent.right
        anchors.rightMargin: 12
        y: -4
        width: 42
        height: 42
        iconName: "info"
        iconColor: root.labelColor
        Accessible.name: root.controller.accessibleName("info")
        onClicked: root.controller.infoPressed()
    }


    SyncDialog {
        id: syncDialog

        controller: root.controller
        focusAfterwards: btnSync
    }

    Rectangle {
        objectName: "dimOverlay"
        anchors.fill: parent
        color: "black"
        opacity: 0.5
        visible: root.controller.dimmed
    }
}
