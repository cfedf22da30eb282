// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/ReminderStore.h"

#include <QString>

class Clock;
class DBusNotifier;
class ReminderWakeups;

// How a reminder is delivered with the app closed, the same whether a
// systemd timer or the background Tavlo started from autostart wakes it.
namespace DeliveryCommand {

// A reminder shown while Tavlo is not in front: an ordinary notification
// that stays in the list and on the lock screen, with the desktop's sound.
inline const PresentationOptions backgroundPresentation{
    PresentationOption::Banner, PresentationOption::List, PresentationOption::Sound};

// `tavlo deliver-reminder <identifier>`: shows that reminder if it is due
// and still pending, unless a running app will. Returns the exit status.
int deliver(const QString &identifier, ReminderStore &store, const Clock &clock,
            DBusNotifier &notifier);

// `tavlo deliver-reminders`: sleeps until the next due reminder, delivers it
// as above, and returns once none is pending and what it showed has been
// answered (or the day has ended); then `wakeups` learns that nothing is
// left. One runs at a time. Returns the exit status.
int deliverInBackground(ReminderStore &store, const Clock &clock, DBusNotifier &notifier,
                        ReminderWakeups &wakeups);

// The lock the background Tavlo holds while it runs.
QString backgroundLockPath(const ReminderStore &store);

} // namespace DeliveryCommand
