// SPDX-License-Identifier: MIT
// Two devices syncing one address book on a real server (Radicale with an
// htpasswd login, Xandikos), each change made on either side or both.
#include "CardDavServer.h"
#include "DiskFaults.h"
#include "FaultProxy.h"
#include "SyncHarness.h"

#include "sync/SyncState.h"
#include "sync/SyncTokenFile.h"

#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <map>

using namespace Qt::Literals::StringLiterals;
using Kind = CardDavServer::Kind;

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(FaultProxy::Fault)

namespace {

std::map<Kind, std::unique_ptr<CardDavServer>> servers;
QTemporaryDir *scratch = nullptr;

// "rename:Anna", "redate:13 3 1985", "delete", "create:Cat|1 1 2000" on the
// favorite "Ann" (or the list) of a device; "" changes nothing.
void change(SyncDevice &device, const QString &operation)
{
    if (operation.isEmpty())
        return;
    device.favorites.load();
    const QString verb = operation.section(u':', 0, 0);
    const QString what = operation.section(u':', 1);
    const qsizetype ann = device.indexOf(u"Ann"_s);
    if (verb == u"create") {
        QVERIFY(device.favorites.appendMany(
            {Favorite(what.section(u'|', 0, 0), what.section(u'|', 1))}));
        return;
    }
    QVERIFY(ann >= 0);
    const Favorite favorite = device.favorites.at(ann);
    if (verb == u"rename")
        QVERIFY(device.favorites.update(ann, what, favorite.birthday));
    else if (verb == u"redate")
        QVERIFY(device.favorites.update(ann, favorite.name, what));
    else if (verb == u"delete")
        QVERIFY(device.favorites.remove(ann));
    else
        QFAIL("unknown operation");
}

// A card's content lines, unfolded, in order of their text.
QList<QByteArray> unfoldedLines(QByteArray card)
{
    card.replace("\r\n", "\n").replace("\n ", "");
    QList<QByteArray> lines = card.split('\n');
    lines.removeAll(QByteArray());
    std::sort(lines.begin(), lines.end());
    return lines;
}

} // namespace

class TestCardDavSync : public QObject
{
    Q_OBJECT

    int m_books = 0;

    CardDavServer &server(Kind kind) { return *servers.at(kind); }

    SyncAccount newAccount(Kind kind, const QString &version = u"4.0"_s)
    {
        CardDavServer &s = server(kind);
        SyncAccount account;
        account.addressBook =
            newAddressBook(s.home(), u"book%1"_s.arg(++m_books), s.user(), s.password());
        account.user = s.user();
        account.password = s.password();
        account.vCardVersion = version;
        return account;
    }

    AddressBookView viewOf(const SyncAccount &account)
    {
        return AddressBookView(account.addressBook, account.user, account.password);
    }

    QString newFolder() { return scratch->filePath(u"device%1"_s.arg(++m_books)); }

