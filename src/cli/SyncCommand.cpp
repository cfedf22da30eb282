// SPDX-License-Identifier: MIT
#include "cli/SyncCommand.h"

#include "cli/CommandArguments.h"
#include "core/Clock.h"
#include "core/OneLine.h"
#include "settings/SettingsStore.h"
#include "sync/AccountSetup.h"
#include "sync/PasswordVault.h"
#include "sync/SyncEngine.h"
#include "sync/SyncState.h"
#include "texts/Language.h"
#include "texts/UiStrings.h"

#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QTextStream>
#include <cstdio>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo sync
       tavlo sync setup URL USER
       tavlo sync remove

Keeps the favorites the same as a CardDAV address book (Nextcloud,
Radicale, any CardDAV server), so that every device syncing with it holds
the same birthdays.

  setup URL USER  Finds the address book "Birthdays" from URL (the
                  server, your principal or an address book), makes it
                  when there is none, and keeps the account. Reads the
                  password as one line from standard input and keeps it
                  in the desktop's Secret Service.
  (nothing)       Syncs once in both directions and prints what moved.
  remove          Forgets the account and its password.

A favorite changed on both sides since the last sync takes the server's
version; the version made here stays beside it as a "conflict copy".
)";

// Runs `start` and the event loop until it calls the function it is given.
template <typename Start>
void waitFor(Start start)
{
    QEventLoop loop;
    bool done = false;
    start([&] {
        done = true;
        loop.quit();
    });
    if (!done)
        loop.exec();
}

} // namespace

int SyncCommand::failed(const QString &problem)
{
    m_context.err << "tavlo sync: " << oneLine(problem) << '\n';
    m_context.err.flush();
    return ExitStatus::notSaved;
}

int SyncCommand::run(const QStringList &arguments)
{
    CommandArguments parsed;
    const bool readable = parsed.parse(arguments.mid(1));
    if (parsed.helpAsked()) {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    if (!m_context.passwords)
        return failed(u"no Secret Service to keep the password in"_s);
    // A user name is the server's and may begin with "-": setup takes its
    // URL and USER as they are given.
    if (arguments.value(1) == u"setup" && arguments.size() == 4)
        return setup(arguments.at(2), arguments.at(3));
    const QStringList positional = parsed.positional();
    const QString action = positional.value(0);
    if (readable && action == u"remove" && positional.size() == 1)
        return forget();
    if (readable && positional.isEmpty())
        return sync();
    return failCommand(
        m_context, "sync",
        u"expected nothing, \"setup URL USER\" or \"remove\" (see tavlo sync --help)"_s);
}

int SyncCommand::setup(const QString &url, const QString &user)
{
    QTextStream in(stdin);
    const QString password = in.readLine();
    if (password.isEmpty())
        return failed(u"expected the password as one line on standard input"_s);

    AccountSetup::Found found;
    AccountSetup setup(QUrl::fromUserInput(url), user, password);
    waitFor([&](auto done) {
        setup.start([&, done](const AccountSetup::Found &result) {
            found = result;
            done();
        });
    });
    if (!found.ok)
        return failed(found.problem);

    PasswordVault *vault = m_context.passwords();
    const QString book = found.addressBook.toString();
    QString problem;
    waitFor([&](auto done) {
        vault->write(PasswordVault::accountName(user, book), password,
                     [&, done](const QString &result) {
                         problem = result;
                         done();
                     });
    });
    if (!problem.isEmpty())
        return failed(problem);

    SettingsStore &settings = m_context.settings;
    const QString oldUser = settings.value(syncUser).value_or(QString());
    const QString oldBook = settings.value(syncAddressBook).value_or(QString());
    SettingsBatch batch(settings);
    settings.set(syncAddressBook, book);
    settings.set(syncUser, user);
    settings.set(syncCardVersion, found.vCardVersion);
    settings.set(syncProblem, QString());
    if (const WriteResult stored = batch.finish(); !stored)
        return failed(stored.message());
    // The password of an account set up before goes with it.
    if (!oldBook.isEmpty() &&
        PasswordVault::accountName(oldUser, oldBook) != PasswordVault::accountName(user, book)) {
        waitFor([&](auto done) {
            vault->remove(PasswordVault::accountName(oldUser, oldBook),
                          [done](const QString &) { done(); });
        });
    }
    m_context.out << book << '\n';
    m_context.out.flush();
    return ExitStatus::ok;
}

int SyncCommand::sync()
{
    SettingsStore &settings = m_context.settings;
    SyncAccount account;
    account.addressBook = QUrl(settings.value(syncAddressBook).value_or(QString()));
    account.user = settings.value(syncUser).value_or(QString());
    account.vCardVersion = settings.value(syncCardVersion).value_or(u"4.0"_s);
    if (account.addressBook.isEmpty())
        return failed(u"no account to sync with; set one up with tavlo sync setup URL USER"_s);

    QString problem;
    waitFor([&](auto done) {
        m_context.passwords()->read(
            PasswordVault::accountName(account.user, account.addressBook.toString()),
            [&, done](const QString &password, const QString &result) {
                account.password = password;
                problem = result;
                done();
            });
    });
    if (!problem.isEmpty())
        return failed(problem);

    UiStrings strings;
    strings.apply(
        decideLanguage(m_context.preferredLanguages, settings.value(preferredLanguage)).language);
    SyncEngine engine(settings,
                      m_context.syncStatePath.isEmpty() ? SyncState::defaultPath()
                                                        : m_context.syncStatePath,
                      account);
    engine.setConflictName(strings[UiText::SyncConflictCopy]);
    engine.setFavoritesListener(m_context.favoritesChanged);
    engine.setToday(m_context.clock.now().date());
    SyncOutcome outcome;
    waitFor([&](auto done) {
        engine.start([&, done](const SyncOutcome &result) {
            outcome = result;
            done();
        });
    });
    // What happened is told to the settings row as well; a failure to note
    // it changes nothing of the sync's own outcome.
    if (outcome.ok) {
        SettingsBatch batch(settings);
        settings.set(syncLastDone, QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
        settings.set(syncProblem, QString());
        batch.finish();
        m_context.out << SyncEngine::summary(outcome.counts) << '\n';
        m_context.out.flush();
        return ExitStatus::ok;
    }
    settings.set(syncProblem, outcome.problem);
    return failed(outcome.problem);
}

int SyncCommand::forget()
{
    SettingsStore &settings = m_context.settings;
    const QString user = settings.value(syncUser).value_or(QString());
    const QString book = settings.value(syncAddressBook).value_or(QString());
    QString problem;
    if (!book.isEmpty()) {
        waitFor([&](auto done) {
            m_context.passwords()->remove(PasswordVault::accountName(user, book),
                                          [&, done](const QString &result) {
                                              problem = result;
                                              done();
                                          });
        });
    }
    SettingsBatch batch(settings);
    for (const QString &key : {syncAddressBook.name, syncUser.name, syncCardVersion.name,
                               syncLastDone.name, syncProblem.name})
        settings.remove(key);
    if (const WriteResult stored = batch.finish(); !stored)
        return failed(stored.message());
    SyncState::remove(m_context.syncStatePath.isEmpty() ? SyncState::defaultPath()
                                                        : m_context.syncStatePath);
    if (!problem.isEmpty())
        return failed(u"the account is forgotten, but its password could not be removed: "_s +
                      problem);
    return ExitStatus::ok;
}
