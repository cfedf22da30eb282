// SPDX-License-Identifier: MIT
#include "themes/Themes.h"

#include "core/DebugLog.h"
#include "themes/Contrast.h"

#include <algorithm>
#include <functional>

namespace {

using Table = std::array<Rgb, 9>;

const Table darkTable = {{
    {0.5875715, 0, 1},
    {0, 0.7842817, 0},
    {0.9586653, 0.30533227, 0},
    {0, 0.5496425, 1},
    {0.5491386, 0.0055863583, 0},
    {0.22145256, 0.27209446, 0.0019903344},
    {0.37183267, 0, 0.41554463},
    {0.009912484, 0.1478197, 0.21379039},
    {0.80784315, 0.02745098, 0.33333334},
}};

// Lighter or more saturated where the dark colour would sit too heavy on a
// light screen; 0, 1 and 3 stay as they are.
const Table lightTable = {{
    {0.5875715, 0, 1},
    {0, 0.7842817, 0},
    {0.99685484, 0.50263304, 0},
    {0, 0.5496425, 1},
    {0.9665492, 0.0017098036, 0.39665306},
    {0.46517736, 0.5723657, 0},
    {0.59157747, 0.51231426, 0.95020324},
    {0, 0.7254303, 0.67676395},
    {1, 0.8740956, 0},
}};

Rgb shifted(Rgb c, double by)
{
    return {c.red + by, c.green + by, c.blue + by};
}

} // namespace

SystemColors SystemColors::of(Appearance appearance)
{
    if (appearance == Appearance::Dark) {
        return {{1, 1, 1},          {0.92, 0.92, 0.96},       {0, 0, 0},
                {0.56, 0.56, 0.58}, {0.33, 0.33, 0.35},       {1, 0.27, 0.23},
                {0.17, 0.17, 0.18}, {0.11, 0.11, 0.12},       {0.28, 0.28, 0.29},
                {0.56, 0.56, 0.58}, {0.11, 0.11, 0.12},       {{0.47, 0.47, 0.5}, 0.32},
                {{0, 0, 0}, 0.3},   {{0.19, 0.19, 0.19}, 0.9}};
    }
    return {
        {0, 0, 0},          {0.24, 0.24, 0.26},       {1, 1, 1},          {0.56, 0.56, 0.58},
        {0.33, 0.33, 0.35}, {1, 0.23, 0.19},          {0.95, 0.95, 0.97}, {1, 1, 1},
        {0.78, 0.78, 0.8},  {0.42, 0.42, 0.44},       {0.95, 0.95, 0.97}, {{0.47, 0.47, 0.5}, 0.32},
        {{1, 1, 1}, 0.6},   {{0.19, 0.19, 0.19}, 0.9}};
}

