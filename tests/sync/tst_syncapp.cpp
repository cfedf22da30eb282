// SPDX-License-Identifier: MIT
// The running app's side of sync, against Radicale: syncing by itself after
// a change, showing what came from elsewhere, setup problems on the
// settings screen in plain words, and the state never ahead of the
// favorites that the settings store writes in the background.
#include "CardDavServer.h"
#include "ScreenHarness.h"
#include "SyncHarness.h"

#include "favoritesScreen/FavoritesScreenController.h"
#include "settingsScreen/SettingsScreenController.h"
#include "sync/PasswordVault.h"
#include "sync/SyncService.h"
#include "sync/SyncState.h"

#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <mutex>

using namespace Qt::Literals::StringLiterals;
using namespace SettingsKeys;

namespace {

std::unique_ptr<CardDavServer> radicale;
QTemporaryDir *scratch = nullptr;

// Passwords kept in memory, answered on the next turn of the event loop as
// the Secret Service would.
class MemoryVault final : public PasswordVault
{
public:
    QHash<QString, QString> passwords;

    void read(const QString &account,
              std::function<void(const QString &, const QString &)> done) override
    {
        QTimer::singleShot(0, [=, this] { done(passwords.value(account), {}); });
    }
    void write(const QString &account, const QString &password,
               std::function<void(const QString &)> done) override
    {
        passwords.insert(account, password);
        QTimer::singleShot(0, [=] { done({}); });
    }
    void remove(const QString &account, std::function<void(const QString &)> done) override
    {
        passwords.remove(account);
        QTimer::singleShot(0, [=] { done({}); });
    }
};

} // namespace

class TestSyncApp : public QObject
{
    Q_OBJECT

    int m_books = 0;

    SyncAccount newAccount()
    {
        SyncAccount account;
        account.addressBook = newAddressBook(radicale->home(), u"app%1"_s.arg(++m_books),
                                             radicale->user(), radicale->password());
        account.user = radicale->user();
        account.password = radicale->password();
        return account;
    }

private slots:
    // The favorites screen open, a sync service as the app has one.
    void syncsByItselfAndShowsChangesFromElsewhere()
    {
        const SyncAccount account = newAccount();
        QVERIFY(!account.addressBook.isEmpty());
        MemoryVault vault;
        vault.passwords.insert(
            PasswordVault::accountName(account.user, account.addressBook.toString()),
            account.password);
        ScreenHarness h;
        h.settings.set(syncAddressBook, account.addressBook.toString());
        h.settings.set(syncUser, account.user);
        SyncService sync(h.settings, &vault, scratch->filePath(u"app-state.json"_s));
        sync.setDelays(100, 60000);
        h.prepare = [&sync](Session &session) {
            session.sync = &sync;
            session.favoritesStored = [&sync] { sync.favoritesChanged(); };
        };
        auto *list = h.show<FavoritesScreenController>("favoritesScreen/FavoritesScreen.qml");
        sync.start();
        QTRY_VERIFY(!sync.busy());
        AddressBookView server(account.addressBook, account.user, account.password);

        // A change here reaches the server a moment later, with no one asking.
        QVERIFY(h.session->favorites.append(u"Ann"_s, 12, 3, 1985));
        QTRY_COMPARE_WITH_TIMEOUT(server.contents(), QStringList{u"Ann|12 3 1985"_s}, 10000);
        QTRY_VERIFY(!sync.busy());

        // One made on another device shows in the open list.
        SyncDevice other(scratch->filePath(u"other%1"_s.arg(m_books)));
        QVERIFY(other.favorites.appendMany({Favorite(u"Cat"_s, u"1 1 2000"_s)}));
        QVERIFY(other.sync(account).ok);
        sync.syncNow();
        QTRY_COMPARE_WITH_TIMEOUT(list->count(), 2, 10000);
        QCOMPARE(contentsOf(h.session->favorites.all()),
                 QStringList({u"Ann|12 3 1985"_s, u"Cat|1 1 2000"_s}));

        // A change while a sync runs makes one more sync after it.
        sync.syncNow();
        QVERIFY(sync.busy());
        QVERIFY(h.session->favorites.append(u"Dan"_s, 2, 2, 2002));
        QTRY_COMPARE_WITH_TIMEOUT(server.contents().size(), 3, 10000);
        QTRY_VERIFY(!sync.busy());
        QVERIFY(other.sync(account).ok);
        QCOMPARE(other.contents(), contentsOf(h.session->favorites.all()));
    }

