// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The bar at the top of a screen: a translucent backdrop under the title.
Item {
    id: bar

    required property ScreenTheme theme
    property alias title: titleLabel.text
    // Room kept free on both sides for the buttons, so the title stays centred.
    property real sideInset: 0

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
        x: bar.sideInset
        y: -18
        width: parent.width - 2 * bar.sideInset
        height: 58
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 14
        elide: Text.ElideRight
        color: bar.theme.labelColor
        // The application's default size too (BundledFonts).
        font.pixelSize: 22
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
