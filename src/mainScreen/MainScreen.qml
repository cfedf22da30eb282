// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The main screen: a blurred night sky (or the theme's colour), the age
// report, the birth date wheels and the bottom bar. Horizontal swipes step
// through the favorites; the wheels keep their vertical drags.
Item {
    id: root

    required property MainScreenController controller
    // The favorites list stands beside this screen (a wide window): the
    // button that would open it is not needed.
    property bool favoritesBeside: false

    // An open dialog covers the screen: the host shows a still picture of
    // it, so that only the dialog can be reached.
    readonly property bool covered: addDialog.shown

    // Whether keys have been used here: only then does the report show
    // that it has the keyboard.
    property bool keyboardUsed: false

    signal screenRequested(int screen)

    // Where the keyboard lands when the screen appears: the report.
    function focusFirst() {
        report.forceActiveFocus(Qt.OtherFocusReason)
    }

    objectName: "mainView"
    onWidthChanged: controller.viewDidLayoutSubviews()
    onHeightChanged: controller.viewDidLayoutSubviews()

    Connections {
        target: root.controller
        function onScreenRequested(screen) { root.screenRequested(screen) }
        function onAddFavoriteDialogRequested() {
            addDialog.open(Qt.resolvedUrl("AddFavoriteDialog.qml"), {controller: root.controller})
        }
        function onAnnouncement(words) { announcer.say(words) }
    }

    Announcer {
        id: announcer

        objectName: "announcer"
    }

    // Named items of the main screen that it never places (the back and sort
    // buttons live on the other screens); they exist so that every item the
    // screen is known to declare can be found by its name.
    QtObject {
        objectName: "btnBack"
    }
    QtObject {
        objectName: "btnSort"
    }

    ThemedBackground {
        // Sized by bindings, not anchors, which apply only once the screen is
        // complete: the picture inside is decoded at this size as it loads.
        width: parent.width
        height: parent.height
        theme: root.controller.theme
        blurName: "blurredEffectView1"
    }

    TitleBar {
        width: parent.width
        theme: root.controller.theme
        title: "Tavlo"
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

    // The title bar's second line, empty by design: it holds its place in
    // the screen's layout and can be found by its name. It has no words, so
    // no text: an empty one would still open a font of its own before the
    // first frame.
    Item {
        objectName: "labelTitle"
        y: -18
        width: parent.width
        height: 58
    }

    // First in the keyboard's order, as on the screen: the report, the
    // wheels, the buttons.
    Text {
        id: report

        // Whether the screen is built: the report is fitted only from then
        // on (see fontSizeMode).
        property bool built: false

        objectName: "lblDisplay"
        anchors.top: parent.top
        anchors.topMargin: 42
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.bottom: datePicker.top
        text: root.controller.displayText
        textFormat: Text.PlainText
        color: root.controller.theme.labelColor
        font.weight: root.controller.theme.thinWeight
        font.pixelSize: 26
        // Qt fits a text again at the next polish whenever this mode is
        // set. Set as the screen is built, the report would be fitted twice
        // before the first frame (when its anchors place it, then at that
        // polish), each time trying sizes from 26 px down; set once it is
        // built, only the polish fits it.
        fontSizeMode: report.built ? Text.Fit : Text.FixedSize
        minimumPixelSize: 13
        maximumLineCount: 30
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        // Reached with Tab, and where the keyboard lands when the report
        // changes from elsewhere: a screen reader says its first lines, and
        // reads the rest with its reading keys.
        activeFocusOnTab: true
        Accessible.focusable: true
        Accessible.role: Accessible.StaticText
        Accessible.name: root.controller.spokenReport
        // What a swipe across the report does, for a screen reader.
        Accessible.onPreviousPageAction: root.controller.handleGesture(MainScreenController.Right)
        Accessible.onNextPageAction: root.controller.handleGesture(MainScreenController.Left)
        Keys.forwardTo: [root]
        Component.onCompleted: report.built = true

        FocusRing {
            shown: report.activeFocus && root.keyboardUsed
            ringColor: root.controller.theme.labelColor
        }
    }

    DatePickerWheels {
        id: datePicker

        objectName: "datePicker"
        controller: root.controller
        keysTo: root
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: bottomBar.top
        height: 216
    }

    // Spread over a phone's width, kept together in the middle wider.
    ScreenLayout {
        id: shape

        width: root.width
        buttons: root.favoritesBeside ? 3 : 4
    }

    Row {
        id: bottomBar

        objectName: "bottomBar"
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        width: shape.barWidth
        height: 40
        spacing: 8

        readonly property real buttonWidth: (width - (shape.buttons - 1) * spacing) / shape.buttons

        SymbolButton {
            objectName: "btnReset"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconName: "restart_alt"
            iconColor: root.controller.theme.labelColor
            Accessible.name: root.controller.accessibleName("today")
            Keys.forwardTo: [root]
            onClicked: root.controller.resetPressed()
        }
        SymbolButton {
            objectName: "btnPlus"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            enabled: root.controller.plusEnabled
            iconName: "add"
            iconColor: root.controller.theme.labelColor
            Accessible.name: root.controller.accessibleName("add")
            Keys.forwardTo: [root]
            onClicked: root.controller.plusPressed()
        }
        SymbolButton {
            objectName: "btnFav"
            visible: !root.favoritesBeside
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconName: "star"
            iconColor: root.controller.theme.labelColor
            Accessible.name: root.controller.accessibleName("favorites")
            Keys.forwardTo: [root]
            onClicked: root.controller.favPressed()
        }
        SymbolButton {
            objectName: "btnSet"
            width: bottomBar.buttonWidth
            height: bottomBar.height
            iconName: "settings"
            iconColor: root.controller.theme.labelColor
            Accessible.name: root.controller.accessibleName("settings")
            Keys.forwardTo: [root]
            onClicked: root.controller.setPressed()
        }
    }

    // The weekday of the chosen date. Its text is made only once there is
    // a weekday to say: an empty one would still open its font (a size and
    // weight of its own) before the first frame.
    Item {
        id: weekday

        readonly property string text: root.controller.weekdayText

        objectName: "labelWeekDay"
        anchors.bottom: datePicker.bottom
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 6
        height: 26

        Loader {
            id: weekdayLine

            anchors.fill: parent
            active: weekday.text !== ""
            sourceComponent: Text {
                textFormat: Text.PlainText
                font.weight: Font.Light
                font.pixelSize: 20
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 10
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
        // The line's words and colour are handed in from here: its
        // component is checked without the screen's ids in reach.
        Binding {
            target: weekdayLine.item
            property: "text"
            value: weekday.text
        }
        Binding {
            target: weekdayLine.item
            property: "color"
            value: root.controller.theme.labelColor
        }
    }

    DragHandler {
        id: swipe

        property real lastDx: 0

        target: null
        xAxis.enabled: true
        yAxis.enabled: false
        // Never from items: the wheels keep the drags they have started.
        grabPermissions: PointerHandler.CanTakeOverFromHandlersOfDifferentType
                         | PointerHandler.ApprovesTakeOverByAnything
        onTranslationChanged: lastDx = translation.x
        onActiveChanged: {
            if (active) {
                lastDx = 0
                return
            }
            if (lastDx > 50)
                root.controller.handleGesture(MainScreenController.Right)
            else if (lastDx < -50)
                root.controller.handleGesture(MainScreenController.Left)
        }
    }

    // The keyboard's way to swipe through the favorites. Keys that no
    // control took come here. A screen reader hands keys straight to the
    // focused control, past its parents: so every control of the screen
    // forwards them here first.
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
            root.controller.handleGesture(event.key === Qt.Key_PageUp ? MainScreenController.Right
                                                                        : MainScreenController.Left)
            event.accepted = true
        }
        // Tab and the arrows pass on: they move the keyboard or a wheel.
        root.keyboardUsed = true
    }

    // Made when first asked for: nothing of it is in the first frame.
    DialogSlot {
        id: addDialog

        anchors.fill: parent
        // "+" is off once the birthday is added: the report has the keyboard.
        onClosedWithoutFocus: root.focusFirst()
    }

    Rectangle {
        objectName: "dimOverlay"
        anchors.fill: parent
        color: "black"
        opacity: 0.5
        visible: root.controller.dimmed
    }
}
