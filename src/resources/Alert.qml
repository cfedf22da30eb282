// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Tavlo

// A phone-style alert: a rounded card over a dim, its title centred.
Dialog {
    id: alert

    required property ScreenTheme theme

    modal: true
    // Keys reach the alert: Tab stays in it, Escape closes it.
    focus: true
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

    header: Label {
        text: alert.title
        visible: text.length > 0
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
