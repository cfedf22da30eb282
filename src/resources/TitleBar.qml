import QtQuick
import Tavlo

// The bar at the top of a screen: a translucent backdrop under the title.
Item {
    id: bar

    required property ScreenTheme theme
    property alias title: titleLabel.text

    height: 40

    Rectangle {
        objectName: "titleBarBackdrop"
        anchors.fill: parent
        color: bar.theme.dark
               ? Qt.rgba(0.08, 0.08, 0.08, bar.theme.thinTitleBar ? 0.35 : 0.6)
               : Qt.rgba(0.98, 0.98, 0.98, bar.theme.thinTitleBar ? 0.35 : 0.6)
    }

    Text {
        id: titleLabel

        objectName: "titleLabel"
        y: -18
        width: parent.width
        height: 58
        color: bar.theme.labelColor
        font.pixelSize: 22
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
