// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.impl

// The red action a card shows when swiped from the right, in the system red.
Rectangle {
    id: action

    property string label

    signal tapped()

    objectName: "deleteAction"
    radius: 28
    Accessible.role: Accessible.Button
    Accessible.name: label
    Accessible.onPressAction: action.tapped()

    IconImage {
        anchors.right: parent.right
        anchors.rightMargin: 27
        anchors.verticalCenter: parent.verticalCenter
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
