import QtQuick
import Tavlo

// The main screen: a blurred night sky (or the theme's colour), the age
// report, the birth date wheels and the bottom bar. Horizontal swipes step
// through the favorites; the wheels keep their vertical drags.
Item {
    id: root

    required property ViewController controller

    signal screenRequested(string identifier)

    objectName: "mainView"
    onWidthChanged: controller.viewDidLayoutSubviews()
    onHeightChanged: controller.viewDidLayoutSubviews()

    Connections {
        target: root.controller
        function onScreenRequested(identifier) { root.screenRequested(identifier) }
        function onAddFavoriteDialogRequested() { addDialog.open() }
    }

    // Declared by the main screen but never placed on it.
    QtObject {
        objectName: "btnBack"
    }
    QtObject {
        objectName: "btnSort"
    }

    // The picture, drawn small and smoothed up, which blurs it on every
    // renderer; or the theme's colour under its gradient.
    Rectangle {
        id: imgViewBackground

        objectName: "ImgViewBackground"
        anchors.fill: parent
        color: root.controller.backgroundColor

        Image {
            anchors.fill: parent
            visible: root.controller.blurVisible
            source: visible ? root.controller.backgroundImage : ""
            sourceSize.width: Math.max(24, Math.round(root.width / 16))
            sourceSize.height: Math.max(48, Math.round(root.height / 16))
            fillMode: Image.PreserveAspectCrop
            smooth: true
        }

        Rectangle {
            objectName: "gradientLayer"
            anchors.fill: parent
            visible: root.controller.gradientVisible
            gradient: Gradient {
                GradientStop { position: 0; color: root.controller.gradientTop }
                GradientStop { position: 1; color: root.controller.gradientBottom }
            }
        }
    }

    // The blur's material: a veil that keeps text readable over the picture.
    Rectangle {
        objectName: "blurredEffectView1"
        x: -100
        width: parent.width + 200
        height: parent.height
        visible: root.controller.blurVisible
        color: root.controller.dark ? Qt.rgba(0, 0, 0, 0.3) : Qt.rgba(1, 1, 1, 0.6)
    }

    Rectangle {
        id: titleBar

        objectName: "titleBarBackdrop"
        width: parent.width
        height: 40
        color: root.controller.dark
               ? Qt.rgba(0.08, 0.08, 0.08, root.controller.thinTitleBar ? 0.35 : 0.6)
               : Qt.rgba(0.98, 0.98, 0.98, root.controller.thinTitleBar ? 0.35 : 0.6)
    }

    Text {
        objectName: "titleLabel"
        y: -18
        width: parent.width
        height: 58
        text: "Tavlo"
        color: root.controller.labelColor
        font.pixelSize: 22
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.Heading
    }

    Image {
        objectName: "imgViewStars"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 200
        opacity: 0.1
        source: root.controller.starImage
        sourceSize.width: 512
        sourceSize.height: 512
        fillMode: Image.PreserveAspectFit
        asynchronous: true
    }

    Text {
        objectName: "labelTitle"
        y: -18
        width: parent.width
        height: 58
        text: ""
        color: root.controller.labelColor
        font.pixelSize: 17
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    Row {
        id: bottomBar

        objectName: "bottomBar"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 40
        spacing: 8

        readonly property real buttonWidth: (width - 3 * spacing) / 4

        SymbolButton {
            objectName: "btnReset"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconSource: "qrc:/qt/qml/Tavlo/resources/icons/restart_alt.svg"
            iconColor: root.controller.labelColor
            Accessible.name: qsTr("Today")
            onClicked: root.controller.resetPressed()
        }
        SymbolButton {
            objectName: "btnPlus"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            enabled: root.controller.plusEnabled
            iconSource: "qrc:/qt/qml/Tavlo/resources/icons/add.svg"
            iconColor: root.controller.labelColor
            Accessible.name: qsTr("Add to favorites")
            onClicked: root.controller.plusPressed()
        }
        SymbolButton {
            objectName: "btnFav"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconSource: "qrc:/qt/qml/Tavlo/resources/icons/star.svg"
            iconColor: root.controller.labelColor
            Accessible.name: qsTr("Favorites")
            onClicked: root.controller.favPressed()
        }
        SymbolButton {
            objectName: "btnSet"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconSource: "qrc:/qt/qml/Tavlo/resources/icons/settings.svg"
            iconColor: root.controller.labelColor
            Accessible.name: qsTr("Settings")
            onClicked: root.controller.setPressed()
        }
    }

    DatePickerWheels {
        id: datePicker

        objectName: "datePicker"
        controller: root.controller
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: bottomBar.top
        height: 216
    }

    Text {
        objectName: "lblDisplay"
        anchors.top: parent.top
        anchors.topMargin: 42
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.bottom: datePicker.top
        text: root.controller.displayText
        color: root.controller.labelColor
        font.family: "Inter"
        font.weight: Font.Thin
        font.pixelSize: 26
        fontSizeMode: Text.Fit
        minimumPixelSize: 13
        maximumLineCount: 30
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        objectName: "labelWeekDay"
        anchors.bottom: datePicker.bottom
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 6
        height: 26
        text: root.controller.weekdayText
        color: root.controller.labelColor
        font.family: "Inter"
        font.weight: Font.Light
        font.pixelSize: 20
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 10
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    DragHandler {
        id: swipe

        property real lastDx: 0

        target: null
        xAxis.enabled: true
        yAxis.enabled: false
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onTranslationChanged: lastDx = translation.x
        onActiveChanged: {
            if (active) {
                lastDx = 0
                return
            }
            if (lastDx > 50)
                root.controller.handleGesture(ViewController.Right)
            else if (lastDx < -50)
                root.controller.handleGesture(ViewController.Left)
        }
    }

    AddFavoriteDialog {
        id: addDialog

        controller: root.controller
        anchors.centerIn: parent
    }

    Rectangle {
        objectName: "dimOverlay"
        anchors.fill: parent
        color: "black"
        opacity: 0.5
        visible: root.controller.dimmed
    }
}
