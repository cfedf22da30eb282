import QtQuick

// Stands for a screen that is not built yet: a back button and nothing more.
Rectangle {
    id: screen

    required property string identifier

    signal screenRequested(string identifier)

    objectName: "placeholder" + identifier
    color: "#1c1c1e"

    SymbolButton {
        objectName: "btnBack"
        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: 8
        width: 44
        height: 44
        iconSource: "qrc:/qt/qml/Tavlo/resources/icons/chevron_left.svg"
        iconColor: "white"
        Accessible.name: qsTr("Back")
        onClicked: screen.screenRequested("Main")
    }
}
