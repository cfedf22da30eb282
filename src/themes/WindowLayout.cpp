// SPDX-License-Identifier: MIT
#include "themes/WindowLayout.h"

#include <algorithm>

namespace {

// The favorites list as wide as on a large phone.
constexpr double sidePane = 400;
// A symbol button of the bottom bar and the room between two of them,
// when they are kept together.
constexpr double groupedButton = 72;
constexpr double groupedSpacing = 8;

} // namespace

bool WindowLayout::wide(double windowWidth)
{
    return windowWidth >= wideFrom;
}

double WindowLayout::sidePaneWidth(double windowWidth)
{
    return std::min(sidePane, windowWidth / 2);
}

QList<Screen> WindowLayout::panes(Screen asked, double windowWidth)
{
    if (wide(windowWidth) && (asked == Screen::Main || asked == Screen::Favorites))
        return {Screen::Favorites, Screen::Main};
    return {asked};
}

double WindowLayout::readableWidth(double available, double averageCharacterWidth)
{
    if (averageCharacterWidth <= 0)
        return std::max(0.0, available);
    return std::clamp(readableCharacters * averageCharacterWidth, 0.0, std::max(0.0, available));
}

double WindowLayout::barWidth(double available, int buttons)
{
    if (!wide(available) || buttons <= 0)
        return available;
    return std::min(available, buttons * groupedButton + (buttons - 1) * groupedSpacing);
}

double WindowLayout::pixels(double millimetres, double pixelsPerMillimetre)
{
    // From a small watch (about 2 px/mm) to a dense phone at scale 1 (about
    // 20 px/mm); outside that the screen's size is not known.
    constexpr double desktop = 96 / 25.4;
    const bool believable = pixelsPerMillimetre >= 1.5 && pixelsPerMillimetre <= 25;
    return millimetres * (believable ? pixelsPerMillimetre : desktop);
}
