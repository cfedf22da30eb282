// SPDX-License-Identifier: MIT
#include "core/AgeCalculator.h"

#include "core/CalendarDifference.h"
#include "core/FatalError.h"
#include "core/NumberText.h"

#include <QLocale>
#include <cmath>

namespace {

QString spelledOut(qint64 count, CalendarUnit unit)
{
    const bool one = count == 1;
    QString word;
    switch (unit) {
    case CalendarUnit::Years:
        word = one ? QStringLiteral("year") : QStringLiteral("years");
        break;
    case CalendarUnit::Months:
        word = one ? QStringLiteral("month") : QStringLiteral("months");
        break;
    case CalendarUnit::Days:
        word = one ? QStringLiteral("day") : QStringLiteral("days");
        break;
    }
    return QLocale().toString(count) + u' ' + word;
}

// A date from its components, carrying an overflowing day into the next
// month as a calendar does (29 February 2027 is 1 March 2027).
QDate lenientDate(int year, int month, int day)
{
    return QDate(year, month, 1).addDays(day - 1);
}

} // namespace

qint64 daysToNextBirthday(QDate birthDate, QDate today)
{
    const bool passed = birthDate.month() < today.month() ||
                        (birthDate.month() == today.month() && today.day() >= birthDate.day());
    const int year = today.year() + (passed ? 1 : 0);
    return today.daysTo(lenientDate(year, birthDate.month(), birthDate.day()));
}

AgeFacts computeAge(const QDateTime &birth, const QDateTime &now)
{
    AgeFacts facts;
    const QDateTime birthLocal = birth.toLocalTime();
    const QDateTime nowLocal = now.toLocalTime();
    // Converted once: every conversion of a local time asks the zone again.
    // An invalid moment counts as no difference.
    const bool valid = birth.isValid() && now.isValid();
    const qint64 from = valid ? birth.toMSecsSinceEpoch() : 0;
    const qint64 to = valid ? now.toMSecsSinceEpoch() : 0;

    const YearsMonthsDays age = CalendarDifference::yearsMonthsDays(from, to);
    facts.ageYears = age.years;
    facts.ageMonths = age.months;
    facts.ageDays = age.days;
    facts.birthDay = birthLocal.date().day();
    facts.birthMonth = birthLocal.date().month();

    facts.totalDaysText =
        spelledOut(CalendarDifference::count(from, to, CalendarUnit::Days), CalendarUnit::Days);
    facts.totalMonthsText =
        spelledOut(CalendarDifference::count(from, to, CalendarUnit::Months), CalendarUnit::Months);
    facts.totalYearsText = spelledOut(age.years, CalendarUnit::Years);
    facts.totalDays = readDigitsOnly(facts.totalDaysText);
    facts.totalMonths = readDigitsOnly(facts.totalMonthsText);

    facts.totalWeeksValue = double(facts.totalDays / 7);
    if (!(std::abs(facts.totalWeeksValue) < 0x1p63))
        fatalError(QStringLiteral("the age in weeks does not fit in 64 bits"));
    facts.totalWeeks = qint64(facts.totalWeeksValue);

    facts.daysToBirthday = daysToNextBirthday(birthLocal.date(), nowLocal.date());
    return facts;
}
