// SPDX-License-Identifier: MIT
#include "core/WesternZodiac.h"

#include <array>

namespace {

const std::array<const char16_t *, WesternZodiac::signCount> keys = {
    u"aquarius", u"pisces", u"aries", u"taurus",  u"gemini",      u"cancer",
    u"leo",      u"virgo",  u"libra", u"scorpio", u"sagittauris", u"capricorn"};

} // namespace

std::optional<int> WesternZodiac::signIndex(qint64 d, qint64 m)
{
    // The limits mix strict and non-strict comparisons; together they cover
    // every day of the year once.
    if ((d > 20 && m == 1) || (d < 20 && m == 2))
        return 0; // Aquarius
    if ((d >= 20 && m == 2) || (d <= 20 && m == 3))
        return 1; // Pisces
    if ((d >= 21 && m == 3) || (d <= 20 && m == 4))
        return 2; // Aries
    if ((d >= 21 && m == 4) || (d <= 20 && m == 5))
        return 3; // Taurus
    if ((d >= 21 && m == 5) || (d <= 21 && m == 6))
        return 4; // Gemini
    if ((d >= 22 && m == 6) || (d <= 22 && m == 7))
        return 5; // Cancer
    if ((d >= 23 && m == 7) || (d <= 23 && m == 8))
        return 6; // Leo
    if ((d >= 24 && m == 8) || (d <= 23 && m == 9))
        return 7; // Virgo
    if ((d >= 24 && m == 9) || (d <= 23 && m == 10))
        return 8; // Libra
    if ((d > 23 && m == 10) || (d < 23 && m == 11))
        return 9; // Scorpio
    if ((d > 22 && m == 11) || (d < 22 && m == 12))
        return 10; // Sagittarius
    if ((d < 21 && m == 1) || (d > 21 && m == 12))
        return 11; // Capricorn
    return std::nullopt;
}

QString WesternZodiac::signKey(int index)
{
    return QString::fromUtf16(keys.at(index));
}

QString WesternZodiac::starImage(int index)
{
    return signKey(index) + QStringLiteral("Stars");
}

UiText WesternZodiac::signText(int index)
{
    return static_cast<UiText>(static_cast<int>(UiText::Aquarius) + index);
}

std::optional<UiText> WesternZodiac::planetForElement(const QString &englishElement)
{
    // The classical correspondence of the five elements with the five planets.
    static const std::array<std::pair<UiText, UiText>, 5> planets = {{
        {UiText::Metal, UiText::Venus},
        {UiText::Water, UiText::Mercury},
        {UiText::Wood, UiText::Jupiter},
        {UiText::Fire, UiText::Mars},
        {UiText::Earth, UiText::Saturn},
    }};
    for (const auto &[element, planet] : planets) {
        if (UiStrings::english(element) == englishElement)
            return planet;
    }
    return std::nullopt;
}
