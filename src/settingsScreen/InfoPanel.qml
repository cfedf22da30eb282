// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// What Tavlo is and how it is used, over a blurred backdrop; opened by the
// info button, closed by its own back button, kept as it was between openings.
Item {
    id: panel

    required property SettingsScreenController controller

    visible: controller.infoVisible
    // Opened, the panel takes the keyboard on its close button: a screen
    // reader says the panel's name and its first words; Tab goes on to the
    // text, which the reading keys read through.
    onVisibleChanged: if (visible) btnBackInfo.forceActiveFocus()
    Accessible.role: Accessible.Dialog
    Accessible.name: controller.accessibleName("info")

    // An opaque backdrop: the picture of the theme, drawn small and smoothed
    // up, under a veil; the settings do not show through.
    Rectangle {
        anchors.fill: parent
        color: panel.controller.theme.panelBackground
    }

    Image {
        objectName: "ImgViewInfoBackground"
        anchors.fill: parent
        source: panel.controller.theme.backgroundImage
        sourceSize.width: Math.max(24, Math.round(width / 16))
        sourceSize.height: Math.max(48, Math.round(height / 16))
        fillMode: Image.PreserveAspectCrop
        smooth: true
    }

    Rectangle {
        objectName: "blurredEffectView2"
        anchors.fill: parent
        color: panel.controller.theme.dark ? Qt.rgba(0, 0, 0, 0.55) : Qt.rgba(1, 1, 1, 0.75)
    }

    // Touches stay on the panel, not on the settings under it.
    MouseArea {
        anchors.fill: parent
    }

    Flickable {
        objectName: "scrollViewInfo"
        anchors.fill: parent
        anchors.topMargin: 48
        contentHeight: column.height + 40
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        // Lines of at most about 80 characters, in the middle of a wide window.
        ScreenLayout {
            id: shape
        }

        Column {
            id: column

            x: (parent.width - width) / 2
            width: shape.readableWidth(parent.width - 48, infoText.font)
            spacing: 18

            Image {
                objectName: "ImgViewInfo"
                anchors.horizontalCenter: parent.horizontalCenter
                width: 96
                height: 96
                sourceSize.width: 192
                sourceSize.height: 192
                source: "qrc:/qt/qml/Tavlo/screenBase/images/space0.svg"
                fillMode: Image.PreserveAspectCrop
                layer.enabled: false

                Image {
                    anchors.fill: parent
                    anchors.margins: 18
                    sourceSize.width: 120
                    sourceSize.height: 120
                    source: "qrc:/qt/qml/Tavlo/screenBase/images/aquarius.svg"
                }
            }

            Text {
                id: infoText

                objectName: "labelInfo"
                width: parent.width
                text: panel.controller.infoText
                color: panel.controller.theme.labelColor
                font.weight: Font.Light
                font.pixelSize: 16
                wrapMode: Text.Wrap
                lineHeight: 1.15
                // Its first paragraph as its name; the reading keys go on
                // through the rest.
                activeFocusOnTab: true
                Accessible.focusable: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text.split("\n\n").slice(0, 2).join(". ")
            }
        }
    }

    SymbolButton {
        id: btnBackInfo

        objectName: "btnBackInfo"
        x: 12
        y: 2
        width: 42
        height: 42
        iconName: "close"
        iconColor: panel.controller.theme.labelColor
        Accessible.name: panel.controller.accessibleName("close")
        onClicked: panel.controller.scrollViewHide()
    }
}
