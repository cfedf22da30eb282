import QtQuick
import QtQuick.Controls
import Tavlo

// The text field of an alert, in the appearance's colours.
TextField {
    id: field

    required property ScreenTheme theme

    placeholderTextColor: theme.dark ? "#8e8e93" : "#6c6c70"
    color: theme.labelColor
    font.pixelSize: 15
    leftPadding: 8
    rightPadding: 8
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    background: Rectangle {
        radius: 6
        color: field.theme.dark ? "#1c1c1e" : "white"
        border.color: field.theme.dark ? "#48484a" : "#c7c7cc"
    }
}
