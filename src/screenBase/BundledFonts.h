// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QList>
#include <QStringList>

// The faces Tavlo draws every text with, carried in its resources so that
// the app looks the same whatever fonts the phone or desktop has:
// "Tavlo Sans" (Inter, renamed so that an installed Inter never stands in
// for it) in each weight a screen asks for, "Tavlo Symbols" for the zodiac
// and planet signs, "Tavlo Han" for the Chinese characters. Emoji in names
// come from the system's colour emoji font; nothing else comes from the
// system.
namespace BundledFonts {

// Registers the faces and makes Tavlo Sans, with its fallbacks, the
// application font. Once, before the first window; later calls do nothing.
void install();

// The families a Tavlo text may be drawn in: the bundled ones and, last,
// the system's colour emoji.
QStringList families();

// The weights of Tavlo Sans that are bundled. A text asks only for these:
// any other weight would be made up from a neighbour or taken from a system
// font.
QList<QFont::Weight> weights();

} // namespace BundledFonts
