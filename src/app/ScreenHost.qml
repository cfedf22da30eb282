// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// Makes screens by their identifiers ("Main", "Fav", "Set") and presents
// each full screen, fading it in over the one before, which then goes.
Item {
    id: host

    required property ScreenFactory screens

    // One presented screen, with the controller it owns.
    component ScreenLayer: Item {
        id: layer

        property ScreenLayer previous: null
        property Item screen: null

        // The screen goes before the layer that owns its controller.
        function retire() {
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

        // While a dialog covers the screen, a still picture of the screen
        // stands in for it: what lies under the dialog is then neither
        // showing to a screen reader nor reachable by Tab.
        function cover(covered) {
            coveredNow = covered
            if (!covered) {
                screen.visible = true
                still.source = ""
                return
            }
            screen.grabToImage(result => {
                if (!layer.coveredNow || !layer.screen)
                    return
                still.source = result.url
                layer.screen.visible = false
            })
        }

        property bool coveredNow: false

        Image {
            id: still

            objectName: "coveredScreen"
            anchors.fill: parent
            visible: layer.coveredNow && status === Image.Ready
            cache: false
        }
    }

    property ScreenLayer currentLayer: null
    // The newest screen, whichever kind: each says where its keyboard starts.
    property var shownScreen: null
    property string pendingIdentifier: ""

    function show(identifier) {
        const layer = layerComponent.createObject(host, { opacity: currentLayer ? 0 : 1 })
        let screen
        if (identifier === "Main") {
            // The controller loads first, so the view opens on its state.
            const controller = host.screens.makeMainController(layer)
            controller.viewDidLoad()
            screen = mainScreen.createObject(layer, { controller: controller })
        } else if (identifier === "Fav") {
            const controller = host.screens.makeFavController(layer)
            controller.viewDidLoad()
            screen = favoritesScreen.createObject(layer, { controller: controller })
        } else {
            const controller = host.screens.makeSetController(layer)
            controller.viewDidLoad()
            screen = settingsScreen.createObject(layer, { controller: controller })
        }
        screen.screenRequested.connect(request)
        // The keyboard, and a screen reader with it, goes to the new screen
        // at once: nothing is left focused on the one going away.
        screen.focusFirst()
        shownScreen = screen
        screen.coveredChanged.connect(() => layer.cover(screen.covered))
        layer.screen = screen
        const previous = currentLayer
        currentLayer = layer
        if (previous)
            layer.present(previous)
    }

    // Another screen is shown a moment later, after the dim has been drawn.
    function request(identifier) {
        pendingIdentifier = identifier
        hop.restart()
    }

    Component.onCompleted: show("Main")

    Connections {
        target: host.screens

        function onScreenWanted(identifier) {
            host.request(identifier)
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
        onTriggered: host.show(host.pendingIdentifier)
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

    Component {
        id: favoritesScreen

        FavoritesScreen {
            anchors.fill: parent
        }
    }

    Component {
        id: settingsScreen

        SettingsScreen {
            anchors.fill: parent
        }
    }
}
