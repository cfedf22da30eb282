// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The one window: phone-shaped by default, the screens inside it.
Window {
    id: window

    // Makes each screen's controller; the app hands it over.
    required property ScreenFactory screens

    width: 390
    height: 844
    minimumWidth: 360
    minimumHeight: 640
    visible: true
    title: "Tavlo"
    color: "black"

    ScreenHost {
        objectName: "screenHost"
        screens: window.screens
        anchors.fill: parent
    }

    // A change that could not be saved: said briefly over whatever screen is
    // shown, without taking a touch away from it.
    Rectangle {
        id: saveNotice

        objectName: "saveNotice"

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 96
        width: Math.min(parent.width - 32, noticeText.implicitWidth + 32)
        height: noticeText.implicitHeight + 20
        radius: 12
        color: window.screens.saveNoticeColor
        opacity: window.screens.saveNoticeShown ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: 250
            }
        }

        Text {
            id: noticeText

            anchors.centerIn: parent
            width: Math.min(implicitWidth, window.width - 64)
            text: window.screens.saveNoticeText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: "white"
            font.pixelSize: 15
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }
}
