// SPDX-License-Identifier: MIT
#pragma once

// Where a favorites row comes to rest when a swipe to the left is let go.
namespace RowSwipe {

enum class Outcome {
    // Back in place.
    Closed,
    // The delete button shown, until a tap elsewhere.
    Open,
    // Past two thirds of the row: the favorite goes.
    Delete,
};

// `travel`: how far the row has been moved to the left, in pixels.
Outcome settle(double travel, double rowWidth, double buttonWidth);

} // namespace RowSwipe
