// SPDX-License-Identifier: MIT
#include "CapturedLog.h"
#include "DiskFaults.h"
#include "TestFiles.h"
#include "settings/FileSettingsStore.h"
#include "settings/HiddenLanguageSwitch.h"
#include "settings/IniFormat.h"
#include "settings/MemorySettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;
using Step = AtomicFileWriter::Step;

namespace {

const char childArgument[] = "--child";

// Runs in a child process, standing for another Tavlo process on the same file:
//   color PATH N     writes "color"
//   people PATH N    writes N favorites
int runChild(const QString &action, const QString &path, int number)
{
    FileSettingsStore store(path);
    if (action == u"color") {
        std::puts("started");
        std::fflush(stdout);
        store.set(color, number);
    } else if (action == u"people") {
        QList<QStringList> people;
        for (int i = 0; i < number; ++i)
            people.append({QStringLiteral("p%1").arg(i), QStringLiteral("1 1 2000")});
        store.set(favorites, people);
    }
    return 0;
}

// A disk for the background writer, which calls it from its own thread: it
// lingers at the sync like a slow disk, and counts the files it replaced.
struct TestDisk
{
    std::atomic<int> syncMilliseconds = 0;
    std::atomic<int> renames = 0;

    AtomicFileWriter writer()
    {
        return AtomicFileWriter([this](AtomicFileWriter::Step step) {
            if (step == AtomicFileWriter::Step::Sync)
                QThread::msleep(syncMilliseconds);
            if (step == AtomicFileWriter::Step::Rename)
                ++renames;
            return 0;
        });
    }
};

QString reasonFor(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

class TestSettingsStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    QString freshIniPath() { return m_dir.filePath(QStringLiteral("s%1.conf").arg(++m_files)); }
    QString freshFolder() { return m_dir.filePath(QString::number(++m_files)); }

    // The file as a fresh process reads it, under another name.
    QString copyOf(const QString &path)
    {
        const QString copy = freshIniPath();
        if (!QFile::copy(path, copy))
            qFatal("cannot copy %s", qPrintable(path));
        return copy;
    }

    static void runChild(const QStringList &arguments)
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    QStringList{childArgument} + arguments);
        if (!child.waitForFinished(30000) || child.exitCode() != 0)
            qFatal("the child %s failed", qPrintable(arguments.join(u' ')));
    }

    // A new file name each time: QSettings keeps what it read of a file for
    // the rest of the process.
    QString fileWith(const QByteArray &text) { return writeFile(freshIniPath(), text); }

    static HiddenLanguageSwitch::Answer tapTimes(HiddenLanguageSwitch &secret, int taps,
                                                 SettingsStore &settings)
    {
        HiddenLanguageSwitch::Answer answer;
        for (int i = 0; i < taps; ++i)
            answer = secret.tap(6, false, Language::English, 3, settings);
        return answer;
    }

    // Qt's QSettings wrote the files of earlier versions and reads ours in
    // any other Qt program: it judges the file's dialect.
    // Ours written, QSettings reading, and the other way round, for a name
    // as a plain value, inside the favorites list and in a key.
    void checkBothWays(const QString &text)
    {
        // A slash in a key is a path separator for QSettings.
        const QString key = "odd/k" + QString(text).replace(u'/', u'_');
        const IniFormat::Values ours{
            {"Name", text},
            {"color", 7},
            {"star", true},
            {"person",
             QVariantList{QVariantList{text, "12 3 1985"}, QVariantList{"B", "1 1 2000"}}},
            {key, text},
        };
        QSettings theirsReading(fileWith(IniFormat::serialize(ours)), QSettings::IniFormat);
        QCOMPARE(theirsReading.status(), QSettings::NoError);
        QCOMPARE(theirsReading.value("Name").toString(), text);
        QCOMPARE(theirsReading.value("color").toString(), "7");
        QCOMPARE(theirsReading.value("star").toString(), "true");
        QCOMPARE(theirsReading.value("person/size").toString(), "2");
        QCOMPARE(theirsReading.value("person/1/1").toString(), text);
        QCOMPARE(theirsReading.value("person/2/size").toString(), "2");
        QCOMPARE(theirsReading.value(key).toString(), text);

        const QString path = freshIniPath();
        {
            QSettings theirsWriting(path, QSettings::IniFormat);
            // As earlier versions wrote the favorites.
            theirsWriting.setValue("Name", text);
            theirsWriting.setValue("person/1/1", text);
            theirsWriting.setValue("person/1/size", 1);
            theirsWriting.setValue("person/size", 1);
        }
        const IniFormat::Values read = IniFormat::parse(contentsOf(path));
        QCOMPARE(read.value("Name"), QVariant(text));
        QCOMPARE(read.value("person"), QVariant(QVariantList{QVariantList{text}}));
    }

