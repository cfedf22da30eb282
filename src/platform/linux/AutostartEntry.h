// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/CommandRunner.h"
#include "platform/linux/ReminderWakeups.h"

// Where no systemd user manager runs (postmarketOS with OpenRC, for example):
// an XDG autostart entry, io.github.tavlo.Tavlo-reminders.desktop, starts
// `tavlo deliver-reminders` at login, a window-less Tavlo that sleeps until
// the next due reminder, delivers it as a timer would, and exits when none is
// left. The entry is there for as long as reminders are pending; the app
// also starts the background Tavlo at once when none runs.
class AutostartEntry final : public ReminderWakeups
{
public:
    // `backgroundLock` is the lock a running background Tavlo holds.
    AutostartEntry(QString autostartFolder, QString program, QStringList environment,
                   QString backgroundLock, CommandRunner *starter);

    // $XDG_CONFIG_HOME/autostart
    static QString defaultFolder();
    static QString fileName();
    QByteArray entry() const;
    // An entry that runs `program` with `arguments` (plain words) at login,
    // with the NAME=VALUE pairs of `environment`; only in the desktops of
    // `onlyShowIn` ("KDE") when given.
    static QByteArray entryFor(const QString &program, const QStringList &environment,
                               const QStringList &arguments, const QString &onlyShowIn = {});
    // Whether an entry can carry these words (no control characters but
    // line breaks and tabs).
    static bool carries(const QStringList &words);

    std::optional<QString> apply(const QList<PendingReminder> &waiting) override;
    void whenIdle(std::function<void()> done) override { done(); }

private:
    QString m_path;
    QString m_program;
    QStringList m_environment;
    QString m_backgroundLock;
    CommandRunner *m_starter;
};
