// SPDX-License-Identifier: MIT
// Two devices syncing one address book on a real server (Radicale with an
// htpasswd login, Xandikos), each change made on either side or both.
#include "DiskFaults.h"
#include "FaultProxy.h"
#include "SyncHarness.h"

#include "sync/SyncState.h"
#include "sync/SyncTokenFile.h"

#include <QDir>
#include <QTest>
#include <cerrno>

using namespace Qt::Literals::StringLiterals;
using Kind = CardDavServer::Kind;

Q_DECLARE_METATYPE(FaultProxy::Fault)

class TestCardDavSync : public QObject
{
    Q_OBJECT

    static void addServerColumn() { QTest::addColumn<Kind>("kind"); }

private slots:
    void scenarios_data()
    {
        addServerColumn();
        QTest::addColumn<QString>("here");
        QTest::addColumn<QString>("elsewhere");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("conflicts");
        // Made on this device, on the other; what all three hold in the end.
        const struct
        {
            const char *name, *here, *elsewhere, *expected;
            int conflicts;
        } cases[] = {
            {"create here", "create:Cat|1 1 2000", "", "Ann|12 3 1985;Cat|1 1 2000", 0},
            {"create elsewhere", "", "create:Cat|1 1", "Ann|12 3 1985;Cat|1 1", 0},
            {"rename here", "rename:Anna", "", "Anna|12 3 1985", 0},
            {"rename elsewhere", "", "rename:Anna", "Anna|12 3 1985", 0},
            {"redate here", "redate:13 3", "", "Ann|13 3", 0},
            {"redate elsewhere", "", "redate:13 3 1986", "Ann|13 3 1986", 0},
            {"delete here", "delete", "", "", 0},
            {"delete elsewhere", "", "delete", "", 0},
            {"renamed on both sides", "rename:Ann A", "rename:Ann B",
             "Ann A (conflict copy)|12 3 1985;Ann B|12 3 1985", 1},
            {"same rename on both sides", "rename:Anna", "rename:Anna", "Anna|12 3 1985", 0},
            {"renamed here, redated elsewhere", "rename:Anna", "redate:1 1 1985",
             "Ann|1 1 1985;Anna (conflict copy)|12 3 1985", 1},
            {"deleted here, renamed elsewhere", "delete", "rename:Ann B", "Ann B|12 3 1985", 0},
            {"renamed here, deleted elsewhere", "rename:Ann A", "delete", "Ann A|12 3 1985", 0},
            {"deleted on both sides", "delete", "delete", "", 0},
            {"same new birthday on both sides", "create:Cat|1 1 2000", "create:Cat|1 1 2000",
             "Ann|12 3 1985;Cat|1 1 2000", 0},
        };
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            for (const auto &c : cases) {
                QTest::addRow("%s: %s", qPrintable(CardDavServer::nameOf(kind)), c.name)
                    << kind << QString::fromUtf8(c.here) << QString::fromUtf8(c.elsewhere)
                    << QString::fromUtf8(c.expected).split(u';', Qt::SkipEmptyParts) << c.conflicts;
            }
        }
    }

    // Both devices hold Ann and agree with the server; the other device
    // makes its change and syncs, this one makes its own and syncs, then
    // both sync once more: all three hold the same.
    void scenarios()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, here);
        QFETCH(QString, elsewhere);
        QFETCH(QStringList, expected);
        QFETCH(int, conflicts);
        expected.sort();
        const SyncAccount account = world.newAccount(kind);
        QVERIFY(account.addressBook.isValid());
        SyncDevice a(world.newFolder());
        SyncDevice b(world.newFolder());
        QVERIFY(a.addAndSync(account, {u"Ann|12 3 1985"_s}));
        QVERIFY2(b.sync(account).ok, "sync failed");
        QCOMPARE(b.contents(), QStringList{u"Ann|12 3 1985"_s});

        b.change(elsewhere);
        QVERIFY(b.sync(account).ok);
        a.change(here);
        SyncOutcome outcome = a.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(outcome.counts.conflicts, conflicts);
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY2(a.sync(account).ok, "sync failed");

        QCOMPARE(a.contents(), expected);
        QCOMPARE(b.contents(), expected);
        QCOMPARE(world.viewOf(account).contents(), expected);
        // Settled: another sync changes nothing on either side.
        outcome = a.sync(account);
        QCOMPARE(outcome.counts, SyncCounts());
    }

    void yearlessForms_data()
    {
        addServerColumn();
        QTest::addColumn<QString>("version");
        QTest::addColumn<QByteArray>("birthdayLine");
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            const QByteArray server = CardDavServer::nameOf(kind).toUtf8();
            QTest::newRow(server + " 4.0") << kind << u"4.0"_s << QByteArray("BDAY:--0229\r\n");
            QTest::newRow(server + " 3.0")
                << kind << u"3.0"_s << QByteArray("BDAY;X-APPLE-OMIT-YEAR=1604:1604-02-29\r\n");
        }
    }

    void yearlessForms()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, version);
        QFETCH(QByteArray, birthdayLine);
        const SyncAccount account = world.newAccount(kind, version);
        SyncDevice a(world.newFolder());
        QVERIFY(a.addAndSync(account, {u"Dee|29 2"_s}));
        const QList<QByteArray> cards = world.viewOf(account).cards().values();
        QCOMPARE(cards.size(), 1);
        QVERIFY2(cards.first().contains(birthdayLine), cards.first().constData());
        QVERIFY(cards.first().contains("VERSION:" + version.toLatin1()));
        SyncDevice b(world.newFolder());
        QVERIFY2(b.sync(account).ok, "sync failed");
        QCOMPARE(b.contents(), QStringList{u"Dee|29 2"_s});
    }

    // A card another address book wrote: what Tavlo does not use stays as it
    // was, byte for byte, when Tavlo renames the person; a card without a
    // birthday is no favorite and is left alone.
    void foreignCardsKeepTheirLines_data() { SyncWorld::serverRows(); }

    void foreignCardsKeepTheirLines()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = world.newAccount(kind);
        AddressBookView view = world.viewOf(account);
        const QByteArray card =
            "BEGIN:VCARD\r\nVERSION:3.0\r\nPRODID:-//Phone//EN\r\nUID:phone-123\r\n"
            "N:Lee;Ann;;;\r\nFN:Ann Lee\r\nTEL;TYPE=cell:+49 30 1234567\r\n"
            "X-PHONE-FLAG:keep;this\\,exactly\r\n"
            "NOTE:a long note that the phone folded over more than one line\\, as phones do w\r\n"
            " ith long notes\r\nitem1.EMAIL;TYPE=INTERNET:ann@example.org\r\n"
            "BDAY:1985-03-12\r\nEND:VCARD\r\n";
        const QByteArray noBirthday = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:no-bday\r\nN:Lee;Bo;;;\r\n"
                                      "FN:Bo Lee\r\nEND:VCARD\r\n";
        QVERIFY(view.put(u"phone.vcf"_s, card));
        QVERIFY(view.put(u"nobday.vcf"_s, noBirthday));
        // The card as the server keeps it (Radicale writes it anew).
        const QByteArray kept = view.cards().value(view.urlOf(u"phone.vcf"_s).path());
        const QByteArray keptNoBirthday = view.cards().value(view.urlOf(u"nobday.vcf"_s).path());
        QVERIFY(kept.contains("X-PHONE-FLAG"));
        SyncDevice a(world.newFolder());
        QVERIFY(a.sync(account).ok);
        QCOMPARE(a.contents(), QStringList{u"Ann Lee|12 3 1985"_s});
        QVERIFY(a.favorites.update(a.indexOf(u"Ann Lee"_s), u"Ann Lee-Smith"_s, u"12 3 1985"_s));
        const SyncOutcome outcome = a.sync(account);
        QVERIFY(outcome.ok);
        QCOMPARE(outcome.counts.sent, 1);

        const QMap<QString, QByteArray> cards = view.cards();
        QCOMPARE(cards.size(), 2);
        const QByteArray changed = cards.value(view.urlOf(u"phone.vcf"_s).path());
        QByteArray expected = kept;
        expected.replace("FN:Ann Lee\r\n", "FN:Ann Lee-Smith\r\n");
        QVERIFY(expected != kept);
        if (kind == Kind::Xandikos) {
            // It keeps cards as they were sent.
            QCOMPARE(changed, expected);
        } else {
            // Radicale writes every card anew (its order, its folding): the
            // lines are still all there, each as it was.
            QCOMPARE(unfoldedLines(changed), unfoldedLines(expected));
        }
        QCOMPARE(cards.value(view.urlOf(u"nobday.vcf"_s).path()), keptNoBirthday);
    }

    // A change sent with an ETag that moved on meanwhile (412): fetched,
    // put together, sent again or kept as a conflict copy.
    void refusedChange_data()
    {
        addServerColumn();
        QTest::addColumn<bool>("contentChanged");
        QTest::addColumn<QStringList>("expected");
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            const QByteArray server = CardDavServer::nameOf(kind).toUtf8();
            QTest::newRow(server + ": only a line Tavlo does not use")
                << kind << false << QStringList{u"Anna|12 3 1985"_s};
            QTest::newRow(server + ": renamed there too")
                << kind << true
                << QStringList{u"Ann B|12 3 1985"_s, u"Anna (conflict copy)|12 3 1985"_s};
        }
    }

    void refusedChange()
    {
        QFETCH(Kind, kind);
        QFETCH(bool, contentChanged);
        QFETCH(QStringList, expected);
        const SyncAccount account = world.newAccount(kind);
        AddressBookView view = world.viewOf(account);
        SyncDevice a(world.newFolder());
        QVERIFY(a.addAndSync(account, {u"Ann|12 3 1985"_s}));
        QVERIFY(a.favorites.update(0, u"Anna"_s, u"12 3 1985"_s));
        int refusals = 0;
        // Between A's listing and its sending, another client changes the card.
        const SyncOutcome outcome = a.sync(account, [&](SyncEngine::Step step) {
            if (step != SyncEngine::Step::Sending || refusals++)
                return;
            const QString href = view.cards().firstKey();
            QByteArray card = view.cards().first();
            if (contentChanged)
                card.replace("FN:Ann\r\n", "FN:Ann B\r\n");
            card.replace("END:VCARD", "NOTE:touched\r\nEND:VCARD");
            QVERIFY(view.put(href, card, false));
        });
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(outcome.counts.conflicts, contentChanged ? 1 : 0);
        QCOMPARE(a.contents(), expected);
        QCOMPARE(view.contents(), expected);
        // The other client's line survived either way.
        QVERIFY(view.cards().values().join().contains("NOTE:touched"));
    }

    // A token the server does not know (403, 409 or 500, by server) falls
    // back to listing every card.
    void unknownTokenFallsBack_data() { SyncWorld::serverRows(); }

    void unknownTokenFallsBack()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = world.newAccount(kind);
        SyncDevice a(world.newFolder());
        SyncDevice b(world.newFolder());
        QVERIFY(a.addAndSync(account, {u"Ann|12 3 1985"_s}));
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY(b.favorites.remove(b.indexOf(u"Ann"_s)));
        QVERIFY2(b.sync(account).ok, "sync failed");
        SyncState state = SyncState::read(a.statePath);
        QVERIFY(!state.syncToken.isEmpty());
        state.syncToken = account.addressBook.toString() + u"sync/no-such-token"_s;
        QVERIFY(state.write(a.statePath));
        QVERIFY(a.sync(account).ok);
        QCOMPARE(a.contents(), QStringList{u"Bob|1 2 1990"_s});
    }

    // The token file that lets a sync with nothing changed go without the
    // state, when it is missing, damaged or speaks for another state or a
    // token the server does not know: the sync reads the state and loses
    // nothing, and after it a sync with nothing changed is one request
    // again. Changes on either side go through the token's way too.
    void tokenFile_data()
    {
        addServerColumn();
        QTest::addColumn<QString>("damage");
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            for (const char *damage :
                 {"none", "missing", "garbage", "unknown token", "older state", "state removed"})
                QTest::addRow("%s: %s", qPrintable(CardDavServer::nameOf(kind)), damage)
                    << kind << QString::fromLatin1(damage);
        }
    }

    void tokenFile()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, damage);
        const SyncAccount account = world.newAccount(kind);
        FaultProxy proxy(world.server(kind).port());
        SyncAccount proxied = account;
        proxied.addressBook.setPort(proxy.port());
        SyncDevice a(world.newFolder());
        const auto requestsOfSync = [&] {
            const int before = proxy.requests();
            const SyncOutcome outcome = a.sync(proxied);
            return outcome.ok ? proxy.requests() - before : -1;
        };
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        const QString tokenPath = SyncTokenFile::pathBeside(a.statePath);
        QFile tokenFile(tokenPath);
        QVERIFY(tokenFile.open(QIODevice::ReadOnly));
        const QByteArray written = tokenFile.readAll();
        tokenFile.close();
        QCOMPARE(requestsOfSync(), 1);

        if (damage == u"missing") {
            QVERIFY(QFile::remove(tokenPath));
        } else if (damage == u"garbage") {
            QVERIFY(tokenFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
            tokenFile.write(written.left(written.size() / 2));
            tokenFile.close();
        } else if (damage == u"unknown token") {
            std::optional<SyncTokenFile> token = SyncTokenFile::readCurrent(a.statePath);
            QVERIFY(token.has_value());
            token->syncToken.chop(8);
            token->syncToken += u"0badc0de"_s;
            QVERIFY(token->write(a.statePath));
        } else if (damage == u"older state") {
            // A state at the same token that knows no card, beside the
            // token file of the one before: trusted, the sync would never
            // learn the cards again.
            SyncState state = SyncState::read(a.statePath);
            state.entries.clear();
            QVERIFY(state.write(a.statePath));
            QVERIFY(tokenFile.open(QIODevice::WriteOnly | QIODevice::Truncate));
            tokenFile.write(written);
            tokenFile.close();
        } else if (damage == u"state removed") {
            QVERIFY(QFile::remove(a.statePath));
        }
        const SyncOutcome outcome = a.sync(proxied);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(SyncState::read(a.statePath).entries.size(), 1);
        QCOMPARE(requestsOfSync(), 1);

        // A change on the server, then one here.
        SyncDevice b(world.newFolder());
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        QCOMPARE(a.contents(), (QStringList{u"Ann|12 3 1985"_s, u"Bob|1 2 1990"_s}));
        QVERIFY(a.favorites.update(a.indexOf(u"Ann"_s), u"Anna"_s, u"12 3 1985"_s));
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        QCOMPARE(world.viewOf(account).contents(),
                 (QStringList{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s}));
        QCOMPARE(requestsOfSync(), 1);
    }

    // Many cards to fetch go in one query for every card: only those the
    // listing named are taken, and one removed meanwhile (left out of the
    // answer) is asked for by name and found gone.
    void fetchEveryCard_data() { SyncWorld::serverRows(); }

    void fetchEveryCard()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = world.newAccount(kind);
        AddressBookView view = world.viewOf(account);
        SyncDevice a(world.newFolder());
        SyncDevice b(world.newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(account).ok, "sync failed");
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY(b.favorites.appendMany({Favorite(u"Bob"_s, u"1 2 1990"_s),
                                        Favorite(u"Cat"_s, u"1 1 2000"_s),
                                        Favorite(u"Dan"_s, u"2 2 1962"_s)}));
        QVERIFY(b.favorites.update(b.indexOf(u"Ann"_s), u"Anna"_s, u"12 3 1985"_s));
        QVERIFY2(b.sync(account).ok, "sync failed");
        a.fetchEveryCardFrom = 0;
        bool removed = false;
        const SyncOutcome outcome = a.sync(account, [&](SyncEngine::Step step) {
            if (step != SyncEngine::Step::Listed || std::exchange(removed, true))
                return;
            const QMap<QString, QByteArray> cards = view.cards();
            for (auto it = cards.cbegin(); it != cards.cend(); ++it) {
                if (it.value().contains("FN:Dan"))
                    QVERIFY(view.request("DELETE", view.urlOf(it.key())).ok());
            }
        });
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QVERIFY(removed);
        const QStringList expected{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
        QCOMPARE(a.contents(), expected);
        QCOMPARE(outcome.counts.received, 3);
        QCOMPARE(view.contents(), expected);
    }

    // The server failing at any request of a sync: one plain line, nothing
    // lost on either side, and the next sync brings both together.
    void serverFaults_data()
    {
        addServerColumn();
        QTest::addColumn<FaultProxy::Fault>("fault");
        QTest::addColumn<int>("from");
        const std::pair<FaultProxy::Fault, const char *> faults[] = {
            {FaultProxy::Fault::Status500, "500"},
            {FaultProxy::Fault::Status401, "401"},
            {FaultProxy::Fault::Garbage, "garbage"},
            {FaultProxy::Fault::Silent, "no answer"},
        };
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            for (const auto &[fault, name] : faults) {
                for (const int from : {1, 3, 5}) {
                    QTest::addRow("%s: %s from request %d", qPrintable(CardDavServer::nameOf(kind)),
                                  name, from)
                        << kind << fault << from;
                }
            }
        }
    }

    void serverFaults()
    {
        QFETCH(Kind, kind);
        QFETCH(FaultProxy::Fault, fault);
        QFETCH(int, from);
        const SyncAccount account = world.newAccount(kind);
        // All of A's syncs go through the proxy, so that A's account is the
        // same address book throughout.
        FaultProxy proxy(world.server(kind).port());
        SyncAccount proxied = account;
        proxied.addressBook.setPort(proxy.port());
        SyncDevice a(world.newFolder());
        SyncDevice b(world.newFolder());
        QVERIFY(a.addAndSync(proxied, {u"Ann|12 3 1985"_s, u"Dan|2 2 1962"_s}));
        QVERIFY2(b.sync(account).ok, "sync failed");
        // Changes on both sides: one the server holds, three made here.
        QVERIFY(b.addAndSync(account, {u"Bob|1 2 1990"_s}));
        QVERIFY(a.favorites.update(a.indexOf(u"Ann"_s), u"Anna"_s, u"12 3 1985"_s));
        QVERIFY(a.favorites.remove(a.indexOf(u"Dan"_s)));
        QVERIFY(a.favorites.append(u"Cat"_s, 1, 1, 2000));
        const QStringList before = a.contents();

        proxy.failFrom(proxy.requests() + from, fault);
        const SyncOutcome outcome = a.sync(proxied, {}, 1000);
        QVERIFY(!outcome.ok);
        QVERIFY(!outcome.problem.isEmpty());
        QVERIFY(!outcome.problem.contains(u'\n'));
        // Whatever got through is a sync's worth of progress; nothing is lost.
        for (const QString &row : a.contents())
            QVERIFY2(before.contains(row) || row == u"Bob|1 2 1990"_s, qPrintable(row));

        proxy.failFrom(0, FaultProxy::Fault::None);
        QVERIFY(a.sync(proxied).ok);
        QVERIFY2(b.sync(account).ok, "sync failed");
        const QStringList expected{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
        QCOMPARE(a.contents(), expected);
        QCOMPARE(b.contents(), expected);
        QCOMPARE(world.viewOf(account).contents(), expected);
    }

    // Radicale's own refusal of a wrong password, and a server that is not
    // there: nothing changes here.
    void refusedLoginAndNoServer()
    {
        SyncAccount account = world.newAccount(Kind::Radicale);
        SyncDevice a(world.newFolder());
        QVERIFY(a.addAndSync(account, {u"Ann|12 3 1985"_s}));
        QVERIFY(a.favorites.append(u"Bob"_s, 1, 2, 1990));
        const QStringList before = a.contents();
        const SyncState state = SyncState::read(a.statePath);

        SyncAccount wrong = account;
        wrong.password = u"wrong"_s;
        SyncOutcome outcome = a.sync(wrong);
        QVERIFY(!outcome.ok);
        QVERIFY2(outcome.problem.contains(u"login"_s), qPrintable(outcome.problem));
        QCOMPARE(outcome.failure, SyncProblem::Kind::LoginRefused);
        QCOMPARE(a.contents(), before);
        QCOMPARE(SyncState::read(a.statePath), state);

        SyncAccount nowhere = account;
        QTcpServer closed;
        closed.listen(QHostAddress::LocalHost, 0);
        nowhere.addressBook.setPort(closed.serverPort());
        closed.close();
        outcome = a.sync(nowhere);
        QVERIFY(!outcome.ok);
        QVERIFY2(outcome.problem.startsWith(u"cannot reach"_s), qPrintable(outcome.problem));
        QCOMPARE(outcome.failure, SyncProblem::Kind::Unreachable);
        QCOMPARE(a.contents(), before);
    }

    // The disk full at either file a sync writes: the sync says so, and the
    // next one, with room again, loses nothing.
    void diskFull_data()
    {
        QTest::addColumn<bool>("favoritesFail");
        QTest::newRow("favorites") << true;
        QTest::newRow("sync state") << false;
    }

    void diskFull()
    {
        QFETCH(bool, favoritesFail);
        const SyncAccount account = world.newAccount(Kind::Radicale);
        const QString folder = world.newFolder();
        SyncDevice b(world.newFolder());
        {
            SyncDevice a(folder);
            QVERIFY(a.addAndSync(account, {u"Ann|12 3 1985"_s}));
        }
        QVERIFY(b.addAndSync(account, {u"Bob|1 2 1990"_s}));

        auto armed = std::make_shared<bool>(true);
        const AtomicFileWriter full = failingWriter(AtomicFileWriter::Step::Write, ENOSPC, armed);
        {
            FileSettingsStore settings(folder + u"/tavlo/tavlo.conf"_s,
                                       favoritesFail ? full : AtomicFileWriter());
            SyncEngine engine(settings, folder + u"/tavlo/sync-state.json"_s, account);
            if (!favoritesFail)
                engine.setStateWriter(full);
            const SyncOutcome outcome = runSync(engine);
            QVERIFY(!outcome.ok);
            QVERIFY2(outcome.problem.contains(u"No space left on device"_s),
                     qPrintable(outcome.problem));
            QCOMPARE(outcome.failure, SyncProblem::Kind::NotSaved);
        }
        SyncDevice a(folder);
        if (favoritesFail)
            QCOMPARE(a.contents(), QStringList{u"Ann|12 3 1985"_s});
        QVERIFY2(a.sync(account).ok, "sync failed");
        const QStringList expected{u"Ann|12 3 1985"_s, u"Bob|1 2 1990"_s};
        QCOMPARE(a.contents(), expected);
        QCOMPARE(world.viewOf(account).contents(), expected);
    }

    // A sync stopped (killed) while it stores what it received, before the
    // favorites or after them, and the favorite received then changed here:
    // the next sync keeps the change, makes no conflict copy and brings
    // back nothing deleted.
    void stoppedWhileStoring_data()
    {
        QTest::addColumn<SyncEngine::Step>("stoppedAt");
        QTest::addColumn<QString>("change");
        QTest::addColumn<QStringList>("expected");
        const QStringList both{u"Ann|12 3 1985"_s, u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
        QTest::newRow("before the favorites") << SyncEngine::Step::Storing << QString() << both;
        QTest::newRow("after them, renamed")
            << SyncEngine::Step::Stored << u"rename:Anna"_s
            << QStringList{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
        QTest::newRow("after them, deleted") << SyncEngine::Step::Stored << u"delete"_s
                                             << QStringList{u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
    }

    void stoppedWhileStoring()
    {
        QFETCH(SyncEngine::Step, stoppedAt);
        QFETCH(QString, change);
        QFETCH(QStringList, expected);
        const SyncAccount account = world.newAccount(Kind::Radicale);
        const QString folder = world.newFolder();
        SyncDevice a(folder);
        SyncDevice b(world.newFolder());
        // A has stored favorites received before (Cat), with their mark.
        QVERIFY(b.addAndSync(account, {u"Cat|1 1 2000"_s}));
        QVERIFY(a.addAndSync(account, {u"Bob|1 2 1990"_s}));
        QVERIFY(b.addAndSync(account, {u"Ann|12 3 1985"_s}));

        // What a kill at that moment leaves: every file a sync writes is on
        // the disk when it says so.
        const QString stopped = world.newFolder();
        QVERIFY(QDir().mkpath(stopped + u"/tavlo"_s));
        const SyncOutcome outcome = a.sync(account, [&](SyncEngine::Step step) {
            if (step != stoppedAt)
                return;
            const QDir from(folder + u"/tavlo"_s);
            for (const QString &file : from.entryList(QDir::Files))
                QVERIFY(QFile::copy(from.filePath(file), stopped + u"/tavlo/"_s + file));
        });
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QVERIFY(QFile::exists(stopped + u"/tavlo/sync-state.json.next"_s));

        SyncDevice restarted(stopped);
        restarted.change(change);
        QVERIFY2(restarted.sync(account).ok, "sync after the stop");
        QCOMPARE(restarted.contents(), expected);
        QCOMPARE(world.viewOf(account).contents(), expected);
        QVERIFY(!QFile::exists(stopped + u"/tavlo/sync-state.json.next"_s));
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    return SyncWorld::run<TestCardDavSync>(argc, argv, SyncWorld::bothServers);
}

#include "tst_carddavsync.moc"
