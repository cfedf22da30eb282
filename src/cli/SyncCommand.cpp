// SPDX-License-Identifier: MIT
#include "cli/SyncCommand.h"

#include "cli/CommandArguments.h"
#include "core/Clock.h"
#include "core/OneLine.h"
#include "settings/SettingsStore.h"
#include "sync/PasswordVault.h"
#include "sync/SyncAccountKeeper.h"
#include "sync/SyncEngine.h"
#include "sync/SyncState.h"
#include "texts/Language.h"
#include "texts/UiStrings.h"

#include <QEventLoop>
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

    SyncAccountKeeper keeper(m_context.settings, m_context.passwords(), statePath());
    SyncProblem problem;
    QUrl book;
    waitFor([&](auto done) {
        keeper.setUp(QUrl::fromUserInput(url), user, password,
                     [&, done](const SyncProblem &result, const QUrl &found) {
                         problem = result;
                         book = found;
                         done();
                     });
    });
    if (!problem.isEmpty())
        return failed(problem.line);
    m_context.out << book.toString() << '\n';
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

    SyncProblem problem;
    waitFor([&](auto done) {
        m_context.passwords()->read(
            PasswordVault::accountName(account.user, account.addressBook.toString()),
            [&, done](const QString &password, const SyncProblem &result) {
                account.password = password;
                problem = result;
                done();
            });
    });
    if (!problem.isEmpty())
        return failed(problem.line);

    UiStrings strings;
    strings.apply(
        decideLanguage(m_context.preferredLanguages, settings.value(preferredLanguage)).language);
    SyncEngine engine(settings, statePath(), account);
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
    // What happened is told to the settings row as well.
    SyncAccountKeeper(settings, m_context.passwords(), statePath()).noteOutcome(outcome);
    if (!outcome.ok)
        return failed(outcome.problem);
    m_context.out << SyncEngine::summary(outcome.counts) << '\n';
    m_context.out.flush();
    return ExitStatus::ok;
}

int SyncCommand::forget()
{
    SyncAccountKeeper keeper(m_context.settings, m_context.passwords(), statePath());
    SyncProblem problem;
    waitFor([&](auto done) {
        keeper.remove([&, done](const SyncProblem &result) {
            problem = result;
            done();
        });
    });
    if (!problem.isEmpty())
        return failed(problem.line);
    return ExitStatus::ok;
}

QString SyncCommand::statePath() const
{
    return m_context.syncStatePath.isEmpty() ? SyncState::defaultPath() : m_context.syncStatePath;
}
