// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/CommandRunner.h"
#include "platform/linux/ReminderWakeups.h"

#include <QObject>

// A persistent systemd user timer per pending reminder: tavlo-<identifier>.timer
// and .service in the user's unit folder, enabled by a link in
// timers.target.wants/, so that they outlive the app, a logout and a reboot.
// Persistent=true makes a timer missed while the phone was off fire when the
// user's session next starts; the delivery drops it unless that is still its
// day. The service runs `tavlo deliver-reminder <identifier>`, which reads the
// reminder from the pending reminders file: no unit name or text holds what a
// user typed.
//
// Where a user manager runs, it is told with `systemctl --user`: one command
// at a time, in order, and only when a unit file changed.
//
// From systemd 254 on, a user's session may set wake alarms, and the timers
// carry WakeSystem=true so that a suspended phone wakes for them. Before
// that the user manager lacks the right and the timers leave it out.
class SystemdTimers final : public QObject, public ReminderWakeups
{
public:
    // `program` is the tavlo the services run; `environment` holds the
    // NAME=VALUE pairs it needs to find the same files. `manager` runs
    // systemctl; none where no user manager runs (the links start the timers
    // at the next login).
    SystemdTimers(QString unitFolder, QString program, QStringList environment,
                  CommandRunner *manager, QObject *parent = nullptr);

    // $XDG_CONFIG_HOME/systemd/user
    static QString defaultUnitFolder();
    // "tavlo-" and the identifier, escaped as systemd-escape does.
    static QString unitName(const QString &identifier);
    // Whether timers of the systemd of this version may wake the system:
    // 254 and newer. 0 (unknown) may not.
    static bool wakeSystemAllowed(int systemdVersion);
    // The version in `systemctl --version`'s first line ("systemd 252
    // (252.38-1~deb12u1)"); 0 when there is none.
    static int versionFrom(const QByteArray &versionOutput);
    // The installed systemd's version, asked of systemctl; 0 when it cannot tell.
    static int installedVersion();
    // Timers written from now on wake the system.
    void setWakeSystem(bool wake) { m_wakeSystem = wake; }

    // The two unit files' texts for a reminder.
    QByteArray timerUnit(const PendingReminder &reminder) const;
    QByteArray serviceUnit(const PendingReminder &reminder) const;

    std::optional<QString> apply(const QList<PendingReminder> &waiting) override;
    void whenIdle(std::function<void()> done) override;

private:
    void enqueue(QStringList arguments);
    void runNextCommand();

    QString m_folder;
    QString m_program;
    QStringList m_environment;
    CommandRunner *m_manager;
    bool m_wakeSystem = false;
    QList<QStringList> m_commands;
    bool m_commandRunning = false;
    QList<std::function<void()>> m_whenIdle;
};
