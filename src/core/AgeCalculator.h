// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

// Everything the age report says in numbers about one birth instant at one moment.
struct AgeFacts
{
    // Years, months beyond them, days beyond those.
    qint64 ageYears = 0;
    qint64 ageMonths = 0;
    qint64 ageDays = 0;
    // The age in one unit each.
    qint64 totalMonths = 0;
    qint64 totalDays = 0;
    double totalWeeksValue = 0;
    qint64 totalWeeks = 0;
    // Whole days from today to the next birthday; never 0.
    qint64 daysToBirthday = 0;
    // Day and month of the birth date, for the zodiac.
    qint64 birthDay = 0;
    qint64 birthMonth = 0;
    // The single-unit ages spelled out ("12,345 days"); the totals are read back from them.
    QString totalDaysText;
    QString totalMonthsText;
    QString totalYearsText;
};

// The age of someone born at `birth` (time of day included) at `now`, in
// local time.
AgeFacts computeAge(const QDateTime &birth, const QDateTime &now);

// Days from `today` to the next birthday of someone born on `birthDate`. On
// the birthday itself the next one is a year away. Born on 29 February, the
// birthday of a common year falls on 1 March.
qint64 daysToNextBirthday(QDate birthDate, QDate today);
