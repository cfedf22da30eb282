// SPDX-License-Identifier: MIT
#pragma once

#include "texts/UiStrings.h"

#include <QDateTime>
#include <optional>

// The Chinese zodiac from a fixed table of New Year dates, 1900 to 2043.
namespace ChineseZodiac {

inline constexpr int firstYear = 1900;
inline constexpr int lastYear = 2043;

// The Chinese year whose interval holds the birth instant (time of day
// included), or nothing for a birth outside the table or in one of its gaps.
// Each interval runs from local midnight of its New Year's day up to, but not
// including, local midnight of its end; the 1900 interval also takes its end.
std::optional<int> yearOf(const QDateTime &birth);

// Animal (1900 is the Rat), element (1900 and 1901 are Metal) and polarity
// ("Yang" for even years) of a Chinese year.
UiText animal(int year);
UiText element(int year);
QString polarity(int year);

} // namespace ChineseZodiac
