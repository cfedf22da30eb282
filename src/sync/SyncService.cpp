// SPDX-License-Identifier: MIT
#include "sync/SyncService.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "sync/AccountSetup.h"
#include "sync/PasswordVault.h"
#include "sync/SyncState.h"

#include <QDateTime>
#include <QFile>
#include <QNetworkInformation>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int afterChangeDefaultMs = 3000;
constexpr int retryDefaultMs = 5 * 60 * 1000;

} // namespace

SyncService::SyncService(SettingsStore &settings, PasswordVault *vault, QString statePath,
                         QObject *parent)
    : QObject(parent), m_settings(settings), m_vault(vault), m_statePath(std::move(statePath)),
      m_conflictName([] { return u"%1 (conflict copy)"_s; }),
      m_today([] { return QDate::currentDate(); })
{
    m_afterChange.setSingleShot(true);
    m_afterChange.setInterval(afterChangeDefaultMs);
    connect(&m_afterChange, &QTimer::timeout, this, &SyncService::run);
    m_retry.setSingleShot(true);
    m_retry.setInterval(retryDefaultMs);
    connect(&m_retry, &QTimer::timeout, this, &SyncService::run);
}

SyncService::~SyncService() = default;

void SyncService::setDelays(int afterChangeMs, int retryMs)
{
    m_afterChange.setInterval(afterChangeMs);
    m_retry.setInterval(retryMs);
}

bool SyncService::hasAccount() const
{
    return !server().isEmpty();
}

QString SyncService::server() const
{
    return m_settings.value(syncAddressBook).value_or(QString());
}

QString SyncService::user() const
{
    return m_settings.value(syncUser).value_or(QString());
}

void SyncService::start()
{
    m_started = true;
    watchNetwork();
    run();
}

void SyncService::watchNetwork()
{
    if (m_reachability)
        return;
    // A backend that knows reachability (NetworkManager, GLib) where the
    // system has one; without it a failed sync is tried again on a timer.
    if (!QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability))
        return;
    m_reachability = true;
    connect(QNetworkInformation::instance(), &QNetworkInformation::reachabilityChanged, this,
            [this](QNetworkInformation::Reachability reachability) {
                if (m_failed && reachability == QNetworkInformation::Reachability::Online)
                    run();
            });
}

void SyncService::favoritesChanged()
{
    // What a sync stores is already on the server.
    if (m_engine && m_engine->storing())
        return;
    if (!m_started || !hasAccount())
        return;
    if (m_running) {
        m_again = true;
        return;
    }
    m_afterChange.start();
}

void SyncService::syncNow()
{
    if (m_running) {
        m_again = true;
        return;
    }
    run();
}

void SyncService::run()
{
    if (busy() || !hasAccount())
        return;
    m_afterChange.stop();
    m_retry.stop();
    m_running = true;
    emit busyChanged();
    emit statusChanged();
    if (!m_vault)
        return ended({false, u"no Secret Service to keep the password in"_s, {}});
    SyncAccount account;
    account.addressBook = QUrl(server());
    account.user = user();
    account.vCardVersion = m_settings.value(syncCardVersion).value_or(u"4.0"_s);
    const QPointer<SyncService> self = this;
    m_vault->read(PasswordVault::accountName(account.user, account.addressBook.toString()),
                  [self, account](const QString &password, const QString &problem) mutable {
                      if (!self)
                          return;
                      if (!problem.isEmpty())
                          return self->ended({false, problem, {}});
                      account.password = password;
                      self->startEngine(account);
                  });
}

void SyncService::startEngine(const SyncAccount &account)
{
    m_engine = std::make_unique<SyncEngine>(m_settings, m_statePath, account);
    m_engine->setTimeout(m_timeoutMs);
    m_engine->setConflictName(m_conflictName());
    m_engine->setToday(m_today());
    connect(m_engine.get(), &SyncEngine::favoritesStored, this, &SyncService::favoritesReceived);
    m_engine->start([this](const SyncOutcome &outcome) {
        // The engine goes once this call has returned, not within it.
        QMetaObject::invokeMethod(
            this, [this, outcome] { ended(outcome); }, Qt::QueuedConnection);
    });
}

