// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QString>
#include <QStringView>
#include <optional>

// A day of birth as a favorite keeps it: always a day and a month, the year
// when it is known. Address books are full of birthdays whose year nobody
// wrote down; such a birthday still has a sign, a next birthday and a
// reminder, but no age.
//
// Stored as the record text "12 3 1985", or "12 3" without a year. The years
// 1604, 1 and 0 are what address books write for "no year" (1604 is Apple's
// leap-year placeholder): a stored or imported date in one of them is a day
// of birth without a year, and that year is never shown.
class DayOfBirth
{
public:
    static DayOfBirth of(QDate date);
    // Nothing for a day that no year has (31 April); 29 February is a day of
    // birth like any other.
    static std::optional<DayOfBirth> withoutYear(int day, int month);
    // A record text, with one or two digits for day and month ("12 3 1985",
    // "06 02 1977"), or a day and month without a year ("12 3"); nothing for
    // anything else.
    static std::optional<DayOfBirth> fromStored(QStringView text);
    // Whether a year written in an address book or a stored text stands for
    // "not known".
    static bool isPlaceholderYear(int year);

    // The record text: "12 3 1985", or "12 3".
    QString stored() const;

    bool hasYear() const { return m_year != 0; }
    // The date of birth; nothing without a year.
    std::optional<QDate> date() const;
    int day() const { return m_day; }
    int month() const { return m_month; }
    // The birthday in `year`; nothing for 29 February in a common year.
    std::optional<QDate> in(int year) const;
    // Day and month in a leap year, where every day of birth has its place:
    // for ordering by birthday and for counting the days to the next one.
    QDate inLeapYear() const { return QDate(leapYear, m_month, m_day); }
    static constexpr int leapYear = 2000;

    friend bool operator==(const DayOfBirth &, const DayOfBirth &) = default;

private:
    DayOfBirth(int day, int month, int year) : m_day(day), m_month(month), m_year(year) {}

    int m_day = 1;
    int m_month = 1;
    // 0 when not known.
    int m_year = 0;
};
