// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Themes.h"

#include <QList>
#include <functional>

// How well one colour reads on another, as the web's accessibility
// guidelines (WCAG 2) measure it, and the smallest change of lightness that
// makes a colour read well enough.
namespace Contrast {

// Normal text needs 4.5:1; text of 24 px and more and symbols need 3:1.
constexpr double text = 4.5;
constexpr double largeText = 3.0;
constexpr double symbol = 3.0;
// Strokes as drawn lose part of their colour to the smoothing of their
// edges. A text in the light or regular face keeps its minimum as drawn
// when its colour reaches `drawnText`. The thin face's strokes, narrower
// than a pixel, reach about half their colour's contrast (thinReads).
constexpr double drawnText = 5.2;
constexpr double thinText = 10;
// What a colour worked out here aims above its minimum, for the small
// differences between the colours reckoned with and those drawn
// (translucent layers, rounding).
constexpr double margin = 0.05;

// Whether text in the thin face reads in `color` on every one of
// `backgrounds`: the colour must reach `thinText`, and be the lighter one.
// Dark strokes narrower than a pixel are blended away on a light ground
// far more than light ones on a dark ground, as the screen blends in its
// own gamma.
bool thinReads(Rgb color, const QList<Rgb> &backgrounds);

// Relative luminance, 0 for black to 1 for white.
double luminance(Rgb color);
// From 1:1 (the same) to 21:1 (black on white); the order does not matter.
double ratio(Rgb a, Rgb b);
// The same ratio from the two luminances, for a colour weighed against many.
double ratioOfLuminances(double a, double b);
// The lowest ratio of `color` against any of `backgrounds` (21 for none).
double lowestRatio(Rgb color, const QList<Rgb> &backgrounds);
// `color` at `alpha` drawn over `under`, as a screen blends them.
Rgb over(Rgb color, double alpha, Rgb under);

// Hue, saturation and lightness (HSL), each 0 to 1.
struct Hsl
{
    double hue = 0;
    double saturation = 0;
    double lightness = 0;
};
Hsl toHsl(Rgb color);
Rgb fromHsl(Hsl hsl);

// `color` with the same hue and saturation and the lightness nearest its own
// (lighter first on a tie) whose `score` reaches `minimum`; unchanged when
// its own score does, the best-scoring lightness when none does.
Rgb nearestLightness(Rgb color, const std::function<double(Rgb)> &score, double minimum);

// `color` with the same hue and saturation and the lightness nearest its own
// at which it reaches `minimum` against every one of `backgrounds`. The
// colour comes back unchanged when it reads well already; when no lightness
// is enough, the best one is returned.
Rgb legible(Rgb color, const QList<Rgb> &backgrounds, double minimum);

// The lowest opacity, from 0 to 1 in steps of 0.01, at which `color` still
// reaches `minimum` over every one of `backgrounds`; 1 when even full
// opacity does not.
double lowestOpacity(Rgb color, const QList<Rgb> &backgrounds, double minimum);

} // namespace Contrast
