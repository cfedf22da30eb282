#pragma once

#include "NotificationCenter.h"
#include "ReminderStore.h"

#include <QDBusConnection>
#include <QList>
#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <memory>

#include "CommandRunner.h"

class Clock;

// Tavlo's notification centre on Linux.
//
// A reminder is shown as a freedesktop notification over the session bus
// (org.freedesktop.Notifications) with Tavlo's name and icon. Pending
// reminders live in the ReminderStore file. Where the user has a systemd
// session, each one also gets a transient user timer, tavlo-<identifier>,
// that runs `tavlo deliver-reminder <identifier>` at its moment, so that it
// is shown with the app closed. While the app runs it shows what comes due
// itself, in the foreground manner its delegate asks for, and a timer that
// fires meanwhile leaves the reminder to it. A start later on the same day
// shows what was missed; reminders of earlier days are dropped unseen.
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
    void deliverDue();

    // Whether this login has a systemd user manager to run timers.
    static bool hasSystemdUserSession();
    // Puts Tavlo's icon in `folder` (once) and returns its path, or an empty
    // text when it cannot be written.
    static QString installIcon(const QString &folder);
    // `tavlo deliver-reminder <identifier>`, run by a timer: shows that
    // reminder if it is due and still pending, unless a running app will.
    // Returns the exit status.
    static int deliverFromTimer(const QString &identifier, ReminderStore &store, const Clock &clock,
                                QDBusConnection bus, const QString &iconPath);

private:
    struct Command
    {
        QString program;
        QStringList arguments;
        CommandRunner::Handler done;
    };

    void probeService(std::function<void(bool answered)> handler);
    void armTimer(const QString &identifier, const QDateTime &fire, AddHandler handler);
    void rearmLostTimers();
    void enqueue(Command command);
    void runNextCommand();
    void scheduleTick();
    void present(const NotificationRequest &request);

    ReminderStore &m_store;
    const Clock &m_clock;
    Options m_options;
    QTimer m_tick;
    std::unique_ptr<QLockFile> m_running;
    QList<Command> m_commands;
    bool m_commandRunning = false;
};
