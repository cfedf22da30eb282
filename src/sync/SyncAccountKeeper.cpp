// SPDX-License-Identifier: MIT
#include "sync/SyncAccountKeeper.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "sync/AccountSetup.h"
#include "sync/PasswordVault.h"
#include "sync/SyncState.h"

#include <QDateTime>
#include <QFile>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

namespace {

SyncProblem noVault()
{
    return {SyncProblem::Kind::NoPasswordStore, u"no Secret Service to keep the password in"_s};
}

} // namespace

SyncAccountKeeper::SyncAccountKeeper(SettingsStore &settings, PasswordVault *vault,
                                     QString statePath, QObject *parent)
    : QObject(parent), m_settings(settings), m_vault(vault), m_statePath(std::move(statePath))
{}

QString SyncAccountKeeper::addressBook() const
{
    return m_settings.value(syncAddressBook).value_or(QString());
}

QString SyncAccountKeeper::user() const
{
    return m_settings.value(syncUser).value_or(QString());
}

void SyncAccountKeeper::setUp(const QUrl &url, const QString &user, const QString &password,
                              SetUpDone done)
{
    auto *setup = new AccountSetup(url, user, password, this);
    setup->setTimeout(m_timeoutMs);
    m_setup = setup;
    const auto finished = [this, setup, done](const SyncProblem &problem, const QUrl &book) {
        setup->deleteLater();
        m_setup.clear();
        done(problem, book);
    };
    setup->start([=, this](const AccountSetup::Found &found) {
        if (!found.ok)
            return finished(found.problem, {});
        if (!m_vault)
            return finished(noVault(), {});
        const QString book = found.addressBook.toString();
        m_vault->write(PasswordVault::accountName(user, book), password,
                       [=, this](const SyncProblem &problem) {
                           if (!problem.isEmpty())
                               return finished(problem, {});
                           keep(user, book, found.vCardVersion, finished);
                       });
    });
}

void SyncAccountKeeper::keep(const QString &user, const QString &book, const QString &vCardVersion,
                             const SetUpDone &done)
{
    const QString oldUser = this->user();
    const QString oldBook = addressBook();
    SettingsBatch batch(m_settings);
    m_settings.set(syncAddressBook, book);
    m_settings.set(syncUser, user);
    m_settings.set(syncCardVersion, vCardVersion);
    m_settings.set(syncProblem, QString());
    m_settings.remove(syncProblemKind.name);
    // The last sync's time was another address book's.
    if (oldBook != book)
        m_settings.remove(syncLastDone.name);
    if (const WriteResult stored = batch.finish(); !stored)
        return done(SyncProblem::notSaved(stored.message()), {});
    const QString oldName = PasswordVault::accountName(oldUser, oldBook);
    if (oldBook.isEmpty() || oldName == PasswordVault::accountName(user, book))
        return done({}, QUrl(book));
    // The password of the account set up before goes with it; the new
    // account is kept whether or not it could.
    m_vault->remove(oldName, [done, book](const SyncProblem &) { done({}, QUrl(book)); });
}

void SyncAccountKeeper::noteOutcome(const SyncOutcome &outcome)
{
    if (!outcome.ok)
        return noteProblem({outcome.failure, outcome.problem});
    SettingsBatch batch(m_settings);
    m_settings.set(syncLastDone, QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
    m_settings.set(syncProblem, QString());
    m_settings.remove(syncProblemKind.name);
    batch.finish();
}

void SyncAccountKeeper::noteProblem(const SyncProblem &problem)
{
    SettingsBatch batch(m_settings);
    m_settings.set(syncProblem, problem.line);
    m_settings.set(syncProblemKind, SyncProblem::nameOf(problem.kind));
    batch.finish();
}

void SyncAccountKeeper::remove(Done done)
{
    const auto forget = [this, done](const SyncProblem &vaultProblem) {
        SettingsBatch batch(m_settings);
        for (const QString &key : {syncAddressBook.name, syncUser.name, syncCardVersion.name,
                                   syncLastDone.name, syncProblem.name, syncProblemKind.name})
            m_settings.remove(key);
        if (const WriteResult stored = batch.finish(); !stored)
            return done(SyncProblem::notSaved(stored.message()));
        SyncState::remove(m_statePath);
        if (vaultProblem.isEmpty())
            return done({});
        done(SyncProblem::other(
            u"the account is forgotten, but its password could not be removed: "_s +
            vaultProblem.line));
    };
    if (!m_vault || addressBook().isEmpty())
        return forget({});
    m_vault->remove(PasswordVault::accountName(user(), addressBook()), forget);
}
