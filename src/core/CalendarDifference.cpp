// SPDX-License-Identifier: MIT
#include "core/CalendarDifference.h"

#include <ctime>

// Moments are handled as milliseconds since 1970 (UTC), and the local clock
// is asked only for its UTC offset at a moment. That keeps every step in our
// hands where the clocks change: Qt's own local-time arithmetic may pick
// either pass of a repeated hour.

namespace {

constexpr qint64 msPerDay = 24 * 60 * 60 * 1000;
constexpr qint64 unixEpochJulianDay = 2440588;

qint64 floorMod(qint64 a, qint64 b)
{
    const qint64 r = a % b;
    return r < 0 ? r + b : r;
}

// Local wall-clock time as milliseconds since 1970-01-01 00:00 local.
qint64 wallOf(QDate date, qint64 msOfDay)
{
    return (date.toJulianDay() - unixEpochJulianDay) * msPerDay + msOfDay;
}

// The local date and time of a moment are exact; Qt 6.4's offsetFromUtc() is
// not where a summer time gives way to another summer time (Berlin, 1945).
//
// An age takes some forty of these. Each one through QDateTime has the C
// library look at the zone file again, which costs more than the rest of
// the count; so the zone is read once per count (ZoneRules) and the C
// library is asked directly, as QDateTime asks it.
qint64 wallOf(qint64 instant)
{
#ifdef Q_OS_UNIX
    const qint64 msOfSecond = floorMod(instant, 1000);
    const time_t seconds = time_t((instant - msOfSecond) / 1000);
    struct tm parts = {};
    if (localtime_r(&seconds, &parts)) {
        const QDate date(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
        const qint64 secondOfDay = (parts.tm_hour * 60 + parts.tm_min) * 60 + parts.tm_sec;
        return wallOf(date, secondOfDay * 1000 + msOfSecond);
    }
#endif
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(instant, Qt::LocalTime);
    return wallOf(local.date(), local.time().msecsSinceStartOfDay());
}

// The zone as it stands now, read once for a whole count.
struct ZoneRules
{
    ZoneRules()
    {
#ifdef Q_OS_UNIX
        tzset();
#endif
    }
};

qint64 offsetAt(qint64 instant)
{
    return wallOf(instant) - instant;
}

QDate dateOfWall(qint64 wall)
{
    return QDate::fromJulianDay(unixEpochJulianDay + (wall - floorMod(wall, msPerDay)) / msPerDay);
}

// The moment a wall-clock time stands for. A time the clocks pass twice is
// taken at its second pass; a time they skip is read with the offset from
// before the change, so it lands as far past the change as it was past the
// last time that existed.
qint64 instantOfWall(qint64 wall)
{
    const qint64 before = offsetAt(wall - msPerDay);
    const qint64 after = offsetAt(wall + msPerDay);
    if (before == after)
        return wall - before;
    const qint64 later = std::max(wall - before, wall - after);
    const qint64 earlier = std::min(wall - before, wall - after);
    if (wallOf(later) == wall)
        return later;
    if (wallOf(earlier) == wall)
        return earlier;
    return wall - before;
}

// Days are added as whole 24-hour days, then moved by the change of offset on
// the way so that the clock reads as before. Where that time is skipped the
// plain 24-hour days stand when the clocks went forward.
class DayStepper
{
public:
    explicit DayStepper(qint64 start)
        : m_start(start), m_offset(offsetAt(start)), m_msOfDay(floorMod(start + m_offset, msPerDay))
    {}

    qint64 advance(qint64 days) const
    {
        const qint64 plain = m_start + days * msPerDay;
        const qint64 offset = offsetAt(plain);
        if (offset == m_offset || floorMod(plain + offset, msPerDay) == m_msOfDay)
            return plain;
        const qint64 shift = (m_offset - offset) % msPerDay;
        const qint64 shifted = plain + shift;
        if (shift < 0 && floorMod(wallOf(shifted), msPerDay) != m_msOfDay)
            return plain;
        return shifted;
    }

private:
    qint64 m_start;
    qint64 m_offset;
    qint64 m_msOfDay;
};

// Years and months move the calendar date, pinned to the end of a shorter
// month, and keep the wall-clock time of day.
class DateStepper
{
public:
    DateStepper(qint64 start, CalendarUnit unit) : m_start(start), m_unit(unit)
    {
        const qint64 wall = wallOf(start);
        m_date = dateOfWall(wall);
        m_msOfDay = floorMod(wall, msPerDay);
    }

    QDate date() const { return m_date; }

    qint64 advance(qint64 count) const
    {
        if (count == 0)
            return m_start;
        const QDate date = m_unit == CalendarUnit::Years ? m_date.addYears(int(count))
                                                         : m_date.addMonths(int(count));
        return instantOfWall(wallOf(date, m_msOfDay));
    }

private:
    qint64 m_start;
    CalendarUnit m_unit;
    QDate m_date;
    qint64 m_msOfDay = 0;
};

// The largest count whose step from the start does not pass the end (the
// smallest, going backwards), beginning from a guess that is at most a step
// or two off.
template <typename Stepper>
qint64 countSteps(const Stepper &stepper, qint64 end, qint64 guess, bool forward, qint64 *reached)
{
    qint64 n = forward ? std::max<qint64>(guess, 0) : std::min<qint64>(guess, 0);
    const qint64 step = forward ? 1 : -1;
    const auto passes = [&](qint64 t) { return forward ? t > end : t < end; };

    qint64 at = stepper.advance(n);
    while (n != 0 && passes(at)) {
        n -= step;
        at = stepper.advance(n);
    }
    for (;;) {
        const qint64 next = stepper.advance(n + step);
        if (passes(next))
            break;
        n += step;
        at = next;
    }
    *reached = at;
    return n;
}

qint64 countUnits(qint64 start, qint64 end, CalendarUnit unit, qint64 *reached)
{
    const bool forward = end >= start;
    const QDate endDate = dateOfWall(wallOf(end));
    if (unit == CalendarUnit::Days) {
        const DayStepper stepper(start);
        return countSteps(stepper, end, dateOfWall(wallOf(start)).daysTo(endDate), forward,
                          reached);
    }
    const DateStepper stepper(start, unit);
    const QDate startDate = stepper.date();
    const qint64 years = endDate.year() - startDate.year();
    const qint64 guess =
        unit == CalendarUnit::Years ? years : years * 12 + endDate.month() - startDate.month();
    return countSteps(stepper, end, guess, forward, reached);
}

} // namespace

qint64 CalendarDifference::count(const QDateTime &from, const QDateTime &to, CalendarUnit unit,
                                 QDateTime *reached)
{
    if (!from.isValid() || !to.isValid()) {
        if (reached)
            *reached = from;
        return 0;
    }
    const ZoneRules zone;
    qint64 at = 0;
    const qint64 n = countUnits(from.toMSecsSinceEpoch(), to.toMSecsSinceEpoch(), unit, &at);
    if (reached)
        *reached = QDateTime::fromMSecsSinceEpoch(at, Qt::LocalTime);
    return n;
}

YearsMonthsDays CalendarDifference::yearsMonthsDays(const QDateTime &from, const QDateTime &to)
{
    if (!from.isValid() || !to.isValid())
        return {};
    return yearsMonthsDays(from.toMSecsSinceEpoch(), to.toMSecsSinceEpoch());
}

qint64 CalendarDifference::count(qint64 from, qint64 to, CalendarUnit unit)
{
    const ZoneRules zone;
    qint64 reached = 0;
    return countUnits(from, to, unit, &reached);
}

// The running start stays a plain moment: a local QDateTime cannot hold
// every moment of a repeated hour.
YearsMonthsDays CalendarDifference::yearsMonthsDays(qint64 from, qint64 end)
{
    const ZoneRules zone;
    qint64 running = from;
    YearsMonthsDays result;
    result.years = countUnits(running, end, CalendarUnit::Years, &running);
    result.months = countUnits(running, end, CalendarUnit::Months, &running);
    result.days = countUnits(running, end, CalendarUnit::Days, &running);
    return result;
}
