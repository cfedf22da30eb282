// SPDX-License-Identifier: MIT
#include "reminders/NotificationCenter.h"

CalendarTrigger CalendarTrigger::at(const QDateTime &moment)
{
    CalendarTrigger trigger;
    const QDateTime local = moment.toTimeZone(trigger.timeZone);
    trigger.month = local.date().month();
    trigger.day = local.date().day();
    trigger.hour = local.time().hour();
    trigger.minute = local.time().minute();
    return trigger;
}

std::optional<QDateTime> CalendarTrigger::nextFireAfter(const QDateTime &after) const
{
    const QTime time(hour, minute);
    if (!time.isValid())
        return std::nullopt;
    // Eight years reach the next 29 February from any day.
    const int firstYear = after.toTimeZone(timeZone).date().year();
    for (int year = firstYear; year <= firstYear + 8; ++year) {
        const QDate date(year, month, day);
        if (!date.isValid())
            continue;
        const QDateTime moment = momentIn(timeZone, date, time);
        if (moment > after)
            return moment;
    }
    return std::nullopt;
}

QDateTime CalendarTrigger::momentIn(const QTimeZone &zone, QDate date, QTime time)
{
    const QDateTime moment(date, time, zone);
    if (!moment.isValid()) {
        // Skipped by a clock change: the first minute of the day that exists
        // after it is the one the clocks jumped to.
        for (int minute = time.msecsSinceStartOfDay() / 60'000 + 1; minute < 24 * 60; ++minute) {
            const QDateTime later(date, QTime(minute / 60, minute % 60), zone);
            if (later.isValid())
                return later;
        }
        return QDateTime(date.addDays(1), QTime(0, 0), zone);
    }
    // Shown twice when the clocks go back: an earlier moment with the same
    // face is the first showing. Clocks go back by at most three hours.
    for (const int minutes : {180, 120, 90, 60, 30}) {
        const QDateTime earlier = moment.addSecs(-minutes * 60);
        if (earlier.date() == date && earlier.time() == time)
            return earlier;
    }
    return moment;
}
