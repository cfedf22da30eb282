// SPDX-License-Identifier: MIT
#pragma once

#include "sync/SyncAccountKeeper.h"
#include "sync/SyncEngine.h"
#include "texts/UiStrings.h"

#include <QDate>
#include <QLocale>
#include <QNetworkInformation>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>

class PasswordVault;
class SettingsStore;

// The sync account as the running app and the command line keep it: set up,
// removed, and synced, by itself while the app runs. At start; a few
// seconds after the favorites change here (one sync at a time: a change
// during a sync makes one more after it); and, after a sync that failed,
// a few minutes later, or as soon as the network comes back (the system's
// reachability, where Qt has a backend for it). Every step is asynchronous.
class SyncService : public QObject
{
    Q_OBJECT
public:
    SyncService(SettingsStore &settings, PasswordVault *vault, QString statePath,
                QObject *parent = nullptr);
    ~SyncService() override;

    // "%1 (conflict copy)" in the interface language as it is at each sync.
    void setConflictName(std::function<QString()> pattern) { m_conflictName = std::move(pattern); }
    void setToday(std::function<QDate()> today) { m_today = std::move(today); }
    // The wait after a change, and before a sync that failed is tried again.
    void setDelays(int afterChangeMs, int retryMs);
    void setTimeout(int milliseconds);

    bool hasAccount() const;
    QString server() const;
    QString user() const;
    bool busy() const { return m_running || m_account.settingUp(); }

    // Syncs now if there is an account, and from then on by itself.
    void start();
    // The favorites were changed here (or, while a sync stores them, by it).
    void favoritesChanged();
    void syncNow();

    using Done = std::function<void(const SyncProblem &problem)>;
    // Finds the address book as the command line does, keeps the password
    // in the vault and the account in the settings; the account set up
    // before, if another, goes with its password. Syncs once it is done.
    void setUp(const QUrl &url, const QString &user, const QString &password, Done done);
    // Forgets the account, its password and the sync state.
    void remove(Done done);

    // A problem of the sync, setup or vault in plain words of the
    // interface, by its kind: what the person can do something about.
    static QString plainProblem(const SyncProblem &problem, const UiStrings &strings);
    // The settings row: "Not set up", "Syncing…", the last sync's time, or
    // what went wrong.
    QString status(const UiStrings &strings, const QLocale &locale) const;

    // The system's reachability changed: after a failed sync, being online
    // again tries at once; any other change does nothing.
    void networkChanged(QNetworkInformation::Reachability reachability);

signals:
    void busyChanged();
    // The account, the last sync or its problem changed.
    void statusChanged();
    // Favorites came from the server and are stored: the screens show them.
    void favoritesReceived();

private:
    void run();
    void startEngine(const SyncAccount &account);
    void ended(const SyncOutcome &outcome);
    void noteSetUpProblem(const SyncProblem &problem);
    SyncProblem storedProblem() const;
    void watchNetwork();

    SettingsStore &m_settings;
    PasswordVault *m_vault;
    QString m_statePath;
    SyncAccountKeeper m_account;
    std::function<QString()> m_conflictName;
    std::function<QDate()> m_today;
    int m_timeoutMs = 20000;
    std::unique_ptr<SyncEngine> m_engine;
    QTimer m_afterChange;
    QTimer m_retry;
    bool m_started = false;
    bool m_running = false;
    // A change came while a sync ran: one more after it.
    bool m_again = false;
    // The last sync failed: the network coming back tries again.
    bool m_failed = false;
    bool m_reachability = false;
};
