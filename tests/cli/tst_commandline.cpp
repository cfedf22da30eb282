// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "RecordingNotificationCenter.h"
#include "TavloProcess.h"
#include "TestFiles.h"
#include "TimeZoneScope.h"
#include "WithoutIds.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "favorites/FavoritesStore.h"
#include "settings/MemorySettingsStore.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using Rows = QList<QStringList>;

namespace {
struct CommandRun
{
    int status = -1;
    QString out, err;
};

QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n";
}

// Retitles and clears a terminal that prints it raw.
const QString hostileName = "\x1b]0;pwned\x07\x1b[2J\rEve";
const Rows twoFavorites{{" Anna ", "22 11 1985"}, {"Bob", "21 11 2000"}};
const QString twoReminders = "birthdayReminder1 2026-03-02T07:30:00+01:00 Birthday Reminder: Bob "
                             "has a birthday today!\n"
                             "birthdayReminder2 2026-03-14T07:30:00+01:00 Birthday Reminder: Anna "
                             "has a birthday today!\n";
} // namespace

// The command line in process, in Berlin, with its settings in memory and a
// folder for its files; and as the installed program.
class TestCommandLine : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"}; // before the clock's local time
    MemorySettingsStore m_settings;
    FixedClock m_clock{at(2026, 11, 22, 12)};
    QStringList m_preferred;
    RecordingNotificationCenter m_center;
    QTemporaryDir m_files;
    // Each list the commands told of a change, as the birthdays calendar
    // hears it.
    QList<QList<Favorite>> m_told;

    CommandRun tavlo(const QStringList &arguments)
    {
        CommandRun run;
        QTextStream out(&run.out), err(&run.err);
        CommandContext context{m_settings, m_preferred, m_clock, out, err};
        context.notifications = [this] { return &m_center; };
        context.favoritesChanged = [this](const QList<Favorite> &list) { m_told.append(list); };
        run.status = runCommandLine(QStringList{"tavlo"} + arguments, context);
        return run;
    }
    QString file(const QString &name, const QByteArray &contents)
    {
        return writeFile(m_files.filePath(name), contents);
    }
    Rows stored() const { return namesAndBirthdays(m_settings.value(SettingsKeys::favorites)); }
    QStringList storedIds() const
    {
        QStringList ids;
        for (const QStringList &row : m_settings.value(SettingsKeys::favorites).value_or(Rows{}))
            ids.append(row.value(2));
        return ids;
    }
    // Reminders are planned on 1 March for Bob (2 March) and Anna (14 March).
    void beforeReminders()
    {
        m_clock.set(at(2026, 3, 1, 10));
        m_settings.set(SettingsKeys::favorites, Rows{{"Anna", "14 3 1985"}, {"Bob", "2 3 1990"}});
    }

    // The installed program: process entry, real settings file, real streams.
    TavloRun installed(const QStringList &arguments, const QString &language = "en_US.UTF-8")
    {
        return runTavlo(tavloEnvironment(m_files.filePath("config"), m_files.filePath("data"),
                                         "unix:path=/nonexistent", language),
                        arguments);
    }

