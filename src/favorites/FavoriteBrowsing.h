// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <optional>

// Stepping through the favorites with swipes on the main screen.
namespace FavoriteBrowsing {

// The index that means no favorite is being browsed.
inline constexpr qint64 notBrowsing = 5000;

enum class Swipe { Left, Right };

// The favorite to show after a swipe: a right swipe goes back one, a left
// swipe on one, and either stays put at the end of the list. Nothing when no
// favorite is being browsed or there is none.
std::optional<qint64> afterSwipe(qint64 current, Swipe swipe, qsizetype count);

} // namespace FavoriteBrowsing
