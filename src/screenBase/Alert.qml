// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Tavlo

// A phone-style alert: a rounded card over a dim, its title centred.
Dialog {
    id: alert

    required property ScreenTheme theme

    // Where the keyboard goes when the alert closes: by default back to the
    // control that opened it, or, when that is gone or disabled, to what
    // the owner names here (the screen's first control). A screen reader
    // then says where the keyboard is.
    property Item focusAfterwards: null
    // Where the keyboard starts in the alert, if not on the alert itself.
    property Item firstFocus: null
    property Item opener: null
    // The slot the alert was made in, when a screen holds it in one.
    property DialogSlot slot: null

    signal closedWithoutFocus()

    modal: true
    // Keys reach the alert: Tab stays in it, Escape closes it.
    focus: true
    onAboutToShow: opener = parent ? parent.Window.activeFocusItem : null
    onOpened: if (firstFocus) firstFocus.forceActiveFocus(Qt.TabFocusReason)
    onClosed: {
        const back = focusAfterwards ?? opener
        opener = null
        if (back && back.visible && back.enabled)
            back.forceActiveFocus(Qt.OtherFocusReason)
        else
            closedWithoutFocus()
    }
    onVisibleChanged: if (slot) slot.shown = visible
    onClosedWithoutFocus: if (slot) slot.closedWithoutFocus()
    anchors.centerIn: parent
    width: Math.min(parent ? parent.width - 48 : 300, 320)
    padding: 16

    Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }

    background: Rectangle {
        radius: 14
        color: alert.theme.alertBackground
    }

    Connections {
        target: alert.slot
        function onOpenRequested() { alert.open() }
    }

    // False for an alert whose title is there only for a screen reader.
    property bool titleShown: true

    header: Label {
        text: alert.title
        // A favorite's name as typed: "<i>Anna</i>" is not italic.
        textFormat: Text.PlainText
        visible: alert.titleShown && text.length > 0
        color: alert.theme.labelColor
        font.pixelSize: 17
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        topPadding: 18
        leftPadding: 16
        rightPadding: 16
        wrapMode: Text.Wrap
    }
}
