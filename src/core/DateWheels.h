// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QList>
#include <QLocale>
#include <QStringList>
#include <optional>

// The birth date wheels: which wheel comes where, and what they offer.
namespace DateWheels {

enum class Field { Day, Month, Year };

inline constexpr int firstYear = 1800;
inline constexpr int lastYear = 2200;

// Day, month and year in the order the locale writes a date (month first in
// American English, day first in German and Russian).
QList<Field> order(const QLocale &locale);

// The same order by name: "day", "month", "year", as the screens place their wheels.
QStringList orderNames(const QLocale &locale);

// The twelve month names as they read inside a date ("марта" in Russian).
QStringList monthNames(const QLocale &locale);

// The labels of the year wheel, firstYear to lastYear.
QStringList yearLabels();

// The days of `month` that the day wheel offers; a `year` of 0 is the year
// wheel's "no year", which offers 29 February.
int daysInMonth(int month, int year);

// The date the wheels stand on, the day pinned to the month's last when the
// month is shorter (31 turned with April gives 30 April). Without a year (0)
// it is the day and month in DayOfBirth::leapYear. Nothing for a month or
// year that no calendar has.
std::optional<QDate> date(int day, int month, int year);

} // namespace DateWheels
