#include "CalendarDifference.h"

namespace {

QDateTime advance(const QDateTime &start, CalendarUnit unit, qint64 count)
{
    switch (unit) {
    case CalendarUnit::Years:
        return start.addYears(int(count));
    case CalendarUnit::Months:
        return start.addMonths(int(count));
    case CalendarUnit::Days:
        break;
    }
    return start.addDays(count);
}

// A first guess from the calendar dates alone; the time of day and month
// ends move the true count by at most one.
qint64 estimate(QDate from, QDate to, CalendarUnit unit)
{
    switch (unit) {
    case CalendarUnit::Years:
        return to.year() - from.year();
    case CalendarUnit::Months:
        return qint64(to.year() - from.year()) * 12 + to.month() - from.month();
    case CalendarUnit::Days:
        break;
    }
    return from.daysTo(to);
}

} // namespace

qint64 CalendarDifference::count(const QDateTime &from, const QDateTime &to, CalendarUnit unit,
                                 QDateTime *reached)
{
    const QDateTime start = from.toLocalTime();
    const QDateTime end = to.toLocalTime();
    if (!start.isValid() || !end.isValid()) {
        if (reached)
            *reached = start;
        return 0;
    }
    const bool forward = end >= start;
    qint64 n = estimate(start.date(), end.date(), unit);
    n = forward ? std::max<qint64>(n, 0) : std::min<qint64>(n, 0);
    const qint64 step = forward ? 1 : -1;
    const auto passes = [&](const QDateTime &t) { return forward ? t > end : t < end; };

    QDateTime at = advance(start, unit, n);
    while (n != 0 && passes(at)) {
        n -= step;
        at = advance(start, unit, n);
    }
    for (;;) {
        QDateTime next = advance(start, unit, n + step);
        if (passes(next))
            break;
        n += step;
        at = std::move(next);
    }
    if (reached)
        *reached = std::move(at);
    return n;
}

YearsMonthsDays CalendarDifference::yearsMonthsDays(const QDateTime &from, const QDateTime &to)
{
    YearsMonthsDays result;
    QDateTime running;
    result.years = count(from, to, CalendarUnit::Years, &running);
    result.months = count(running, to, CalendarUnit::Months, &running);
    result.days = count(running, to, CalendarUnit::Days);
    return result;
}