private slots:
    // What is set reads back from the file; a fresh store reads the
    // defaults of the types.
    void valuesRoundTrip()
    {
        const QString path = freshIniPath();
        FileSettingsStore store(path);
        QCOMPARE(store.value(color), 0);
        QCOMPARE(store.value(moreDetails), false);
        QVERIFY(!store.value(backgroundImage) && !store.value(favorites) &&
                !store.value(olderFavoriteNames));

        const QList<QStringList> people = {
            {QStringLiteral(" Anna "), QStringLiteral("12 3 1985")},
            {QStringLiteral("Smith, John; \"Jr\" = #1"), QStringLiteral("1 1 2000")},
            {QStringLiteral("@Ольга\n😀"), QStringLiteral("")},
            {QStringLiteral("only one")},
        };
        const QStringList older{QStringLiteral("1. Ann"), QStringLiteral("Bob 2")};
        store.set(color, 9);
        store.set(year, -44);
        store.set(appStarts, 1LL << 40);
        store.set(moreDetails, true);
        store.set(weekday, true);
        store.set(backgroundImage, QStringLiteral("space3"));
        store.set(handOverName, QStringLiteral("a, b"));
        store.set(favorites, people);
        store.set(olderFavoriteNames, older);
        store.set(olderFavoriteBirthdays, QStringList{});
        store.set(weekday, false);
        store.remove(year.name);

        const FileSettingsStore read(copyOf(path));
        QCOMPARE(read.value(color), 9);
        QCOMPARE(read.value(year), 0);
        QCOMPARE(read.value(appStarts), 1LL << 40);
        QCOMPARE(read.value(moreDetails), true);
        QCOMPARE(read.value(weekday), false);
        QCOMPARE(read.value(backgroundImage), QStringLiteral("space3"));
        QCOMPARE(read.value(handOverName), QStringLiteral("a, b"));
        QCOMPARE(read.value(favorites), people);
        QCOMPARE(read.value(olderFavoriteNames), older);
        QCOMPARE(read.value(olderFavoriteBirthdays), QStringList());
    }

    void aBatchReachesTheFileWhenItCloses()
    {
        const QString path = freshIniPath();
        FileSettingsStore writer(path);
        writer.set(day, 1);
        {
            const SettingsBatch batch(writer);
            writer.set(day, 12);
            writer.set(month, 3);
            {
                const SettingsBatch inner(writer);
                writer.set(year, 1985);
            }
            const QByteArray onDisk = contentsOf(path);
            QVERIFY2(onDisk.contains("day=1\n") && !onDisk.contains("year="), onDisk.constData());
            QCOMPARE(writer.value(day), 12);
        }
        const FileSettingsStore reader(path);
        QCOMPARE(reader.value(day), 12);
        QCOMPARE(reader.value(month), 3);
        QCOMPARE(reader.value(year), 1985);
    }

    // A list's entries are keys of their own; a write of the list must take
    // away every entry on disk, also those another process wrote meanwhile.
    void aListWriteLeavesNoRowsOfAnotherProcess()
    {
        const QString path = freshIniPath();
        FileSettingsStore store(path);
        store.set(favorites, {{"a", "1 1 2000"}, {"b", "2 2 2000"}});
        runChild({"people", path, "5"});
        store.set(favorites, {{"c", "3 3 2000"}});

        QSettings file(copyOf(path), QSettings::IniFormat);
        file.beginGroup(QStringLiteral("person"));
        QCOMPARE(file.childGroups(), QStringList{"1"});
        QCOMPARE(file.value("size").toString(), "1");
        QCOMPARE(file.value("1/1").toString(), "c");
    }

    // Another process's write of the same size, with the file's time set
    // back to what it was, is still a change.
    void aBatchSeesAChangeThatLooksLikeNone()
    {
        const QString path = freshIniPath();
        FileSettingsStore store(path);
        store.set(color, 1);
        const QFileInfo before(path);
        const QDateTime modified = before.lastModified();
        runChild({"color", path, "2"});
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(QFileInfo(path).size(), before.size());
        QCOMPARE(QFileInfo(path).lastModified(), modified);

        store.set(day, 5);
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(color), 2);
        QCOMPARE(reader.value(day), 5);
        QCOMPARE(store.value(color), 2);
    }

    // What was read ahead of the app's window is taken only while the file
    // is still the one read, and only by a store of that file.
    void aReadAheadStandsOnlyForTheFileRead_data()
    {
        QTest::addColumn<bool>("replacedMeanwhile");
        QTest::addColumn<bool>("sameFile");
        QTest::addColumn<int>("expected");
        QTest::newRow("unchanged") << false << true << 1;
        QTest::newRow("replaced after the read") << true << true << 2;
        QTest::newRow("another file") << false << false << 3;
    }
    void aReadAheadStandsOnlyForTheFileRead()
    {
        QFETCH(bool, replacedMeanwhile);
        QFETCH(bool, sameFile);
        QFETCH(int, expected);
        const QString path = freshIniPath();
        const QString other = freshIniPath();
        FileSettingsStore(path).set(color, 1);
        FileSettingsStore(other).set(color, 3);
        FileSettingsStore::readAhead(path);
        if (replacedMeanwhile) {
            QTest::qWait(20);
            runChild({"color", path, "2"});
        }
        FileSettingsStore store(sameFile ? path : other);
        QCOMPARE(store.value(color), expected);
    }

    void anOpenBatchHoldsOtherProcessesBack()
    {
        const QString path = freshIniPath();
        FileSettingsStore store(path);
        store.set(color, 7);
        QProcess child;
        {
            const SettingsBatch batch(store);
            store.set(color, 1);
            child.start(QCoreApplication::applicationFilePath(),
                        {childArgument, "color", path, "2"});
            QVERIFY(child.waitForReadyRead(30000));
            QCOMPARE(child.readLine(), "started\n");
            // Its write would take milliseconds; it waits for our batch.
            QVERIFY(!child.waitForFinished(300));
            QCOMPARE(FileSettingsStore(copyOf(path)).value(color), 7);
        }
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(FileSettingsStore(copyOf(path)).value(color), 2);
    }

    // A change that did not reach the disk is reported, to the caller and
    // to the failure handler, stays in memory, and goes out with the next
    // write; what is on disk stays as it was until then.
    void aFailedWriteIsReportedKeptAndRetried()
    {
        const QString path = freshIniPath();
        FileSettingsStore(path).set(color, 1);
        const auto armed = std::make_shared<bool>(true);
        FileSettingsStore store(path, failingWriter(AtomicFileWriter::Step::Flush, ENOSPC, armed));
        QList<WriteResult> told;
        store.setFailureHandler([&](const WriteResult &failure) { told.append(failure); });

        const WriteResult result = store.set(color, 5);
        QCOMPARE(result.message(), "could not save " + path + ": No space left on device");
        QCOMPARE(told.size(), 1);
        QCOMPARE(store.value(color), 5);
        {
            SettingsBatch batch(store);
            store.set(day, 12);
            store.set(month, 3);
            QVERIFY(!batch.finish().ok());
        }
        QCOMPARE(told.size(), 2);
        QCOMPARE(FileSettingsStore(copyOf(path)).value(color), 1);

        // Another process writes meanwhile; ours go on top of it.
        runChild({"people", path, "2"});
        *armed = false;
        QVERIFY(store.set(year, 1985).ok());
        QCOMPARE(told.size(), 2);
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(color), 5);
        QCOMPARE(reader.value(day), 12);
        QCOMPARE(reader.value(year), 1985);
        QCOMPARE(reader.value(favorites)->size(), 2);
    }

    // Writing in the background: a full disk is told to the failure handler
    // on our own thread, leaves the file as it was, and the change stays to
    // go out with the next one.
    void aBackgroundWriteOnAFullDiskIsToldAndKept()
    {
        const QString folder = m_dir.filePath(QStringLiteral("full"));
        const auto mount = ScratchMount::tinyFilesystem(folder, 64 * 1024);
        if (!mount->ok())
            QSKIP(qPrintable(mount->why()));
        const QString path = folder + QStringLiteral("/tavlo.conf");
        FileSettingsStore(path).set(color, 1);
        const QByteArray before = contentsOf(path);

        FileSettingsStore store(path);
        store.writeInBackground();
        QList<WriteResult> told;
        QList<QThread *> toldOn;
        store.setFailureHandler([&](const WriteResult &failure) {
            told.append(failure);
            toldOn.append(QThread::currentThread());
        });
        QList<QStringList> many;
        for (int i = 0; i < 4000; ++i)
            many.append({QStringLiteral("Person %1").arg(i), QStringLiteral("1 2 1990")});
        QVERIFY(store.set(favorites, many).ok());
        QCOMPARE(store.value(favorites)->size(), 4000);
        QTRY_COMPARE(told.size(), 1);
        QCOMPARE(told.first().message(), "could not save " + path + ": No space left on device");
        QCOMPARE(toldOn.first(), QThread::currentThread());
        QCOMPARE(contentsOf(path), before);
        // No half-written file is left beside it.
        QCOMPARE(QDir(folder).entryList(QDir::Files),
                 (QStringList{"tavlo.conf", "tavlo.conf.update-lock"}));
        // Still too big: waitForWrites() tells of it before it returns.
        store.set(day, 3);
        store.waitForWrites();
        QCOMPARE(told.size(), 2);

        // Room again: the next change takes the kept one with it.
        many.resize(10);
        QVERIFY(store.set(favorites, many).ok());
        store.set(day, 4);
        store.waitForWrites();
        QCOMPARE(told.size(), 2);
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(favorites)->size(), 10);
        QCOMPARE(reader.value(day), 4);
        QCOMPARE(reader.value(color), 1);
    }

    // Changes that come while a write runs are written together after it:
    // the newest state is what the file ends with, also when the store goes
    // away with a write running and another waiting.
    void aBurstEndsWithTheNewestStateOnDisk()
    {
        const QString path = freshIniPath();
        TestDisk disk;
        disk.syncMilliseconds = 20;
        {
            FileSettingsStore store(path, disk.writer());
            store.writeInBackground();
            for (int i = 1; i <= 50; ++i) {
                SettingsBatch batch(store);
                store.set(day, i % 28 + 1);
                store.set(year, 1900 + i);
                QVERIFY(batch.finish().ok());
            }
        }
        QVERIFY2(disk.renames < 50, qPrintable(QString::number(disk.renames)));
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(day), 50 % 28 + 1);
        QCOMPARE(reader.value(year), 1950);
    }

    // Writes held while the app makes its first frame reach the disk once
    // released, or as soon as anything waits for them: nothing is lost.
    void heldWritesReachTheDiskOnceReleased_data()
    {
        QTest::addColumn<QString>("release");
        for (const char *way : {"released", "waited for", "checked as written", "store closed"})
            QTest::newRow(way) << QString::fromLatin1(way);
    }
    void heldWritesReachTheDiskOnceReleased()
    {
        QFETCH(QString, release);
        const QString path = freshIniPath();
        TestDisk disk;
        auto store = std::make_unique<FileSettingsStore>(path, disk.writer());
        store->writeInBackground();
        store->holdWrites();
        QVERIFY(store->set(day, 12).ok());
        store->set(year, 1985);
        // Given the time a write takes here, none is made while held.
        QTest::qWait(200);
        QCOMPARE(disk.renames.load(), 0);
        if (release == u"released") {
            store->releaseWrites();
            QTRY_COMPARE(disk.renames.load(), 1);
            store->waitForWrites();
        } else if (release == u"waited for") {
            store->waitForWrites();
        } else if (release == u"checked as written") {
            QVERIFY(store->untilWritten()().ok());
        } else {
            store.reset();
        }
        QCOMPARE(disk.renames.load(), 1);
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(day), 12);
        QCOMPARE(reader.value(year), 1985);
    }

    // The update lock stays ours until the background write is done, so
    // another process's change waits and lands on top of ours, not under it.
    void aBackgroundWriteHoldsOtherProcessesBack()
    {
        const QString path = freshIniPath();
        TestDisk disk;
        disk.syncMilliseconds = 600;
        FileSettingsStore store(path, disk.writer());
        store.writeInBackground();
        store.set(day, 12);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {childArgument, "color", path, "2"});
        QVERIFY(child.waitForFinished(30000));
        store.waitForWrites();
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(day), 12);
        QCOMPARE(reader.value(color), 2);
        // And we see theirs.
        store.refresh();
        QCOMPARE(store.value(color), 2);
    }

    // Setting what the file already says writes nothing.
    void anUnchangedValueWritesNothing()
    {
        const QString path = freshIniPath();
        TestDisk disk;
        FileSettingsStore store(path, disk.writer());
        store.set(color, 3);
        store.set(moreDetails, true);
        QCOMPARE(disk.renames, 2);
        FileSettingsStore again(path, disk.writer());
        QVERIFY(again.set(color, 3).ok());
        QVERIFY(again.set(moreDetails, true).ok());
        QCOMPARE(disk.renames, 2);
        QVERIFY(again.set(color, 4).ok());
        QCOMPARE(disk.renames, 3);
    }

    void wrongTypesReadAsDefaults_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<qint64>("asInteger");
        QTest::addColumn<bool>("asBoolean");
        QTest::addColumn<bool>("asStringPresent");
        QTest::addColumn<bool>("asListPresent");
        QTest::addColumn<bool>("asTablePresent");
        const auto row = [](const char *tag, const QVariant &stored, qint64 integer, bool boolean,
                            bool string, bool list, bool table = false) {
            QTest::newRow(tag) << stored << integer << boolean << string << list << table;
        };
        row("integer", 7, 7, false, false, false);
        row("integer as text", "7", 7, false, true, false);
        row("negative text", "-3", -3, false, true, false);
        row("word", "abc", 0, false, true, false);
        row("fraction", "1.5", 0, false, true, false);
        row("beyond 64 bits", "99999999999999999999", 0, false, true, false);
        row("boolean", true, 0, true, false, false);
        row("boolean as text", "true", 0, true, true, false);
        row("another word for true", "yes", 0, false, true, false);
        row("double", 2.5, 0, false, false, false);
        row("string list", QVariantList{"a"}, 0, false, false, true);
        row("list with a number", QVariantList{"a", 5}, 0, false, false, false);
        row("table", QVariantList{QVariantList{"a"}}, 0, false, false, false, true);
        row("table with a number row", QVariantList{QVariantList{"a"}, 3}, 0, false, false, false);
    }
    void wrongTypesReadAsDefaults()
    {
        QFETCH(QVariant, stored);
        MemorySettingsStore store;
        for (const QString &key : {color.name, moreDetails.name, backgroundImage.name,
                                   olderFavoriteNames.name, favorites.name})
            store.setRaw(key, stored);
        QTEST(store.value(color), "asInteger");
        QTEST(store.value(moreDetails), "asBoolean");
        QTEST(store.value(backgroundImage).has_value(), "asStringPresent");
        QTEST(store.value(olderFavoriteNames).has_value(), "asListPresent");
        QTEST(store.value(favorites).has_value(), "asTablePresent");
    }

    // Earlier versions' spelling, kept so that their files still read.
    void scheduledReminderKeys() { QCOMPARE(scheduledReminder(5).name, "selectetDate5"); }

    void aFailedStepLeavesTheOldFile_data()
    {
        QTest::addColumn<Step>("step");
        QTest::addColumn<int>("error");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("open, no permission") << Step::Open << EACCES << false;
        QTest::newRow("write, disk full") << Step::Write << ENOSPC << false;
        QTest::newRow("flush, disk full") << Step::Flush << ENOSPC << false;
        QTest::newRow("flush, quota") << Step::Flush << EDQUOT << false;
        QTest::newRow("sync, i/o error") << Step::Sync << EIO << false;
        QTest::newRow("rename, read-only") << Step::Rename << EROFS << false;
        // After the rename there is nothing to go back to: the new file is in
        // place, and the caller still learns that it may not last.
        QTest::newRow("folder sync, i/o error") << Step::SyncFolder << EIO << true;
    }
    void aFailedStepLeavesTheOldFile()
    {
        QFETCH(Step, step);
        QFETCH(int, error);
        QFETCH(bool, replaced);
        const QString folder = freshFolder() + "/deeper";
        const QString path = folder + "/tavlo.conf";
        const QByteArray old = "[person]\n1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\nsize=1\n";
        const QByteArray next(5000, 'x');
        QVERIFY(AtomicFileWriter().write(path, old).ok());

        const WriteResult result = failingWriter(step, error).write(path, next);
        QVERIFY(!result.ok());
        QCOMPARE(result.path(), path);
        QCOMPARE(result.reason(), reasonFor(error));
        QCOMPARE(result.message(), "could not save " + path + ": " + reasonFor(error));
        QCOMPARE(contentsOf(path), replaced ? next : old);
        // No temporary file stays behind.
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"tavlo.conf"});

        // A new file that could not be written is not there at all.
        const QString fresh = folder + "/new.conf";
        QVERIFY(!failingWriter(step, error).write(fresh, "x").ok());
        QCOMPARE(QFile::exists(fresh), replaced);
    }

    // The taps on the version number: counted only in theme 6 with details off.
    void sequence_data()
    {
        QTest::addColumn<int>("taps");
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("stored"); // -1: nothing stored
        const auto next = [](const char *language, int clicks, const char *step) {
            return QStringLiteral("language = en\nnext language = %1, in %2 clicks\n%3\n\n"
                                  "saved birthdays: 3")
                .arg(QLatin1StringView(language))
                .arg(clicks)
                .arg(QLatin1StringView(step));
        };
        const QString system = "language = en (default system)\n\nsaved birthdays: 3";
        QTest::newRow("39: nothing yet") << 39 << "" << -1LL;
        QTest::newRow("40: diagnostics")
            << 40 << "language = en\nno events next time\n\nsaved birthdays: 3\n"
            << -1LL;
        QTest::newRow("43: German, 3 to go")
            << 43 << next("ru", 3, "press done, to change to german") << 1LL;
        QTest::newRow("45: German, 1 to go")
            << 45 << next("ru", 1, "press done, to change to german") << 1LL;
        QTest::newRow("46: Russian ends with a line feed")
            << 46 << next("en", 3, "press done, to change to russian") + u'\n' << 2LL;
        QTest::newRow("51: English")
            << 51 << next("Default", 1, "kill the app, to change to english") << 3LL;
        QTest::newRow("52: device language") << 52 << system << 0LL;
        QTest::newRow("57: still device language") << 57 << system << 0LL;
        QTest::newRow("58: quiet again") << 58 << "" << -1LL;
    }
    void sequence()
    {
        QFETCH(int, taps);
        QFETCH(QString, text);
        QFETCH(qint64, stored);
        MemorySettingsStore settings;
        settings.set(preferredLanguage, 9);
        const CapturedLog log;
        HiddenLanguageSwitch secret;
        const HiddenLanguageSwitch::Answer answer = tapTimes(secret, taps, settings);
        QCOMPARE(answer.text, text);
        QCOMPARE(answer.reveal, taps >= 40 && taps <= 42);
        if (stored >= 0)
            QCOMPARE(settings.value(preferredLanguage), stored);
        QCOMPARE(log.lines.size(), taps);
        QCOMPARE(log.lines.last(), QString::number(taps));
    }

    void wrongStateResetsTheCount_data()
    {
        QTest::addColumn<qint64>("color");
        QTest::addColumn<bool>("details");
        QTest::newRow("another theme") << 5LL << false;
        QTest::newRow("details on") << 6LL << true;
    }
    void wrongStateResetsTheCount()
    {
        QFETCH(qint64, color);
        QFETCH(bool, details);
        MemorySettingsStore settings;
        const CapturedLog quiet;
        HiddenLanguageSwitch secret;
        tapTimes(secret, 39, settings);
        const HiddenLanguageSwitch::Answer answer =
            secret.tap(color, details, Language::English, 3, settings);
        QCOMPARE(secret.count(), 0);
        QCOMPARE(answer.text, QString());
        // Counting starts again from one.
        QCOMPARE(tapTimes(secret, 40, settings).text.isEmpty(), false);
    }

    void diagnosticsListTheScheduledReminders()
    {
        MemorySettingsStore settings;
        settings.set(scheduledReminder(1), QStringLiteral("Selected notification: A"));
        settings.set(scheduledReminder(3), QStringLiteral("Selected notification: C"));
        QCOMPARE(HiddenLanguageSwitch::diagnostics(Language::Russian, 2, settings),
                 "language = ru\nSelected notification: A\nSelected notification: C\n"
                 "\nsaved birthdays: 2\n");
    }

    void namesOfEveryKind_data()
    {
        // Single odd characters come in randomNames() below.
        QTest::addColumn<QString>("text");
        const char16_t nul[] = {u'A', 0, u'7', u'b', 0};
        QTest::newRow("empty") << "";
        QTest::newRow("blank only") << " ";
        QTest::newRow("only a comma") << ",";
        QTest::newRow("backslashes") << "C:\\new\\x41\\";
        QTest::newRow("control then hex digit") << "\x01"
                                                   "abc\x1f"
                                                   "9";
        QTest::newRow("nul then digit") << QString::fromUtf16(nul, 4);
        QTest::newRow("at sign") << "@home";
        QTest::newRow("two at signs") << "@@x";
        QTest::newRow("looks typed") << "@Variant(x)";
        QTest::newRow("looks invalid") << "@Invalid()";
        QTest::newRow("percent and brackets") << "%41 [General] %U0416";
        QTest::newRow("emoji") << "Mama 🎂👩‍👧";
        QTest::newRow("general") << "General";
    }
    void namesOfEveryKind()
    {
        QFETCH(QString, text);
        checkBothWays(text);
    }

    // Texts no one thought of: drawn from the characters that matter to the
    // dialect, with a fixed seed so that a failure can be repeated.
    void randomNames()
    {
        const QString alphabet = QString::fromUtf16(
            u" \t\n\r\"\\,;=@%[]/#aZ09fF\x01\x1f\x7f\u00e4\u0416\u20ac\U0001F382");
        QRandomGenerator random(20261123);
        for (int round = 0; round < 200; ++round) {
            QString text;
            const int length = random.bounded(12);
            for (int i = 0; i < length; ++i) {
                qsizetype at = random.bounded(alphabet.size());
                // Keep surrogate pairs whole.
                if (alphabet.at(at).isLowSurrogate())
                    --at;
                text += alphabet.at(at);
                if (alphabet.at(at).isHighSurrogate())
                    text += alphabet.at(at + 1);
            }
            checkBothWays(text);
            if (QTest::currentTestFailed())
                qFatal("failed for the text \"%s\"", qPrintable(text.toUtf8().toPercentEncoding()));
        }
    }

    // Files written by hand or by other programs: every key QSettings finds,
    // we find with the same value; values QSettings does not give as text,
    // we do not either.
    void handWrittenFiles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("comments and blank lines")
            << QByteArray("; a comment\n\n[General]\ncolor=3 ; after\n  ;indented\nstar=true\n");
        QTest::newRow("windows line ends and a byte order mark")
            << QByteArray("\xef\xbb\xbf[General]\r\ncolor=4\r\nName=Anna\r\n");
        QTest::newRow("quoted value over two lines") << QByteArray("Name=\"one\ntwo\"\nday=5\n");
        QTest::newRow("continued line") << QByteArray("Name=one\\\ntwo\nday=5\n");
        QTest::newRow("list of texts") << QByteArray("arrayName=a, \"b, c\" ,d\n");
        QTest::newRow("empty list") << QByteArray("arrayName=@Invalid()\n");
        QTest::newRow("typed values")
            << QByteArray("a=@ByteArray(xyz)\nb=@Variant(\\0\\0\\0\\x7f)\nc=@String(s)\n");
        QTest::newRow("escaped keys and sections")
            << QByteArray("[%General]\nx=1\n[a%20b]\nk%U0416=2\nsub\\key=3\n");
        QTest::newRow("octal and hex escapes") << QByteArray("Name=\\101\\x42\\x043 z\\?\\'\n");
        QTest::newRow("blanks kept by quotes and escapes")
            << QByteArray("a=  x  \nb=\"  x  \"\nc=x\\t  \n");
        QTest::newRow("section without end") << QByteArray("[person\nsize=1\n");
        QTest::newRow("line without equals") << QByteArray("garbage\ncolor=2\n");
        QTest::newRow("garbage") << QByteArray("\x01\x02garbage\n=\n[[[\n");
        QTest::newRow("cut off in a key") << QByteArray("[General]\ncolor=5\nmoreDet");
        QTest::newRow("key repeated") << QByteArray("color=1\ncolor=2\n");
    }
    void handWrittenFiles()
    {
        QFETCH(QByteArray, text);
        const IniFormat::Values ours = IniFormat::parse(text);
        QSettings theirs(fileWith(text), QSettings::IniFormat);
        QCOMPARE(QStringList(ours.keys()), theirs.allKeys());
        for (const QString &key : theirs.allKeys()) {
            if (key.isEmpty())
                continue; // QSettings gives no value for an empty key
            const QVariant expected = theirs.value(key);
            const QVariant actual = ours.value(key);
            const bool isText = expected.typeId() == QMetaType::QString ||
                                expected.typeId() == QMetaType::QStringList;
            if (isText)
                QCOMPARE(actual, expected);
            else
                QVERIFY2(actual.typeId() != QMetaType::QString, qPrintable(key));
        }
        // And what we read we write back so that QSettings reads it alike.
        QSettings again(fileWith(IniFormat::serialize(ours)), QSettings::IniFormat);
        QCOMPARE(again.allKeys(), theirs.allKeys());
        for (const QString &key : theirs.allKeys())
            QCOMPARE(again.value(key), theirs.value(key));
    }

    // A group of the shape of a list is one value; anything else stays as
    // its entries.
    void lists_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVariant>("person");
        const QVariantList anna{QVariantList{"Anna", "12 3 1985"}};
        QTest::newRow("favorites") << QByteArray("[person]\n1\\1=Anna\n1\\2=12 3 1985\n"
                                                 "1\\size=2\nsize=1\n")
                                   << QVariant(anna);
        // The same rows keyed from [General] are taken apart the general way.
        QTest::newRow("favorites keyed in full")
            << QByteArray("[General]\nperson\\1\\1=Anna\nperson\\1\\2=12 3 1985\n"
                          "person\\1\\size=2\nperson\\size=1\n")
            << QVariant(anna);
        QTest::newRow("rows under an escaped group name")
            << QByteArray("[p%65rson]\n1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\nsize=1\n")
            << QVariant(anna);
        QTest::newRow("empty") << QByteArray("[person]\nsize=0\n") << QVariant(QVariantList());
        QTest::newRow("entry missing") << QByteArray("[person]\n2=A\nx=B\nsize=1\n") << QVariant();
        QTest::newRow("size not a number") << QByteArray("[person]\n1=A\nsize=one\n") << QVariant();
        QTest::newRow("negative size") << QByteArray("[person]\nsize=-1\n") << QVariant();
        QTest::newRow("invalid entry")
            << QByteArray("[person]\n1=@Invalid()\nsize=1\n") << QVariant();
    }
    void lists()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVariant, person);
        const IniFormat::Values values = IniFormat::parse(text);
        QCOMPARE(values.value("person"), person);
        // Not folded: its entries stay, to be written back as they were.
        if (!person.isValid())
            QVERIFY(values.lastKey().startsWith("person/"));
    }

    // A file that a crash, a sync tool or a hand edit damaged: every row
    // that is still there is read, and the damage is named. Ten favorites,
    // written as Tavlo writes them, then damaged.
    void damagedListsKeepEveryRow_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("names");
        QList<QStringList> people;
        QStringList ten;
        for (int i = 1; i <= 10; ++i) {
            people.append({QStringLiteral("p%1").arg(i), QStringLiteral("1 1 2000")});
            ten.append(people.last().first());
        }
        QVariantList rows;
        for (const QStringList &person : people)
            rows.append(QVariant(QVariantList(person.cbegin(), person.cend())));
        const QByteArray sound = IniFormat::serialize({{u"color"_s, 3}, {u"person"_s, rows}});
        QVERIFY(sound.endsWith("size=10\n"));
        const auto replaced = [&](const char *from, const char *to) {
            QByteArray text = sound;
            const qsizetype at = text.indexOf(from);
            if (at < 0)
                qFatal("no %s", from);
            return text.replace(at, qstrlen(from), to);
        };
        QTest::newRow("last line lost") << sound.chopped(8) << ten;
        QTest::newRow("cut inside a row")
            << sound.first(sound.indexOf("10\\2=")) << ten.first(9) + QStringList{"p10"};
        QTest::newRow("stray quote") << replaced("3\\1=p3", "3\\1=\"p3") << ten;
        QTest::newRow("trailing backslash") << replaced("1\\2=1 1 2000", "1\\2=1 1 2000\\") << ten;
        QTest::newRow("quote left open before the list") << replaced("color=3", "color=\"3") << ten;
        for (const char *size : {"abc", "-1", "11", "3", ""})
            QTest::addRow("size=%s", size)
                << replaced("\nsize=10", "\nsize=" + QByteArray(size)) << ten;
        QTest::newRow("size twice") << sound + "[person]\nsize=2\n" << ten;
        QTest::newRow("group twice")
            << sound + "[person]\n1\\1=q1\n1\\2=2 2 2000\n1\\size=2\nsize=1\n"
            << ten + QStringList{"q1"};
        // The first p2 keeps its name, the second its birthday too.
        QTest::newRow("entry twice") << replaced("2\\1=p2", "2\\1=p2\n2\\1=q2")
                                     << QStringList{"p1", "p2", "q2"} + ten.mid(2);
    }
    void damagedListsKeepEveryRow()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, names);
        QStringList problems;
        const IniFormat::Values values = IniFormat::parse(text, &problems);
        QStringList read;
        for (const QVariant &row : values.value(u"person"_s).toList())
            read.append(row.toList().value(0).toString());
        QCOMPARE(read, names);
        QVERIFY(!problems.isEmpty());
        QVERIFY2(problems.first().startsWith(u"[person]: "_s), qPrintable(problems.first()));
        // Nothing else is taken for damage.
        QStringList none;
        IniFormat::parse(IniFormat::serialize(values), &none);
        QCOMPARE(none, QStringList());
    }

    // The file store keeps a damaged file as it was before the first write
    // replaces it, in the foreground and from its writer thread alike.
    void damagedFileIsKeptBeforeItIsWritten_data()
    {
        QTest::addColumn<bool>("background");
        QTest::newRow("command line") << false;
        QTest::newRow("app") << true;
    }
    void damagedFileIsKeptBeforeItIsWritten()
    {
        QFETCH(bool, background);
        const QByteArray damaged = "[person]\n1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\n"
                                   "2\\1=Bob\n2\\2=1 1 2000\n2\\size=2\n";
        const QString path = fileWith(damaged);
        {
            FileSettingsStore store(path);
            if (background)
                store.writeInBackground();
            QCOMPARE(store.storedState().kind, StoredState::Kind::Damaged);
            QCOMPARE(store.storedState().path, path);
            QCOMPARE(store.value(favorites)->size(), 2);
            QVERIFY(store.set(color, 4));
            store.waitForWrites();
            QCOMPARE(contentsOf(store.storedState().keptCopy), damaged);
            QVERIFY(store.storedState().keptCopy.startsWith(path + u".damaged-"_s));
            // Once is enough.
            QVERIFY(store.set(color, 5));
        }
        QCOMPARE(QDir(QFileInfo(path).path())
                     .entryList({QFileInfo(path).fileName() + u".damaged-*"_s})
                     .size(),
                 1);
        FileSettingsStore again(path);
        QVERIFY(again.storedState().sound());
        QCOMPARE(again.value(favorites)->size(), 2);
        QCOMPARE(again.value(color), 5);
    }

    // A file that is there but cannot be read is never taken for an empty
    // one, and never written over.
    void unreadableFileIsNeverReplaced()
    {
        const QString path = freshIniPath();
        QVERIFY(QDir().mkpath(path));
        FileSettingsStore store(path);
        QCOMPARE(store.storedState().kind, StoredState::Kind::Unreadable);
        QVERIFY(!store.storedState().problem.isEmpty());
        const WriteResult refused = store.set(favorites, {{u"Zoe"_s, u"1 1 2000"_s}});
        QVERIFY(!refused);
        QVERIFY2(refused.message().contains(store.storedState().problem),
                 qPrintable(refused.message()));
        QVERIFY(QFileInfo(path).isDir());
    }
};

int main(int argc, char *argv[])
{
    if (argc == 5 && qstrcmp(argv[1], childArgument) == 0)
        return runChild(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]),
                        QByteArray(argv[4]).toInt());
    QCoreApplication app(argc, argv);
    TestSettingsStore test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_settingsstore.moc"
