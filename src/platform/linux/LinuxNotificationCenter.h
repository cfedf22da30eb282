// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/DBusNotifier.h"
#include "platform/linux/InAppDelivery.h"
#include "platform/linux/ReminderWakeups.h"
#include "reminders/NotificationCenter.h"
#include "reminders/ReminderStore.h"

#include <QDBusConnection>
#include <QObject>
#include <functional>

class Clock;

// Tavlo's notification centre on Linux, made of one part per mechanism:
// the pending reminders file keeps a reminder, the wake-ups deliver it with
// the app closed, the in-app delivery while the app runs, and the D-Bus
// notifier shows it.
//
// While Tavlo is in front (its window is active) a reminder is shown the way
// the delegate asks, a banner by default; otherwise as an ordinary
// notification that stays, as with the app closed.
//
// Notifications count as allowed when a notification service answers on
// the session bus.
class LinuxNotificationCenter final : public QObject, public NotificationCenter
{
public:
    struct Options
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        // The picture shown with the notification; a file path.
        QString iconPath;
        // Wakes the delivery with the app closed; none: only the running app
        // shows reminders.
        ReminderWakeups *wakeups = nullptr;
        // Whether Tavlo is in front right now; none: never.
        std::function<bool()> inFront;
    };

    LinuxNotificationCenter(ReminderStore &store, const Clock &clock, Options options,
                            QObject *parent = nullptr);
    ~LinuxNotificationCenter() override;

    void getAuthorizationStatus(StatusHandler handler) override;
    void requestAuthorization(AuthorizationOptions options, AuthorizationHandler handler) override;
    // Keeps the request in the pending reminders file; the wake-ups are
    // brought in line once the current run of adds is over, and then each
    // add is answered.
    void add(const NotificationRequest &request, AddHandler handler) override;

    // The app has started: marks it as running, brings the wake-ups in line
    // with the pending reminders, and soon shows what is due.
    void start();
    // Shows every reminder due by now and waits for the next.
    void deliverDue() { m_delivery.deliverDue(); }
    // `done` runs once the wake-ups' commands have ended.
    void whenIdle(std::function<void()> done);
    // Called when the person taps one of Tavlo's notifications, with the id
    // of the favorite it was about.
    void setOnActivated(std::function<void(const QString &favoriteId)> activated)
    {
        m_notifier.onActivated = std::move(activated);
    }

private:
    void present(const NotificationRequest &request);
    void applyWakeups();

    ReminderStore &m_store;
    const Clock &m_clock;
    Options m_options;
    DBusNotifier m_notifier;
    InAppDelivery m_delivery;
    QList<AddHandler> m_answers;
    bool m_applyQueued = false;
};
