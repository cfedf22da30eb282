// SPDX-License-Identifier: MIT
#pragma once

#include "texts/UiStrings.h"

#include <QString>
#include <optional>

// The twelve Western zodiac signs in the order they are tested, starting
// with Aquarius, and the planet that goes with each Chinese element.
namespace WesternZodiac {

inline constexpr int signCount = 12;

// The sign of a day and month, or nothing when none matches (month 0, say).
std::optional<int> signIndex(qint64 day, qint64 month);

// The sign's key, which names its picture: "aquarius" ... "capricorn". The
// key of Sagittarius is "sagittauris", as its pictures are named.
QString signKey(int index);
// The key followed by "Stars": the sign's constellation picture.
QString starImage(int index);
// The sign's entry in the interface texts ("Aquarius ♒︎" in English).
UiText signText(int index);

// The planet of a Chinese element given by its English text ("Metal - 金"
// is Venus), or nothing for any other text ("Unknow").
std::optional<UiText> planetForElement(const QString &englishElement);

} // namespace WesternZodiac
