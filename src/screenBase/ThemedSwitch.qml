// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// An on/off switch whose "on" colour is the theme's accent.
Switch {
    id: control

    property color checkedColor
    property color offColor
    property color knobColor: "white"
    // The knob while on: white, or dark on a light track.
    property color checkedKnobColor: knobColor

    implicitWidth: 51
    implicitHeight: 31
    padding: 0
    Accessible.role: Accessible.CheckBox
    // A switch turned by a screen reader stores its setting as a tap does.
    Accessible.onToggleAction: flip()
    Accessible.onPressAction: flip()

    function flip() {
        if (!enabled)
            return
        toggle()
        toggled()
    }

    indicator: Rectangle {
        objectName: "switchTrack"
        implicitWidth: 51
        implicitHeight: 31
        radius: height / 2
        color: control.checked ? control.checkedColor : control.offColor
        // A faint outline keeps the track visible on a background of its own colour.
        border.width: 1
        border.color: Qt.rgba(0.5, 0.5, 0.5, 0.35)

        Rectangle {
            objectName: "switchKnob"
            x: control.checked ? parent.width - width - 2 : 2
            y: 2
            width: 27
            height: 27
            radius: height / 2
            color: control.checked ? control.checkedKnobColor : control.knobColor

            Behavior on x {
                NumberAnimation { duration: 150 }
            }
        }

        FocusRing {
            radius: height / 2
            shown: control.visualFocus
            ringColor: control.checkedColor
        }
    }
    contentItem: Item {}
}
