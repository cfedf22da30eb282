// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/ReminderStore.h"

#include <QDateTime>
#include <QList>

// When a pending reminder is still shown, the same for the running app and
// for a delivery with the app closed: only on its own day, in local time.
namespace DeliveryRules {

// Whether a reminder is still worth showing at `now`: only on its own day.
bool shownToday(const PendingReminder &reminder, const QDateTime &now);

// The reminders that still need a wake-up at `now`: those of today and later.
QList<PendingReminder> waiting(const ReminderStore &store, const QDateTime &now);

// How long one may wait at `now` for a shown notification's answer: until
// the day ends.
qint64 restOfDayMs(const QDateTime &now);

} // namespace DeliveryRules
