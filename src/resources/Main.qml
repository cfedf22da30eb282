import QtQuick

// The one window: phone-shaped by default, the screens inside it.
Window {
    id: window

    width: 390
    height: 844
    minimumWidth: 360
    minimumHeight: 640
    visible: true
    title: "Tavlo"
    color: "black"

    ScreenHost {
        objectName: "screenHost"
        anchors.fill: parent
    }
}
