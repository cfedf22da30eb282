// SPDX-License-Identifier: MIT
#include "SoftlyBrokenCard.h"
#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "contacts/VCardReader.h"
#include "core/DatePattern.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
const QDate today(2026, 11, 22);

// Line ends as the address book wrote them.
QByteArray crlf(const QByteArray &lines)
{
    QByteArray text = lines;
    return text.replace("\n", "\r\n");
}

ImportPlan planFor(const QByteArray &file, const QList<Favorite> &existing = {})
{
    const VCardReader::Result read = VCardReader::read(file);
    return BirthdayImport::plan(read.contacts, existing, today);
}
} // namespace

class TestVCardImport : public QObject
{
    Q_OBJECT

private slots:
    // Each address-book form, alone in a file, born 12 March 1985: the name
    // Tavlo stores from it. Lines without BEGIN get the card around them.
    void readsWhatAddressBooksWrite_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *tag, const QByteArray &text, const QString &name) {
            const bool whole = text.startsWith("BEGIN") || text.startsWith("begin");
            QTest::newRow(tag) << (whole ? text : "BEGIN:VCARD\n" + text + "END:VCARD\n") << name;
        };
        row("4.0 basic date", "VERSION:4.0\nFN:Jane Doe\nBDAY:19850312\n", "Jane Doe");
        row("VALUE=date", "FN:Jane\nBDAY;VALUE=date:1985-03-12\n", "Jane");
        row("date-time, date part", "FN:Jane\nBDAY:1985-03-12T00:00:00Z\n", "Jane");
        row("basic date-time", "FN:Jane\nBDAY:19850312T101500\n", "Jane");
        row("N without FN", "VERSION:3.0\nN:Doe;Jane;;;\nBDAY:1985-03-12\n", "Jane Doe");
        row("blank FN, N used", "FN: \nN:Doe;Jane\nBDAY:1985-03-12\n", "Jane Doe");
        row("family name only", "N:Doe;;;;\nBDAY:1985-03-12\n", "Doe");
        row("no name at all", "BDAY:1985-03-12\n", "Unknown");
        row("folded line, lower-case names",
            "begin:vcard\nversion:4.0\nfn:Jane Ma\n rie Doe\nbday:1985-03-12\nend:vcard\n",
            "Jane Marie Doe");
        row("fold with a tab inside a UTF-8 character",
            "BEGIN:VCARD\r\nFN:J\xc3\r\n\t\xbcrgen\r\nBDAY:1985-03-12\r\nEND:VCARD\r\n",
            u"Jürgen"_s);
        row("escapes", "FN:Doe\\, Jane\\; Jr.\\nII \\\\ x\nBDAY:1985-03-12\n",
            "Doe, Jane; Jr.\nII \\ x");
        row("escaped semicolon in N", "N:Doe\\;Smith;Jane\nBDAY:1985-03-12\n", "Jane Doe;Smith");
        row("2.1 quoted-printable UTF-8 with soft break",
            crlf("BEGIN:VCARD\nVERSION:2.1\n"
                 "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=D0=98=D0=B2=D0=B0=D0=BD=D0=BE=\n"
                 "=D0=B2;=D0=98=D0=B2=D0=B0=D0=BD;;;\nBDAY:1985-03-12\nEND:VCARD\n"),
            u"Иван Иванов"_s);
        row("2.1 bare QUOTED-PRINTABLE, Latin-1",
            crlf("BEGIN:VCARD\nVERSION:2.1\nFN;CHARSET=ISO-8859-1;QUOTED-PRINTABLE:J=FC=\n"
                 "rgen M=FCller\nBDAY:19850312\nEND:VCARD\n"),
            u"Jürgen Müller"_s);
        row("grouped property, quoted colon in parameter",
            "FN;X-NOTE=\"a:b\":Jane\nitem1.BDAY:1985-03-12\n", "Jane");
        row("2.1 photo in base64 before the birthday",
            crlf("BEGIN:VCARD\nVERSION:2.1\nFN:Jane\nPHOTO;ENCODING=BASE64;TYPE=JPEG:\n"
                 " /9j/4AAQSkZJRgABAQ\n BDAY:19990101\n\nBDAY:1985-03-12\nEND:VCARD\n"),
            "Jane");
    }
    void readsWhatAddressBooksWrite()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, name);
        const VCardReader::Result read = VCardReader::read(file);
        QCOMPARE(read.error, VCardReader::Error::None);
        const ImportPlan plan = BirthdayImport::plan(read.contacts, {}, today);
        QCOMPARE(plan.additions, QList<Favorite>{Favorite({name, "12 3 1985"})});
    }

    // Every form of a birthday, with and without its year: what is stored,
    // or why the card is skipped.
    void readsEveryBirthdayForm_data()
    {
        QTest::addColumn<QByteArray>("bday");
        QTest::addColumn<ImportOutcome>("outcome");
        QTest::addColumn<QString>("stored");

        const auto added = [](const char *name, const QByteArray &bday, const QString &stored) {
            QTest::newRow(name) << bday << ImportOutcome::Added << stored;
        };
        const auto skipped = [](const char *name, const QByteArray &bday, ImportOutcome why) {
            QTest::newRow(name) << bday << why << QString();
        };
        skipped("none", QByteArray(), ImportOutcome::NoBirthday);
        skipped("empty", "BDAY:\n"_ba, ImportOutcome::NoBirthday);
        added("--0312", "BDAY:--0312\n"_ba, u"12 3"_s);
        added("--03-12", "BDAY:--03-12\n"_ba, u"12 3"_s);
        added("--0229, a real birthday", "BDAY:--0229\n"_ba, u"29 2"_s);
        skipped("--1332", "BDAY:--1332\n"_ba, ImportOutcome::ImpossibleDate);
        skipped("--0230", "BDAY:--0230\n"_ba, ImportOutcome::ImpossibleDate);
        added("Apple's omitted year", "BDAY;X-APPLE-OMIT-YEAR=1604;VALUE=date:1604-03-12\n"_ba,
              u"12 3"_s);
        added("Apple's mark, another year marked", "BDAY;X-APPLE-OMIT-YEAR=1900:1900-03-12\n"_ba,
              u"12 3"_s);
        added("Apple's mark, a date in another year", "BDAY;X-APPLE-OMIT-YEAR=1604:1985-03-12\n"_ba,
              u"12 3 1985"_s);
        added("Apple's mark, 29 February of a common year",
              "BDAY;X-APPLE-OMIT-YEAR=1603:1603-02-29\n"_ba, u"29 2"_s);
        skipped("Apple's mark, 30 February", "BDAY;X-APPLE-OMIT-YEAR=1604:1604-02-30\n"_ba,
                ImportOutcome::ImpossibleDate);
        added("bare 1604, as phones write it", "BDAY:1604-03-02\n"_ba, u"2 3"_s);
        added("bare 1604, basic form", "BDAY:16040302\n"_ba, u"2 3"_s);
        added("year 0000", "BDAY:0000-03-12\n"_ba, u"12 3"_s);
        added("year 0001", "BDAY:0001-03-12\n"_ba, u"12 3"_s);
        added("1605 is a year", "BDAY:1605-03-12\n"_ba, u"12 3 1605"_s);
        skipped("29 February, common year", "BDAY:19850229\n"_ba, ImportOutcome::ImpossibleDate);
        skipped("tomorrow", "BDAY:2026-11-23\n"_ba, ImportOutcome::FutureDate);
        skipped("text value", "BDAY;VALUE=text:circa 1800\n"_ba, ImportOutcome::UnreadableDate);
        skipped("other form", "BDAY:12.03.1985\n"_ba, ImportOutcome::UnreadableDate);
        skipped("year only", "BDAY:1985\n"_ba, ImportOutcome::UnreadableDate);
        skipped("day only", "BDAY:---12\n"_ba, ImportOutcome::UnreadableDate);
        added("today is kept", "BDAY:2026-11-22\n"_ba, u"22 11 2026"_s);
        added("29 February, leap year", "BDAY:1984-02-29\n"_ba, u"29 2 1984"_s);
    }
    void readsEveryBirthdayForm()
    {
        QFETCH(QByteArray, bday);
        QFETCH(ImportOutcome, outcome);
        QFETCH(QString, stored);
        for (const char *version : {"2.1", "3.0", "4.0"}) {
            const ImportPlan plan =
                planFor("BEGIN:VCARD\nVERSION:"_ba + version + "\nFN:X\n" + bday + "END:VCARD\n");
            ImportSummary expected;
            expected.count(outcome);
            QCOMPARE(plan.summary, expected);
            QCOMPARE(plan.additions.value(0).birthday, stored);
        }
    }

    // Same name and same day are "already there", whether stored already
    // (in any record spelling) or earlier in the same file.
    void knowsWhatIsAlreadyThere()
    {
        const QByteArray file = "BEGIN:VCARD\nFN:Ann\nBDAY:1985-03-12\nEND:VCARD\n"
                                "BEGIN:VCARD\nFN:Bob\nBDAY:2000-01-07\nEND:VCARD\n"
                                "BEGIN:VCARD\nFN:Bob\nBDAY:20000107\nEND:VCARD\n"
                                "BEGIN:VCARD\nFN:Bob\nBDAY:2000-01-08\nEND:VCARD\n"
                                "BEGIN:VCARD\nFN:ann\nBDAY:1985-03-12\nEND:VCARD\n"_ba;
        const ImportPlan plan = planFor(file, {{"Ann", "12 03 1985"}});
        QCOMPARE(plan.additions,
                 (QList<Favorite>{{"Bob", "7 1 2000"}, {"Bob", "8 1 2000"}, {"ann", "12 3 1985"}}));
        QCOMPARE(plan.summary.added, 3);
        QCOMPARE(plan.summary.alreadyThere, 2);
    }

    // A card Tavlo exported is known by its UID: after a rename on either
    // side it adds nothing and renames nothing back. Two people of the same
    // name and birthday, each with a UID of their own, stay two, and keep
    // their identities through a round trip.
    void knowsItsOwnCardsByIdentity()
    {
        const QList<Favorite> list = {
            {"Ann", "12 3 1985", u"3f2b8a30-0d6e-4a53-9b0e-2e8f63f0a1c1"_s},
            {"Ann", "12 3 1985", u"8c1d6e0a-7f41-4b9c-a2d5-5b7e9c3f4d20"_s},
            {"Cleo", "29 2", u"0a9e3c5b-1d2f-4e6a-8b7c-9d0e1f2a3b4c"_s}};
        const QByteArray exported = BirthdayExport::vCards(list).text;

        QList<Favorite> renamed = list;
        renamed[0].name = u"Anna"_s;
        renamed[2].birthday = u"1 3"_s;
        const ImportPlan again = planFor(exported, renamed);
        QVERIFY(again.additions.isEmpty());
        QCOMPARE(again.summary.alreadyThere, 3);

        const ImportPlan fresh = planFor(exported);
        QCOMPARE(fresh.additions, list);
    }

    void refusesWhatIsNoAddressBook_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<VCardReader::Error>("error");
        QTest::newRow("empty") << QByteArray() << VCardReader::Error::NotVCard;
        QTest::newRow("a calendar")
            << "BEGIN:VCALENDAR\nEND:VCALENDAR\n"_ba << VCardReader::Error::NotVCard;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11)
                                << VCardReader::Error::NotVCard;
        QTest::newRow("cut off") << "BEGIN:VCARD\nFN:Ann\nBDAY:1985-03-12\nEND:VCARD\n"
                                    "BEGIN:VCARD\nFN:Bob\nBDAY:1985-0"_ba
                                 << VCardReader::Error::Truncated;
    }
    void refusesWhatIsNoAddressBook()
    {
        QFETCH(QByteArray, file);
        QFETCH(VCardReader::Error, error);
        const VCardReader::Result read = VCardReader::read(file);
        QCOMPARE(read.error, error);
        QVERIFY(read.contacts.isEmpty());
        QVERIFY(!VCardReader::errorText(error).isEmpty());
    }

    // 100,000 cards and a file of over 50 MB read whole, in well under the
    // test's time limit.
    void readsLargeAddressBooks()
    {
        QByteArray file;
        const QByteArray photo = " " + QByteArray(470, 'A') + "\r\n";
        for (int i = 0; i < 100000; ++i) {
            file += "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Person " + QByteArray::number(i) +
                    "\r\nBDAY:" + QByteArray::number(1950 + i % 70) + "-03-12\r\n";
            if (i < 3000)
                file += "PHOTO;ENCODING=b;TYPE=JPEG:\r\n" + photo.repeated(40);
            file += "END:VCARD\r\n";
        }
        QVERIFY(file.size() > 50 * 1000 * 1000);
        QElapsedTimer timer;
        timer.start();
        const ImportPlan plan = planFor(file);
        QCOMPARE(plan.summary.added, 100000);
        QCOMPARE(plan.additions.last(), Favorite({"Person 99999", "12 3 1989"}));
        qInfo() << "100,000 cards," << file.size() / 1000000 << "MB:" << timer.elapsed() << "ms";
    }

    // A long parameter part with many soft line breaks after it is read
    // whole and right. How long it takes is the benchmark's to tell
    // (bench_contacts, "Softly"): 0.4 MB took 31 s when each break looked
    // at the parameters again.
    void readsSoftLineBreaksAfterALongParameterPart()
    {
        qsizetype breaks = 0;
        const QByteArray file = softlyBrokenCard(400 * 1000, &breaks);
        const VCardReader::Result read = VCardReader::read(file);
        QCOMPARE(read.contacts.size(), 1);
        QCOMPARE(read.contacts[0].name, QString(breaks, u'J') + u"ane"_s);
    }

    // Random damage to a real file never crashes or hangs the reader, and
    // whatever it reads has the shape of a birthday or a reason.
    void survivesDamagedFiles()
    {
        const QByteArray good =
            crlf("BEGIN:VCARD\nVERSION:2.1\nN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:=D0=98=\n"
                 "=D0=B2;X;;;\nFN;X=\"a:b\":Jane\n Doe\nBDAY;VALUE=date:1985-03-12\nEND:VCARD\n");
        QRandomGenerator random(14);
        for (int round = 0; round < 20000; ++round) {
            QByteArray file = good.repeated(1 + random.bounded(3));
            const int changes = 1 + random.bounded(8);
            for (int i = 0; i < changes; ++i) {
                const int at = random.bounded(file.size());
                const int kind = random.bounded(3);
                if (kind == 0)
                    file[at] = char(random.bounded(256));
                else if (kind == 1)
                    file.remove(at, random.bounded(20));
                else
                    file.insert(at, "=\r\n;:\"\\ "[random.bounded(9)]);
            }
            const ImportPlan plan = planFor(file);
            for (const Favorite &favorite : plan.additions)
                QVERIFY(DatePattern(u"d M yyyy").parse(favorite.birthday));
        }
    }
};

QTEST_GUILESS_MAIN(TestVCardImport)
#include "tst_vcardimport.moc"
