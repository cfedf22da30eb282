// SPDX-License-Identifier: MIT
#include "report/TodaysBirthdays.h"

#include "core/AgeCalculator.h"
#include "report/BirthdayGreeting.h"

#include <QList>

TodaysBirthdays TodaysBirthdays::of(const BirthdayList &favorites, const QDateTime &now,
                                    const UiStrings &strings, BirthDateResults &results)
{
    TodaysBirthdays found;
    // The birth dates are read as midnight in UTC; the ages are counted
    // between those moments and now in UTC, which needs no asking of the
    // zone.
    const QDate today = now.toLocalTime().date();
    const QDateTime nowInUtc = now.toUTC();
    const auto birthOf = [](QDate date) {
        return QDateTime(date, QTime(0, 0), Qt::UTC).toLocalTime();
    };
    QList<QDate> dates;
    dates.reserve(favorites.count);
    for (qsizetype i = 0; i < favorites.count; ++i) {
        const std::optional<DayOfBirth> day = favorites.dayOfBirth(i);
        if (!day) {
            ++found.unreadable;
            continue;
        }
        // Without a year only the birthday itself has something to say.
        const std::optional<QDate> date = day->date();
        if (!date) {
            found.greeting +=
                birthdayWithoutYearGreetingLine(favorites.name(i), *day, today, strings);
            continue;
        }
        dates.append(*date);
        if (birthdayGreetingMayApply(*date, today)) {
            const QDateTime birth(*date, QTime(0, 0), Qt::UTC);
            found.greeting +=
                birthdayGreetingLine(favorites.name(i), computeAge(birth, nowInUtc), strings);
        }
    }
    if (dates.isEmpty())
        return found;
    // The results carry a lookup that finds nothing over from the one
    // before: they are worked out from the last favorite that leaves nothing
    // to carry, on to the last one.
    qsizetype first = dates.size() - 1;
    while (first > 0 && !BirthDateResults::findsEverything(birthOf(dates.at(first))))
        --first;
    for (qsizetype i = first; i < dates.size(); ++i)
        results.compute(birthOf(dates.at(i)), now);
    found.lastBirth = birthOf(dates.constLast());
    return found;
}