    void setupProblemsInPlainWords_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("vaultThere");
        QTest::addColumn<QString>("status");
        const QString root = radicale->root().toString();
        QTest::newRow("nothing listens") << u"http://127.0.0.1:9/"_s << radicale->password() << true
                                         << u"The server could not be reached"_s;
        QTest::newRow("wrong password")
            << root << u"wrong"_s << true << u"The server refused the user name or password"_s;
        QTest::newRow("no Secret Service") << root << radicale->password() << false
                                           << u"No password store (Secret Service) is running"_s;
        QTest::newRow("set up") << root << radicale->password() << true << u"Last sync: "_s;
    }
    void setupProblemsInPlainWords()
    {
        QFETCH(QString, server);
        QFETCH(QString, password);
        QFETCH(bool, vaultThere);
        QFETCH(QString, status);
        MemoryVault vault;
        ScreenHarness h;
        SyncService sync(h.settings, vaultThere ? &vault : nullptr,
                         scratch->filePath(u"setup-state%1.json"_s.arg(++m_books)));
        h.prepare = [&sync](Session &session) { session.sync = &sync; };
        h.show<SettingsScreenController>("settingsScreen/SettingsScreen.qml");
        QCOMPARE(h.text("lblSyncStatus"), u"Not set up"_s);
        h.tap("btnSync");
        QTRY_VERIFY(h.opened("syncDialog"));
        QTRY_VERIFY(h.find("syncServerField")->hasActiveFocus());
        h.find("syncServerField")->setProperty("text", server);
        h.find("syncUserField")->setProperty("text", radicale->user());
        h.find("syncPasswordField")->setProperty("text", password);
        h.tap("syncSetUpButton");
        QTRY_VERIFY_WITH_TIMEOUT(h.text("lblSyncStatus").startsWith(status), 20000);
        QCOMPARE(h.text("syncDialogStatus"), h.text("lblSyncStatus"));
        QCOMPARE(h.settings.value(syncAddressBook).has_value(), status.startsWith(u"Last"));
        QCOMPARE(vault.passwords.size(), status.startsWith(u"Last") ? 1 : 0);
        // Closed, the keyboard is back on the row.
        h.tap("syncCloseButton");
        QTRY_VERIFY(h.find("btnSync")->hasActiveFocus());
    }

    // The settings store writes the favorites on its own thread, slowly or
    // onto a full disk: the state that names what came is written after
    // them, or not at all.
    void stateNeverAheadOfTheFavorites_data()
    {
        QTest::addColumn<int>("settingsFault");
        QTest::newRow("slow disk") << 0;
        QTest::newRow("full disk") << ENOSPC;
    }
    void stateNeverAheadOfTheFavorites()
    {
        QFETCH(int, settingsFault);
        const SyncAccount account = newAccount();
        SyncDevice other(scratch->filePath(u"elsewhere%1"_s.arg(m_books)));
        QVERIFY(other.favorites.appendMany({Favorite(u"Eve"_s, u"5 5 1995"_s)}));
        QVERIFY(other.sync(account).ok);

        const QString folder = scratch->filePath(u"slow%1"_s.arg(m_books));
        std::mutex mutex;
        QStringList order;
        const auto note = [&](const QString &what) {
            const std::lock_guard lock(mutex);
            order.append(what);
        };
        FileSettingsStore settings(folder + u"/tavlo.conf"_s, AtomicFileWriter([&](auto step) {
                                       if (step != AtomicFileWriter::Step::Rename)
                                           return 0;
                                       QThread::msleep(300);
                                       note(u"favorites"_s);
                                       return settingsFault;
                                   }));
        settings.writeInBackground();
        const QString statePath = folder + u"/sync-state.json"_s;
        SyncEngine engine(settings, statePath, account);
        engine.setStateWriter(AtomicFileWriter([&](auto step) {
            if (step == AtomicFileWriter::Step::Rename)
                note(u"state"_s);
            return 0;
        }));
        SyncOutcome outcome;
        QVERIFY(waitUntilDone([&](auto done) {
            engine.start([&, done](const SyncOutcome &result) {
                outcome = result;
                done();
            });
        }));
        settings.waitForWrites();
        if (settingsFault == 0) {
            QVERIFY2(outcome.ok, qPrintable(outcome.problem));
            QCOMPARE(order.value(0), u"favorites"_s);
            QVERIFY(order.contains(u"state"_s));
        } else {
            QVERIFY(!outcome.ok);
            QCOMPARE(SyncService::plainProblem(outcome.problem, UiStrings()),
                     u"The favorites could not be saved on this device"_s);
            QVERIFY(!order.contains(u"state"_s));
            QVERIFY(!QFile::exists(statePath));
        }
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QTemporaryDir folder;
    scratch = &folder;
    QString whyNot;
    radicale = CardDavServer::start(CardDavServer::Kind::Radicale, folder.filePath(u"radicale"_s),
                                    &whyNot);
    if (!radicale) {
        qWarning("Radicale cannot start: %s", qPrintable(whyNot));
        return 77;
    }
    TestSyncApp test;
    const int status = QTest::qExec(&test, argc, argv);
    radicale.reset();
    return status;
}

#include "tst_syncapp.moc"
