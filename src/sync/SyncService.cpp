// SPDX-License-Identifier: MIT
#include "sync/SyncService.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "sync/PasswordVault.h"

#include <QDateTime>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int afterChangeDefaultMs = 3000;
constexpr int retryDefaultMs = 5 * 60 * 1000;

SyncProblem noVault()
{
    return {SyncProblem::Kind::NoPasswordStore, u"no Secret Service to keep the password in"_s};
}

SyncProblem busyProblem()
{
    return SyncProblem::other(u"another sync of these favorites is running"_s);
}

// A line stored before problems had kinds: its kind by its first words.
SyncProblem::Kind kindOfOldLine(const QString &line)
{
    using Kind = SyncProblem::Kind;
    static const QList<std::pair<QString, Kind>> starts{
        {u"cannot reach the server"_s, Kind::Unreachable},
        {u"the server refused the login"_s, Kind::LoginRefused},
        {u"no Secret Service"_s, Kind::NoPasswordStore},
        {u"no password is kept"_s, Kind::NoPassword},
        {u"no CardDAV address books found"_s, Kind::NoAddressBook},
        {u"could not save"_s, Kind::NotSaved},
    };
    for (const auto &[start, kind] : starts) {
        if (line.startsWith(start))
            return kind;
    }
    return Kind::Other;
}

} // namespace

SyncService::SyncService(SettingsStore &settings, PasswordVault *vault, QString statePath,
                         QObject *parent)
    : QObject(parent), m_settings(settings), m_vault(vault), m_statePath(std::move(statePath)),
      m_account(settings, vault, m_statePath),
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

void SyncService::setTimeout(int milliseconds)
{
    m_timeoutMs = milliseconds;
    m_account.setTimeout(milliseconds);
}

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
    return m_account.addressBook();
}

QString SyncService::user() const
{
    return m_account.user();
}

void SyncService::start()
{
    m_started = true;
    // Without an account there is nothing to try again; the network is
    // watched from the set-up on.
    if (hasAccount())
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
            &SyncService::networkChanged);
}

void SyncService::networkChanged(QNetworkInformation::Reachability reachability)
{
    if (m_failed && reachability == QNetworkInformation::Reachability::Online)
        run();
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
        return ended({false, noVault().line, noVault().kind, {}});
    SyncAccount account;
    account.addressBook = QUrl(server());
    account.user = user();
    account.vCardVersion = m_settings.value(syncCardVersion).value_or(u"4.0"_s);
    const QPointer<SyncService> self = this;
    m_vault->read(PasswordVault::accountName(account.user, account.addressBook.toString()),
                  [self, account](const QString &password, const SyncProblem &problem) mutable {
                      if (!self)
                          return;
                      if (!problem.isEmpty())
                          return self->ended({false, problem.line, problem.kind, {}});
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
    m_account.noteOutcome(outcome);
    // Again after a while, whatever went wrong; sooner when the network
    // comes back.
    if (!outcome.ok && hasAccount())
        m_retry.start();
    emit busyChanged();
    emit statusChanged();
    if (std::exchange(m_again, false))
        m_afterChange.start();
}

void SyncService::setUp(const QUrl &url, const QString &user, const QString &password, Done done)
{
    if (busy())
        return done(busyProblem());
    m_account.setUp(url, user, password, [this, done](const SyncProblem &problem, const QUrl &) {
        if (!problem.isEmpty())
            noteSetUpProblem(problem);
        emit busyChanged();
        emit statusChanged();
        done(problem);
        if (problem.isEmpty()) {
            m_started = true;
            watchNetwork();
            run();
        }
    });
    emit busyChanged();
}

void SyncService::remove(Done done)
{
    if (busy())
        return done(busyProblem());
    m_account.remove([this, done](const SyncProblem &problem) {
        m_failed = false;
        m_retry.stop();
        m_afterChange.stop();
        emit statusChanged();
        done(problem);
    });
}

void SyncService::noteSetUpProblem(const SyncProblem &problem)
{
    // Setup problems are the row's only while no account is set up; an
    // account's own last problem stays otherwise.
    if (!hasAccount())
        m_account.noteProblem(problem);
}

SyncProblem SyncService::storedProblem() const
{
    const QString line = m_settings.value(syncProblem).value_or(QString());
    if (line.isEmpty())
        return {};
    const std::optional<QString> kind = m_settings.value(syncProblemKind);
    // A file from before kinds were kept has the line alone.
    return {kind ? SyncProblem::kindNamed(*kind) : kindOfOldLine(line), line};
}

QString SyncService::plainProblem(const SyncProblem &problem, const UiStrings &strings)
{
    switch (problem.kind) {
    case SyncProblem::Kind::None:
        return {};
    case SyncProblem::Kind::Unreachable:
        return strings[UiText::SyncUnreachable];
    case SyncProblem::Kind::LoginRefused:
        return strings[UiText::SyncLoginRefused];
    case SyncProblem::Kind::NoPasswordStore:
        return strings[UiText::SyncNoPasswordStore];
    case SyncProblem::Kind::NoPassword:
        return strings[UiText::SyncNoPassword];
    case SyncProblem::Kind::NoAddressBook:
        return strings[UiText::SyncNoAddressBook];
    case SyncProblem::Kind::NotSaved:
        return strings[UiText::SyncNotSaved];
    case SyncProblem::Kind::Other:
        break;
    }
    return strings[UiText::SyncFailed].arg(problem.line);
}

QString SyncService::status(const UiStrings &strings, const QLocale &locale) const
{
    if (busy())
        return strings[UiText::SyncRunning];
    if (const SyncProblem problem = storedProblem(); !problem.isEmpty())
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
