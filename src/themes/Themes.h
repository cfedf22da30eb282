// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <array>
#include <optional>

// Light or dark appearance, decided once when the main screen loads.
enum class Appearance { Light, Dark };

// A colour as red, green and blue from 0 to 1; values outside are clamped
// only when drawn.
struct Rgb
{
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const Rgb &) const = default;
};

// A colour drawn at an opacity over whatever lies below.
struct Translucent
{
    Rgb color;
    double alpha = 1;
};

// The few named colours of the system that the screens use.
struct SystemColors
{
    Rgb label;
    Rgb secondaryLabel;
    Rgb background;
    Rgb grey;
    Rgb darkGrey;
    Rgb red;
    // An alert's card, its text field and the hairline over its buttons.
    Rgb alertBackground;
    Rgb fieldBackground;
    Rgb separator;
    // A text field's hint while it is empty.
    Rgb placeholder;
    // The info panel's backdrop under its picture.
    Rgb panelBackground;
    // The track of a switch that is off.
    Translucent switchOff;
    // The veil over a blurred picture that keeps the text on it readable.
    Translucent veil;
    // The card of a notice shown over any screen.
    Translucent notice;
    // The knob of a switch, on or off.
    Rgb knob{1, 1, 1};

    static SystemColors of(Appearance appearance);
};

// The track of a switch, on and off, as drawn over a screen.
struct SwitchColors
{
    Rgb on;
    Translucent off;
    // The knob on an "on" track: the system's, or a dark one on a track
    // made light enough to stand out where the system's white knob could
    // not also stand out on it (a mid-dark screen).
    Rgb onKnob{1, 1, 1};

    // The accent as the "on" track and the system's translucent grey as the
    // "off" one, each moved in lightness only where a switch would not be
    // seen on `backdrop` (the colours behind the screen's content): the
    // knob must stand out from its track, and the switch from the screen by
    // its track (an "off" switch may stand out by its knob).
    static SwitchColors of(Appearance appearance, Rgb accent, const QList<Rgb> &backdrop);
};

// How a screen looks in one theme.
struct ThemeLook
{
    Rgb accent;
    // Themes 0 to 4: a picture ("space0" ... "space4") under a blur.
    QString backgroundImage;
    bool blur = false;
    // Themes 5 to 8: a top-to-bottom gradient, 0.07 lighter to 0.12 darker.
    std::optional<std::pair<Rgb, Rgb>> gradient;
    // The plain colour behind everything: the theme's colour for 5 to 8, the
    // system background for 9.
    std::optional<Rgb> backgroundColor;
    // The title bar's backdrop is a thinner material in theme 9.
    bool thinTitleBar = false;
};

// The ten colour themes, indexed by the setting "color". The table starts as
// the one for dark appearance; the main screen swaps in the light one at load
// when the appearance is light, for the rest of the run.
class ThemeTable
{
public:
    static constexpr int count = 10;

    explicit ThemeTable(Appearance appearance = Appearance::Dark) : m_appearance(appearance) {}

    void useLightColors() { m_light = true; }
    bool lightColors() const { return m_light; }

    // Entry `index` of the table; entry 9 is the system background. The plain
    // colours 5 to 8 are the backgrounds of their screens: where the label
    // colour would not read on their gradient as drawn (Contrast::drawnText),
    // their lightness moves just enough that it does (hue and saturation
    // stay).
    Rgb color(int index) const;
    // Entry `index` as the table holds it, before any such change.
    Rgb tableColor(int index) const;

    // The look of theme `index`, as stored(): outside 0 to 9 the first.
    ThemeLook look(qint64 index) const;
    // The theme a stored number stands for: one beyond the table (a hand
    // edit, a later version) is the first, not a reason to stop.
    static int stored(qint64 number);

    // The colour with each of red, green and blue raised by percent / 100,
    // clamped at 1.
    static Rgb lightened(Rgb color, double percent);

    // The top and bottom of a plain colour's gradient.
    static std::pair<Rgb, Rgb> gradientOf(Rgb color);

private:
    Appearance m_appearance;
    bool m_light = false;
};
