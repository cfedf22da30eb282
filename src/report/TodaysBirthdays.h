// SPDX-License-Identifier: MIT
#pragma once

#include "core/BirthDateResults.h"
#include "core/DayOfBirth.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <optional>

class UiStrings;

// The favorites as the greeting reads them, by position: each one's name
// and day of birth (nothing when its birthday cannot be read). Names are
// asked for only of those the greeting names.
struct BirthdayList
{
    qsizetype count = 0;
    std::function<QString(qsizetype)> name;
    std::function<std::optional<DayOfBirth>(qsizetype)> dayOfBirth;
};

// What the main screen says when it opens on the favorites, and where it
// then stands: each favorite is looked at in turn, and the screen is left on
// the last one with a year of birth, as reporting on each in turn would
// leave it.
struct TodaysBirthdays
{
    // A line (and an empty one) for each favorite whose birthday or round
    // age is today, in list order; empty when there is none.
    QString greeting;
    // The last favorite's birth with a year: midnight in UTC of its date,
    // in local time. Nothing when no favorite has a year of birth.
    std::optional<QDateTime> lastBirth;
    // Favorites whose birthday cannot be read: left out, to be fixed in the
    // list.
    qsizetype unreadable = 0;

    // Looks at every favorite at `now`. `results` end as computing each
    // birth with a year in turn would leave them, with the lookups carried
    // over; only favorites near a birthday or a round age need their ages
    // worked out, so a long list costs little.
    static TodaysBirthdays of(const BirthdayList &favorites, const QDateTime &now,
                              const UiStrings &strings, BirthDateResults &results);
};
