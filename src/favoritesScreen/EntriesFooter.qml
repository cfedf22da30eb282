// SPDX-License-Identifier: MIT
import QtQuick

// The end of the favorites list: how many entries it has.
Item {
    id: footer

    property alias text: label.text
    property alias color: label.color
    property alias countShown: label.visible
    property real textOpacity: 0.7

    height: 55

    Text {
        id: label

        objectName: "footerCount"
        x: 12
        width: parent.width - 24
        height: 40
        visible: false
        opacity: footer.textOpacity
        font.weight: Font.Normal
        font.pixelSize: 13
        horizontalAlignment: Text.AlignRight
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
