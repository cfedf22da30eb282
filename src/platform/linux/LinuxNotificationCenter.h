#pragma once

#include "CommandRunner.h"
#include "DBusNotifier.h"
#include "InAppDelivery.h"
#include "ReminderTimers.h"
#include "main/NotificationCenter.h"
#include "main/ReminderStore.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>

class Clock;

// Tavlo's notification centre on Linux, made of one part per mechanism:
// the D-Bus notifier shows a reminder, the pending reminders file keeps it,
// the timers wake a delivery with the app closed, and while the app runs it
// delivers what comes due itself.
//
// Notifications count as allowed when a notification service answers on
// the session bus.
class LinuxNotificationCenter final : public QObject, public NotificationCenter
{
public:
    struct Options
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        // Runs systemctl and systemd-run; none where there is no systemd
        // user session, and the running app alone shows the reminders.
        CommandRunner *timers = nullptr;
        // The tavlo the timers run.
        QString program;
        // NAME=VALUE pairs the timers' tavlo needs to find the same store.
        QStringList timerEnvironment;
        // The picture shown with the notification; a file path.
        QString iconPath;
    };

    LinuxNotificationCenter(ReminderStore &store, const Clock &clock, Options options,
                            QObject *parent = nullptr);
    ~LinuxNotificationCenter() override;

    void getAuthorizationStatus(StatusHandler handler) override;
    void requestAuthorization(AuthorizationOptions options, AuthorizationHandler handler) override;
    void add(const NotificationRequest &request, AddHandler handler) override;

    // The app has started: marks it as running, sets up again the timers
    // that a restart of the session lost, and soon shows what is due.
    void start();
    // Shows every reminder due by now and waits for the next.
    void deliverDue() { m_delivery.deliverDue(); }

    // Whether this login has a systemd user manager to run timers.
    static bool hasSystemdUserSession();

private:
    void present(const NotificationRequest &request);

    ReminderStore &m_store;
    const Clock &m_clock;
    DBusNotifier m_notifier;
    std::unique_ptr<ReminderTimers> m_timers;
    InAppDelivery m_delivery;
};
