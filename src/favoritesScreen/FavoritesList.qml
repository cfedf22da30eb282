// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The list of cards; each card finds the screen's controller through it.
ListView {
    property FavViewController controller
    // The row whose delete button is shown, or -1.
    property int openRow: -1
}
