// SPDX-License-Identifier: MIT
#include "TavloProcess.h"
#include "WithoutIds.h"
#include "favorites/FavoritesSorting.h"
#include "favorites/FavoritesStore.h"
#include "platform/linux/TerminationSignals.h"
#include "settings/FileSettingsStore.h"

#include "SortedFavorites.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <csignal>
#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using Favorites = QList<Favorite>;

// The settings file survives SIGKILL of a writer at any moment, and the
// favorites screen and the command line writing at once: it always reads
// back as a whole list, and no acknowledged change goes missing. Every
// favorite gets a name no other has had, a rename a fresh one, so the names
// in the file tell which changes reached it.

namespace {

const char driveArgument[] = "--drive";

void say(const QByteArray &line)
{
    // One write, so that a line is in the pipe whole or not at all.
    const QByteArray text = line + '\n';
    if (::write(STDOUT_FILENO, text.constData(), size_t(text.size())) != text.size())
        std::_Exit(4);
}

qsizetype indexOf(const Favorites &list, const QString &name)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (list.at(i).name == name)
            return i;
    }
    return -1;
}

// What a driver command does to a list, as the app does it.
Favorites applied(Favorites list, const QStringList &words)
{
    const QString &action = words.at(0);
    if (action == u"add")
        list.append({words.at(1), words.mid(2).join(u' ')});
    else if (action == u"rename")
        list[indexOf(list, words.at(1))].name = words.at(2);
    else if (action == u"delete")
        list.removeAt(indexOf(list, words.at(1)));
    else if (action == u"sort")
        list = sortedFavorites(list, FavoritesSorting::orderFor(words.at(1).toLongLong()));
    return list;
}

// Runs in a child process: the favorites screen's use of the store. It loads
// the list once, as the screen does when it opens, then carries out one
// command a line on that list, by the row that shows the name, printing "ok"
// and the command once the store's call has returned:
//   add NAME DAY MONTH YEAR | rename NAME NEWNAME | delete NAME
//   sort ORDER (0, 1 or 2)  | reload (the screen opened again)
//   stall NAME: stops itself (SIGSTOP) holding the update lock, then adds NAME
//   term NAME: writing in the background as the app does, adds NAME and is
//              sent SIGTERM at once; ends as the app ends on it
int runDriver(const QString &iniPath)
{
    FileSettingsStore settings(iniPath);
    FavoritesStore store(settings);
    store.load();
    say("ready");
    std::string line;
    while (std::getline(std::cin, line)) {
        const QString command = QString::fromStdString(line);
        const QStringList words = command.split(u' ');
        const QString &action = words.at(0);
        const qsizetype index = indexOf(store.all(), words.value(1));
        if (action == u"add") {
            store.append(words.at(1), words.at(2).toLongLong(), words.at(3).toLongLong(),
                         words.at(4).toLongLong());
        } else if (action == u"rename" && index >= 0) {
            store.update(index, words.at(2), store.at(index).birthday);
        } else if (action == u"delete" && index >= 0) {
            store.remove(index);
        } else if (action == u"sort") {
            store.reorder(FavoritesSorting::ordering(
                store.all(), FavoritesSorting::orderFor(words.at(1).toLongLong())));
        } else if (action == u"reload") {
            store.load();
        } else if (action == u"stall") {
            // An import stopped (Ctrl-Z) while it holds the update lock,
            // between reading the list and writing it with its addition.
            SettingsBatch stalled(settings);
            store.load();
            say("stalled");
            ::raise(SIGSTOP);
            store.append(words.at(1), 1, 1, 2000);
            if (!stalled.finish())
                return 3;
        } else if (action == u"term") {
            settings.writeInBackground();
            const TerminationSignals termination;
            store.append(words.at(1), 1, 1, 2000);
            ::raise(SIGTERM);
            QCoreApplication::exec();
            settings.waitForWrites();
        } else {
            say("failed " + command.toUtf8());
            return 3;
        }
        say("ok " + command.toUtf8());
    }
    return 0;
}

QStringList names(const Favorites &list)
{
    QStringList result;
    for (const Favorite &favorite : list)
        result.append(favorite.name);
    return result;
}

