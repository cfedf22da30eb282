// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The list of cards; each card finds the screen's controller through it.
ListView {
    property FavViewController controller
}
