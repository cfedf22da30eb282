// SPDX-License-Identifier: MIT
#pragma once

#include "core/AgeCalculator.h"
#include "core/DayOfBirth.h"

#include <QString>

class UiStrings;

// What the main screen says about a favorite today: a birthday, or else the
// first round age reached today in days, months or weeks ("Anna is now 1000
// days old!"), each followed by an empty line. Empty when there is nothing
// to say.
QString birthdayGreetingLine(const QString &name, const AgeFacts &age, const UiStrings &strings);

// Whether the greeting may have something to say today of someone whose
// record date is `birthDate` (`today` in local time): a birthday or a round
// age within a few days. Where it says no, the line is empty, so a long list
// needs the full facts of only a few.
bool birthdayGreetingMayApply(QDate birthDate, QDate today);

// The greeting for someone whose year of birth is not known: only a birthday
// today (1 March in a common year for 29 February, as the age counts it).
QString birthdayWithoutYearGreetingLine(const QString &name, const DayOfBirth &day, QDate today,
                                        const UiStrings &strings);
