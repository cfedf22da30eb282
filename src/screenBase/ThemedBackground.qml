// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// A screen's background in its theme: the picture drawn small and smoothed
// up, which blurs it on every renderer, under a veil that keeps text
// readable; or the theme's colour under its gradient.
Item {
    id: background

    required property ScreenTheme theme
    property string blurName: "blurredEffectView"

    Rectangle {
        objectName: "ImgViewBackground"
        anchors.fill: parent
        color: background.theme.backgroundColor

        Image {
            // The size the picture is decoded at, from the background's own
            // size: the image's sourceSize changes as it loads, and a source
            // bound to it would be bound to itself.
            readonly property size decoded: Qt.size(Math.max(24, Math.round(background.width / 16)),
                                                    Math.max(48, Math.round(background.height / 16)))

            anchors.fill: parent
            visible: background.theme.blurVisible
            source: visible ? background.theme.backgroundImageAt(decoded.width, decoded.height) : ""
            sourceSize.width: decoded.width
            sourceSize.height: decoded.height
            fillMode: Image.PreserveAspectCrop
            smooth: true
        }

        Rectangle {
            objectName: "gradientLayer"
            anchors.fill: parent
            visible: background.theme.gradientVisible
            gradient: Gradient {
                GradientStop { position: 0; color: background.theme.gradientTop }
                GradientStop { position: 1; color: background.theme.gradientBottom }
            }
        }
    }

    Rectangle {
        objectName: background.blurName
        x: -100
        width: parent.width + 200
        height: parent.height
        visible: background.theme.blurVisible
        color: background.theme.veilColor
    }
}
