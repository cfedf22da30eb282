// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "WithoutIds.h"
#include "contacts/BirthdayCalendar.h"
#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "core/AgeCalculator.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
const QDate today(2026, 11, 22);

// Names that need escaping, folding or both, and the 29th of February.
const QList<Favorite> favorites{
    {"Anna", "12 3 1985"},
    {"Doe, Jane; Jr. \\ II", "7 1 2001"},
    {"Line\nbreak", "1 1 2000"},
    {" Leading and trailing ", "31 12 1999"},
    {u"Александра Сергеевна Иванова-Петрова-Сидорова из Санкт-Петербурга"_s, "5 6 1970"},
    {"Leap", "29 2 1984"},
    {"Early", "1 1 985"},
};

struct Event
{
    QString uid, summary, description, start, end;
    QStringList next;
};

// The calendar as python3-icalendar reads it; each event's next occurrences
// after the given dates.
QList<Event> readCalendar(const QByteArray &ics, const QList<QDate> &after)
{
    QTemporaryDir dir;
    QStringList arguments{READ_CALENDAR, writeFile(dir.filePath("birthdays.ics"), ics)};
    for (QDate date : after)
        arguments.append(date.toString(Qt::ISODate));
    QProcess python;
    python.start("/usr/bin/python3", arguments);
    if (!python.waitForFinished(60000) || python.exitCode() != 0)
        qFatal("read_calendar.py: %s", python.readAllStandardError().constData());
    QList<Event> events;
    for (const QByteArray &line : python.readAllStandardOutput().split('\n')) {
        const QJsonObject o = QJsonDocument::fromJson(line).object();
        if (!o.isEmpty())
            events.append({o["uid"].toString(), o["summary"].toString(),
                           o["description"].toString(), o["start"].toString(), o["end"].toString(),
                           o["next"].toVariant().toStringList()});
    }
    return events;
}

} // namespace

