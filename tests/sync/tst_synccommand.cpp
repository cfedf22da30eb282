// SPDX-License-Identifier: MIT
// `tavlo sync` as people run it: the real program, the password in
// gnome-keyring on a private bus, Radicale and Xandikos on loopback, and a
// sync killed at random points that the next sync puts right.
#include "SyncHarness.h"

#include <QRandomGenerator>
#include <QTest>
#include <csignal>

using namespace Qt::Literals::StringLiterals;
using Kind = CardDavServer::Kind;

class TestSyncCommand : public QObject
{
    Q_OBJECT

    static void checkOneLineFailure(const TavloRun &run)
    {
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith(u"tavlo sync: "_s), qPrintable(run.err));
        QCOMPARE(run.err.count(u'\n'), 1);
    }

private slots:
    void setUpAndSync_data() { SyncWorld::serverRows(); }

    // From the server's root to a synced second device; the password is in
    // the keyring and in no file under the settings.
    void setUpAndSync()
    {
        QFETCH(Kind, kind);
        CardDavServer &server = world.server(kind);
        const QString a = world.newFolder(u"config"_s);
        const QString b = world.newFolder(u"config"_s);
        const QByteArray password = server.password().toUtf8() + '\n';

        TavloRun run =
            tavlo(a, {u"sync"_s, u"setup"_s, server.root().toString(), server.user()}, password);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        const QUrl book(run.out.trimmed());
        // Made in the user's address-book home.
        QCOMPARE(book.path(), server.home().path() + u"birthdays/"_s);
        // Found, not made again, from the address book itself too.
        run = tavlo(b, {u"sync"_s, u"setup"_s, book.toString(), server.user()}, password);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out.trimmed(), book.toString());

        QCOMPARE(tavlo(a, {u"favorites"_s, u"add"_s, u"Ann"_s, u"1985-03-12"_s}).status, 0);
        run = tavlo(a, {u"sync"_s});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.out, u"sent 1, received 0, deleted 0, conflicts kept 0\n"_s);
        run = tavlo(b, {u"sync"_s});
        QCOMPARE(run.out, u"sent 0, received 1, deleted 0, conflicts kept 0\n"_s);
        QCOMPARE(tavlo(b, {u"favorites"_s, u"list"_s}).out.count(u"Ann"_s), 1);

        for (const QString &folder : {a, b})
            QCOMPARE(filesHolding(folder, server.password().toUtf8()), QStringList());

        QCOMPARE(tavlo(b, {u"sync"_s, u"remove"_s}).status, 0);
        checkOneLineFailure(tavlo(b, {u"sync"_s}));
        QVERIFY(!QFile::exists(b + u"/tavlo/sync-state.json"_s));
        // Forgetting the account leaves the favorites.
        QCOMPARE(tavlo(b, {u"favorites"_s, u"list"_s}).out.count(u"Ann"_s), 1);
    }

    void failures_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<bool>("withKeyring");
        QTest::addColumn<QString>("says");
        const CardDavServer &radicale = world.server();
        const QString root = radicale.root().toString();
        QTest::newRow("wrong password") << QStringList{u"sync"_s, u"setup"_s, root, radicale.user()}
                                        << QByteArray("wrong\n") << true << u"refused the login"_s;
        QTest::newRow("no server")
            << QStringList{u"sync"_s, u"setup"_s, u"http://127.0.0.1:9/"_s, radicale.user()}
            << QByteArray("x\n") << true << u"cannot reach"_s;
        QTest::newRow("no password given")
            << QStringList{u"sync"_s, u"setup"_s, root, radicale.user()} << QByteArray() << true
            << u"password"_s;
        QTest::newRow("no Secret Service")
            << QStringList{u"sync"_s, u"setup"_s, root, radicale.user()}
            << radicale.password().toUtf8() << false << u"Secret Service"_s;
        QTest::newRow("no account")
            << QStringList{u"sync"_s} << QByteArray() << true << u"no account"_s;
    }

    void failures()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, input);
        QFETCH(bool, withKeyring);
        QFETCH(QString, says);
        const QString folder = world.newFolder(u"config"_s);
        QProcessEnvironment environment = world.environmentFor(folder);
        if (!withKeyring)
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s,
                               u"unix:path="_s + folder + u"/no-bus"_s);
        const TavloRun run = tavlo(folder, arguments, input, environment);
        checkOneLineFailure(run);
        QVERIFY2(run.err.contains(says), qPrintable(run.err));
        // Nothing of an account stays behind.
        QVERIFY(!QFile::exists(folder + u"/tavlo/sync-state.json"_s));
        QVERIFY(tavlo(folder, {u"sync"_s}).err.contains(u"no account"_s));
    }

    void killedAtRandomPoints_data() { SyncWorld::serverRows(); }

    // Device A changes its favorites and starts syncs that are killed
    // (SIGKILL) at random moments, again and again, while device B adds
    // birthdays and syncs; after one whole sync each, A, B and the server
    // hold exactly the same: nothing lost, nothing doubled, nothing deleted
    // come back.
    void killedAtRandomPoints()
    {
        QFETCH(Kind, kind);
        CardDavServer &server = world.server(kind);
        const QString a = world.newFolder(u"config"_s);
        const QString b = world.newFolder(u"config"_s);
        const QByteArray password = server.password().toUtf8() + '\n';
        // A book of this test's own, so that other tests' cards do not count.
        const SyncAccount account = world.newAccount(kind);
        for (const QString &folder : {a, b}) {
            const QStringList setup{u"sync"_s, u"setup"_s, account.addressBook.toString(),
                                    server.user()};
            QCOMPARE(tavlo(folder, setup, password).status, 0);
        }
        SyncDevice deviceA(a);
        SyncDevice deviceB(b);
        FavoritesStore &favoritesA = deviceA.favorites;
        FavoritesStore &favoritesB = deviceB.favorites;
        QRandomGenerator random(QRandomGenerator::global()->generate());
        qInfo() << "seed for this run's changes:" << random.generate();
        int made_ = 0;
        const auto newFavorites = [&](int count) {
            QList<Favorite> list;
            for (int i = 0; i < count; ++i) {
                ++made_;
                list.append(Favorite(
                    u"P%1"_s.arg(made_),
                    u"%1 %2 19%3"_s.arg(1 + made_ % 28).arg(1 + made_ % 12).arg(50 + made_ % 50)));
            }
            return list;
        };

        QElapsedTimer timer;
        favoritesA.load();
        QVERIFY(favoritesA.appendMany(newFavorites(30)));
        timer.start();
        QCOMPARE(tavlo(a, {u"sync"_s}).status, 0);
        const qint64 wholeSync = std::max<qint64>(timer.elapsed(), 50);

        int killed = 0;
        const int rounds = 10;
        // What A and B should hold in the end, by id: each change A makes
        // and each favorite B adds, as it is made (a needless conflict copy
        // or a favorite come back from the dead would be extra).
        QMap<QString, QString> expected;
        const auto note = [&expected](const Favorite &favorite) {
            expected.insert(favorite.id, favorite.name + u'|' + favorite.birthday);
        };
        const auto noteLast = [&note](FavoritesStore &store, qsizetype count) {
            store.load();
            for (qsizetype i = store.count() - count; i < store.count(); ++i)
                note(store.at(i));
        };
        noteLast(favoritesA, favoritesA.count());
        for (int round = 0; round < rounds; ++round) {
            favoritesA.load();
            QVERIFY(favoritesA.appendMany(newFavorites(15)));
            noteLast(favoritesA, 15);
            for (int i = 0; i < 3; ++i) {
                favoritesA.load();
                const qsizetype at = random.bounded(favoritesA.count());
                const Favorite chosen = favoritesA.at(at);
                if (i == 0) {
                    QVERIFY(favoritesA.remove(at));
                    expected.remove(chosen.id);
                } else {
                    QVERIFY(favoritesA.update(at, chosen.name + u"r"_s, chosen.birthday));
                    note(Favorite(chosen.name + u"r"_s, chosen.birthday, chosen.id));
                }
            }
            const QList<Favorite> added = newFavorites(3);
            favoritesB.load();
            QVERIFY(favoritesB.appendMany(added));
            // With the ids B gave them, which A learns through their UIDs.
            noteLast(favoritesB, added.size());
            QCOMPARE(tavlo(b, {u"sync"_s}).status, 0);

            // Killed somewhere between its start and the time a whole sync takes.
            QProcess sync;
            sync.setProcessEnvironment(world.environmentFor(a));
            sync.start(QStringLiteral(TAVLO_EXECUTABLE), {u"sync"_s});
            QVERIFY(sync.waitForStarted());
            const int delay = int(random.bounded(wholeSync));
            QTest::qWait(delay);
            // Only a process still running: a pid of 0 would be our own group.
            if (sync.state() == QProcess::Running && sync.processId() > 0)
                ::kill(pid_t(sync.processId()), SIGKILL);
            sync.waitForFinished();
            killed += sync.exitStatus() == QProcess::CrashExit;
        }

        qInfo("%d of %d syncs were killed before their end", killed, rounds);
        TavloRun run = tavlo(a, {u"sync"_s});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        QVERIFY2(tavlo(b, {u"sync"_s}).status == 0, "device B");
        run = tavlo(a, {u"sync"_s});
        QCOMPARE(run.out, u"sent 0, received 0, deleted 0, conflicts kept 0\n"_s);

        favoritesA.load();
        favoritesB.load();
        QStringList onA = contentsOf(favoritesA.all());
        QCOMPARE(contentsOf(favoritesB.all()), onA);
        QCOMPARE(world.viewOf(account).contents(), onA);
        // A holds what it made and kept, and everything B added.
        QStringList wanted = expected.values();
        wanted.sort();
        QVERIFY2(onA == wanted, qPrintable(differenceOf(onA, wanted)));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    return SyncWorld::run<TestSyncCommand>(argc, argv, SyncWorld::bothServers | SyncWorld::keyring);
}

#include "tst_synccommand.moc"
