// SPDX-License-Identifier: MIT
#include "favorites/FavoriteBrowsing.h"

std::optional<qint64> FavoriteBrowsing::afterSwipe(qint64 current, Swipe swipe, qsizetype count)
{
    if (current == notBrowsing || count == 0)
        return std::nullopt;
    if (swipe == Swipe::Right && current >= 1)
        return current - 1;
    if (swipe == Swipe::Left && current < count - 1)
        return current + 1;
    return current;
}
