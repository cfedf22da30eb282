// SPDX-License-Identifier: MIT
// The running app's side of sync, against Radicale: syncing by itself after
// a change, after a failure and when the network is back, showing what came
// from elsewhere, problems on the settings screen in plain words (after a
// restart too), and the state never ahead of the favorites that the
// settings store writes in the background.
#include "ScreenHarness.h"
#include "SyncHarness.h"

#include "favoritesScreen/FavoritesScreenController.h"
#include "settingsScreen/SettingsScreenController.h"
#include "sync/SyncService.h"
#include "sync/SyncState.h"

#include <QFile>
#include <QSignalSpy>
#include <cerrno>
#include <mutex>

using namespace Qt::Literals::StringLiterals;
using namespace SettingsKeys;

class TestSyncApp : public QObject
{
    Q_OBJECT

private slots:
    // The favorites screen open, a sync service as the app has one.
    void syncsByItselfAndShowsChangesFromElsewhere()
    {
        const SyncAccount account = world.newAccount();
        QVERIFY(!account.addressBook.isEmpty());
        MemoryVault vault;
        ScreenHarness h;
        keepAccount(h.settings, vault, account);
        SyncService sync(h.settings, &vault, world.newFolder() + u"/app-state.json"_s);
        sync.setDelays(100, 60000);
        h.prepare = [&sync](Session &session) {
            session.sync = &sync;
            session.favoritesStored = [&sync] { sync.favoritesChanged(); };
        };
        auto *list = h.show<FavoritesScreenController>("favoritesScreen/FavoritesScreen.qml");
        sync.start();
        QTRY_VERIFY(!sync.busy());
        AddressBookView server = SyncWorld::viewOf(account);

        // A change here reaches the server a moment later, with no one asking.
        QVERIFY(h.session->favorites.append(u"Ann"_s, 12, 3, 1985));
        QTRY_COMPARE_WITH_TIMEOUT(server.contents(), QStringList{u"Ann|12 3 1985"_s}, 10000);
        QTRY_VERIFY(!sync.busy());

        // One made on another device shows in the open list.
        SyncDevice other(world.newFolder());
        QVERIFY(other.addAndSync(account, {u"Cat|1 1 2000"_s}));
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
        const CardDavServer &radicale = world.server();
        const QString root = radicale.root().toString();
        QTest::newRow("nothing listens") << u"http://127.0.0.1:9/"_s << radicale.password() << true
                                         << u"The server could not be reached"_s;
        QTest::newRow("wrong password")
            << root << u"wrong"_s << true << u"The server refused the user name or password"_s;
        QTest::newRow("no Secret Service") << root << radicale.password() << false
                                           << u"No password store (Secret Service) is running"_s;
        QTest::newRow("set up") << root << radicale.password() << true << u"Last sync: "_s;
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
                         world.newFolder() + u"/state.json"_s);
        h.prepare = [&sync](Session &session) { session.sync = &sync; };
        h.show<SettingsScreenController>("settingsScreen/SettingsScreen.qml");
        QCOMPARE(h.text("lblSyncStatus"), u"Not set up"_s);
        h.tap("btnSync");
        QTRY_VERIFY(h.opened("syncDialog"));
        QTRY_VERIFY(h.find("syncServerField")->hasActiveFocus());
        h.find("syncServerField")->setProperty("text", server);
        h.find("syncUserField")->setProperty("text", world.server().user());
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

    // Set up again on another address book: the old account's password and
    // last sync go; removed, nothing of the account stays.
    void setUpAgainThenRemove()
    {
        SyncDevice device(world.newFolder());
        MemoryVault vault;
        SyncService sync(device.settings, &vault, device.statePath);
        std::optional<SyncProblem> problem;
        const auto answer = [&](const SyncProblem &p) {
            problem = p;
            QVERIFY(!device.settings.value(syncLastDone));
        };
        for (const SyncAccount &account : {world.newAccount(), world.newAccount()}) {
            problem.reset();
            sync.setUp(account.addressBook, account.user, account.password, answer);
            QTRY_VERIFY(problem && !sync.busy());
            QVERIFY2(problem->isEmpty(), qPrintable(problem->line));
            QCOMPARE(vault.passwords.keys(), QStringList{PasswordVault::accountName(
                                                 account.user, account.addressBook.toString())});
            QVERIFY(device.settings.value(syncLastDone).has_value());
        }
        problem.reset();
        sync.remove([&](const SyncProblem &p) { problem = p; });
        QTRY_VERIFY(problem && problem->isEmpty());
        QVERIFY(vault.passwords.isEmpty());
        QVERIFY(!sync.hasAccount() && !QFile::exists(device.statePath));
    }

