// SPDX-License-Identifier: MIT
import QtQuick
import Tavlo

// The list of cards; each card finds the screen's controller through it.
ListView {
    property FavoritesScreenController controller

    // A right click or the menu key on row `row`, named `name`.
    signal rowMenuRequested(int row, string name)
}
