// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

// Differences between two moments in calendar units, in local time, the way
// a platform calendar counts them: for each unit in turn, the largest count
// that, added to the running start, does not pass the end. Adding months or
// years keeps the time of day and pins the day to the end of a shorter month
// (31 January + 1 month = 28 or 29 February), so the time of day takes part:
// born at 15:00, one is a day older only from 15:00 on.
//
// Where the clocks change, a year or month step that lands on a repeated
// time takes its second pass, and one that lands on a skipped time moves
// past the change by as much. A day step adds whole days and keeps the clock
// reading when the offset changed on the way.
enum class CalendarUnit { Years, Months, Days };

struct YearsMonthsDays
{
    qint64 years = 0;
    qint64 months = 0;
    qint64 days = 0;
};

namespace CalendarDifference {

// Whole units from `from` to `to`; negative when `to` is earlier. When
// `reached` is given it receives `from` advanced by the result. An invalid
// moment counts as no difference.
qint64 count(const QDateTime &from, const QDateTime &to, CalendarUnit unit,
             QDateTime *reached = nullptr);

// Years, then months, then days, each counted from where the one before stopped.
YearsMonthsDays yearsMonthsDays(const QDateTime &from, const QDateTime &to);

// The same for moments given as milliseconds since 1970 (UTC): a caller that
// asks several counts of the same two moments converts them only once.
qint64 count(qint64 from, qint64 to, CalendarUnit unit);
YearsMonthsDays yearsMonthsDays(qint64 from, qint64 to);

} // namespace CalendarDifference