    static void addServerColumn() { QTest::addColumn<Kind>("kind"); }

private slots:
    void scenarios_data()
    {
        addServerColumn();
        QTest::addColumn<QString>("here");
        QTest::addColumn<QString>("elsewhere");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("conflicts");
        const QString ann = u"Ann|12 3 1985"_s;
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            const QByteArray server = CardDavServer::nameOf(kind).toUtf8();
            const auto row = [&](const char *name) {
                return &(QTest::newRow((server + ": " + name).constData()) << kind);
            };
            *row("create here") << u"create:Cat|1 1 2000"_s << QString()
                                << QStringList{ann, u"Cat|1 1 2000"_s} << 0;
            *row("create elsewhere")
                << QString() << u"create:Cat|1 1"_s << QStringList{ann, u"Cat|1 1"_s} << 0;
            *row("rename here") << u"rename:Anna"_s << QString() << QStringList{u"Anna|12 3 1985"_s}
                                << 0;
            *row("rename elsewhere")
                << QString() << u"rename:Anna"_s << QStringList{u"Anna|12 3 1985"_s} << 0;
            *row("redate here") << u"redate:13 3"_s << QString() << QStringList{u"Ann|13 3"_s} << 0;
            *row("redate elsewhere")
                << QString() << u"redate:13 3 1986"_s << QStringList{u"Ann|13 3 1986"_s} << 0;
            *row("delete here") << u"delete"_s << QString() << QStringList{} << 0;
            *row("delete elsewhere") << QString() << u"delete"_s << QStringList{} << 0;
            *row("renamed on both sides")
                << u"rename:Ann A"_s << u"rename:Ann B"_s
                << QStringList{u"Ann A (conflict copy)|12 3 1985"_s, u"Ann B|12 3 1985"_s} << 1;
            *row("same rename on both sides")
                << u"rename:Anna"_s << u"rename:Anna"_s << QStringList{u"Anna|12 3 1985"_s} << 0;
            *row("renamed here, redated elsewhere")
                << u"rename:Anna"_s << u"redate:1 1 1985"_s
                << QStringList{u"Ann|1 1 1985"_s, u"Anna (conflict copy)|12 3 1985"_s} << 1;
            *row("deleted here, renamed elsewhere")
                << u"delete"_s << u"rename:Ann B"_s << QStringList{u"Ann B|12 3 1985"_s} << 0;
            *row("renamed here, deleted elsewhere")
                << u"rename:Ann A"_s << u"delete"_s << QStringList{u"Ann A|12 3 1985"_s} << 0;
            *row("deleted on both sides") << u"delete"_s << u"delete"_s << QStringList{} << 0;
            *row("same new birthday on both sides")
                << u"create:Cat|1 1 2000"_s << u"create:Cat|1 1 2000"_s
                << QStringList{ann, u"Cat|1 1 2000"_s} << 0;
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
        const SyncAccount account = newAccount(kind);
        QVERIFY(account.addressBook.isValid());
        SyncDevice a(newFolder());
        SyncDevice b(newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(account).ok, "sync failed");
        QVERIFY2(b.sync(account).ok, "sync failed");
        QCOMPARE(b.contents(), QStringList{u"Ann|12 3 1985"_s});

        change(b, elsewhere);
        SyncOutcome outcome = b.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        change(a, here);
        outcome = a.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(outcome.counts.conflicts, conflicts);
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY2(a.sync(account).ok, "sync failed");

        QCOMPARE(a.contents(), expected);
        QCOMPARE(b.contents(), expected);
        QCOMPARE(viewOf(account).contents(), expected);
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
        const SyncAccount account = newAccount(kind, version);
        SyncDevice a(newFolder());
        QVERIFY(a.favorites.append(u"Dee"_s, 29, 2, std::nullopt));
        QVERIFY2(a.sync(account).ok, "sync failed");
        const QList<QByteArray> cards = viewOf(account).cards().values();
        QCOMPARE(cards.size(), 1);
        QVERIFY2(cards.first().contains(birthdayLine), cards.first().constData());
        QVERIFY(cards.first().contains("VERSION:" + version.toLatin1()));
        SyncDevice b(newFolder());
        QVERIFY2(b.sync(account).ok, "sync failed");
        QCOMPARE(b.contents(), QStringList{u"Dee|29 2"_s});
    }

    // A card another address book wrote: what Tavlo does not use stays as it
    // was, byte for byte, when Tavlo renames the person; a card without a
    // birthday is no favorite and is left alone.
    void foreignCardsKeepTheirLines_data()
    {
        addServerColumn();
        QTest::newRow("Radicale") << Kind::Radicale;
        QTest::newRow("Xandikos") << Kind::Xandikos;
    }

