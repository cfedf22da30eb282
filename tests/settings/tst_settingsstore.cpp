// SPDX-License-Identifier: MIT
#include "DiskFaults.h"
#include "settings/FileSettingsStore.h"
#include "settings/MemorySettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <atomic>
#include <cstdio>
#include <memory>

using namespace SettingsKeys;

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

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestSettingsStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    QString freshIniPath() { return m_dir.filePath(QStringLiteral("s%1.conf").arg(++m_files)); }

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

    std::unique_ptr<SettingsStore> makeStore(const QString &kind)
    {
        if (kind == u"memory")
            return std::make_unique<MemorySettingsStore>();
        return std::make_unique<FileSettingsStore>(freshIniPath());
    }

    std::unique_ptr<FileSettingsStore> storeWithFile(const QByteArray &contents)
    {
        const QString path = freshIniPath();
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        file.write(contents);
        file.close();
        return std::make_unique<FileSettingsStore>(path);
    }

    static void addStoreKinds()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("memory") << "memory";
        QTest::newRow("file") << "file";
    }

private slots:
    void valuesRoundTrip_data() { addStoreKinds(); }
    void valuesRoundTrip()
    {
        QFETCH(QString, kind);
        const auto store = makeStore(kind);
        // A fresh store reads the defaults of the types.
        for (const IntegerKey &key : {color, sort, preferredLanguage})
            QCOMPARE(store->value(key), 0);
        for (const BooleanKey &key : {moreDetails, weekday, star, firstStartDone})
            QCOMPARE(store->value(key), false);
        QVERIFY(!store->value(backgroundImage) && !store->value(reviewedVersion));
        QVERIFY(!store->value(favorites) && !store->value(olderFavoriteNames));
        QVERIFY(!store->value(scheduledReminder(1)));

        const QList<QStringList> people = {
            {QStringLiteral(" Anna "), QStringLiteral("12 3 1985")},
            {QStringLiteral("Smith, John; \"Jr\" = #1"), QStringLiteral("1 1 2000")},
            {QStringLiteral("@Ольга\n😀"), QStringLiteral("")},
            {QStringLiteral("only one")},
        };
        store->set(color, 9);
        store->set(year, -44);
        store->set(appStarts, 1LL << 40);
        store->set(moreDetails, true);
        store->set(backgroundImage, QStringLiteral("space3"));
        store->set(handOverName, QStringLiteral("a, b"));
        store->set(favorites, people);
        store->set(olderFavoriteNames, {QStringLiteral("1. Ann"), QStringLiteral("Bob 2")});
        store->set(olderFavoriteBirthdays, QStringList{});

        QCOMPARE(store->value(color), 9);
        QCOMPARE(store->value(year), -44);
        QCOMPARE(store->value(appStarts), 1LL << 40);
        QCOMPARE(store->value(moreDetails), true);
        QCOMPARE(store->value(backgroundImage), QStringLiteral("space3"));
        QCOMPARE(store->value(handOverName), QStringLiteral("a, b"));
        QCOMPARE(store->value(favorites), people);
        QCOMPARE(store->value(olderFavoriteNames),
                 QStringList({QStringLiteral("1. Ann"), QStringLiteral("Bob 2")}));
        QCOMPARE(store->value(olderFavoriteBirthdays), QStringList());

        store->set(favorites, QList<QStringList>{});
        QCOMPARE(store->value(favorites), QList<QStringList>{});
        store->set(moreDetails, false);
        QCOMPARE(store->value(moreDetails), false);
        store->remove(color.name);
        QCOMPARE(store->value(color), 0);
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
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray onDisk = file.readAll();
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

    // What lets a reader keep what it read (FavoritesStore does, for 10,000
    // rows): the count moves with every write, ours or another process's.
    void changesCountOursAndOtherProcesses()
    {
        const QString path = freshIniPath();
        FileSettingsStore store(path);
        store.set(color, 1);
        const quint64 afterOurs = store.changes();
        {
            const SettingsBatch batch(store);
            QCOMPARE(store.changes(), afterOurs);
        }
        runChild({"color", path, "2"});
        {
            const SettingsBatch batch(store);
            QVERIFY(store.changes() > afterOurs);
        }
        const quint64 afterTheirs = store.changes();
        store.remove(color.name);
        QVERIFY(store.changes() > afterTheirs);
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
    // the newest state is what the file ends with.
    void aBurstEndsWithTheNewestStateOnDisk()
    {
        const QString path = freshIniPath();
        TestDisk disk;
        disk.syncMilliseconds = 20;
        FileSettingsStore store(path, disk.writer());
        store.writeInBackground();
        for (int i = 1; i <= 50; ++i) {
            SettingsBatch batch(store);
            store.set(day, i % 28 + 1);
            store.set(year, 1900 + i);
            QVERIFY(batch.finish().ok());
        }
        store.waitForWrites();
        QVERIFY2(disk.renames < 50, qPrintable(QString::number(disk.renames)));
        FileSettingsStore reader(copyOf(path));
        QCOMPARE(reader.value(day), 50 % 28 + 1);
        QCOMPARE(reader.value(year), 1950);
    }

    void destructionWaitsForThePendingWrite()
    {
        const QString path = freshIniPath();
        TestDisk disk;
        disk.syncMilliseconds = 300;
        {
            FileSettingsStore store(path, disk.writer());
            store.writeInBackground();
            store.set(color, 6);
        }
        QCOMPARE(FileSettingsStore(copyOf(path)).value(color), 6);
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

        QTest::newRow("integer") << QVariant(7) << 7LL << false << false << false;
        QTest::newRow("integer as text")
            << QVariant(QStringLiteral("7")) << 7LL << false << true << false;
        QTest::newRow("negative text")
            << QVariant(QStringLiteral("-3")) << -3LL << false << true << false;
        QTest::newRow("word") << QVariant(QStringLiteral("abc")) << 0LL << false << true << false;
        QTest::newRow("fraction") << QVariant(QStringLiteral("1.5")) << 0LL << false << true
                                  << false;
        QTest::newRow("beyond 64 bits")
            << QVariant(QStringLiteral("99999999999999999999")) << 0LL << false << true << false;
        QTest::newRow("boolean") << QVariant(true) << 0LL << true << false << false;
        QTest::newRow("boolean as text")
            << QVariant(QStringLiteral("true")) << 0LL << true << true << false;
        QTest::newRow("double") << QVariant(2.5) << 0LL << false << false << false;
        QTest::newRow("string list")
            << QVariant(QVariantList{QStringLiteral("a")}) << 0LL << false << false << true;
        QTest::newRow("list with a number")
            << QVariant(QVariantList{QStringLiteral("a"), 5}) << 0LL << false << false << false;
    }
    void wrongTypesReadAsDefaults()
    {
        QFETCH(QVariant, stored);
        MemorySettingsStore store;
        for (const QString &key :
             {color.name, moreDetails.name, backgroundImage.name, olderFavoriteNames.name})
            store.setRaw(key, stored);
        QTEST(store.value(color), "asInteger");
        QTEST(store.value(moreDetails), "asBoolean");
        QTEST(store.value(backgroundImage).has_value(), "asStringPresent");
        QTEST(store.value(olderFavoriteNames).has_value(), "asListPresent");
    }

    void tableNeedsListsOfStrings()
    {
        MemorySettingsStore store;
        store.setRaw(favorites.name, QVariantList{QVariantList{QStringLiteral("a")}, 3});
        QVERIFY(!store.value(favorites));
        store.setRaw(favorites.name, QStringLiteral("Anna"));
        QVERIFY(!store.value(favorites));
    }

    void malformedFileContents_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<qint64>("color");
        QTest::addColumn<bool>("details");
        QTest::addColumn<bool>("favoritesPresent");

        QTest::newRow("well formed") << QByteArray("[General]\ncolor=3\nmoreDetails=true\n"
                                                   "[person]\nsize=1\n1\\size=2\n1\\1=A\n1\\2=B\n")
                                     << 3LL << true << true;
        QTest::newRow("garbage") << QByteArray("\x01\x02garbage\n=\n[[[\n") << 0LL << false
                                 << false;
        QTest::newRow("wrong types") << QByteArray("[General]\ncolor=blue\nmoreDetails=yes\n"
                                                   "person=Anna\n")
                                     << 0LL << false << false;
        QTest::newRow("huge number")
            << QByteArray("[General]\ncolor=123456789012345678901234\n") << 0LL << false << false;
        QTest::newRow("list longer than its entries")
            << QByteArray("[person]\nsize=1000000000\n1\\size=1\n1\\1=A\n") << 0LL << false
            << false;
        QTest::newRow("negative list size")
            << QByteArray("[person]\nsize=-1\n") << 0LL << false << false;
        QTest::newRow("truncated")
            << QByteArray("[General]\ncolor=5\nmoreDet") << 5LL << false << false;
    }
    void malformedFileContents()
    {
        QFETCH(QByteArray, contents);
        const auto store = storeWithFile(contents);
        QTEST(store->value(color), "color");
        QTEST(store->value(moreDetails), "details");
        QTEST(store->value(favorites).has_value(), "favoritesPresent");
    }

    // Earlier versions' spelling, kept so that their files still read.
    void scheduledReminderKeys() { QCOMPARE(scheduledReminder(5).name, "selectetDate5"); }
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
