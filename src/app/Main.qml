// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The one window: phone-shaped by default, the screens inside it.
Window {
    id: window

    // Makes each screen's controller; the app hands it over.
    required property ScreenFactory screens
    // A notice shown before the window had the focus (what was wrong with
    // the stored data, at start) appears once it has it: a screen reader
    // reads what appears in the window it follows, not what was there.
    property bool hasHadFocus: false

    width: 390
    height: 844
    minimumWidth: 360
    minimumHeight: 640
    visible: true
    title: "Tavlo"
    color: "black"
    onActiveChanged: {
        if (active && !hasHadFocus) {
            hasHadFocus = true
            // The screen took the keyboard before the window was active: a
            // screen reader hears of it only now.
            host.focusAgain()
        }
    }

    ScreenHost {
        id: host

        objectName: "screenHost"
        screens: window.screens
        // The window's own size, known before the first screen is made, so
        // that a wide window opens in two panes at once.
        width: window.width
        height: window.height
    }

    // A change that could not be saved: said briefly over whatever screen is
    // shown, without taking a touch away from it.
    Rectangle {
        id: saveNotice

        objectName: "saveNotice"

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 96
        width: Math.min(parent.width - 32, ((notice.item as Text)?.implicitWidth ?? 0) + 32)
        height: ((notice.item as Text)?.implicitHeight ?? 0) + 20
        radius: 12
        color: window.screens.saveNoticeColor
        opacity: window.screens.saveNoticeShown && window.hasHadFocus ? 1 : 0
        visible: opacity > 0

        Behavior on opacity {
            NumberAnimation {
                duration: 250
            }
        }

        // The words are made with the first notice: an empty text would
        // still open a font (a size of its own) before the first frame.
        Loader {
            id: notice

            anchors.centerIn: parent
            active: window.screens.saveNoticeText !== ""
            sourceComponent: Text {
                // As wide as the words, up to the window's width less a margin.
                property real widest: 0

                width: Math.min(implicitWidth, widest)
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                color: "white"
                font.pixelSize: 15
                Accessible.role: Accessible.Notification
                Accessible.name: text
            }
        }
        // Handed in from here: the component is checked without the
        // window's ids in reach.
        Binding {
            target: notice.item
            property: "text"
            value: window.screens.saveNoticeText
        }
        Binding {
            target: notice.item
            property: "widest"
            value: window.width - 64
        }
    }
}
