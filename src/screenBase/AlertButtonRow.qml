// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Tavlo

// The buttons of an alert side by side, under a hairline.
ColumnLayout {
    id: row

    required property ScreenTheme theme
    default property alias buttons: buttonRow.data
    property bool stacked: false

    spacing: 0

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        color: row.theme.separatorColor
    }
    GridLayout {
        id: buttonRow

        Layout.fillWidth: true
        columns: row.stacked ? 1 : 2
        rowSpacing: 0
        columnSpacing: 0
    }
}
