#pragma once

#include "main/NotificationCenter.h"
#include "main/ReminderStore.h"

#include <QList>

// What wakes Tavlo to deliver a pending reminder at its moment while the app
// is closed. One implementation per mechanism of the platform.
class ReminderTimers
{
public:
    virtual ~ReminderTimers() = default;
    // Sets up the wake-up for a reminder, replacing one of the same
    // identifier; `done` learns whether it could.
    virtual void arm(const QString &identifier, const QDateTime &fire,
                     NotificationCenter::AddHandler done) = 0;
    // The app has started: sets up again what a restart of the session lost.
    virtual void rearmLost(const QList<PendingReminder> &waiting) = 0;
};