private slots:
    void init()
    {
        m_told.clear();
        m_settings = MemorySettingsStore();
        m_clock.set(at(2026, 11, 22, 12));
        m_preferred = {"en-US"};
        m_center = RecordingNotificationCenter();
    }

    // Every command: status 2, one line naming what was wrong, nothing on
    // standard output and nothing written.
    void malformedArguments_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        // Arguments split at blanks; the tag is the command.
        const auto row = [](const QString &command, const QString &named) {
            QTest::newRow(qPrintable(command)) << command.split(u' ') << named;
        };
        row("report 1985-13-01", "1985-13-01");
        row("report 1985-3-12", "1985-3-12");
        row("report 10000-01-01", "10000-01-01");
        row("report 1985-03-12T24:00", "T24:00");
        row("report 1985-03-12T10", "1985-03-12T10");
        row("report 1985-03-12T12:00:00.5", "12:00:00.5");
        row("report 1985-03-12T12:00Z", "12:00Z");
        row("report +1985-03-12", "+1985-03-12");
        QTest::newRow("trailing blank") << QStringList{"report", "1985-03-12 "} << "1985-03-12 ";
        row(u"report １９８５-03-12"_qs, u"１９８５"_qs);
        row("report 1985-03-12\n", "1985-03-12\\n");
        row("report \x1b[2J", "\\u001B[2J");
        row("report " + u"9"_qs.repeated(100000), u"9"_qs.repeated(100000));
        row("report ", "BIRTH \"\"");
        row("report 2026-03-29T02:30", "02:30"); // skipped by the clock change
        row("report 1985-03-12 tomorrow", "tomorrow");
        row("report --now 2026-02-30 1985-03-12", "--now");
        row("report 1985-03-12 --now", "now");
        row("report --now 2026-11-22 --now 2026-11-23 1985-03-12", "--now");
        row("report --lang fr 1985-03-12", "fr");
        row("report --lang EN 1985-03-12", "EN");
        row("report --lang= 1985-03-12", "--lang \"\"");
        row("report --details=yes 1985-03-12", "details");
        row("report --x\ny 1985-03-12", "x\\ny");
        row("report --details --short 1985-03-12", "--short");
        row("report --name A --name B 1985-03-12", "--name");
        row("report", "BIRTH");
        row("rep\x1bort", "rep\\u001Bort");
        row("favorites", "list");
        row("favorites rename", "rename");
        row("favorites li\nst", "li\\nst");
        row("favorites list --yaml", "--yaml");
        row("favorites list --json --json", "--json --json");
        row("favorites add Zoe", "YYYY-MM-DD");
        row("favorites add Zoe 2001-02-30", "2001-02-30");
        row("favorites add Zoe 2001-02-03T10:00", "T10:00");
        row("favorites add Zoe Lee 2001-02-03", "NAME");
        row("favorites remove 5", "5");
        row("favorites remove -1", "-1");
        row("favorites remove 99999999999999999999", "99999999999999999999");
        row("favorites remove 0x1", "0x1");
        QTest::newRow("leading blank") << QStringList{"favorites", "remove", " 1"} << "\" 1\"";
        row("favorites remove 0 1", "INDEX");
        row("favorites import", "FILE");
        // One file that does not read stops the whole import.
        const QString good = file("good.vcf", card("FN:Zoe\r\nBDAY:2001-07-05\r\n"));
        const auto import = [&](const char *tag, const QString &path, const QString &named) {
            QTest::newRow(tag) << QStringList{"favorites", "import", good, path} << named;
        };
        import("import, missing file", m_files.filePath("none.vcf"), "none.vcf");
        import("import, cut off", file("cut.vcf", card("FN:Ann\r\n").repeated(3).chopped(12)),
               "cut off");
        import("import, folder", m_files.path(), m_files.path());
        row("favorites export a.vcf b.vcf", "FILE.vcf");
        row("calendar export", "FILE");
        row("calendar export - --lang fr", "fr");
        row("calendar export --hepl", "--hepl");
        row("calendar export - --lang de --lang en", "--lang");
        row("calendar export - --lang", "lang");
        row("favorites export -x", "-x");
        row("favorites import a.vcf --contacts", "--contacts");
        row("reminders --now 2026-02-30", "2026-02-30");
        row("reminders --now 2026-03-29T02:00", "02:00");
        row("reminders --now 2026-03-01 --now 2026-03-02", "--now");
        row("reminders --json=yes", "json");
        row("reminders Anna", "reminders: ");
    }
    void malformedArguments()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.startsWith(u"tavlo") && run.err.endsWith(u'\n') && run.err.contains(named),
                 qPrintable(run.err.left(300)));
        QCOMPARE(m_settings.writeCount(), 0);
    }

    // Every change a command stores is told, with the whole list, once;
    // reading tells nothing.
    void changesAreTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("toldNames"); // empty: nothing told
        QTest::newRow("add") << QStringList{"favorites", "add", "Zoe", "2001-02-03"}
                             << QStringList{" Anna ", "Bob", "Zoe"};
        QTest::newRow("remove") << QStringList{"favorites", "remove", "0"} << QStringList{"Bob"};
        QTest::newRow("import") << QStringList{"favorites", "import", "cards.vcf"}
                                << QStringList{" Anna ", "Bob", "Cleo"};
        QTest::newRow("list") << QStringList{"favorites", "list"} << QStringList{};
        QTest::newRow("export") << QStringList{"favorites", "export", "-"} << QStringList{};
        QTest::newRow("calendar") << QStringList{"calendar", "export", "-"} << QStringList{};
        QTest::newRow("reminders") << QStringList{"reminders"} << QStringList{};
    }
    void changesAreTold()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, toldNames);
        m_settings.set(SettingsKeys::favorites, twoFavorites);
        if (arguments.contains("cards.vcf"))
            arguments.replace(2, file("cards.vcf", card("FN:Cleo\r\nBDAY:1990-04-05\r\n")));
        QCOMPARE(tavlo(arguments).status, 0);
        if (toldNames.isEmpty()) {
            QCOMPARE(m_told.size(), 0);
            return;
        }
        QCOMPARE(m_told.size(), 1);
        QStringList names;
        for (const Favorite &favorite : m_told.constFirst())
            names.append(favorite.name);
        QCOMPARE(names, toldNames);
    }

    // The blanks and line feeds of the text are the app's own layout.
    void reportText()
    {
        const CommandRun run = tavlo({"report", "--now", "2026-11-22T12:00", "--details", "--name",
                                      "Anna. ", "1985-03-12T08:30", "2030-01-01"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.out, "Anna's age is: 41 Years,\n 8 Months & 10 Days\n\n"
                          "in months: 500\nin weeks: 2175\nin days: 15230\n\n"
                          "Zodiac sign: Pisces ♓︎\nChinese zodiac: Ox – 牛\n"
                          "Element: Yin  Wood - 木\nPlanet: Jupiter ♃\n"
                          "next birthday: in 110 days\nTuesday\n"
                          "\n"
                          "Select your date of birth\n\n");
        m_clock.set(at(1985, 3, 13)); // "now" is the clock's unless given
        QCOMPARE(tavlo({"report", "--short", "1985-03-12"}).out,
                 "Your age\n\nIn years: 0\nIn months: 0\nIn days: 1\n");
    }

    // The stored details setting and language decide unless an option does;
    // a report writes nothing.
    void reportFollowsTheSettingsUnlessChosen_data()
    {
        QTest::addColumn<bool>("details");
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<qint64>("language");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("startsWith");
        const QStringList en{"en-US"};
        QTest::newRow("fresh install") << false << en << 0LL << QStringList{} << "Your age\n\n";
        QTest::newRow("details stored") << true << en << 0LL << QStringList{} << "Your age is: ";
        QTest::newRow("details stored, --short")
            << true << en << 0LL << QStringList{"--short"} << "Your age\n\n";
        QTest::newRow("--details")
            << false << en << 0LL << QStringList{"--details"} << "Your age is: ";
        QTest::newRow("device German")
            << false << QStringList{"de-CH"} << 0LL << QStringList{} << "Dein Alter";
        QTest::newRow("stored Russian") << false << en << 2LL << QStringList{} << "Твой \n";
        QTest::newRow("--lang wins")
            << false << QStringList{"de-CH"} << 2LL << QStringList{"--lang", "en"} << "Your age";
    }
    void reportFollowsTheSettingsUnlessChosen()
    {
        QFETCH(bool, details);
        QFETCH(qint64, language);
        QFETCH(QStringList, options);
        m_settings.set(SettingsKeys::moreDetails, details);
        m_settings.set(SettingsKeys::preferredLanguage, language);
        QFETCH(QStringList, preferred);
        m_preferred = preferred;
        const qsizetype writes = m_settings.writeCount();
        const CommandRun run = tavlo(QStringList{"report", "1985-03-12"} + options);
        QCOMPARE(run.status, 0);
        QFETCH(QString, startsWith);
        QVERIFY2(run.out.startsWith(startsWith), qPrintable(run.out));
        QCOMPARE(run.out.endsWith(u"\nTuesday\n"), startsWith.endsWith(u"is: "));
        QCOMPARE(m_settings.writeCount(), writes);
    }

    // One object per line, keys in a fixed order; at the moment of "now"
    // the prompt alone.
    void reportJson()
    {
        const CommandRun run = tavlo({"report", "--json", "--lang", "de", "--now",
                                      "2026-11-22T12:00", "1902-02-08T10:00", "2026-11-22T12:00"});
        QCOMPARE(run.status, 0);
        const QStringList lines = run.out.split(u'\n');
        QCOMPARE(lines.size(), 3);
        const QJsonObject tiger = QJsonDocument::fromJson(lines[0].toUtf8()).object();
        QCOMPARE(tiger.keys().size(), 20);
        QCOMPARE(tiger.value("animal").toString(), "Tiger – 虎");
        QCOMPARE(tiger.value("ageYears").toInt(), 124);
        QCOMPARE(tiger.value("signKey").toString(), "aquarius");
        QVERIFY(tiger.value("detailed").toString().startsWith(u"Dein Alter ist: 124 Jahre,"));
        QCOMPARE(tiger.value("display").toString(), tiger.value("short").toString());
        QVERIFY(lines[0].startsWith(u"{\"display\":\"Dein Alter\\n\\nIn Jahren: 124\\n"));
        QVERIFY(lines[0].endsWith(u"\"birthDay\":8,\"birthMonth\":2}"));
        QCOMPARE(lines[1], "{\"display\":\"Wähle dein Geburtsdatum\",\"weekday\":\"\"}");
    }

    void help()
    {
        for (const QStringList &arguments : {QStringList{"--help"}, QStringList{}}) {
            const CommandRun run = tavlo(arguments);
            QCOMPARE(run.status, 0);
            for (const char *command : {"report", "favorites", "reminders", "calendar"})
                QVERIFY2(run.out.contains(u"\n  "_qs + command + u' '), command);
        }
        for (const char *option : {"--now", "--lang", "--details", "--short", "--name", "--json"})
            QVERIFY2(tavlo({"report", "--help"}).out.contains(QLatin1String(option)), option);
        QVERIFY(tavlo({"reminders", "--help"}).out.startsWith(u"Usage: tavlo reminders"));
    }

    void favoritesListAddRemove()
    {
        m_settings.set(SettingsKeys::favorites, twoFavorites);
        QCOMPARE(tavlo({"favorites", "list"}).out, "0\t Anna \t22 11 1985\t41\tscorpio\t★\n"
                                                   "1\tBob\t21 11 2000\t26\tscorpio\t\n");
        const CommandRun run = tavlo({"favorites", "list", "--json"});
        QCOMPARE(run.out, "{\"index\":0,\"name\":\" Anna \",\"birthday\":\"22 11 1985\",\"age\":41,"
                          "\"signKey\":\"scorpio\",\"star\":true}\n{\"index\":1,\"name\":\"Bob\","
                          "\"birthday\":\"21 11 2000\",\"age\":26,\"signKey\":\"scorpio\","
                          "\"star\":false}\n");
        // Added as the app's dialog adds.
        QCOMPARE(tavlo({"favorites", "add", "   ", "2001-07-05"}).status, 0);
        QCOMPARE(stored(), (twoFavorites + Rows{{"Unknown", "5 7 2001"}}));
        QCOMPARE(tavlo({"favorites", "remove", "0"}).status, 0);
        QCOMPARE(stored(), (Rows{{"Bob", "21 11 2000"}, {"Unknown", "5 7 2001"}}));

        // A birthday without a year: no age, and null in JSON.
        QCOMPARE(tavlo({"favorites", "add", "Dan", "--11-23"}).status, 0);
        QCOMPARE(stored().constLast(), (QStringList{"Dan", "23 11"}));
        QVERIFY(tavlo({"favorites", "list"}).out.endsWith("2\tDan\t23 11\t\tsagittauris\t★\n"));
        QVERIFY(tavlo({"favorites", "list", "--json"})
                    .out.endsWith("{\"index\":2,\"name\":\"Dan\",\"birthday\":\"23 11\","
                                  "\"age\":null,\"signKey\":\"sagittauris\",\"star\":true}\n"));
        for (const char *bad : {"--02-30", "--13-01", "--1123", "11-23"}) {
            const CommandRun refused = tavlo({"favorites", "add", "Eve", bad});
            QCOMPARE(refused.status, 2);
            QVERIFY2(refused.err.contains(QString::fromLatin1(bad)), qPrintable(refused.err));
        }
        QCOMPARE(stored().size(), 3);
    }

    // Several files are one import, told in one line; a second import of the
    // same files adds nothing and writes nothing.
    void importsFilesOnce()
    {
        m_settings.set(SettingsKeys::favorites, twoFavorites);
        const QString first =
            file("first.vcf", card("FN:Cleo\r\nBDAY:19900101\r\n") + card("FN:No Birthday\r\n") +
                                  card("FN:Leap\r\nBDAY:1985-02-29\r\n"));
        const QString second =
            file("own/second.vcard", card("FN: Anna \r\nBDAY;VALUE=date:1985-11-22\r\n") +
                                         card("FN:Dan\r\nBDAY:--0312\r\n") +
                                         card("FN:Cleo\r\nBDAY:1990-01-01T00:00:00Z\r\n") +
                                         card("FN:Future\r\nBDAY:2030-01-01\r\n"));
        const QString skipped =
            " skipped (1 no birthday, 1 impossible date, 1 date in the future)\n";
        CommandRun run = tavlo({"favorites", "import", first, second});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, "tavlo: 2 added, 2 already there, 3" + skipped);
        const Rows after = twoFavorites + Rows{{"Cleo", "1 1 1990"}, {"Dan", "12 3"}};
        QCOMPARE(stored(), after);
        const qsizetype writes = m_settings.writeCount();
        run = tavlo({"favorites", "import", second, first});
        QCOMPARE(run.out, "tavlo: 0 added, 4 already there, 3" + skipped);
        QCOMPARE(m_settings.writeCount(), writes);
    }

    // Without a reader of the phone's address books, Plasma Mobile's folder
    // with its files one level down.
    void importsThePhonesContacts()
    {
        const QByteArray xdgData = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", m_files.filePath("data").toUtf8());
        file("data/kpeoplevcard/a.vcf", card("FN:Folder Top\r\nBDAY:1970-05-06\r\n"));
        file("data/kpeoplevcard/own/b.vcard", card("FN:Folder Own\r\nBDAY:1971-05-06\r\n"));
        file("data/kpeoplevcard/own/deeper/c.vcf", card("FN:Too Deep\r\nBDAY:1972-05-06\r\n"));
        file("data/kpeoplevcard/notes.txt", card("FN:Not a vCard file\r\nBDAY:1973-05-06\r\n"));
        file("data/kpeoplevcard/broken.vcf", "garbage");
        const CommandRun run = tavlo({"favorites", "import", "--contacts"});
        qputenv("XDG_DATA_HOME", xdgData);
        QCOMPARE(run.out, "tavlo: 2 added, 0 already there, 0 skipped\n");
        QCOMPARE(stored(), (Rows{{"Folder Top", "6 5 1970"}, {"Folder Own", "6 5 1971"}}));
    }

    // Exported cards read back as the same favorites; "-" is standard output.
    void exports()
    {
        m_settings.set(SettingsKeys::favorites, twoFavorites + Rows{{"Dan", "12 3"}});
        const QString path = m_files.filePath("export/favorites.vcf");
        CommandRun run = tavlo({"favorites", "export", path});
        QCOMPARE(run.out + run.err, QString());
        QCOMPARE(run.status, 0);
        // The identities the rows of an earlier version are known by.
        FavoritesStore before(m_settings);
        before.load();
        QStringList ids;
        for (const Favorite &favorite : before.all())
            ids.append(favorite.id);
        m_settings.set(SettingsKeys::favorites, Rows{});
        QCOMPARE(tavlo({"favorites", "import", path}).out,
                 "tavlo: 3 added, 0 already there, 0 skipped\n");
        QCOMPARE(stored(), (twoFavorites + Rows{{"Dan", "12 3"}}));
        // Each favorite comes back as itself.
        QCOMPARE(storedIds(), ids);
        QVERIFY(tavlo({"favorites", "export", "-"}).out.startsWith("BEGIN:VCARD\r\nVERSION:4.0"));

        run = tavlo({"calendar", "export", "-", "--lang", "de"});
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("BEGIN:VCALENDAR\r\n"));
        QVERIFY(run.out.contains("SUMMARY:Geburtstag von Bob\r\nDESCRIPTION:geboren 2000\r\n"));
        QCOMPARE(tavlo({"calendar", "export", m_files.filePath("birthdays.ics")}).status, 0);
        QVERIFY(
            contentsOf(m_files.filePath("birthdays.ics")).contains("SUMMARY:Bob's birthday\r\n"));
    }

    // An export replaces only a regular file, or makes a new one: whatever
    // else sits at the path stays as it was, with one line and status 1. A
    // link is followed (and kept) unless it lies in a sticky folder anyone
    // may write to and belongs to someone else, as the kernel decides.
    void exportsReplaceOnlyFiles_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("written");
        for (const char *command : {"favorites", "calendar"}) {
            const auto row = [&](const char *target, bool written) {
                QTest::newRow(qPrintable(u"%1, %2"_qs.arg(command, target)))
                    << command << target << written;
            };
            row("named pipe", false);
            row("folder", false);
            row("device", false);
            row("someone else's link in a shared folder", false);
            row("own link in a shared folder", true);
            row("link in an ordinary folder", true);
        }
    }
    void exportsReplaceOnlyFiles()
    {
        QFETCH(QString, command);
        QFETCH(QString, target);
        QFETCH(bool, written);
        const bool root = ::geteuid() == 0;
        if (!root && (target == u"device" || target.startsWith(u"someone")))
            QSKIP("making a device or another user's link needs root");
        QTemporaryDir dir;
        const QString victim = dir.filePath("victim.txt");
        const QByteArray kept = "kept as it was\n";
        writeFile(victim, kept);
        const QString shared = dir.filePath("shared");
        QVERIFY(QDir().mkpath(shared) && ::chmod(QFile::encodeName(shared), 01777) == 0);
        const bool isLink = target.contains(u"link");
        const QString path = (target.contains(u"shared") ? shared : dir.path()) + "/out";
        const QByteArray native = QFile::encodeName(path);
        if (target == u"named pipe")
            QCOMPARE(::mkfifo(native, 0600), 0);
        else if (target == u"folder")
            QVERIFY(QDir().mkpath(path));
        else if (target == u"device") // as /dev/null is
            QCOMPARE(::mknod(native, S_IFCHR | 0666, makedev(1, 3)), 0);
        else
            QVERIFY(QFile::link(victim, path));
        if (target.startsWith(u"someone"))
            QCOMPARE(::lchown(native, 65534, 65534), 0);
        struct stat before
        {};
        QCOMPARE(::lstat(native, &before), 0);

        m_settings.set(SettingsKeys::favorites, twoFavorites);
        const CommandRun run = tavlo({command, "export", path});
        struct stat after
        {};
        QCOMPARE(::lstat(native, &after), 0);
        QCOMPARE(after.st_mode & S_IFMT, before.st_mode & S_IFMT);
        QCOMPARE(after.st_ino, before.st_ino);
        const QByteArray victimNow = contentsOf(victim);
        if (written) {
            QCOMPARE(run.status, 0);
            QCOMPARE(run.err, QString());
            QVERIFY(victimNow.startsWith("BEGIN:"));
            return;
        }
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.startsWith("tavlo: could not save " + path + ": "), qPrintable(run.err));
        QCOMPARE(victimNow, kept);
        if (isLink)
            QCOMPARE(QFile::symLinkTarget(path), victim);
    }

    // A file that cannot be written: status 1, one line, nothing on standard
    // output.
    void unsavedFileSaysSo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("err");
        const QString path = "/dev/null/birthdays";
        QTest::newRow("favorites") << QStringList{"favorites", "export", path}
                                   << "tavlo: could not save /dev/null/birthdays: ";
        QTest::newRow("calendar") << QStringList{"calendar", "export", path}
                                  << "tavlo: could not save /dev/null/birthdays: ";
        QTest::newRow("reminders") << QStringList{"reminders", "schedule"}
                                   << "tavlo: could not save /u/reminder.timer: Disk full\n";
    }
    void unsavedFileSaysSo()
    {
        QFETCH(QStringList, arguments);
        beforeReminders();
        m_center.addError =
            NotificationError{"WakeUpNotWritten", "could not save /u/reminder.timer: Disk full"};
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QFETCH(QString, err);
        QVERIFY2(run.err.startsWith(err), qPrintable(run.err));
        QCOMPARE(run.err.count(u'\n'), 1);
    }

    // Listed as planned, nothing written; scheduled as the app schedules at
    // its start, printed as scheduled.
    void reminders_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("allowed");
        QTest::addColumn<QString>("printed");
        QTest::addColumn<int>("added");
        QTest::newRow("list") << QStringList{"reminders"} << true << twoReminders << 0;
        QTest::newRow("schedule") << QStringList{"reminders", "schedule"} << true << twoReminders
                                  << 2;
        QTest::newRow("schedule, not allowed")
            << QStringList{"reminders", "schedule"} << false << "No reminders scheduled.\n"
            << 0;
    }
    void reminders()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, allowed);
        QFETCH(int, added);
        beforeReminders();
        m_center.status = allowed ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied;
        const qsizetype writes = m_settings.writeCount();
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QTEST(run.out, "printed");
        QCOMPARE(m_center.added.size(), added);
        QCOMPARE(m_settings.writeCount() > writes, added > 0);
    }

    // In the app's language, at the given moment.
    void remindersJson()
    {
        beforeReminders();
        m_settings.set(SettingsKeys::preferredLanguage, 2); // Russian
        const CommandRun run = tavlo({"reminders", "--json", "--now", "2026-03-05T08:00"});
        // Bob's birthday has passed; next year's is beyond 201 days.
        QCOMPARE(run.out, "{\"identifier\":\"birthdayReminder1\",\"fire\":\"2026-03-14T07:30:00+01:"
                          "00\",\"title\":\"День рождения\",\"body\":\"Anna отмечает сегодня "
                          "день рождения!\"}\n");
    }

    // A name is printed with its control characters as escapes by every
    // command, so that it cannot retitle or clear the terminal.
    void namesStayText_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("favorites list") << QStringList{"favorites", "list"};
        QTest::newRow("reminders") << QStringList{"reminders"};
        QTest::newRow("reminders schedule") << QStringList{"reminders", "schedule"};
        QTest::newRow("report --name")
            << QStringList{"report", "--name", hostileName, "1985-03-12"};
    }
    void namesStayText()
    {
        QFETCH(QStringList, arguments);
        beforeReminders();
        m_settings.set(SettingsKeys::favorites, Rows{{hostileName, "2 3 1990"}});
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QVERIFY2(run.out.contains(u"\\u001B]0;pwned\\u0007\\u001B[2J\\rEve"_qs),
                 qPrintable(run.out));
        for (const QChar c : run.out)
            QVERIFY2(c == u'\n' || c == u'\t' || c.unicode() >= 0x20, qPrintable(run.out));
    }

    // --help anywhere among a command's arguments shows its help and writes
    // nothing; after "--" it is a file's name like any other.
    void helpWritesNoFile_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("written"); // the file made, if any
        const auto row = [](const QString &command, const QString &written = {}) {
            QTest::newRow(qPrintable(command)) << command.split(u' ') << written;
        };
        row("calendar export --help");
        row("calendar export -h");
        row("calendar export out.ics --help");
        row("calendar export --lang de --help");
        row("favorites export --help");
        row("favorites export out.vcf -h");
        row("favorites import --help");
        row("favorites import in.vcf --help");
        row("favorites add --help 2001-02-03");
        row("calendar export -- --help", "--help");
        row("favorites export -- -h", "-h");
    }
    void helpWritesNoFile()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, written);
        m_settings.set(SettingsKeys::favorites, twoFavorites);
        const qsizetype writes = m_settings.writeCount();
        QTemporaryDir here;
        const QString before = QDir::currentPath();
        QDir::setCurrent(here.path());
        const CommandRun run = tavlo(arguments);
        QDir::setCurrent(before);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        const QStringList files = QDir(here.path()).entryList(QDir::Files | QDir::NoDotAndDotDot);
        QCOMPARE(m_settings.writeCount(), writes);
        if (!written.isEmpty()) {
            QCOMPARE(files, QStringList{written});
            return;
        }
        QVERIFY2(run.out.startsWith("Usage: tavlo " + arguments[0]), qPrintable(run.out));
        QCOMPARE(files, QStringList());
    }

    void theInstalledProgram()
    {
        // The device's language from the locale; a report stores nothing.
        TavloRun run = installed({"report", "--now", "2026-11-22", "1985-03-12"}, "ru_RU.UTF-8");
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("Твой \n"));
        QVERIFY(!QDir(m_files.filePath("config")).exists());

        // Without a notification service nothing is scheduled.
        file("config/tavlo/tavlo.conf", "[person]\n1\\1=Anna\n1\\2=2 3 1985\n1\\size=2\nsize=1\n");
        run = installed({"reminders", "schedule"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out,
                 "Application Not Allowed to Display Notifications\nNo reminders scheduled.\n");
        QCOMPARE(run.err, QByteArray());
        QVERIFY(!QDir(m_files.filePath("config/autostart")).exists());
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
