// SPDX-License-Identifier: MIT
#include "DiskFaults.h"
#include "TavloProcess.h"
#include "TestFiles.h"
#include "WithoutIds.h"
#include "core/FatalError.h"
#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

// Bad input to the real command line and its real settings file: each gives
// a default, or one line on standard error and status 2; never a crash
// without that line, a hang, or a changed settings file. Malformed arguments
// run in process in tests/cli.

namespace {

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

    QString homeWith(const QByteArray &contents)
    {
        const QString home = freshHome();
        writeFile(settingsPath(home), contents);
        return home;
    }

    // As a fresh process reads them (QSettings caches one file per process).
    QList<Favorite> storedFavorites(const QString &home)
    {
        const QString copy = m_dir.filePath(u"copy%1.conf"_s.arg(++m_homes));
        QFile::copy(settingsPath(home), copy);
        FileSettingsStore settings(copy);
        FavoritesStore favorites(settings);
        favorites.load();
        return withoutIds(favorites.all());
    }

    // Runs the command line, as the user `uid` where one is given.
    static TavloRun tavlo(const QString &home, const QStringList &arguments, int uid = -1)
    {
        return runTavlo(tavloEnvironment(home), arguments,
                        uid < 0 ? QStringList{}
                                : QStringList{u"setpriv"_s, u"--reuid=%1"_s.arg(uid),
                                              u"--regid=%1"_s.arg(uid), u"--clear-groups"_s});
    }

private slots:
    // A full disk, for real: every add is either acknowledged and kept, or
    // refused with one line naming the file and the reason, status 1 and
    // nothing on standard output. The list never shrinks.
    void aFullDiskRefusesAddsAndKeepsTheList()
    {
        const QString home = freshHome();
        const auto disk = ScratchMount::tinyFilesystem(home, 8 * 1024);
        if (!disk->ok())
            QSKIP(qPrintable(disk->why()));
        int acknowledged = 0, refused = 0;
        for (int i = 0; refused < 3 && i < 1000; ++i) {
            const TavloRun run =
                tavlo(home, {"favorites", "add", u"Person number %1"_s.arg(i), "1990-01-01"});
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
        const TavloRun list = tavlo(home, {"favorites", "list"});
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
             {QStringList{"add", "Bob", "1990-01-01"}, {"remove", "0"}}) {
            const TavloRun run = tavlo(home, QStringList{"favorites"} + change);
            QCOMPARE(run.status, 1);
            QCOMPARE(run.out, QByteArray());
            QVERIFY2(run.err.startsWith("tavlo: could not save " + settingsPath(home).toUtf8()) &&
                         run.err.count('\n') == 1,
                     run.err.constData());
        }
        QCOMPARE(contentsOf(settingsPath(home)), goodSettings);
    }

