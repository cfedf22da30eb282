import QtQuick
import QtQuick.Controls
import Tavlo

// One wheel of the birth date: its labels, the selected index, and a text
// colour for the labels.
Tumbler {
    id: wheel

    // With a count for a model, the labels count from 1 (days of a month).
    property color textColor: "white"
    // The lowest opacity the outer labels may fade to and still read.
    property real fadedOpacity: 0.2

    visibleItemCount: 5
    wrap: false
    // To a screen reader a wheel is a value to step up and down.
    Accessible.role: Accessible.SpinBox
    palette.windowText: textColor

    delegate: Text {
        required property int index
        required property var modelData

        text: typeof modelData === "number" ? index + 1 : modelData
        color: Tumbler.tumbler.palette.windowText
        opacity: Math.max((Tumbler.tumbler as DateWheel).fadedOpacity, 1.0 - Math.abs(Tumbler.displacement)
                          / (Tumbler.tumbler.visibleItemCount / 2) * 0.8)
        font.family: "Inter"
        font.weight: Font.Light
        font.pixelSize: 21
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
}
