// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/NotificationCenter.h"
#include "reminders/ReminderStore.h"

#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

class Clock;
class DBusNotifier;

// While the app runs, it shows what comes due itself, in the manner the
// notification centre's delegate asks for, and holds the running lock so
// that a timer's delivery steps aside. A start later on the same day shows
// what was missed; reminders of earlier days are dropped unseen.
class InAppDelivery final : public QObject
{
public:
    using Presenter = std::function<void(const NotificationRequest &)>;

    InAppDelivery(ReminderStore &store, const Clock &clock, Presenter present,
                  QObject *parent = nullptr);

    // The app has started: marks it as running and soon shows what is due.
    void start();
    // Shows every reminder due by now and waits for the next.
    void deliverDue();
    // Waits for the earliest pending reminder.
    void scheduleTick();

private:
    ReminderStore &m_store;
    const Clock &m_clock;
    Presenter m_present;
    QTimer m_tick;
    std::unique_ptr<QLockFile> m_running;
};