void SyncService::ended(const SyncOutcome &outcome)
{
    m_engine.reset();
    m_running = false;
    m_failed = !outcome.ok;
    if (outcome.ok) {
        SettingsBatch batch(m_settings);
        m_settings.set(syncLastDone, QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
        m_settings.set(syncProblem, QString());
        batch.finish();
    } else {
        m_settings.set(syncProblem, outcome.problem);
        // Again after a while, whatever went wrong; sooner when the
        // network comes back.
        if (hasAccount())
            m_retry.start();
    }
    emit busyChanged();
    emit statusChanged();
    if (std::exchange(m_again, false))
        m_afterChange.start();
}

void SyncService::setUp(const QUrl &url, const QString &user, const QString &password, Done done)
{
    if (busy())
        return done(u"another sync of these favorites is running"_s);
    auto *setup = new AccountSetup(url, user, password, this);
    setup->setTimeout(m_timeoutMs);
    m_setup = setup;
    emit busyChanged();
    const auto finished = [this, setup, done](const QString &problem) {
        setup->deleteLater();
        m_setup.clear();
        if (!problem.isEmpty())
            setProblem(problem);
        emit busyChanged();
        emit statusChanged();
        done(problem);
        if (problem.isEmpty()) {
            m_started = true;
            watchNetwork();
            run();
        }
    };
    setup->start([=, this](const AccountSetup::Found &found) {
        if (!found.ok)
            return finished(found.problem);
        if (!m_vault)
            return finished(u"no Secret Service to keep the password in"_s);
        const QString book = found.addressBook.toString();
        m_vault->write(PasswordVault::accountName(user, book), password,
                       [=, this](const QString &problem) {
                           if (!problem.isEmpty())
                               return finished(problem);
                           const QString oldUser = this->user();
                           const QString oldBook = server();
                           SettingsBatch batch(m_settings);
                           m_settings.set(syncAddressBook, book);
                           m_settings.set(syncUser, user);
                           m_settings.set(syncCardVersion, found.vCardVersion);
                           m_settings.set(syncProblem, QString());
                           if (oldBook != book)
                               m_settings.remove(syncLastDone.name);
                           if (const WriteResult stored = batch.finish(); !stored)
                               return finished(stored.message());
                           // The password of an account set up before goes with it.
                           if (!oldBook.isEmpty() && PasswordVault::accountName(oldUser, oldBook) !=
                                                         PasswordVault::accountName(user, book))
                               m_vault->remove(PasswordVault::accountName(oldUser, oldBook),
                                               [](const QString &) {});
                           finished({});
                       });
    });
}

void SyncService::remove(Done done)
{
    if (busy())
        return done(u"another sync of these favorites is running"_s);
    const QString name = PasswordVault::accountName(user(), server());
    const auto forget = [this, done](const QString &vaultProblem) {
        SettingsBatch batch(m_settings);
        for (const QString &key : {syncAddressBook.name, syncUser.name, syncCardVersion.name,
                                   syncLastDone.name, syncProblem.name})
            m_settings.remove(key);
        const WriteResult stored = batch.finish();
        if (stored)
            SyncState::remove(m_statePath);
        m_failed = false;
        m_retry.stop();
        m_afterChange.stop();
        emit statusChanged();
        if (!stored)
            return done(stored.message());
        done(vaultProblem.isEmpty()
                 ? QString()
                 : u"the account is forgotten, but its password could not be removed: "_s +
                       vaultProblem);
    };
    if (!m_vault || !hasAccount())
        return forget({});
    m_vault->remove(name, forget);
}

void SyncService::setProblem(const QString &problem)
{
    // Setup problems are the row's only while no account is set up; an
    // account's own last problem stays otherwise.
    if (!hasAccount())
        m_settings.set(syncProblem, problem);
}

QString SyncService::plainProblem(const QString &problem, const UiStrings &strings)
{
    // The lines of the engine, the account setup and the vault, by what a
    // person can do about them.
    struct Kind
    {
        QString start;
        UiText text;
    };
    static const QList<Kind> kinds{
        {u"cannot reach the server"_s, UiText::SyncUnreachable},
        {u"the server refused the login"_s, UiText::SyncLoginRefused},
        {u"no Secret Service"_s, UiText::SyncNoPasswordStore},
        {u"no password is kept"_s, UiText::SyncNoPassword},
        {u"no CardDAV address books found"_s, UiText::SyncNoAddressBook},
        {u"could not save"_s, UiText::SyncNotSaved},
    };
    if (problem.isEmpty())
        return {};
    for (const Kind &kind : kinds) {
        if (problem.startsWith(kind.start))
            return strings[kind.text];
    }
    return strings[UiText::SyncFailed].arg(problem);
}

QString SyncService::status(const UiStrings &strings, const QLocale &locale) const
{
    if (busy())
        return strings[UiText::SyncRunning];
    const QString problem = m_settings.value(syncProblem).value_or(QString());
    if (!problem.isEmpty())
        return plainProblem(problem, strings);
    if (!hasAccount())
        return strings[UiText::SyncNotSetUp];
    const QDateTime last =
        QDateTime::fromString(m_settings.value(syncLastDone).value_or(QString()), Qt::ISODate);
    if (!last.isValid())
        return strings[UiText::SyncNever];
    return strings[UiText::SyncLastDone].arg(
        locale.toString(last.toLocalTime(), QLocale::ShortFormat));
}