class TestBirthdayExport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QProcess::execute("/usr/bin/python3", {"-c", "import icalendar"}) != 0)
            QSKIP("python3-icalendar is missing: scripts/install-deps installs it");
    }

    // What Tavlo writes, it reads back as the same favorites, and a second
    // import of the same file adds nothing.
    void vCardsReadBackUnchanged()
    {
        const QList<Favorite> withBadRow = favorites + QList<Favorite>{{"Bad", "sometime"}};
        const BirthdayExport::Output output = BirthdayExport::vCards(withBadRow);
        QCOMPARE(output.written, favorites.size());
        QCOMPARE(output.unreadable, 1);
        const VCardReader::Result read = VCardReader::read(output.text);
        QCOMPARE(read.error, VCardReader::Error::None);
        const ImportPlan first = BirthdayImport::plan(read.contacts, {}, today);
        QList<Favorite> expected = favorites;
        expected.last().birthday = "1 1 0985"; // the record year always has four digits
        QCOMPARE(withoutIds(first.additions), expected);
        const ImportPlan second = BirthdayImport::plan(read.contacts, favorites, today);
        QCOMPARE(second.summary.added, 0);
        QCOMPARE(second.summary.alreadyThere, favorites.size());
    }

    // Both formats: CRLF after every line, none longer than 75 octets.
    // Every name comes back exactly, whatever control characters it holds,
    // and the file itself holds none but its line ends and the tab vCard
    // text allows; importing it again adds nothing.
    void namesComeBackExactly_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("carriage return") << u"Ann\rLee"_s;
        QTest::newRow("CRLF") << u"Ann\r\nLee"_s;
        QTest::newRow("line feed and tab") << u"Ann\nLee\tJr"_s;
        QTest::newRow("terminal escapes") << u"\x1b]0;x\x07\x1b[2J Eve\x7f"_s;
        QTest::newRow("long, folded") << u"\x01"_s.repeated(40) + u"Ж"_s.repeated(40);
        QTest::newRow("markup and escapes") << u"<b>Doe</b>, Jane; \\ 100% ^n"_s;
    }
    void namesComeBackExactly()
    {
        QFETCH(QString, name);
        const Favorite favorite{name, "12 3 1985"};
        const QByteArray text = BirthdayExport::vCards({favorite}).text;
        const QByteArray unfolded = QByteArray(text).replace("\r\n", "");
        for (const char c : unfolded)
            QVERIFY2((uchar(c) >= 0x20 || c == '\t') && c != 0x7f, text.constData());
        const VCardReader::Result read = VCardReader::read(text);
        QCOMPARE(read.error, VCardReader::Error::None);
        QCOMPARE(withoutIds(BirthdayImport::plan(read.contacts, {}, today).additions),
                 QList<Favorite>{favorite});
        QCOMPARE(BirthdayImport::plan(read.contacts, {favorite}, today).summary.added, 0);
    }

    void linesAreFoldedAndEndInCrlf()
    {
        for (const QByteArray &text :
             {BirthdayExport::vCards(favorites).text,
              BirthdayExport::calendar(favorites, UiStrings(), QDateTime::currentDateTime())
                  .text}) {
            QVERIFY(text.endsWith("\r\n"));
            const QList<QByteArray> lines = text.chopped(1).split('\n');
            bool folded = false;
            for (const QByteArray &line : lines) {
                QVERIFY2(line.endsWith('\r') && !line.chopped(1).contains('\r'), line);
                QVERIFY2(line.size() - 1 <= 75, line);
                folded = folded || line.startsWith(' ');
                // A fold never splits a UTF-8 character.
                QVERIFY(QString::fromUtf8(line).toUtf8() == line);
            }
            QVERIFY(folded);
        }
    }

    // The calendar as a real parser reads it, in each language; every
    // birthday repeats on the day Tavlo's own next-birthday rule names.
    void calendarAsAParserReadsIt_data()
    {
        QTest::addColumn<Language>("language");
        QTest::newRow("en") << Language::English;
        QTest::newRow("de") << Language::German;
        QTest::newRow("ru") << Language::Russian;
    }
    void calendarAsAParserReadsIt()
    {
        QFETCH(Language, language);
        UiStrings strings;
        strings.apply(language);
        const BirthdayExport::Output output =
            BirthdayExport::calendar(favorites, strings, QDateTime::currentDateTime());
        QCOMPARE(output.written, favorites.size());
        const QList<QDate> days{
            {2026, 11, 22}, {2027, 2, 28}, {2028, 2, 28}, {2028, 2, 29}, {2099, 12, 31}};
        const QList<Event> events = readCalendar(output.text, days);
        QCOMPARE(events.size(), favorites.size());
        for (qsizetype i = 0; i < events.size(); ++i) {
            const Event &event = events.at(i);
            const QDate born = QDate::fromString(event.start, Qt::ISODate);
            QCOMPARE(QDate::fromString(event.end, Qt::ISODate), born.addDays(1));
            QCOMPARE(event.uid,
                     FavoritesStore::derivedId(favorites.at(i).name, favorites.at(i).birthday, 0));
            for (qsizetype d = 0; d < days.size(); ++d)
                QCOMPARE(
                    event.next.at(d),
                    days.at(d).addDays(daysToNextBirthday(born, days.at(d))).toString(Qt::ISODate));
        }
        const Event &leap = events.at(5);
        QCOMPARE(leap.start, "1984-02-29");
        QCOMPARE(leap.next, (QStringList{"2027-03-01", "2027-03-01", "2028-02-29", "2029-03-01",
                                         "2100-03-01"}));
        QCOMPARE(leap.summary, strings[UiText::CalendarBirthdayOf].arg("Leap"));
        QCOMPARE(leap.description, strings[UiText::CalendarBornIn].arg(1984));
        QCOMPARE(events.at(1).summary,
                 strings[UiText::CalendarBirthdayOf].arg("Doe, Jane; Jr. \\ II"));
        QCOMPARE(events.at(3).summary,
                 strings[UiText::CalendarBirthdayOf].arg(" Leading and trailing"));
    }

    // The same favorite keeps its UID from one export to the next, whatever
    // else changed; two equal favorites get two UIDs.
    void uidsLast()
    {
        const auto uids = [](const QList<Favorite> &list) {
            const QList<Event> events = readCalendar(
                BirthdayExport::calendar(list, UiStrings(), QDateTime::currentDateTime()).text, {});
            QStringList result;
            for (const Event &event : events)
                result.append(event.uid);
            return result;
        };
        const QStringList before = uids({{"Anna", "12 3 1985"}, {"Bob", "1 1 2000"}});
        const QStringList after = uids({{"Bob", "1 1 2000"},
                                        {"Cleo", "2 2 2002"},
                                        {"Anna", "12 3 1985"},
                                        {"Anna", "12 3 1985"}});
        QCOMPARE(after.at(0), before.at(1));
        QCOMPARE(after.at(2), before.at(0));
        QCOMPARE(QSet<QString>(after.begin(), after.end()).size(), 4);
        QVERIFY(BirthdayExport::vCards({{"Anna", "12 3 1985"}})
                    .text.contains(("UID:urn:uuid:" + before.at(0)).toUtf8()));
    }

    // Off: changes of the favorites write nothing. On: the calendar of the
    // stored favorites and its source; each change rewrites the calendar in
    // the interface language; off again removes both.
    void calendarFollowsTheSwitchAndTheFavorites()
    {
        QTemporaryDir dir;
        MemorySettingsStore settings;
        const FixedClock clock(QDateTime(QDate(2026, 11, 22), QTime(12, 0)));
        const BirthdayCalendar::Paths paths{
            dir.filePath("data/tavlo/birthdays.ics"),
            dir.filePath("config/evolution/sources/tavlo-birthdays.source")};
        settings.set(SettingsKeys::favorites, QList<QStringList>{{"Anna", "12 3 1985"}});
        settings.set(SettingsKeys::preferredLanguage, 1);
        BirthdayCalendar calendar(settings, {"en-US"}, clock, paths);
        FavoritesStore favorites(settings, [&](const QList<Favorite> &list) {
            QCOMPARE(calendar.update(list), QString());
        });

        favorites.load();
        favorites.append("Bob", 1, 1, 2000);
        QVERIFY(!QFile::exists(paths.calendarFile));

        QCOMPARE(calendar.setEnabled(true), QString());
        QVERIFY(calendar.enabled());
        QVERIFY(contentsOf(paths.calendarFile).contains("SUMMARY:Geburtstag von Bob\r\n"));
        const QByteArray source = contentsOf(paths.sourceFile);
        QVERIFY(source.contains("[Calendar]\nBackendName=local\n"));
        QVERIFY(source.contains("Parent=local-stub\n"));
        QVERIFY(source.contains("CustomFile=file://" + paths.calendarFile.toUtf8() + "\n"));

        favorites.append("Cleo", 29, 2, 1984);
        QCOMPARE(contentsOf(paths.calendarFile).count("BEGIN:VEVENT"), 3);
        QVERIFY(contentsOf(paths.calendarFile).contains("RRULE:FREQ=YEARLY;BYYEARDAY=60\r\n"));
        QCOMPARE(contentsOf(paths.sourceFile), source);

        QCOMPARE(calendar.setEnabled(false), QString());
        QVERIFY(!QFile::exists(paths.calendarFile));
        QVERIFY(!QFile::exists(paths.sourceFile));
        favorites.remove(0);
        QVERIFY(!QFile::exists(paths.calendarFile));

        BirthdayCalendar unsaved(settings, {"en-US"}, clock,
                                 {"/dev/null/birthdays.ics", paths.sourceFile});
        QVERIFY(unsaved.setEnabled(true).startsWith("could not save /dev/null/birthdays.ics: "));
    }

    // As the app has it: a change returns at once, the newest list reaches
    // the file, and what could not be saved is told later on this thread.
    void calendarWritesInTheBackground()
    {
        QTemporaryDir dir;
        MemorySettingsStore settings;
        const FixedClock clock(QDateTime(QDate(2026, 11, 22), QTime(12, 0)));
        settings.set(SettingsKeys::birthdaysInCalendar, true);
        QStringList problems;
        const auto tell = [&](const QString &problem) { problems.append(problem); };
        const QString file = dir.filePath("birthdays.ics");
        BirthdayCalendar calendar(settings, {"en-US"}, clock, {file, dir.filePath("a.source")});
        calendar.writeInBackground(tell);
        QCOMPARE(calendar.update({{"Bob", "1 1 2000"}}), QString());
        QCOMPARE(calendar.update({{"Bob", "1 1 2000"}, {"Cy", "2 2 2002"}}), QString());
        calendar.waitForWrites();
        QCOMPARE(contentsOf(file).count("BEGIN:VEVENT"), 2);

        BirthdayCalendar broken(settings, {"en-US"}, clock,
                                {"/dev/null/birthdays.ics", dir.filePath("x.source")});
        broken.writeInBackground(tell);
        QCOMPARE(broken.update({{"Bob", "1 1 2000"}}), QString());
        QTRY_COMPARE(problems.size(), 1);
        QVERIFY(problems[0].startsWith("could not save /dev/null/birthdays.ics: "));
    }
};

QTEST_GUILESS_MAIN(TestBirthdayExport)
#include "tst_birthdayexport.moc"
