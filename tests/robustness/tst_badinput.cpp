// SPDX-License-Identifier: MIT
#include "DiskFaults.h"
#include "core/FatalError.h"
#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

// Bad input to the real command line: a settings file that does not read,
// stored favorites that do not read, names of every kind, malformed
// arguments. Each gives a default, or one line on standard error that names
// what was wrong and status 2; never a crash without that line, a hang, or a
// changed settings file.

namespace {

struct Run
{
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// A settings file with two good favorites and a few settings.
const QByteArray goodSettings = "[General]\ncolor=3\nmoreDetails=true\n\n"
                                "[person]\n1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\n"
                                "2\\1=Bob\n2\\2=29 2 2000\n2\\size=2\nsize=2\n";

using Texts = QList<QByteArray>;

// The favorites as the file keeps them: row i's texts under "i\\1", "i\\2"...
QByteArray personSection(const QList<Texts> &rows)
{
    QByteArray text = "[person]\n";
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const QByteArray row = QByteArray::number(i + 1) + '\\';
        for (qsizetype j = 0; j < rows.at(i).size(); ++j)
            text += row + QByteArray::number(j + 1) + '=' + rows.at(i).at(j) + '\n';
        text += row + "size=" + QByteArray::number(rows.at(i).size()) + '\n';
    }
    return text + "size=" + QByteArray::number(rows.size()) + '\n';
}

} // namespace

