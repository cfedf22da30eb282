// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ReminderWakeups.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <functional>

class Clock;
class QDBusServiceWatcher;

// Wakes a suspended phone a minute before each pending reminder, so that its
// timer can show it on time: Plasma's power management service
// (org.kde.Solid.PowerManagement on the session bus) keeps a list of
// wake-ups, each asked for with scheduleWakeup(service s, path o, seconds
// since the epoch t) and answered with a cookie (u), and dropped with
// clearWakeup(cookie i). When one comes, the service calls
// org.kde.PowerManagement.wakeupCallback(cookie i) on the given service and
// path.
//
// The service forgets its wake-ups when it restarts and numbers them afresh,
// so the cookies are kept in a file together with the service's unique bus
// name: cookies of an earlier owner are never cleared (they may be someone
// else's now), and a new owner is given every wake-up again.
//
// Where no such service runs (Phosh, other desktops), nothing is asked and
// nothing is kept.
class PowerWakeups final : public QObject, public ReminderWakeups, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.PowerManagement")

public:
    static inline const QString service = QStringLiteral("org.kde.Solid.PowerManagement");
    static inline const QString path = QStringLiteral("/org/kde/Solid/PowerManagement");
    // Where the service calls back: Tavlo's own name while the app runs.
    static inline const QString callbackService = QStringLiteral("io.github.tavlo.Tavlo");
    static inline const QString callbackPath = QStringLiteral("/io/github/tavlo/Tavlo/Wakeup");
    // How long before a reminder's moment the phone is woken.
    static constexpr int secondsEarly = 60;

    // `statePath` is the file of the cookies handed out.
    PowerWakeups(QDBusConnection bus, const Clock &clock, QString statePath,
                 QObject *parent = nullptr);
    ~PowerWakeups() override;

    // "wakeups.json" beside the pending reminders file `remindersPath`.
    static QString statePathBeside(const QString &remindersPath);
    // Asks the service for the wake-ups of `waiting` and drops those no
    // longer wanted; the answers come later. Never fails: a missing service
    // is no error, and a cookie file that cannot be written is warned of.
    std::optional<QString> apply(const QList<PendingReminder> &waiting) override;
    void whenIdle(std::function<void()> done) override;

    // The service forgets at logout: `text` is an autostart entry that asks
    // again at login, kept at `path` while wake-ups are wanted of a service
    // that answers.
    void setLoginEntry(QString path, QByteArray text)
    {
        m_loginEntryPath = std::move(path);
        m_loginEntry = std::move(text);
    }

    // Takes Tavlo's name on the bus and answers the service's calls there;
    // `woken` runs on each. Only the app does this; without it the service's
    // call finds nobody and is dropped.
    bool answerCallbacks(std::function<void()> woken);

public slots:
    Q_SCRIPTABLE void wakeupCallback(int cookie);

private:
    struct Registered
    {
        QString identifier;
        qint64 moment = 0;
        uint cookie = 0;
    };
    struct Wanted
    {
        QString identifier;
        qint64 moment = 0;
    };

    void ownerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);
    void load();
    void save();
    void sync();
    void askNext();
    void finishSync();

    QDBusConnection m_bus;
    const Clock &m_clock;
    QString m_statePath;
    QString m_loginEntryPath;
    QByteArray m_loginEntry;
    QDBusServiceWatcher *m_watcher = nullptr;
    std::function<void()> m_woken;
    // The service's unique name the cookies were handed out by.
    QString m_owner;
    QList<Registered> m_registered;
    QList<Wanted> m_wanted;
    QList<Wanted> m_missing;
    bool m_syncing = false;
    bool m_again = false;
    QList<std::function<void()>> m_whenIdle;
};
