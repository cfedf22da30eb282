#pragma once

#include "CommandRunner.h"
#include "ReminderTimers.h"

#include <QObject>

// A transient systemd user timer per reminder, tavlo-<identifier>, made with
// systemd-run, that runs `tavlo deliver-reminder <identifier>` at its moment.
// Commands run one at a time, in order.
class SystemdRunTimers final : public QObject, public ReminderTimers
{
public:
    // `program` is the tavlo the timers run; `environment` holds the
    // NAME=VALUE pairs it needs to find the same files.
    SystemdRunTimers(CommandRunner &runner, QString program, QStringList environment,
                     QObject *parent = nullptr);

    void arm(const QString &identifier, const QDateTime &fire,
             NotificationCenter::AddHandler done) override;
    void rearmLost(const QList<PendingReminder> &waiting) override;

private:
    struct Command
    {
        QString program;
        QStringList arguments;
        CommandRunner::Handler done;
    };
    void enqueue(Command command);
    void runNextCommand();

    CommandRunner &m_runner;
    QString m_program;
    QStringList m_environment;
    QList<Command> m_commands;
    bool m_commandRunning = false;
};
