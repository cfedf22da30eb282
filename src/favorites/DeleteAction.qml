import QtQuick
import QtQuick.Controls.impl

// The red action a card shows when swiped from the right.
Rectangle {
    id: action

    property string label

    signal tapped()

    objectName: "deleteAction"
    anchors.right: parent ? parent.right : undefined
    width: 80
    height: parent ? parent.height : 66
    color: "#ff3b30"
    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: action.tapped()

    IconImage {
        anchors.centerIn: parent
        width: 26
        height: 26
        sourceSize.width: 52
        sourceSize.height: 52
        source: "qrc:/qt/qml/Tavlo/resources/icons/delete.svg"
        color: "white"
    }
    TapHandler {
        onTapped: action.tapped()
    }
}
