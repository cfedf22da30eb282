// SPDX-License-Identifier: MIT
#include "themes/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double channel(double value)
{
    const double c = std::clamp(value, 0.0, 1.0);
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double hueToChannel(double p, double q, double t)
{
    if (t < 0)
        t += 1;
    if (t > 1)
        t -= 1;
    if (t < 1.0 / 6)
        return p + (q - p) * 6 * t;
    if (t < 1.0 / 2)
        return q;
    if (t < 2.0 / 3)
        return p + (q - p) * (2.0 / 3 - t) * 6;
    return p;
}

Rgb clamped(Rgb c)
{
    return {std::clamp(c.red, 0.0, 1.0), std::clamp(c.green, 0.0, 1.0),
            std::clamp(c.blue, 0.0, 1.0)};
}

} // namespace

double Contrast::luminance(Rgb c)
{
    return 0.2126 * channel(c.red) + 0.7152 * channel(c.green) + 0.0722 * channel(c.blue);
}

double Contrast::ratio(Rgb a, Rgb b)
{
    return ratioOfLuminances(luminance(a), luminance(b));
}

double Contrast::ratioOfLuminances(double a, double b)
{
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

double Contrast::lowestRatio(Rgb color, const QList<Rgb> &backgrounds)
{
    double lowest = 21;
    for (const Rgb &background : backgrounds)
        lowest = std::min(lowest, ratio(color, background));
    return lowest;
}

bool Contrast::thinReads(Rgb color, const QList<Rgb> &backgrounds)
{
    return std::all_of(backgrounds.cbegin(), backgrounds.cend(), [&](Rgb background) {
        return luminance(color) > luminance(background) && ratio(color, background) >= thinText;
    });
}

Rgb Contrast::over(Rgb color, double alpha, Rgb under)
{
    const Rgb c = clamped(color);
    const Rgb u = clamped(under);
    return {c.red * alpha + u.red * (1 - alpha), c.green * alpha + u.green * (1 - alpha),
            c.blue * alpha + u.blue * (1 - alpha)};
}

Contrast::Hsl Contrast::toHsl(Rgb color)
{
    const Rgb c = clamped(color);
    const double high = std::max({c.red, c.green, c.blue});
    const double low = std::min({c.red, c.green, c.blue});
    Hsl hsl;
    hsl.lightness = (high + low) / 2;
    const double range = high - low;
    if (range <= 0)
        return hsl;
    hsl.saturation = range / (1 - std::abs(2 * hsl.lightness - 1));
    double hue = 0;
    if (high == c.red)
        hue = std::fmod((c.green - c.blue) / range + 6, 6);
    else if (high == c.green)
        hue = (c.blue - c.red) / range + 2;
    else
        hue = (c.red - c.green) / range + 4;
    hsl.hue = hue / 6;
    return hsl;
}

Rgb Contrast::fromHsl(Hsl hsl)
{
    const double l = std::clamp(hsl.lightness, 0.0, 1.0);
    const double s = std::clamp(hsl.saturation, 0.0, 1.0);
    if (s <= 0)
        return {l, l, l};
    const double q = l < 0.5 ? l * (1 + s) : l + s - l * s;
    const double p = 2 * l - q;
    return {hueToChannel(p, q, hsl.hue + 1.0 / 3), hueToChannel(p, q, hsl.hue),
            hueToChannel(p, q, hsl.hue - 1.0 / 3)};
}

Rgb Contrast::nearestLightness(Rgb color, const std::function<double(Rgb)> &score, double minimum)
{
    double bestScore = score(color);
    if (bestScore >= minimum)
        return color;
    const Hsl start = toHsl(color);
    Rgb best = color;
    // Lightness moves in steps of 1/1000, the nearest step each way first.
    for (int step = 1; step <= 1000; ++step) {
        for (const double lightness :
             {start.lightness + step / 1000.0, start.lightness - step / 1000.0}) {
            if (lightness < 0 || lightness > 1)
                continue;
            const Rgb candidate = fromHsl({start.hue, start.saturation, lightness});
            const double s = score(candidate);
            if (s >= minimum)
                return candidate;
            if (s > bestScore) {
                best = candidate;
                bestScore = s;
            }
        }
    }
    return best;
}

Rgb Contrast::legible(Rgb color, const QList<Rgb> &backgrounds, double minimum)
{
    return nearestLightness(
        color, [&](Rgb candidate) { return lowestRatio(candidate, backgrounds); }, minimum);
}

double Contrast::lowestOpacity(Rgb color, const QList<Rgb> &backgrounds, double minimum)
{
    for (int percent = 0; percent < 100; ++percent) {
        const double alpha = percent / 100.0;
        bool enough = true;
        for (const Rgb &background : backgrounds) {
            if (ratio(over(color, alpha, background), background) < minimum) {
                enough = false;
                break;
            }
        }
        if (enough)
            return alpha;
    }
    return 1;
}