    // A damaged file is read as far as it goes: every favorite still in it
    // is listed, the damage is told in one line, and the first change keeps
    // the file as it was beside it before writing every favorite back.
    // Garbage with no list in it is no list. Which damage reads as what is
    // the parser's, row by row in tst_settingsstore; here one damage inside
    // the list and one after it.
    void damagedSettingsKeepEveryFavorite_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<bool>("damaged");
        QTest::newRow("garbage bytes")
            << QByteArray("\xff\xfe\x00\x01[[[==\n\\\\\\\n;;\"", 15) << QStringList() << false;
        QTest::newRow("cut inside the list") << goodSettings.first(goodSettings.indexOf("2\\size"))
                                             << QStringList{"Anna", "Bob"} << true;
        QTest::newRow("group twice") << goodSettings + "[person]\n1\\1=Cleo\n1\\2=1 1 1990\n"
                                                       "1\\size=2\nsize=1\n"
                                     << QStringList{"Anna", "Bob", "Cleo"} << true;
    }
    void damagedSettingsKeepEveryFavorite()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QStringList, names);
        QFETCH(bool, damaged);
        const QString home = homeWith(contents);
        const QByteArray told = "tavlo: " + settingsPath(home).toUtf8() + " is damaged (";
        const TavloRun list = tavlo(home, {"favorites", "list", "--json"});
        QCOMPARE(list.status, 0);
        QCOMPARE(list.out.count('\n'), names.size());
        QCOMPARE(list.err.startsWith(told) && list.err.count('\n') == 1, damaged);
        // Reading writes nothing.
        QCOMPARE(contentsOf(settingsPath(home)), contents);
        QCOMPARE(QDir(home + u"/tavlo"_s).entryList({u"*.damaged-*"_s}), QStringList());

        const TavloRun add = tavlo(home, {"favorites", "add", "Zoe", "2001-02-03"});
        QCOMPARE(add.status, 0);
        QCOMPARE(add.err.startsWith(told), damaged);
        QStringList stored;
        for (const Favorite &favorite : storedFavorites(home))
            stored.append(favorite.name);
        QCOMPARE(stored, names + QStringList{"Zoe"});
        const QStringList copies = QDir(home + u"/tavlo"_s).entryList({u"*.damaged-*"_s});
        QCOMPARE(copies.size(), damaged ? 1 : 0);
        if (damaged)
            QCOMPARE(contentsOf(home + u"/tavlo/"_s + copies.first()), contents);
        // Told once: the file is whole again.
        QCOMPARE(tavlo(home, {"favorites", "list"}).err, QByteArray());
    }

    // A settings file that cannot be read is never taken for an empty list:
    // every command stops with one line and status 1, and nothing is
    // written over it. Tried as a user who may not read it (mode 000) and
    // with something in its place that is no file.
    void unreadableSettingsStopEveryCommand_data()
    {
        QTest::addColumn<bool>("asAnotherUser");
        QTest::addColumn<QFileDevice::Permissions>("folderMode");
        const QFileDevice::Permissions open =
            QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
        QTest::newRow("a folder in its place") << false << open;
        QTest::newRow("mode 000") << true << open;
        QTest::newRow("a folder that may not be entered") << true << QFileDevice::Permissions();
    }
    void unreadableSettingsStopEveryCommand()
    {
        QFETCH(bool, asAnotherUser);
        QFETCH(QFileDevice::Permissions, folderMode);
        QString home;
        if (asAnotherUser) {
            if (::geteuid() != 0 || QStandardPaths::findExecutable(u"setpriv"_s).isEmpty())
                QSKIP("needs root and setpriv to run as another user");
            home = homeWith(goodSettings);
            QFile::setPermissions(m_dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                    QFileDevice::ExeOwner | QFileDevice::ExeOther);
            const QFileDevice::Permissions owner =
                QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
            QFile::setPermissions(home, owner | QFileDevice::ExeOther);
            QFile::setPermissions(home + u"/tavlo"_s, owner | folderMode);
            QFile::setPermissions(settingsPath(home), {});
        } else {
            home = freshHome();
            QDir().mkpath(settingsPath(home));
        }
        for (const QStringList &command : {QStringList{"favorites", "list"},
                                           {"favorites", "add", "Zoe", "2001-02-03"},
                                           {"reminders"},
                                           {"calendar", "export", home + u"/b.ics"_s}}) {
            const TavloRun run = tavlo(home, command, asAnotherUser ? 65534 : -1);
            QCOMPARE(run.status, 1);
            QCOMPARE(run.out, QByteArray());
            QVERIFY2(run.err.startsWith("tavlo: cannot read " + settingsPath(home).toUtf8()) &&
                         run.err.count('\n') == 1,
                     run.err.constData());
        }
        if (asAnotherUser)
            QCOMPARE(contentsOf(settingsPath(home)), goodSettings);
        else
            QVERIFY(QFileInfo(settingsPath(home)).isDir());
        QCOMPARE(QDir(home + u"/tavlo"_s).entryList({u"*.damaged-*"_s}), QStringList());
    }

    // A stored favorite whose birthday does not read is told in one line
    // naming it; the others are still listed under their own numbers, the
    // status is 2, and nothing is changed.
    void unreadableFavoriteIsToldAndTheRestListed_data()
    {
        QTest::addColumn<QList<Texts>>("rows");
        QTest::addColumn<QStringList>("command");
        QTest::addColumn<QString>("named");
        QTest::addColumn<QStringList>("printed"); // how each line begins
        const Texts anna{"Anna", "12 3 1985"};
        const QList<Texts> threeAnnaUnreadable{
            {"Bob", "2 3 1990"}, {"Anna", "31 2 x"}, {"Cleo", "5 3 1980"}};
        const QString annaNamed = u"favorite 1 (\"Anna\") has an unreadable birthday \"31 2 x\""_s;
        const QStringList list{"favorites", "list"};
        const QStringList annaListed{"0\tAnna\t12 3 1985\t"};
        QTest::newRow("no such day")
            << QList<Texts>{anna, {"Bob", "31 2 1985"}} << list
            << "favorite 1 (\"Bob\") has an unreadable birthday \"31 2 1985\"" << annaListed;
        QTest::newRow("line break, escaped in the message")
            << QList<Texts>{anna, {"Bob", "12 3\\n\\n1985"}} << list
            << "favorite 1 (\"Bob\") has an unreadable birthday \"12 3\\n\\n1985\"" << annaListed;
        QTest::newRow("the middle of three")
            << threeAnnaUnreadable << list << annaNamed
            << QStringList{"0\tBob\t2 3 1990\t", "2\tCleo\t5 3 1980\t"};
        QTest::newRow("the first of two, as JSON")
            << QList<Texts>{{"Anna", "0 0 0"}, {"Bob", "1 1 2000"}}
            << QStringList{"favorites", "list", "--json"} << "favorite 0" << QStringList{"{"};
        QTest::newRow("a row of one text")
            << QList<Texts>{anna, {"Bob"}} << list << "favorite 1 (\"Bob\")" << annaListed;
        QTest::newRow("reminders, the middle of three")
            << threeAnnaUnreadable << QStringList{"reminders", "--now", "2026-03-01T10:00"}
            << annaNamed
            << QStringList{"birthdayReminder1 2026-03-02T07:30:00+01:00 Birthday Reminder: Bob "
                           "has a birthday today!",
                           "birthdayReminder2 2026-03-05T07:30:00+01:00 Birthday Reminder: "
                           "Cleo has a birthday today!"};
        QTest::newRow("reminders schedule, row of one text")
            << QList<Texts>{anna, {"Bob"}} << QStringList{"reminders", "schedule"}
            << "favorite 1 (\"Bob\")"
            << QStringList{"Application Not Allowed", "No reminders scheduled."};
    }
    void unreadableFavoriteIsToldAndTheRestListed()
    {
        QFETCH(QList<Texts>, rows);
        QFETCH(QStringList, command);
        QFETCH(QString, named);
        QFETCH(QStringList, printed);
        const QByteArray contents = "[General]\ncolor=3\n\n" + personSection(rows);
        const QString home = homeWith(contents);
        const TavloRun run = tavlo(home, command);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.err.count('\n'), 1);
        QVERIFY2(run.err.startsWith("tavlo: ") && run.err.contains(named.toUtf8()) &&
                     !run.err.contains("fatal") && !run.err.contains("ERROR"),
                 run.err.constData());
        const QStringList lines = QString::fromUtf8(run.out).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), printed.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            QVERIFY2(lines[i].startsWith(printed[i]), qPrintable(lines[i]));
        QCOMPARE(contentsOf(settingsPath(home)), contents);
    }

    // Names reach the file exactly as given and come back out of
    // `list --json` the same; the text list escapes control characters so
    // that each favorite stays one line.
    void namesRoundTripThroughTheCommandLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("controls") << u"\tAnn\nLee\r\n\x1b[31mred\x07 a\x7f\u0085b\u2028c"_s;
        QTest::newRow("100,000 characters") << u"Жx"_s.repeated(10000) + u"x"_s.repeated(80000);
    }
    void namesRoundTripThroughTheCommandLine()
    {
        QFETCH(QString, name);
        const QString home = homeWith(goodSettings);
        const TavloRun add = tavlo(home, {"favorites", "add", name, "2000-01-02"});
        QCOMPARE(add.status, 0);
        QCOMPARE(add.err, QByteArray());
        QCOMPARE(storedFavorites(home).constLast(), (Favorite{name, u"2 1 2000"_s}));

        const QList<QByteArray> json = tavlo(home, {"favorites", "list", "--json"}).out.split('\n');
        QCOMPARE(json.size(), 4);
        const QJsonObject last = QJsonDocument::fromJson(json.at(2)).object();
        QCOMPARE(last.value(u"name"_s).toString(), name);
        QCOMPARE(last.value(u"birthday"_s).toString(), u"2 1 2000"_s);

        const QStringList text =
            QString::fromUtf8(tavlo(home, {"favorites", "list"}).out).split(u'\n');
        QCOMPARE(text.size(), 4);
        QCOMPARE(text.at(2).split(u'\t').mid(0, 3),
                 (QStringList{u"2"_s, oneLine(name), u"2 1 2000"_s}));
    }
};

QTEST_GUILESS_MAIN(TestBadInput)
#include "tst_badinput.moc"
