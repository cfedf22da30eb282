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

    // The icon is tinted for each card that has it, so only a card that
    // shows its action has one.
    Loader {
        anchors.right: parent.right
        anchors.rightMargin: 27
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 26
        active: action.visible
        sourceComponent: IconImage {
            sourceSize.width: 52
            sourceSize.height: 52
            source: "qrc:/qt/qml/Tavlo/screenBase/icons/delete.svg"
            color: "white"
        }
    }
    TapHandler {
        onTapped: action.tapped()
    }
}