    // A sync that failed is tried again after the retry delay, with no one
    // asking, for as long as the server fails; then it goes through.
    void triesAgainAfterAFailure()
    {
        ServiceDevice device(world.newFolder());
        QVERIFY(device.favorites.append(u"Ann"_s, 12, 3, 1985));
        device.service.setDelays(60000, 200);
        QSignalSpy startsAndEnds(&device.service, &SyncService::busyChanged);
        device.proxy.failFrom(1, FaultProxy::Fault::Status500);
        device.service.start();
        // The first sync and two retries.
        QTRY_VERIFY_WITH_TIMEOUT(startsAndEnds.count() >= 6, 10000);
        QVERIFY(!device.problem().isEmpty());
        QVERIFY(!device.synced());
        device.proxy.failFrom(0, FaultProxy::Fault::None);
        QTRY_VERIFY_WITH_TIMEOUT(device.synced(), 10000);
        QCOMPARE(device.problem(), QString());
        QCOMPARE(world.viewOf(device.account).contents(), QStringList{u"Ann|12 3 1985"_s});
    }

    // The network back online tries a sync that failed at once; without a
    // failure, or when the network is not back, a change does nothing. The
    // failure's kind is kept: after a restart, the row still says it.
    void networkBackTriesAgainOnlyAfterAFailure()
    {
        using Reachability = QNetworkInformation::Reachability;
        const QString folder = world.newFolder();
        ServiceDevice device(folder);
        SyncService &sync = device.service;
        sync.start();
        QTRY_VERIFY(!sync.busy());
        QVERIFY(device.synced());
        sync.networkChanged(Reachability::Online);
        QVERIFY(!sync.busy());

        device.proxy.failFrom(device.proxy.requests() + 1, FaultProxy::Fault::Status401);
        sync.syncNow();
        QTRY_VERIFY(!sync.busy());
        for (const auto reachability : {Reachability::Disconnected, Reachability::Local,
                                        Reachability::Site, Reachability::Unknown}) {
            sync.networkChanged(reachability);
            QVERIFY(!sync.busy());
        }
        QCOMPARE(device.settings.value(syncProblemKind).value_or(QString()), u"login-refused"_s);
        SyncDevice restarted(folder);
        QCOMPARE(SyncService(restarted.settings, nullptr, {}).status(UiStrings(), QLocale::c()),
                 u"The server refused the user name or password"_s);

        device.proxy.failFrom(0, FaultProxy::Fault::None);
        sync.networkChanged(Reachability::Online);
        QVERIFY(sync.busy());
        QTRY_VERIFY(!sync.busy());
        QCOMPARE(device.problem(), QString());
        sync.networkChanged(Reachability::Online);
        QVERIFY(!sync.busy());
    }

    // The row's text follows the stored kind, whatever the line says; a
    // file from before kinds were kept shows the text for its line.
    void storedProblemInPlainWords_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("status");
        const QString unreachable = u"cannot reach the server: gone"_s;
        QTest::newRow("the kind decides")
            << unreachable << u"no-password"_s
            << u"No password is kept for this account: set it up again"_s;
        QTest::newRow("another kind")
            << unreachable << u"other"_s << u"The sync did not finish: "_s + unreachable;
        QTest::newRow("old file, known line")
            << unreachable << QString() << u"The server could not be reached"_s;
        QTest::newRow("old file, other line")
            << u"the server answered HTTP 418"_s << QString()
            << u"The sync did not finish: the server answered HTTP 418"_s;
    }
    void storedProblemInPlainWords()
    {
        QFETCH(QString, line);
        QFETCH(QString, kind);
        QFETCH(QString, status);
        MemorySettingsStore settings;
        settings.set(syncAddressBook, u"http://127.0.0.1:9/book/"_s);
        settings.set(syncProblem, line);
        if (!kind.isEmpty())
            settings.set(syncProblemKind, kind);
        QCOMPARE(SyncService(settings, nullptr, {}).status(UiStrings(), QLocale::c()), status);
    }

    // The settings store writes the favorites on its own thread, slowly or
    // onto a full disk: the state that names what came is put in place after
    // them, or not at all (before them it is only aside).
    void stateNeverAheadOfTheFavorites_data()
    {
        QTest::addColumn<int>("settingsFault");
        QTest::newRow("slow disk") << 0;
        QTest::newRow("full disk") << ENOSPC;
    }
    void stateNeverAheadOfTheFavorites()
    {
        QFETCH(int, settingsFault);
        const SyncAccount account = world.newAccount();
        SyncDevice other(world.newFolder());
        QVERIFY(other.addAndSync(account, {u"Eve|5 5 1995"_s}));

        const QString folder = world.newFolder();
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
            // The state aside is gone once one is in place.
            if (step == AtomicFileWriter::Step::Rename)
                note(QFile::exists(statePath + u".next"_s) ? u"state"_s : u"aside"_s);
            return 0;
        }));
        const SyncOutcome outcome = runSync(engine);
        settings.waitForWrites();
        if (settingsFault == 0) {
            QVERIFY2(outcome.ok, qPrintable(outcome.problem));
            QCOMPARE(order.mid(0, 3), QStringList({u"aside"_s, u"favorites"_s, u"state"_s}));
        } else {
            QVERIFY(!outcome.ok);
            QCOMPARE(SyncService::plainProblem({outcome.failure, outcome.problem}, UiStrings()),
                     u"The favorites could not be saved on this device"_s);
            QCOMPARE(order, QStringList({u"aside"_s, u"favorites"_s}));
            QVERIFY(!QFile::exists(statePath));
        }
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    return SyncWorld::run<TestSyncApp>(argc, argv, SyncWorld::radicale);
}

#include "tst_syncapp.moc"
