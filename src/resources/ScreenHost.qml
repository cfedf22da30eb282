import QtQuick
import Tavlo

// Makes screens by their identifiers ("Main", "Fav", "Set") and presents
// each full screen, fading it in over the one before, which then goes.
Item {
    id: host

    property Item currentLayer: null
    property string pendingIdentifier: ""

    function show(identifier) {
        const layer = layerComponent.createObject(host, { opacity: currentLayer ? 0 : 1 })
        let screen
        if (identifier === "Main") {
            // The controller loads first, so the view opens on its state.
            const controller = ScreenFactory.makeMainController(layer)
            controller.viewDidLoad()
            screen = mainScreen.createObject(layer, { controller: controller })
        } else {
            screen = placeholderScreen.createObject(layer, { identifier: identifier })
        }
        screen.screenRequested.connect(request)
        layer.screen = screen
        const previous = currentLayer
        currentLayer = layer
        if (previous) {
            layer.previous = previous
            layer.fadeIn.start()
        }
    }

    // Another screen is shown a moment later, after the dim has been drawn.
    function request(identifier) {
        pendingIdentifier = identifier
        hop.restart()
    }

    Component.onCompleted: show("Main")

    Timer {
        id: hop
        interval: 1
        onTriggered: host.show(host.pendingIdentifier)
    }

    Component {
        id: layerComponent

        Item {
            id: layer

            property Item previous: null
            property Item screen: null
            property alias fadeIn: fadeIn

            anchors.fill: parent

            NumberAnimation {
                id: fadeIn
                target: layer
                property: "opacity"
                to: 1
                duration: 300
                easing.type: Easing.InOutQuad
                onFinished: {
                    // The screen goes before the layer that owns its controller.
                    if (layer.previous) {
                        layer.previous.screen.destroy()
                        layer.previous.destroy()
                    }
                    layer.previous = null
                }
            }
        }
    }

    Component {
        id: mainScreen

        MainScreen {
            anchors.fill: parent
        }
    }

    Component {
        id: placeholderScreen

        PlaceholderScreen {
            anchors.fill: parent
        }
    }
}
