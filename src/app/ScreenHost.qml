// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// Makes screens (Screens.Id.Main, .Favorites, .Settings) and presents each
// full screen, fading it in over the one before, which then goes. In a wide
// window the favorites list and the main screen are presented side by side
// (ScreenLayout says which screens are shown for the one asked for), and a
// favorite chosen in the list is shown in the other pane.
Item {
    id: host

    required property ScreenFactory screens
    // The window's width decides, in one place, whether two panes are shown.
    readonly property ScreenLayout shape: ScreenLayout {
        width: host.width
    }

    // One presentation: a screen, or the favorites beside the main screen,
    // each with the controller it owns.
    component ScreenLayer: Item {
        id: layer

        property ScreenLayer previous: null
        // What was asked for, and the screens shown for it, left to right.
        property int asked: Screens.Id.Main
        property var paneScreens: []
        property var panes: []
        property real sideWidth: 0
        readonly property Item side: sidePane
        readonly property Item wide: widePane

        // The screens go before the layer that owns their controllers.
        function retire() {
            for (const screen of panes)
                screen.destroy()
            destroy()
        }

        anchors.fill: parent

        NumberAnimation on opacity {
            id: fadeIn

            running: false
            to: 1
            duration: 300
            easing.type: Easing.InOutQuad
            onFinished: {
                if (layer.previous)
                    layer.previous.retire()
                layer.previous = null
            }
        }

        function present(over) {
            previous = over
            fadeIn.start()
        }

        // While a dialog covers a screen, a still picture of the panes
        // stands in for them: what lies under the dialog is then neither
        // showing to a screen reader nor reachable by Tab, in either pane.
        function cover(covered) {
            coveredNow = covered
            if (!covered) {
                content.visible = true
                still.source = ""
                return
            }
            content.grabToImage(result => {
                if (!layer.coveredNow || layer.panes.length === 0)
                    return
                still.source = result.url
                content.visible = false
            })
        }

        property bool coveredNow: false

        Item {
            id: content

            anchors.fill: parent

            // The favorites list beside the main screen; nothing on a phone.
            Item {
                id: sidePane

                width: layer.sideWidth
                height: parent.height
                clip: layer.sideWidth > 0
            }
            Item {
                id: widePane

                x: layer.sideWidth
                width: parent.width - layer.sideWidth
                height: parent.height
                // Each screen's backdrop reaches past its edges.
                clip: layer.sideWidth > 0
            }
        }

        Image {
            id: still

            objectName: "coveredScreen"
            anchors.fill: parent
            visible: layer.coveredNow && status === Image.Ready
            cache: false
        }
    }

    property ScreenLayer currentLayer: null
    // The screen asked for last, whichever kind: each says where its
    // keyboard starts.
    property var shownScreen: null
    property int pendingScreen: Screens.Id.Main

    // A new controller, loaded, and its screen in `pane`; the controller
    // loads first, so the view opens on its state.
    function make(identifier, owner, pane, beside) {
        if (identifier === Screens.Id.Main) {
            const controller = host.screens.makeMainController(owner)
            controller.viewDidLoad()
            // Made at its size: the background picture is then decoded once,
            // at the size it is drawn, and the report laid out once.
            return mainScreen.createObject(pane, {
                controller: controller,
                favoritesBeside: beside,
                width: pane.width,
                height: pane.height
            })
        }
        if (identifier === Screens.Id.Favorites) {
            const controller = host.screens.makeFavController(owner)
            controller.besideMain = beside
            controller.viewDidLoad()
            return place(laterScreen("../favoritesScreen/FavoritesScreen.qml"), pane, controller)
        }
        const controller = host.screens.makeSetController(owner)
        controller.viewDidLoad()
        return place(laterScreen("../settingsScreen/SettingsScreen.qml"), pane, controller)
    }

    // The favorites and the settings screens are compiled when first asked
    // for, not before the first frame of the main screen: they bring Qt
    // Quick Dialogs, Layouts and many controls with them.
    property var laterScreens: ({})

    function laterScreen(file) {
        if (!laterScreens[file])
            laterScreens[file] = Qt.createComponent(file)
        return laterScreens[file]
    }

    // A screen of `component` filling `pane`, at its size from the start.
    function place(component, pane, controller) {
        const screen = component.createObject(pane, {
            controller: controller,
            width: pane.width,
            height: pane.height
        })
        if (!screen) {
            console.error(component.errorString())
            return null
        }
        screen.anchors.fill = pane
        return screen
    }

    function show(identifier) {
        const panes = host.shape.panes(identifier)
        const together = panes.length > 1
        const layer = layerComponent.createObject(host, {
            opacity: currentLayer ? 0 : 1,
            asked: identifier,
            paneScreens: panes
        })
        if (together)
            layer.sideWidth = Qt.binding(() => host.shape.sidePaneWidth)
        // The main screen loads first, as it does before the favorites on a
        // phone: it decides the language the list is shown in.
        const made = {}
        for (const name of [Screens.Id.Main, Screens.Id.Favorites, Screens.Id.Settings]) {
            const at = panes.indexOf(name)
            if (at >= 0)
                made[name] = make(name, layer, at < panes.length - 1 ? layer.side : layer.wide, together)
        }
        const shown = panes.map(name => made[name])
        if (together) {
            const list = made[Screens.Id.Favorites].controller
            const main = made[Screens.Id.Main].controller
            list.favoriteHandedOver.connect(main.takeHandOver)
            main.favoriteAdded.connect(list.favoritesChangedElsewhere)
        }
        layer.panes = shown
        for (const screen of shown) {
            screen.screenRequested.connect(request)
            screen.coveredChanged.connect(() => layer.cover(shown.some(s => s.covered)))
        }
        // The keyboard, and a screen reader with it, goes to the screen
        // asked for at once: nothing is left focused on the one going away.
        const screen = made[identifier]
        screen.focusFirst()
        shownScreen = screen
        const previous = currentLayer
        currentLayer = layer
        if (previous)
            layer.present(previous)
    }

    // Another screen is shown a moment later, after the dim has been drawn.
    function request(identifier) {
        pendingScreen = identifier
        hop.restart()
    }

    Component.onCompleted: show(Screens.Id.Main)

    Connections {
        target: host.screens

        function onScreenWanted(identifier) {
            host.request(identifier)
        }
    }

    // A window made wider or narrower across the breakpoint shows the same
    // screen again, in the panes that now stand for it.
    Connections {
        target: host.shape

        function onChanged() {
            const layer = host.currentLayer
            if (layer && String(host.shape.panes(layer.asked)) !== String(layer.paneScreens))
                host.show(layer.asked)
        }
    }

    // Gives the keyboard to the shown screen anew, so that a screen reader
    // that missed it being given hears of it.
    function focusAgain() {
        if (!currentLayer)
            return
        host.forceActiveFocus(Qt.OtherFocusReason)
        shownScreen.focusFirst()
    }

    Timer {
        id: hop

        interval: 1
        onTriggered: host.show(host.pendingScreen)
    }

    Component {
        id: layerComponent

        ScreenLayer {}
    }

    Component {
        id: mainScreen

        MainScreen {
            anchors.fill: parent
        }
    }
}
