// SPDX-License-Identifier: MIT
#pragma once

#include "sync/SyncEngine.h"
#include "sync/SyncProblem.h"

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>

class AccountSetup;
class PasswordVault;
class SettingsStore;

// The sync account as this device keeps it: its keys in the settings (with
// what the last sync came to), its password in the vault, its sync state in
// a file. Sets one up and forgets it, for the app's sync service and
// `tavlo sync setup|remove` alike; setUp and remove answer through their
// callbacks.
class SyncAccountKeeper : public QObject
{
public:
    SyncAccountKeeper(SettingsStore &settings, PasswordVault *vault, QString statePath,
                      QObject *parent = nullptr);

    void setTimeout(int milliseconds) { m_timeoutMs = milliseconds; }

    QString addressBook() const;
    QString user() const;
    // A set-up is under way.
    bool settingUp() const { return !m_setup.isNull(); }

    // Finds the address book from `url` (AccountSetup), keeps the password
    // in the vault, then the account's keys in one write; the account set
    // up before, if another, goes with its password. `done` gets the
    // address book, or what went wrong with nothing of the old account
    // changed.
    using SetUpDone = std::function<void(const SyncProblem &problem, const QUrl &addressBook)>;
    void setUp(const QUrl &url, const QString &user, const QString &password, SetUpDone done);

    // Forgets the account's keys, its password and the sync state. Keys
    // that could not be written leave the state file; a password that
    // could not be removed still lets the rest go, and says so.
    using Done = std::function<void(const SyncProblem &problem)>;
    void remove(Done done);

    // What the last sync came to, for the settings row: when it went
    // well, or its problem with the problem's kind. A failure to note it
    // changes nothing of the sync's own outcome.
    void noteOutcome(const SyncOutcome &outcome);
    void noteProblem(const SyncProblem &problem);

private:
    void keep(const QString &user, const QString &book, const QString &vCardVersion,
              const SetUpDone &done);

    SettingsStore &m_settings;
    PasswordVault *m_vault;
    QString m_statePath;
    int m_timeoutMs = 20000;
    QPointer<AccountSetup> m_setup;
};
