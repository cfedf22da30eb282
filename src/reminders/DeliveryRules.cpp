// SPDX-License-Identifier: MIT
#include "reminders/DeliveryRules.h"

#include <algorithm>

bool DeliveryRules::shownToday(const PendingReminder &reminder, const QDateTime &now)
{
    return reminder.fire.toLocalTime().date() == now.toLocalTime().date();
}

QList<PendingReminder> DeliveryRules::waiting(const ReminderStore &store, const QDateTime &now)
{
    QList<PendingReminder> waiting = store.pending();
    waiting.removeIf([&](const PendingReminder &reminder) {
        return reminder.fire.toLocalTime().date() < now.toLocalTime().date();
    });
    return waiting;
}

qint64 DeliveryRules::restOfDayMs(const QDateTime &now)
{
    const QDateTime local = now.toLocalTime();
    return std::max<qint64>(0, local.msecsTo(QDateTime(local.date().addDays(1), QTime(0, 0))));
}