SwitchColors SwitchColors::of(Appearance appearance, Rgb accent, const QList<Rgb> &backdrop)
{
    constexpr Rgb darkKnob{0.11, 0.11, 0.12};
    const SystemColors system = SystemColors::of(appearance);
    const double minimum = Contrast::symbol + Contrast::margin;
    SwitchColors colors{accent, system.switchOff};
    if (backdrop.isEmpty())
        return colors;
    // A switch may sit anywhere between the backdrop's ends: a gradient or a
    // blurred picture passes through every colour between them.
    QList<Rgb> screens;
    for (int step = 0; step <= 10; ++step)
        screens.append(Contrast::over(backdrop.first(), 1 - step / 10.0, backdrop.last()));
    // The search below weighs up to two thousand tracks against every
    // screen: the luminances that stay the same are worked out once.
    QList<double> screenLuminances;
    for (const Rgb &screen : std::as_const(screens))
        screenLuminances.append(Contrast::luminance(screen));
    const double knob = Contrast::luminance(system.knob);
    // How well a switch is seen on a screen, from the luminances of its track
    // and the screen: its knob on the track, and the track or the knob on the
    // screen; `byTrack` asks the track alone to stand out.
    const auto seenOn = [&](double track, double screen, bool byTrack) {
        const double seen = byTrack ? Contrast::ratioOfLuminances(track, screen)
                                    : std::max(Contrast::ratioOfLuminances(track, screen),
                                               Contrast::ratioOfLuminances(knob, screen));
        return std::min(Contrast::ratioOfLuminances(knob, track), seen);
    };
    // The lowest of that over the screens, for a track of `over(screen)`.
    const auto score = [&](const std::function<Rgb(Rgb)> &over, bool byTrack) {
        double lowest = 21;
        for (qsizetype i = 0; i < screens.size(); ++i) {
            lowest = std::min(lowest, seenOn(Contrast::luminance(over(screens.at(i))),
                                             screenLuminances.at(i), byTrack));
        }
        return lowest;
    };
    const auto opaque = [&](Rgb from, bool byTrack) {
        return Contrast::nearestLightness(
            from,
            [&](Rgb track) {
                const double luminance = Contrast::luminance(track);
                double lowest = 21;
                for (const double screen : std::as_const(screenLuminances))
                    lowest = std::min(lowest, seenOn(luminance, screen, byTrack));
                return lowest;
            },
            minimum);
    };
    colors.onKnob = system.knob;
    // "On" stands out by its track, with the knob on it.
    colors.on = opaque(accent, true);
    if (score([&](Rgb) { return colors.on; }, true) < minimum) {
        // No lightness lets the white knob stand out on a track that stands
        // out (a mid-dark screen): the track takes the lightness nearest to
        // the accent that stands out, and carries a dark knob.
        colors.on = Contrast::nearestLightness(
            accent,
            [&](Rgb track) {
                const double luminance = Contrast::luminance(track);
                double lowest = 21;
                for (const double screen : std::as_const(screenLuminances))
                    lowest = std::min(lowest, Contrast::ratioOfLuminances(luminance, screen));
                return lowest;
            },
            minimum);
        colors.onKnob = darkKnob;
    }
    const Translucent grey = system.switchOff;
    if (score([&](Rgb screen) { return Contrast::over(grey.color, grey.alpha, screen); }, false) >=
        minimum)
        return colors;
    // Where the faint grey vanishes, an opaque one nearest to how it looked.
    colors.off = {opaque(Contrast::over(grey.color, grey.alpha, backdrop.first()), false), 1};
    return colors;
}

Rgb ThemeTable::tableColor(int index) const
{
    if (index == 9)
        return SystemColors::of(m_appearance).background;
    return (m_light ? lightTable : darkTable).at(size_t(index));
}

Rgb ThemeTable::color(int index) const
{
    const Rgb color = tableColor(index);
    if (index < 5 || index > 8)
        return color;
    const Rgb label = SystemColors::of(m_appearance).label;
    return Contrast::nearestLightness(
        color,
        [&](Rgb candidate) {
            const auto [top, bottom] = gradientOf(candidate);
            return Contrast::lowestRatio(label, {top, bottom});
        },
        Contrast::drawnText);
}

std::pair<Rgb, Rgb> ThemeTable::gradientOf(Rgb color)
{
    return {shifted(color, 0.07), shifted(color, -0.12)};
}

int ThemeTable::stored(qint64 number)
{
    if (number >= 0 && number < count)
        return int(number);
    DebugLog::line(
        QStringLiteral("the setting \"color\" is %1, but themes run from 0 to 9").arg(number));
    return 0;
}

ThemeLook ThemeTable::look(qint64 index) const
{
    const int c = stored(index);
    ThemeLook look;
    look.accent = color(c);
    if (c <= 4) {
        look.backgroundImage = QStringLiteral("space") + QString::number(c);
        look.blur = true;
        return look;
    }
    if (c == 9) {
        look.accent = SystemColors::of(m_appearance).darkGrey;
        look.backgroundColor = color(9);
        look.thinTitleBar = true;
        return look;
    }
    look.gradient = gradientOf(color(c));
    look.backgroundColor = color(c);
    return look;
}

Rgb ThemeTable::lightened(Rgb c, double percent)
{
    const double by = percent / 100;
    return {std::min(c.red + by, 1.0), std::min(c.green + by, 1.0), std::min(c.blue + by, 1.0)};
}
