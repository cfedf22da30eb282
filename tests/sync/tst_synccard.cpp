// SPDX-License-Identifier: MIT
// The format side of sync: cards written and changed line by line, and the
// WebDAV answers read whatever the server's prefixes.
#include "sync/DavXml.h"
#include "sync/SyncCard.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestSyncCard : public QObject
{
    Q_OBJECT

private slots:
    void changedCard_data()
    {
        QTest::addColumn<QByteArray>("card");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("birthday");
        QTest::addColumn<QByteArray>("expected");

        const QByteArray head = "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:urn:uuid:1\r\n";
        QTest::newRow("rename keeps the rest")
            << head + "FN:Ann\r\nX-A:1\r\nBDAY:19850312\r\nEND:VCARD\r\n"
            << u"Anna"_s << u"12 3 1985"_s
            << head + "FN:Anna\r\nX-A:1\r\nBDAY:19850312\r\nEND:VCARD\r\n";
        QTest::newRow("same name, other birthday: FN untouched even if folded")
            << head + "FN:A\r\n nn\r\nBDAY;VALUE=date:1985-03-12\r\nEND:VCARD\r\n"
            << u"Ann"_s << u"13 3"_s << head + "FN:A\r\n nn\r\nBDAY:--0313\r\nEND:VCARD\r\n";
        QTest::newRow("3.0 without a year, LF line ends made CRLF")
            << QByteArray(
                   "BEGIN:VCARD\nVERSION:3.0\nFN:Ann\nN:;Ann;;;\nBDAY:1985-03-12\nEND:VCARD\n")
            << u"Ann"_s << u"12 3"_s
            << QByteArray("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ann\r\nN:;Ann;;;\r\n"
                          "BDAY;X-APPLE-OMIT-YEAR=1604:1604-03-12\r\nEND:VCARD\r\n");
        QTest::newRow("no birthday yet: added before END")
            << head + "FN:Ann\r\nEND:VCARD\r\n"
            << u"Ann"_s << u"1 1 2000"_s << head + "FN:Ann\r\nBDAY:20000101\r\nEND:VCARD\r\n";
        QTest::newRow("grouped FN, a second BDAY dropped")
            << head + "item1.FN:Ann\r\nBDAY:20000101\r\nBDAY:19990101\r\nEND:VCARD\r\n"
            << u"Bo"_s << u"1 1 2000"_s << head + "FN:Bo\r\nBDAY:20000101\r\nEND:VCARD\r\n";
        QTest::newRow("nothing to change: the same bytes")
            << head + "FN:Ann\r\nBDAY:--0312\r\nEND:VCARD" << u"Ann"_s << u"12 3"_s
            << head + "FN:Ann\r\nBDAY:--0312\r\nEND:VCARD";
    }

    void changedCard()
    {
        QFETCH(QByteArray, card);
        QFETCH(QString, name);
        QFETCH(QString, birthday);
        QFETCH(QByteArray, expected);
        const Favorite favorite(name, birthday, u"1"_s);
        const QByteArray changed =
            SyncCard::changedCard(card, favorite, *DayOfBirth::fromStored(birthday));
        QCOMPARE(changed, expected);
        // And read back as the favorite it was made from.
        const std::optional<Favorite> read = SyncCard::favoriteOf(changed, QDate(2030, 1, 1));
        QVERIFY(read);
        QCOMPARE(read->name, name);
        QCOMPARE(read->birthday, birthday);
    }

    void favoriteOf_data()
    {
        QTest::addColumn<QByteArray>("card");
        QTest::addColumn<bool>("isFavorite");
        QTest::addColumn<QString>("birthday");
        QTest::addColumn<QString>("id");
        const QByteArray uid = "UID:urn:uuid:6F1B0C2E-5A4D-4C1E-9A7B-3D2F8E6C1A90\r\n";
        QTest::newRow("4.0 yearless")
            << "BEGIN:VCARD\r\nVERSION:4.0\r\n" + uid + "FN:A\r\nBDAY:--0229\r\nEND:VCARD\r\n"
            << true << u"29 2"_s << u"6f1b0c2e-5a4d-4c1e-9a7b-3d2f8e6c1a90"_s;
        QTest::newRow("Apple's omitted year")
            << QByteArray("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:x\r\nFN:A\r\n"
                          "BDAY;X-APPLE-OMIT-YEAR=1604:1604-03-12\r\nEND:VCARD\r\n")
            << true << u"12 3"_s << QString();
        QTest::newRow("no birthday")
            << QByteArray("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:A\r\nEND:VCARD\r\n") << false
            << QString() << QString();
        QTest::newRow("a phrase") << QByteArray("BEGIN:VCARD\r\nVERSION:4.0\r\nFN:A\r\n"
                                                "BDAY;VALUE=text:circa 1800\r\nEND:VCARD\r\n")
                                  << false << QString() << QString();
        QTest::newRow("cut off") << QByteArray("BEGIN:VCARD\r\nVERSION:4.0\r\nFN:A\r\nBDAY:--0101")
                                 << false << QString() << QString();
    }

    void favoriteOf()
    {
        QFETCH(QByteArray, card);
        QFETCH(bool, isFavorite);
        QFETCH(QString, birthday);
        QFETCH(QString, id);
        const std::optional<Favorite> read = SyncCard::favoriteOf(card, QDate(2030, 1, 1));
        QCOMPARE(read.has_value(), isFavorite);
        if (read) {
            QCOMPARE(read->birthday, birthday);
            QCOMPARE(read->id, id);
        }
    }

    void newCardRoundTrip_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("birthday");
        for (const QString &version : {u"4.0"_s, u"3.0"_s}) {
            QTest::addRow("%s with a year", qPrintable(version))
                << version << u"Ann"_s << u"12 3 1985"_s;
            QTest::addRow("%s 29 February", qPrintable(version))
                << version << u"Bo; Li, \\x"_s << u"29 2"_s;
            QTest::addRow("%s long name", qPrintable(version))
                << version << u"Ännchen von Tharau-Müller-Lüdenscheidt und Söhne GmbH & Co. KG"_s
                << u"1 1 1900"_s;
        }
    }

    void newCardRoundTrip()
    {
        QFETCH(QString, version);
        QFETCH(QString, name);
        QFETCH(QString, birthday);
        const Favorite favorite(name, birthday, u"6f1b0c2e-5a4d-4c1e-9a7b-3d2f8e6c1a90"_s);
        const QByteArray card =
            SyncCard::newCard(favorite, *DayOfBirth::fromStored(birthday), version);
        for (const QByteArray &line : card.split('\n'))
            QVERIFY(line.size() <= 76);
        const std::optional<Favorite> read = SyncCard::favoriteOf(card, QDate(2030, 1, 1));
        QVERIFY(read);
        QCOMPARE(*read, favorite);
    }

    void multistatus_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("readable");
        QTest::addColumn<int>("responses");
        QTest::addColumn<QByteArray>("firstEtag");
        QTest::addColumn<QString>("token");
        QTest::newRow("other prefixes, a prop refused")
            << QByteArray(
                   R"(<?xml version="1.0"?><x:multistatus xmlns:x="DAV:" xmlns:c="urn:ietf:params:xml:ns:carddav">
<x:response><x:href>/a/1.vcf</x:href>
<x:propstat><x:prop><x:getetag>"e1"</x:getetag><c:address-data>BEGIN:VCARD</c:address-data></x:prop><x:status>HTTP/1.1 200 OK</x:status></x:propstat>
<x:propstat><x:prop><x:displayname>no</x:displayname></x:prop><x:status>HTTP/1.1 404 Not Found</x:status></x:propstat>
</x:response><x:response><x:href>/a/2.vcf</x:href><x:status>HTTP/1.1 404 Not Found</x:status></x:response>
<x:sync-token>http://s/t/2</x:sync-token></x:multistatus>)")
            << true << 2 << QByteArray("\"e1\"") << u"http://s/t/2"_s;
        QTest::newRow("empty") << QByteArray(R"(<multistatus xmlns="DAV:"/>)") << true << 0
                               << QByteArray() << QString();
        QTest::newRow("cut off") << QByteArray(R"(<multistatus xmlns="DAV:"><response><href>/a)")
                                 << false << 0 << QByteArray() << QString();
        QTest::newRow("an HTML error page") << QByteArray("<html><body>Bad gateway</body></html>")
                                            << false << 0 << QByteArray() << QString();
        QTest::newRow("not XML") << QByteArray("\x00\x01garbage", 9) << false << 0 << QByteArray()
                                 << QString();
    }

    void multistatus()
    {
        QFETCH(QByteArray, body);
        QFETCH(bool, readable);
        QFETCH(int, responses);
        QFETCH(QByteArray, firstEtag);
        QFETCH(QString, token);
        const std::optional<DavMultistatus> read = DavXml::readMultistatus(body);
        QCOMPARE(read.has_value(), readable);
        if (!read)
            return;
        QCOMPARE(read->responses.size(), responses);
        QCOMPARE(read->syncToken, token);
        if (responses > 0) {
            QCOMPARE(read->responses.first().etag, firstEtag);
            QVERIFY(read->responses.first().hasAddressData);
            QVERIFY(read->responses.first().displayName.isEmpty());
            QCOMPARE(read->responses.at(1).status, 404);
        }
    }
};

QTEST_GUILESS_MAIN(TestSyncCard)
#include "tst_synccard.moc"
