// SPDX-License-Identifier: MIT
#pragma once

// Where a favorites row comes to rest when a swipe to the left is let go.
// Distances are the finger's, in millimetres on the screen: a wide window
// asks no longer a swipe than a phone does.
namespace RowSwipe {

enum class Outcome {
    // Back in place.
    Closed,
    // The delete button shown, until a tap elsewhere.
    Open,
    // Far enough: the favorite goes.
    Delete,
};

// How far a swipe deletes: this far, or two thirds of a narrower row.
inline constexpr double deleteMillimetres = 45;

// `travel`, `rowWidth` and `buttonWidth` in pixels, on a screen with
// `pixelsPerMillimetre` (0 where the screen does not say).
Outcome settle(double travel, double rowWidth, double buttonWidth, double pixelsPerMillimetre);

// The travel, in pixels, from which a swipe deletes.
double deleteDistance(double rowWidth, double pixelsPerMillimetre);

} // namespace RowSwipe