    void foreignCardsKeepTheirLines()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = newAccount(kind);
        AddressBookView view = viewOf(account);
        const QByteArray card =
            "BEGIN:VCARD\r\nVERSION:3.0\r\nPRODID:-//Phone//EN\r\nUID:phone-123\r\n"
            "N:Lee;Ann;;;\r\nFN:Ann Lee\r\nTEL;TYPE=cell:+49 30 1234567\r\n"
            "X-PHONE-FLAG:keep;this\\,exactly\r\n"
            "NOTE:a long note that the phone folded over more than one line\\, as phones do w\r\n"
            " ith long notes\r\nitem1.EMAIL;TYPE=INTERNET:ann@example.org\r\n"
            "BDAY:1985-03-12\r\nEND:VCARD\r\n";
        const QByteArray noBirthday = "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:no-bday\r\nN:Lee;Bo;;;\r\n"
                                      "FN:Bo Lee\r\nEND:VCARD\r\n";
        QVERIFY(view.request("PUT", view.urlOf(u"phone.vcf"_s), card,
                             {{"If-None-Match", "*"}, {"Content-Type", "text/vcard"}})
                    .ok());
        QVERIFY(view.request("PUT", view.urlOf(u"nobday.vcf"_s), noBirthday,
                             {{"If-None-Match", "*"}, {"Content-Type", "text/vcard"}})
                    .ok());
        // The card as the server keeps it (Radicale writes it anew).
        const QByteArray kept = view.cards().value(view.urlOf(u"phone.vcf"_s).path());
        const QByteArray keptNoBirthday = view.cards().value(view.urlOf(u"nobday.vcf"_s).path());
        QVERIFY(kept.contains("X-PHONE-FLAG"));
        SyncDevice a(newFolder());
        SyncOutcome outcome = a.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(a.contents(), QStringList{u"Ann Lee|12 3 1985"_s});
        QVERIFY(a.favorites.update(a.indexOf(u"Ann Lee"_s), u"Ann Lee-Smith"_s, u"12 3 1985"_s));
        outcome = a.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
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
        const SyncAccount account = newAccount(kind);
        AddressBookView view = viewOf(account);
        SyncDevice a(newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(account).ok, "sync failed");
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
            QVERIFY(
                view.request("PUT", view.urlOf(href), card, {{"Content-Type", "text/vcard"}}).ok());
        });
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
        QCOMPARE(outcome.counts.conflicts, contentChanged ? 1 : 0);
        QCOMPARE(a.contents(), expected);
        QCOMPARE(view.contents(), expected);
        // The other client's line survived either way.
        bool noteKept = false;
        for (const QByteArray &card : view.cards())
            noteKept |= card.contains("NOTE:touched");
        QVERIFY(noteKept);
    }

    // A token the server does not know (403, 409 or 500, by server) falls
    // back to listing every card.
    void unknownTokenFallsBack_data()
    {
        addServerColumn();
        QTest::newRow("Radicale") << Kind::Radicale;
        QTest::newRow("Xandikos") << Kind::Xandikos;
    }

    void unknownTokenFallsBack()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = newAccount(kind);
        SyncDevice a(newFolder());
        SyncDevice b(newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(account).ok, "sync failed");
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY(b.favorites.remove(b.indexOf(u"Ann"_s)));
        QVERIFY2(b.sync(account).ok, "sync failed");
        SyncState state = SyncState::read(a.statePath);
        QVERIFY(!state.syncToken.isEmpty());
        state.syncToken = account.addressBook.toString() + u"sync/no-such-token"_s;
        QVERIFY(state.write(a.statePath));
        const SyncOutcome outcome = a.sync(account);
        QVERIFY2(outcome.ok, qPrintable(outcome.problem));
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
        const SyncAccount account = newAccount(kind);
        FaultProxy proxy(server(kind).port());
        SyncAccount proxied = account;
        proxied.addressBook.setPort(proxy.port());
        SyncDevice a(newFolder());
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
        SyncDevice b(newFolder());
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        QCOMPARE(a.contents(), (QStringList{u"Ann|12 3 1985"_s, u"Bob|1 2 1990"_s}));
        QVERIFY(a.favorites.update(a.indexOf(u"Ann"_s), u"Anna"_s, u"12 3 1985"_s));
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        QCOMPARE(viewOf(account).contents(), (QStringList{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s}));
        QCOMPARE(requestsOfSync(), 1);
    }

    // Many cards to fetch go in one query for every card: only those the
    // listing named are taken, and one removed meanwhile (left out of the
    // answer) is asked for by name and found gone.
    void fetchEveryCard_data()
    {
        addServerColumn();
        QTest::newRow("Radicale") << Kind::Radicale;
        QTest::newRow("Xandikos") << Kind::Xandikos;
    }

    void fetchEveryCard()
    {
        QFETCH(Kind, kind);
        const SyncAccount account = newAccount(kind);
        AddressBookView view = viewOf(account);
        SyncDevice a(newFolder());
        SyncDevice b(newFolder());
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
        const SyncAccount account = newAccount(kind);
        // All of A's syncs go through the proxy, so that A's account is the
        // same address book throughout.
        FaultProxy proxy(server(kind).port());
        SyncAccount proxied = account;
        proxied.addressBook.setPort(proxy.port());
        SyncDevice a(newFolder());
        SyncDevice b(newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY(a.favorites.append(u"Dan"_s, 2, 2, 1962));
        QVERIFY2(a.sync(proxied).ok, "sync failed");
        QVERIFY2(b.sync(account).ok, "sync failed");
        // Changes on both sides: one the server holds, three made here.
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY2(b.sync(account).ok, "sync failed");
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
        const SyncOutcome again = a.sync(proxied);
        QVERIFY2(again.ok, qPrintable(again.problem));
        QVERIFY2(b.sync(account).ok, "sync failed");
        const QStringList expected{u"Anna|12 3 1985"_s, u"Bob|1 2 1990"_s, u"Cat|1 1 2000"_s};
        QCOMPARE(a.contents(), expected);
        QCOMPARE(b.contents(), expected);
        QCOMPARE(viewOf(account).contents(), expected);
    }

    // Radicale's own refusal of a wrong password, and a server that is not
    // there: nothing changes here.
    void refusedLoginAndNoServer()
    {
        SyncAccount account = newAccount(Kind::Radicale);
        SyncDevice a(newFolder());
        QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
        QVERIFY2(a.sync(account).ok, "sync failed");
        QVERIFY(a.favorites.append(u"Bob"_s, 1, 2, 1990));
        const QStringList before = a.contents();
        const SyncState state = SyncState::read(a.statePath);

        SyncAccount wrong = account;
        wrong.password = u"wrong"_s;
        SyncOutcome outcome = a.sync(wrong);
        QVERIFY(!outcome.ok);
        QVERIFY2(outcome.problem.contains(u"login"_s), qPrintable(outcome.problem));
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
        const SyncAccount account = newAccount(Kind::Radicale);
        const QString folder = newFolder();
        SyncDevice b(newFolder());
        {
            SyncDevice a(folder);
            QVERIFY(a.favorites.append(u"Ann"_s, 12, 3, 1985));
            QVERIFY2(a.sync(account).ok, "sync failed");
        }
        QVERIFY2(b.sync(account).ok, "sync failed");
        QVERIFY(b.favorites.append(u"Bob"_s, 1, 2, 1990));
        QVERIFY2(b.sync(account).ok, "sync failed");

        auto armed = std::make_shared<bool>(true);
        const AtomicFileWriter full = failingWriter(AtomicFileWriter::Step::Write, ENOSPC, armed);
        {
            FileSettingsStore settings(folder + u"/tavlo/tavlo.conf"_s,
                                       favoritesFail ? full : AtomicFileWriter());
            SyncEngine engine(settings, folder + u"/tavlo/sync-state.json"_s, account);
            if (!favoritesFail)
                engine.setStateWriter(full);
            SyncOutcome outcome;
            QVERIFY(waitUntilDone([&](auto done) {
                engine.start([&, done](const SyncOutcome &result) {
                    outcome = result;
                    done();
                });
            }));
            QVERIFY(!outcome.ok);
            QVERIFY2(outcome.problem.contains(u"No space left on device"_s),
                     qPrintable(outcome.problem));
        }
        SyncDevice a(folder);
        if (favoritesFail)
            QCOMPARE(a.contents(), QStringList{u"Ann|12 3 1985"_s});
        QVERIFY2(a.sync(account).ok, "sync failed");
        const QStringList expected{u"Ann|12 3 1985"_s, u"Bob|1 2 1990"_s};
        QCOMPARE(a.contents(), expected);
        QCOMPARE(viewOf(account).contents(), expected);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir folder;
    scratch = &folder;
    if (!CardDavServer::startBoth(folder.path(), servers))
        return 77;
    TestCardDavSync test;
    const int status = QTest::qExec(&test, argc, argv);
    servers.clear();
    return status;
}

#include "tst_carddavsync.moc"
