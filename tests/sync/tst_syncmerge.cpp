// SPDX-License-Identifier: MIT
// The rules that put the server's changes together with the favorites, on
// their own: the cases the servers in tst_carddavsync rarely make.
#include "sync/SyncCard.h"
#include "sync/SyncMerge.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString annId = u"11111111-1111-4111-8111-111111111111"_s;
const QString href = u"/book/ann.vcf"_s;

QByteArray card(const QString &name, const QString &birthday)
{
    if (birthday.isEmpty())
        return "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:urn:uuid:" + annId.toUtf8() +
               "\r\nFN:" + name.toUtf8() + "\r\nEND:VCARD\r\n";
    return SyncCard::newCard(Favorite(name, birthday, annId), *DayOfBirth::fromStored(birthday),
                             u"4.0"_s);
}

SyncEntry entry(const QString &name, const QString &birthday)
{
    return {href, "\"1\"", annId, name, birthday, card(name, birthday)};
}

struct Case
{
    QList<Favorite> local;
    SyncState state;
    QList<ServerCard> changed;
    QStringList removed;
    // "name|birthday" sorted, a conflict copy's id left out.
    QStringList expected;
    SyncCounts counts;
    qsizetype entries = 0;
    qsizetype pending = 0;
};

} // namespace

Q_DECLARE_METATYPE(Case)

class TestSyncMerge : public QObject
{
    Q_OBJECT

private slots:
    void fromServer_data()
    {
        QTest::addColumn<Case>("c");
        const Favorite ann(u"Ann"_s, u"12 3 1985"_s, annId);
        const Favorite anna(u"Anna"_s, u"12 3 1985"_s, annId);
        const ServerCard renamed{href, "\"2\"", card(u"Ann B"_s, u"12 3 1985"_s)};
        const ServerCard sameAgain{href, "\"2\"", card(u"Ann"_s, u"12 3 1985"_s)};
        const ServerCard noBirthday{href, "\"2\"", card(u"Ann"_s, QString())};

        Case c;
        c.local = {ann};
        c.state.entries = {entry(u"Ann"_s, u"12 3 1985"_s)};
        c.changed = {noBirthday};
        c.expected = {};
        c.counts.deleted = 1;
        c.entries = 1; // remembered as a card that is no favorite
        QTest::newRow("birthday gone from the card, unchanged here") << c;

        c.local = {anna};
        c.expected = {u"Anna (conflict copy)|12 3 1985"_s};
        c.counts = {0, 0, 0, 1};
        QTest::newRow("birthday gone from the card, renamed here") << c;

        c = Case();
        c.state.pendingDeletes = {entry(u"Ann"_s, u"12 3 1985"_s)};
        c.changed = {renamed};
        c.expected = {u"Ann B|12 3 1985"_s};
        c.counts.received = 1;
        c.entries = 1;
        QTest::newRow("deleted here, renamed there: it comes back") << c;

        c.changed = {sameAgain};
        c.expected = {};
        c.counts = {};
        c.entries = 0;
        c.pending = 1;
        QTest::newRow("deleted here, only a new ETag there: still to delete") << c;

        c = Case();
        c.local = {Favorite(u"Ann C"_s, u"12 3 1985"_s, annId)};
        c.state.entries = {entry(u"Ann"_s, u"12 3 1985"_s)};
        c.state.sending = {{href, {}, annId, u"Ann B"_s, u"12 3 1985"_s, {}}};
        c.changed = {renamed};
        c.expected = {u"Ann C|12 3 1985"_s};
        c.entries = 1;
        QTest::newRow("our own send arrived unnoticed, renamed again since: no conflict") << c;

        c = Case();
        c.state.sending = {{href, {}, annId, u"Ann"_s, u"12 3 1985"_s, {}}};
        c.changed = {sameAgain};
        c.expected = {};
        c.entries = 1;
        QTest::newRow("our own new card arrived unnoticed, deleted here since: not back") << c;

        c = Case();
        c.local = {Favorite(u"Ann"_s, u"12 3 1985"_s, u"22222222-2222-4222-8222-222222222222"_s)};
        c.changed = {sameAgain};
        c.expected = {u"Ann|12 3 1985"_s};
        c.entries = 1;
        QTest::newRow("the same birthday made on both sides: paired, not doubled") << c;

        c = Case();
        c.local = {anna};
        c.state.entries = {entry(u"Ann"_s, u"12 3 1985"_s)};
        c.removed = {href};
        c.expected = {u"Anna|12 3 1985"_s};
        QTest::newRow("deleted there, renamed here: kept, to be sent again") << c;

        c.local = {ann};
        c.expected = {};
        c.counts.deleted = 1;
        QTest::newRow("deleted there, unchanged here: deleted here") << c;
    }

    void fromServer()
    {
        QFETCH(Case, c);
        const SyncMerge::Result result = SyncMerge::fromServer(
            c.local, c.state, c.changed, c.removed, QDate(2030, 1, 1), u"%1 (conflict copy)"_s);
        QStringList rows;
        for (const Favorite &favorite : result.favorites)
            rows.append(favorite.name + u'|' + favorite.birthday);
        rows.sort();
        QCOMPARE(rows, c.expected);
        QCOMPARE(result.counts, c.counts);
        QCOMPARE(result.state.entries.size(), c.entries);
        QCOMPARE(result.state.pendingDeletes.size(), c.pending);
        // Whatever the server told is now known: no send stays unexplained.
        QVERIFY(result.state.sending.isEmpty());
        // A favorite keeps its identity through the server's changes.
        for (const Favorite &favorite : result.favorites) {
            if (!favorite.name.endsWith(u"(conflict copy)"_s) && !c.local.isEmpty())
                QCOMPARE(favorite.id, c.local.first().id);
        }
    }
};

QTEST_GUILESS_MAIN(TestSyncMerge)
#include "tst_syncmerge.moc"