// A change the favorites screen could make next to the favorites `names`,
// with a name no favorite has had.
QString randomChange(QRandomGenerator &random, const QStringList &names, int &serial)
{
    const int pick = random.bounded(100);
    if (names.size() < 3 || (pick < 40 && names.size() < 40))
        return u"add h%1 %2 %3 %4"_s.arg(++serial)
            .arg(random.bounded(1, 29))
            .arg(random.bounded(1, 13))
            .arg(random.bounded(1950, 2021));
    if (pick < 65)
        return u"rename %1 r%2"_s.arg(names.at(random.bounded(names.size()))).arg(++serial);
    if (pick < 85)
        return u"delete "_s + names.at(random.bounded(names.size()));
    return u"sort %1"_s.arg(random.bounded(3));
}

// The file's favorites, or why they are not a whole list.
struct ReadBack
{
    QString problem;
    Favorites list;
    qint64 color = 0;
};

} // namespace

class TestCrashSafety : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_copies = 0;
    QRandomGenerator m_random;

    QString preparedSettings(const QString &name)
    {
        const QString path = m_dir.filePath(name + u"/tavlo/tavlo.conf"_s);
        QDir().mkpath(QFileInfo(path).absolutePath());
        return path;
    }

    static std::unique_ptr<QProcess> startTavlo(const QString &iniPath,
                                                const QStringList &arguments)
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(
            tavloEnvironment(QFileInfo(iniPath).dir().absoluteFilePath(u".."_s)));
        process->start(QStringLiteral(TAVLO_EXECUTABLE), arguments);
        if (!process->waitForStarted(30000))
            qFatal("tavlo did not start");
        return process;
    }

    static std::unique_ptr<QProcess> startDriver(const QString &iniPath)
    {
        auto driver = std::make_unique<QProcess>();
        driver->start(QCoreApplication::applicationFilePath(), {driveArgument, iniPath});
        if (!driver->waitForStarted(30000) || !readLine(*driver).startsWith("ready"))
            qFatal("the driver did not start");
        return driver;
    }

    static QByteArray readLine(QProcess &process)
    {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(30000))
                return {};
        }
        return process.readLine().trimmed();
    }

    // Reads the file as a fresh process would, from a copy (QSettings caches
    // one file per process). Rows beyond "size" are the settings tests' to find.
    ReadBack readBack(const QString &path)
    {
        ReadBack result;
        if (!QFile::exists(path))
            return result;
        const QString copy = m_dir.filePath(u"copy%1.conf"_s.arg(++m_copies));
        if (!QFile::copy(path, copy))
            qFatal("cannot copy %s", qPrintable(path));
        const QSettings ini(copy, QSettings::IniFormat);
        result.color = ini.value(u"color"_s).toLongLong();
        if (ini.status() != QSettings::NoError)
            result.problem = u"the file does not read (kept as "_s + copy + u')';
        FileSettingsStore store(copy);
        FavoritesStore favorites(store);
        favorites.load();
        result.list = withoutIds(favorites.all());
        return result;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        bool ok = false;
        quint32 seed = quint32(qEnvironmentVariableIntValue("TAVLO_CRASH_SEED", &ok));
        if (!ok)
            seed = QRandomGenerator::system()->bounded(1u << 30);
        m_random.seed(seed);
        qInfo("TAVLO_CRASH_SEED=%u", seed);
    }

    // Kills the driver at random moments within a run of changes; after
    // every kill the file holds a whole list, the one before the change under
    // way or after it, with every acknowledged change.
    void killedWritersLeaveAWholeList()
    {
        const QString path = preparedSettings(u"kills"_s);
        FileSettingsStore(path).set(SettingsKeys::color, 7);
        Favorites model;
        int serial = 0, killedBefore = 0, killedAfter = 0;
        qint64 driverOpMicros = 5000;

        for (int round = 0; round < 300; ++round) {
            QStringList commands;
            QList<Favorites> states{model};
            for (int k = 0; k < 8; ++k) {
                commands.append(randomChange(m_random, names(states.constLast()), serial));
                states.append(applied(states.constLast(), commands.constLast().split(u' ')));
            }
            const auto driver = startDriver(path);
            driver->write((commands.join(u'\n') + u'\n').toUtf8());
            const int killAfter = m_random.bounded(int(commands.size()));
            int acks = 0;
            QElapsedTimer sinceAck;
            sinceAck.start();
            for (; acks < killAfter; ++acks) {
                const QByteArray line = readLine(*driver);
                QVERIFY2(line.startsWith("ok "),
                         (line + " / " + driver->readAllStandardError()).constData());
                driverOpMicros = (3 * driverOpMicros + sinceAck.nsecsElapsed() / 1000) / 4;
                sinceAck.restart();
            }
            QThread::usleep(m_random.bounded(quint64(driverOpMicros * 3 / 2 + 1)));
            driver->kill();
            QVERIFY(driver->waitForFinished(30000));
            for (; driver->canReadLine(); ++acks)
                QVERIFY(driver->readLine().startsWith("ok "));
            // The change under way may be in the file or not; nothing else.
            const ReadBack back = readBack(path);
            QVERIFY2(back.problem.isEmpty() && back.color == 7, qPrintable(back.problem));
            if (back.list == states.at(acks)) {
                killedBefore += acks + 1 < states.size();
            } else {
                QVERIFY2(acks + 1 < states.size() && back.list == states.at(acks + 1),
                         qPrintable(u"after %1 acknowledged of %2 the file holds\n  %3\nnot\n  %4"_s
                                        .arg(acks)
                                        .arg(commands.join(u"; "_s), names(back.list).join(u' '),
                                             names(states.at(acks)).join(u' '))));
                ++killedAfter;
                ++acks;
            }
            model = states.at(acks);
        }
        qInfo("%d kills before their change reached the file, %d after it", killedBefore,
              killedAfter);
        // The kills must have hit both sides of the write for the test to mean anything.
        QVERIFY(killedBefore > 0 && killedAfter > 0);
    }

    // The driver, standing for the open favorites screen, and two command
    // lines at a time change the list at once; each acknowledges every
    // change, and every one must be in the file at the end.
    void concurrentWritersLoseNothing()
    {
        const QString path = preparedSettings(u"concurrent"_s);
        {
            FileSettingsStore settings(path);
            FavoritesStore store(settings);
            store.append(u"s1"_s, 1, 2, 1980);
            store.append(u"s2"_s, 3, 4, 1990);
        }
        const auto driver = startDriver(path);
        QStringList expected{u"s1"_s, u"s2"_s}; // names that must be in the file
        Favorites driverModel;                  // the driver's own favorites as they are now
        int serial = 0, sent = 0;

        for (int round = 0; round < 60; ++round) {
            QStringList commands;
            for (int k = 0; k < 3; ++k) {
                commands.append(m_random.bounded(10) == 0
                                    ? u"reload"_s
                                    : randomChange(m_random, names(driverModel), serial));
                driverModel = applied(driverModel, commands.constLast().split(u' '));
            }
            driver->write((commands.join(u'\n') + u'\n').toUtf8());
            sent += int(commands.size());

            std::vector<std::unique_ptr<QProcess>> processes;
            for (int k = 0; k < 2; ++k) {
                expected.append(u"c%1"_s.arg(++serial));
                processes.push_back(
                    startTavlo(path, {u"favorites"_s, u"add"_s, expected.last(), u"2001-02-03"_s}));
            }
            const bool listing = round % 4 == 0;
            if (listing)
                processes.push_back(startTavlo(path, {u"favorites"_s, u"list"_s, u"--json"_s}));
            for (const auto &process : processes) {
                QVERIFY(process->waitForFinished(30000));
                QVERIFY2(process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0,
                         process->readAllStandardError().constData());
            }
            if (listing) { // a list read in the middle of it all is a whole list too
                const QList<QByteArray> lines =
                    processes.back()->readAllStandardOutput().split('\n');
                QCOMPARE(lines.constLast(), QByteArray());
                for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
                    const QJsonObject object = QJsonDocument::fromJson(lines.at(i)).object();
                    QCOMPARE(object.value(u"index"_s).toInteger(-1), i);
                    QVERIFY(!object.value(u"name"_s).toString().isEmpty());
                }
            }
        }
        driver->closeWriteChannel();
        QVERIFY(driver->waitForFinished(30000));
        QCOMPARE(driver->exitCode(), 0);
        const QList<QByteArray> acks = driver->readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(acks.size(), sent);
        for (const QByteArray &ack : acks)
            QVERIFY2(ack.startsWith("ok "), ack.constData());

        const ReadBack back = readBack(path);
        QVERIFY2(back.problem.isEmpty(), qPrintable(back.problem));
        QStringList stored = names(back.list);
        stored.sort();
        expected += names(driverModel);
        expected.sort();
        // Every acknowledged name once; nothing deleted or renamed away.
        QCOMPARE(stored, expected);
    }

    // A writer stopped while it holds the update lock is waited for, for as
    // long as it lives, by the command line (which says whom it waits for)
    // and by the app's writer thread (the app itself goes on at once); once
    // it goes on, its change and every change acknowledged meanwhile are
    // in the file. Longer than a stall a writer could once wait out.
    void aStalledWriterCostsNoChange()
    {
        const QString path = preparedSettings(u"stalled"_s);
        FileSettingsStore(path).set(SettingsKeys::color, 7);
        const auto importer = startDriver(path);
        importer->write("stall imported\n");
        QCOMPARE(readLine(*importer), QByteArray("stalled"));
        const qint64 stopped = importer->processId();

        const auto add = startTavlo(path, {u"favorites"_s, u"add"_s, u"Zoe"_s, u"2001-02-03"_s});
        {
            // The app: its change shows at once and reaches the disk later.
            FileSettingsStore settings(path);
            settings.writeInBackground();
            FavoritesStore app(settings);
            // A failure below must not leave the importer stopped, nor this
            // store waiting for it as it goes.
            const auto resume = qScopeGuard([stopped] { ::kill(pid_t(stopped), SIGCONT); });
            app.load();
            QVERIFY(app.append(u"Ida"_s, 5, 6, 1977));
            QCOMPARE(app.count(), 1);
            // Its writer waits for the lock, not the screen.
            QVERIFY(names(readBack(path).list).isEmpty());

            QVERIFY(!add->waitForFinished(11000));
            const QByteArray waiting = add->readAllStandardError();
            QVERIFY2(waiting.startsWith("tavlo: waiting for Tavlo process " +
                                        QByteArray::number(stopped) + " (stopped)") &&
                         waiting.count('\n') == 1,
                     waiting.constData());
            QVERIFY(names(readBack(path).list).isEmpty());
            ::kill(pid_t(stopped), SIGCONT);
            QCOMPARE(readLine(*importer), QByteArray("ok stall imported"));
            settings.waitForWrites();
        }
        QVERIFY(add->waitForFinished(30000));
        QCOMPARE(add->exitCode(), 0);
        importer->closeWriteChannel();
        QVERIFY(importer->waitForFinished(30000));
        QStringList stored = names(readBack(path).list);
        stored.sort();
        QCOMPARE(stored, QStringList({u"Ida"_s, u"Zoe"_s, u"imported"_s}));
        QCOMPARE(readBack(path).color, 7);
    }

    // The session ending sends SIGTERM: the change made just before still
    // reaches the file, and the process ends normally rather than by the
    // signal.
    void aTerminatedAppWritesItsLastChange()
    {
        const QString path = preparedSettings(u"term"_s);
        auto driver = startDriver(path);
        driver->write("term Ida\n");
        driver->closeWriteChannel();
        QVERIFY(driver->waitForFinished(30000));
        QCOMPARE(driver->exitStatus(), QProcess::NormalExit);
        QCOMPARE(driver->exitCode(), 0);
        QCOMPARE(names(readBack(path).list), QStringList{u"Ida"_s});
    }
};

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], driveArgument) == 0) {
        QCoreApplication app(argc, argv);
        return runDriver(QString::fromLocal8Bit(argv[2]));
    }
    QCoreApplication app(argc, argv);
    TestCrashSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crashsafety.moc"