class TestBadInput : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_homes = 0;

    QString freshHome() { return m_dir.filePath(u"home%1"_s.arg(++m_homes)); }
    static QString settingsPath(const QString &home) { return home + u"/tavlo/tavlo.conf"_s; }

    static void writeFile(const QString &path, const QByteArray &contents)
    {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    static QByteArray readFile(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // A home whose settings file holds `contents`.
    QString homeWith(const QByteArray &contents)
    {
        const QString home = freshHome();
        writeFile(settingsPath(home), contents);
        return home;
    }

    // The favorites of the file, as a fresh process reads them (QSettings
    // keeps one cache per file name in a process).
    QList<Favorite> storedFavorites(const QString &home)
    {
        const QString copy = m_dir.filePath(u"copy%1.conf"_s.arg(++m_homes));
        QFile::copy(settingsPath(home), copy);
        FileSettingsStore settings(copy);
        FavoritesStore favorites(settings);
        favorites.load();
        return favorites.all();
    }

    static Run tavlo(const QString &home, const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_CONFIG_HOME"_s, home);
        env.insert(u"TZ"_s, u"Europe/Berlin"_s);
        env.insert(u"LANG"_s, u"en_US.UTF-8"_s);
        env.remove(u"LANGUAGE"_s);
        env.remove(u"LC_ALL"_s);
        env.remove(u"LC_MESSAGES"_s);
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(TAVLO_EXECUTABLE), arguments);
        if (!process.waitForFinished(30000))
            qFatal("tavlo %s did not finish", qPrintable(arguments.join(u' ')));
        if (process.exitStatus() != QProcess::NormalExit)
            return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }

private slots:
    // A full disk, for real: every add is either acknowledged and kept, or
    // refused with one line that names the file and the reason, status 1
    // and nothing on standard output. The list never shrinks.
    void aFullDiskRefusesAddsAndKeepsTheList()
    {
        const QString home = freshHome();
        const auto disk = ScratchMount::tinyFilesystem(home, 8 * 1024);
        if (!disk->ok())
            QSKIP(qPrintable(disk->why()));
        int acknowledged = 0;
        int refused = 0;
        for (int i = 0; refused < 3 && i < 1000; ++i) {
            const Run run = tavlo(
                home, {u"favorites"_s, u"add"_s, u"Person number %1"_s.arg(i), u"1990-01-01"_s});
            if (run.status == 0) {
                QCOMPARE(refused, 0);
                ++acknowledged;
                continue;
            }
            ++refused;
            QCOMPARE(run.status, 1);
            QCOMPARE(run.out, QByteArray());
            QCOMPARE(run.err, "tavlo: could not save " + settingsPath(home).toUtf8() +
                                  ": No space left on device\n");
        }
        QVERIFY(acknowledged > 10);
        QCOMPARE(refused, 3);
        // Reading commands go on as before.
        const Run list = tavlo(home, {u"favorites"_s, u"list"_s});
        QCOMPARE(list.status, 0);
        QCOMPARE(list.out.count('\n'), acknowledged);
        QCOMPARE(QDir(home + u"/tavlo"_s).entryList(QDir::Files),
                 QStringList({u"tavlo.conf"_s, u"tavlo.conf.update-lock"_s}));
    }

    void aFolderThatCannotBeWrittenRefusesChanges()
    {
        const QString home = homeWith(goodSettings);
        const auto readOnly = ScratchMount::readOnly(home);
        if (!readOnly->ok())
            QSKIP(qPrintable(readOnly->why()));
        for (const QStringList &change :
             {QStringList{u"add"_s, u"Bob"_s, u"1990-01-01"_s}, QStringList{u"remove"_s, u"0"_s}}) {
            const Run run = tavlo(home, QStringList{u"favorites"_s} + change);
            QCOMPARE(run.status, 1);
            QCOMPARE(run.out, QByteArray());
            QVERIFY2(run.err.startsWith("tavlo: could not save " + settingsPath(home).toUtf8()) &&
                         run.err.count('\n') == 1,
                     run.err.constData());
        }
        QCOMPARE(readFile(settingsPath(home)), goodSettings);
    }

    // What QSettings cannot read counts as the key's default; reading never
    // writes. Rows of tst_settingsstore's malformedFileContents read the
    // same keys in process; here the whole command does.
    void unreadableSettingsGiveDefaults_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("firstLine");
        QTest::addColumn<int>("favorites");

        const QString english = u"Your age is: 41 Years,"_s;
        const QString russian = u"Твой\n Возраст: 41 год,"_s;
        const QString shortEnglish = u"Your age"_s;
        QTest::newRow("garbage bytes")
            << QByteArray("\xff\xfe\x00\x01[[[==\n\\\\\\\n;;\"", 15) << shortEnglish << 0;
        QTest::newRow("truncated in a value")
            << QByteArray("[General]\nmoreDetails=tr") << shortEnglish << 0;
        QTest::newRow("truncated in a section name")
            << QByteArray("[General]\nmoreDetails=true\n[pers") << english << 0;
        QTest::newRow("truncated inside the list")
            << goodSettings.first(goodSettings.size() - 30) << english << 0;
        QTest::newRow("wrong types")
            << QByteArray("[General]\nmoreDetails=yes\npreferredL=russian\nperson=Anna\n")
            << shortEnglish << 0;
        QTest::newRow("huge numbers")
            << QByteArray("[General]\nmoreDetails=true\npreferredL=99999999999999999999999\n"
                          "color=-9223372036854775809\n[person]\nsize=18446744073709551617\n")
            << english << 0;
        QTest::newRow("number out of range")
            << QByteArray("[General]\npreferredL=-2\n") << shortEnglish << 0;
        QTest::newRow("NUL bytes between lines")
            << QByteArray("[General]\nmoreDetails=true\n\0\0\0\npreferredL=2\n", 45) << russian
            << 0;
        QTest::newRow("byte order mark and CRLF")
            << QByteArray("\xEF\xBB\xBF[General]\r\nmoreDetails=true\r\npreferredL=2\r\n")
            << russian << 0;
        QTest::newRow("serialized value that does not read")
            << QByteArray("[General]\nmoreDetails=true\npreferredL=@Variant(\\xff\\xff)\n")
            << english << 0;
        QTest::newRow("keys differ in case")
            << QByteArray("[General]\nMOREDETAILS=true\nPreferredL=2\n") << shortEnglish << 0;
        QTest::newRow("rows beyond the size are not read")
            << QByteArray("[General]\nmoreDetails=true\n") +
                   personSection({{"Anna", "1 1 2000"}, {"Bob", "2 2 2000"}})
                       .replace("\nsize=2\n", "\nsize=1\n")
            << english << 1;
        QTest::newRow("a row nested one level too deep")
            << QByteArray("[person]\nsize=1\n1\\size=1\n1\\1\\size=1\n1\\1\\1=Anna\n")
            << shortEnglish << 0;
    }
    void unreadableSettingsGiveDefaults()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, firstLine);
        QFETCH(int, favorites);
        const QString home = homeWith(contents);

        const Run report = tavlo(home, {"report", "--now", "2026-11-22", "1985-03-12"});
        QCOMPARE(report.status, 0);
        QCOMPARE(report.err, QByteArray());
        QVERIFY2(QString::fromUtf8(report.out).startsWith(firstLine + u'\n'),
                 report.out.constData());

        const Run list = tavlo(home, {"favorites", "list", "--json"});
        QCOMPARE(list.status, 0);
        QCOMPARE(list.err, QByteArray());
        QCOMPARE(list.out.count('\n'), favorites);
        QCOMPARE(readFile(settingsPath(home)), contents);
    }

    // A write keeps every setting it can read (lines it cannot read as
    // settings are not kept) and the list is whole after it.
    void writingOverAnUnreadableFile_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("garbage") << QByteArray("\x01\x02garbage\n=\n[[[\n") << QStringList{"Zoe"};
        QTest::newRow("truncated inside the list")
            << goodSettings.first(goodSettings.size() - 30) << QStringList{"Zoe"};
        QTest::newRow("short row kept as it is") << personSection({{"Anna"}}) << QStringList{};
        // It counts as no list, as any value of the wrong type.
        QTest::newRow("a list that claims more rows than it has")
            << personSection({{"Anna", "1 1 2000"}}).replace("\nsize=1\n", "\nsize=3\n")
            << QStringList{"Zoe"};
    }
    void writingOverAnUnreadableFile()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QStringList, names);
        const QString home = homeWith(contents);
        const Run add = tavlo(home, {"favorites", "add", "Zoe", "2001-02-03"});
        QCOMPARE(add.status, 0);
        QCOMPARE(add.err, QByteArray());
        if (names.isEmpty()) {
            // The stored short row still stops the list, naming it.
            const Run list = tavlo(home, {"favorites", "list"});
            QCOMPARE(list.status, 2);
            QVERIFY2(list.err.contains("stored favorite 0"), list.err.constData());
            return;
        }
        QList<Favorite> expected;
        for (const QString &name : names)
            expected.append({name, u"3 2 2001"_s});
        QCOMPARE(storedFavorites(home), expected);
    }

    // The favorites list reads every stored birthday; one that does not read
    // stops it with one line naming the favorite, and changes nothing.
    void unreadableFavoriteStopsTheCommand_data()
    {
        QTest::addColumn<QList<Texts>>("rows");
        QTest::addColumn<QStringList>("command");
        QTest::addColumn<QString>("named");

        const Texts anna{"Anna", "12 3 1985"};
        const auto withBob = [&](const QByteArray &birthday) {
            return QList<Texts>{anna, {"Bob", birthday}};
        };
        const QStringList list{"favorites", "list"};
        QTest::newRow("no such day") << withBob("31 2 1985") << list << "favorite 1";
        QTest::newRow("empty") << withBob("") << list << "favorite 1";
        QTest::newRow("no year") << withBob("12 3") << list << "favorite 1";
        QTest::newRow("words") << withBob("yesterday") << list << "favorite 1";
        QTest::newRow("trailing text") << withBob("12 3 1985 x") << list << "favorite 1";
        QTest::newRow("year zero") << withBob("1 1 0") << list << "favorite 1";
        QTest::newRow("line break, escaped in the message")
            << withBob("12 3\\n\\n1985") << list << "favorite 1, birthday \"12 3\\n\\n1985\"";
        QTest::newRow("the first of two, as JSON")
            << QList<Texts>{{"Anna", "0 0 0"}, {"Bob", "1 1 2000"}}
            << QStringList{"favorites", "list", "--json"} << "favorite 0";
        QTest::newRow("row of one text")
            << QList<Texts>{anna, {"Bob"}} << list << "stored favorite 1";
        QTest::newRow("reminders, row of one text")
            << QList<Texts>{anna, {"Bob"}} << QStringList{"reminders"} << "stored favorite 1";
    }
    void unreadableFavoriteStopsTheCommand()
    {
        QFETCH(QList<Texts>, rows);
        QFETCH(QStringList, command);
        QFETCH(QString, named);
        const QByteArray contents = "[General]\ncolor=3\n\n" + personSection(rows);
        const QString home = homeWith(contents);
        const Run run = tavlo(home, command);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.startsWith("tavlo: fatal: ") && run.err.contains(named.toUtf8()),
                 run.err.constData());
        QCOMPARE(readFile(settingsPath(home)), contents);
    }

    // Names reach the file exactly as given and come back out of
    // `list --json` the same; the text list escapes control characters so
    // that each favorite stays one line of fields. A NUL cannot be given on
    // the command line (arguments are C strings); the store keeps one
    // (namesThroughTheStore).
    void namesRoundTripThroughTheCommandLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("stored");

        QTest::newRow("emoji") << u"😀 👩‍👩‍👧 🇩🇪"_s << QString();
        QTest::newRow("right to left") << u"שרה כהן"_s << QString();
        QTest::newRow("Arabic with marks and digits") << u"\u200Fليلى ١٢\u200E"_s << QString();
        QTest::newRow("direction override") << u"Ann\u202Eeel\u202C"_s << QString();
        QTest::newRow("terminal escape") << u"\x1b[31mred\x1b[0m\x07"_s << QString();
        QTest::newRow("line breaks and tabs") << u"\tAnn\nLee\r\n"_s << QString();
        QTest::newRow("DEL, C1 and line separator") << u"a\x7f\u0085b\u2028c"_s << QString();
        QTest::newRow("what QSettings treats specially")
            << uR"(@Variant(\0\0\0\x02) "q", a; b = c \ d)"_s << QString();
        QTest::newRow("only blanks") << u" \t "_s << u"Unknown"_s;
        QTest::newRow("100,000 characters")
            << u"Жx"_s.repeated(10000) + u"x"_s.repeated(80000) << QString();
    }
    void namesRoundTripThroughTheCommandLine()
    {
        QFETCH(QString, name);
        QFETCH(QString, stored);
        if (stored.isEmpty())
            stored = name;
        const QString home = homeWith(goodSettings);

        const Run add = tavlo(home, {"favorites", "add", name, "2000-01-02"});
        QCOMPARE(add.status, 0);
        QCOMPARE(add.err, QByteArray());
        QCOMPARE(storedFavorites(home).constLast(), (Favorite{stored, u"2 1 2000"_s}));

        const Run json = tavlo(home, {"favorites", "list", "--json"});
        QCOMPARE(json.status, 0);
        const QList<QByteArray> lines = json.out.split('\n');
        QCOMPARE(lines.size(), 4);
        const QJsonObject last = QJsonDocument::fromJson(lines.at(2)).object();
        QCOMPARE(last.value(u"name"_s).toString(), stored);
        QCOMPARE(last.value(u"birthday"_s).toString(), u"2 1 2000"_s);

        const Run text = tavlo(home, {"favorites", "list"});
        QCOMPARE(text.status, 0);
        const QStringList textLines = QString::fromUtf8(text.out).split(u'\n');
        QCOMPARE(textLines.size(), 4);
        QCOMPARE(textLines.at(2).split(u'\t').mid(0, 3),
                 (QStringList{u"2"_s, oneLine(stored), u"2 1 2000"_s}));
    }

    void namesThroughTheStore_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("stored");
        QTest::newRow("NUL") << QString(u"Ann\0Lee"_s) << QString(u"Ann\0Lee"_s);
        QTest::newRow("only NULs") << QString(3, QChar(0)) << QString(3, QChar(0));
        QTest::newRow("all of the C0 controls") << [] {
            QString all;
            for (char16_t c = 0; c < 0x20; ++c)
                all += QChar(c);
            return all;
        }() << QString();
        QTest::newRow("100,000 characters beyond the basic plane")
            << u"😀"_s.repeated(50000) << QString();
        // Only a program can make one; UTF-8 has no way to say it.
        QTest::newRow("unpaired surrogate becomes U+FFFD")
            << u"x"_s + QChar(0xD800) + u"y"_s << u"x\uFFFDy"_s;
    }
    void namesThroughTheStore()
    {
        QFETCH(QString, name);
        QFETCH(QString, stored);
        if (stored.isNull())
            stored = name;
        const QString home = homeWith(goodSettings);
        {
            FileSettingsStore settings(settingsPath(home));
            FavoritesStore favorites(settings);
            favorites.load();
            favorites.append(name, 2, 1, 2000);
            favorites.update(0, name + name, u"12 3 1985"_s);
        }
        const QList<Favorite> back = storedFavorites(home);
        QCOMPARE(back.size(), 3);
        QCOMPARE(back.at(0).name, stored + stored);
        QCOMPARE(back.at(2).name, stored);
    }

    // Every malformed argument: status 2, one line naming it, nothing on
    // standard output and the settings file as it was. Many more cases run
    // in process in tests/cli; these add the edges.
    void malformedArguments_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");

        const auto report = [](const QString &birth) {
            return QStringList{"report", "--now", "2026-11-22", birth};
        };
        QTest::newRow("report: year 0") << report("0000-01-01") << "0000-01-01";
        QTest::newRow("report: five-digit year") << report("10000-01-01") << "10000-01-01";
        QTest::newRow("report: hour 24") << report("1985-03-12T24:00") << "T24:00";
        QTest::newRow("report: minute 60") << report("1985-03-12T23:60") << "T23:60";
        QTest::newRow("report: second 60") << report("1985-03-12T23:59:60") << "T23:59:60";
        QTest::newRow("report: fraction of a second")
            << report("1985-03-12T12:00:00.5") << "12:00:00.5";
        QTest::newRow("report: zone suffix") << report("1985-03-12T12:00Z") << "12:00Z";
        QTest::newRow("report: plus sign") << report("+1985-03-12") << "+1985-03-12";
        QTest::newRow("report: trailing blank") << report("1985-03-12 ") << "1985-03-12 ";
        QTest::newRow("report: full-width digits") << report(u"１９８５-03-12"_s) << u"１９８５"_s;
        QTest::newRow("report: Arabic-Indic digits") << report(u"١٩٨٥-03-12"_s) << u"١٩٨٥"_s;
        QTest::newRow("report: line break, escaped") << report("1985-03-12\n") << "1985-03-12\\n";
        QTest::newRow("report: escape character, escaped") << report("\x1b[2J") << "\\u001B[2J";
        QTest::newRow("report: 100,000 characters")
            << report(u"9"_s.repeated(100000)) << u"9"_s.repeated(100000);
        QTest::newRow("report: empty BIRTH") << report("") << "BIRTH \"\"";
        QTest::newRow("report: --now skipped by the clock change")
            << QStringList{"report", "--now", "2026-03-29T02:30", "1985-03-12"} << "02:30";
        QTest::newRow("report: --now given twice")
            << QStringList{"report", "--now", "2026-11-22", "--now", "2026-11-23", "1985-03-12"}
            << "--now";
        QTest::newRow("report: --lang in capitals")
            << QStringList{"report", "--lang", "EN", "1985-03-12"} << "EN";
        QTest::newRow("report: --lang empty")
            << QStringList{"report", "--lang=", "1985-03-12"} << "--lang \"\"";
        QTest::newRow("report: value after a flag")
            << QStringList{"report", "--details=yes", "1985-03-12"} << "details";
        QTest::newRow("report: unknown option with a line break")
            << QStringList{"report", "--x\ny", "1985-03-12"} << "x\\ny";
        QTest::newRow("favorites: add five-digit year")
            << QStringList{"favorites", "add", "Zoe", "10000-01-01"} << "10000-01-01";
        QTest::newRow("favorites: add year 0")
            << QStringList{"favorites", "add", "Zoe", "0000-01-01"} << "0000-01-01";
        QTest::newRow("favorites: add date and a line break")
            << QStringList{"favorites", "add", "Zoe", "2001-02-03\n"} << "2001-02-03\\n";
        QTest::newRow("favorites: add with a time")
            << QStringList{"favorites", "add", "Zoe", "2001-02-03T10:00"} << "T10:00";
        QTest::newRow("favorites: add three arguments")
            << QStringList{"favorites", "add", "Zoe", "Lee", "2001-02-03"} << "NAME";
        QTest::newRow("favorites: remove beyond 64 bits")
            << QStringList{"favorites", "remove", "99999999999999999999"} << "99999999999999999999";
        QTest::newRow("favorites: remove hexadecimal")
            << QStringList{"favorites", "remove", "0x1"} << "0x1";
        QTest::newRow("favorites: remove exponent")
            << QStringList{"favorites", "remove", "1e0"} << "1e0";
        QTest::newRow("favorites: remove with a blank")
            << QStringList{"favorites", "remove", " 1"} << "\" 1\"";
        QTest::newRow("favorites: remove empty")
            << QStringList{"favorites", "remove", ""} << "\"\"";
        QTest::newRow("favorites: action with a line break")
            << QStringList{"favorites", "li\nst"} << "li\\nst";
        QTest::newRow("favorites: list twice --json")
            << QStringList{"favorites", "list", "--json", "--json"} << "--json --json";
        QTest::newRow("reminders: --now skipped by the clock change")
            << QStringList{"reminders", "--now", "2026-03-29T02:00"} << "02:00";
        QTest::newRow("reminders: --now date only, malformed")
            << QStringList{"reminders", "--now", "2026-2-28"} << "2026-2-28";
        QTest::newRow("reminders: option with a value")
            << QStringList{"reminders", "--json=yes"} << "json";
        QTest::newRow("unknown command with an escape")
            << QStringList{"rep\x1bort"} << "rep\\u001Bort";
    }
    void malformedArguments()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const QString home = homeWith(goodSettings);
        const Run run = tavlo(home, arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QByteArray());
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.endsWith('\n'), run.err.constData());
        QVERIFY2(QString::fromUtf8(run.err).contains(named), run.err.left(300).constData());
        QCOMPARE(readFile(settingsPath(home)), goodSettings);
    }
};

QTEST_GUILESS_MAIN(TestBadInput)
#include "tst_badinput.moc"
