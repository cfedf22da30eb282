// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Screens.h"

#include <QList>

// How the screens use the room a window gives them: a phone's single column
// up to a width, and wider the favorites beside the main screen, text in
// columns that read, and buttons kept together. Sizes are in the window's
// logical pixels.
namespace WindowLayout {

// The narrowest window that shows two panes; anything narrower is a phone
// and keeps the phone's layout.
inline constexpr double wideFrom = 600;

bool wide(double windowWidth);

// The favorites pane beside the main screen: as wide as a phone's list, and
// never more than half the window.
double sidePaneWidth(double windowWidth);

// The screens shown for the screen asked for, side by side from the left:
// in a wide window the favorites list stands beside the main screen,
// whichever of the two was asked for; the last is the wide pane.
QList<Screen> panes(Screen asked, double windowWidth);

// A column of running text: the room there is, but no wider than about 80
// characters of the font in use.
inline constexpr int readableCharacters = 80;
double readableWidth(double available, double averageCharacterWidth);

// A row of `buttons` symbol buttons: spread over the phone's width, kept
// together in the middle on anything wider.
double barWidth(double available, int buttons);

// `millimetres` as pixels on a screen with `pixelsPerMillimetre`; a screen
// that does not say (or says something no screen has) counts as a desktop
// monitor of 96 pixels per inch.
double pixels(double millimetres, double pixelsPerMillimetre);

} // namespace WindowLayout
