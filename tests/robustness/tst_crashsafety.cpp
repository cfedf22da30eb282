// SPDX-License-Identifier: MIT
#include "favorites/FavoritesSorting.h"
#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <memory>
#include <string>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using Favorites = QList<Favorite>;

// The settings file of the command line and of the driver survives SIGKILL at
// any moment and concurrent writers: it always reads back as a whole list,
// and no change that was acknowledged goes missing.
//
// Every favorite gets a name no other has had, and a rename always gives a
// fresh name, so the names in the file tell which changes reached it.

namespace {

const char driveArgument[] = "--drive";

qsizetype indexOfName(const FavoritesStore &store, const QString &name)
{
    for (qsizetype i = 0; i < store.count(); ++i) {
        if (store.at(i).name == name)
            return i;
    }
    return -1;
}

void say(const QByteArray &line)
{
    const QByteArray text = line + '\n';
    // One write, so that a line is either in the pipe whole or not at all.
    if (::write(STDOUT_FILENO, text.constData(), size_t(text.size())) != text.size())
        std::_Exit(4);
}

// Runs in a child process: the favorites screen's use of the store. It loads
// the list once, as the screen does when it opens, and then carries out one
// command per line of standard input on that list, by the row that shows the
// name, printing "ok" and the command once the store's call has returned:
//
//   add NAME DAY MONTH YEAR   the add dialog
//   rename NAME NEWNAME       the edit dialog (update)
//   delete NAME               swipe to delete (remove)
//   sort ORDER                the sort menu (replaceAll), ORDER 0, 1 or 2
//   reload                    the screen opened again (load)
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
        if (action == u"add") {
            store.append(words.at(1), words.at(2).toLongLong(), words.at(3).toLongLong(),
                         words.at(4).toLongLong());
        } else if (action == u"rename" || action == u"delete") {
            const qsizetype index = indexOfName(store, words.at(1));
            if (index < 0) {
                say("missing " + words.at(1).toUtf8());
                return 3;
            }
            if (action == u"rename")
                store.update(index, words.at(2), store.at(index).birthday);
            else
                store.remove(index);
        } else if (action == u"sort") {
            store.replaceAll(FavoritesSorting::sorted(
                store.all(), FavoritesSorting::orderFor(words.at(1).toLongLong())));
        } else if (action == u"reload") {
            store.load();
        } else {
            say("unknown " + command.toUtf8());
            return 3;
        }
        say("ok " + command.toUtf8());
    }
    return 0;
}

// What a driver command does to a list, as the app would do it.
Favorites applied(Favorites list, const QString &command)
{
    const QStringList words = command.split(u' ');
    const QString &action = words.at(0);
    const auto find = [&](const QString &name) {
        for (qsizetype i = 0; i < list.size(); ++i) {
            if (list.at(i).name == name)
                return i;
        }
        qFatal("no %s in the model", qPrintable(name));
    };
    if (action == u"add")
        list.append({words.at(1), words.mid(2).join(u' ')});
    else if (action == u"rename")
        list[find(words.at(1))].name = words.at(2);
    else if (action == u"delete")
        list.removeAt(find(words.at(1)));
    else if (action == u"sort")
        list = FavoritesSorting::sorted(list, FavoritesSorting::orderFor(words.at(1).toLongLong()));
    return list;
}

QString randomBirthday(QRandomGenerator &random)
{
    return u"%1 %2 %3"_s.arg(random.bounded(1, 29))
        .arg(random.bounded(1, 13))
        .arg(random.bounded(1950, 2021));
}

QStringList names(const Favorites &list)
{
    QStringList result;
    for (const Favorite &favorite : list)
        result.append(favorite.name);
    return result;
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

    QString configHome(const QString &name) { return m_dir.filePath(name); }
    static QString settingsPath(const QString &home) { return home + u"/tavlo/tavlo.conf"_s; }

    std::unique_ptr<QProcess> startTavlo(const QString &home, const QStringList &arguments)
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_CONFIG_HOME"_s, home);
        env.insert(u"TZ"_s, u"Europe/Berlin"_s);
        process->setProcessEnvironment(env);
        process->start(QStringLiteral(TAVLO_EXECUTABLE), arguments);
        if (!process->waitForStarted(30000))
            qFatal("tavlo did not start");
        return process;
    }

    std::unique_ptr<QProcess> startDriver(const QString &iniPath)
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

    // Reads the file as a fresh process would, with QSettings, from a copy
    // (QSettings keeps one cache per file name in a process). The list must
    // be laid out whole: "size" and the groups 1..size, each with exactly
    // the two texts.
    ReadBack readBack(const QString &path)
    {
        ReadBack result;
        if (!QFile::exists(path))
            return result;
        const QString copy = m_dir.filePath(u"copy%1.conf"_s.arg(++m_copies));
        if (!QFile::copy(path, copy))
            qFatal("cannot copy %s", qPrintable(path));
        QSettings ini(copy, QSettings::IniFormat);
        result.color = ini.value(u"color"_s).toLongLong();
        if (ini.status() != QSettings::NoError)
            result.problem = u"the file does not parse"_s;
        ini.beginGroup(u"person"_s);
        const QStringList keys = ini.childKeys();
        const QStringList groups = ini.childGroups();
        bool ok = false;
        const qsizetype size = ini.value(u"size"_s).toString().toLongLong(&ok);
        if (keys.isEmpty() && groups.isEmpty())
            return result;
        if (keys != QStringList{u"size"_s} || !ok)
            result.problem = u"keys %1 beside the rows"_s.arg(keys.join(u','));
        if (result.problem.isEmpty() && groups.size() != size)
            result.problem = u"size %1 but %2 rows"_s.arg(size).arg(groups.size());
        for (qsizetype i = 1; result.problem.isEmpty() && i <= size; ++i) {
            ini.beginGroup(QString::number(i));
            const QVariant name = ini.value(u"1"_s);
            const QVariant birthday = ini.value(u"2"_s);
            if (ini.childKeys().size() != 3 || ini.value(u"size"_s).toString() != u"2" ||
                name.typeId() != QMetaType::QString || birthday.typeId() != QMetaType::QString)
                result.problem = u"row %1 is not two texts"_s.arg(i);
            result.list.append({name.toString(), birthday.toString()});
            ini.endGroup();
        }
        ini.endGroup();
        if (result.problem.isEmpty()) {
            // And the app's own reader agrees.
            FileSettingsStore store(copy);
            FavoritesStore favorites(store);
            favorites.load();
            if (favorites.count() != result.list.size() || favorites.all() != result.list)
                result.problem = u"the store reads another list"_s;
        }
        if (!result.problem.isEmpty())
            result.problem += u" (file kept as "_s + copy + u')';
        else
            QFile::remove(copy);
        return result;
    }

    // Ends the process at a random moment: half of the time anywhere in its
    // life, half of the time right around the write of the settings file
    // (while it holds the lock that its read and write of the file are done
    // under). Returns true when the process had finished by itself.
    bool killAtRandom(QProcess &process, const QString &iniPath, qint64 typicalMicros)
    {
        if (m_random.bounded(2) == 0) {
            QThread::usleep(m_random.bounded(quint64(typicalMicros * 6 / 5 + 1)));
        } else {
            QElapsedTimer waited;
            waited.start();
            const QByteArray lockPath = QFile::encodeName(iniPath + u".update-lock"_s);
            const auto writing = [&] {
                const int lock = ::open(lockPath.constData(), O_RDWR | O_CLOEXEC);
                if (lock < 0)
                    return false;
                const bool held = ::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
                ::close(lock);
                return held;
            };
            while (!writing() && process.state() != QProcess::NotRunning &&
                   waited.nsecsElapsed() / 1000 < typicalMicros * 2)
                QThread::usleep(50);
            QThread::usleep(m_random.bounded(2000));
        }
        // A process that ended on its own before the signal still ends normally.
        process.kill();
        process.waitForFinished(30000);
        return process.exitStatus() == QProcess::NormalExit;
    }

    struct Outcomes
    {
        int acknowledged = 0;
        int killedBefore = 0;
        int killedAfter = 0;
    };

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

    // Kills `tavlo favorites add/remove` and the driver at random moments,
    // in turns, on one settings file; after every kill the file must hold a
    // whole list that is either the list before the step or after it, and
    // every acknowledged step must be in it.
    void killedWritersLeaveAWholeList()
    {
        const QString home = configHome(u"kills"_s);
        const QString path = settingsPath(home);
        QDir().mkpath(QFileInfo(path).absolutePath());
        {
            FileSettingsStore settings(path);
            settings.set(SettingsKeys::color, 7);
        }
        Favorites model;
        int serial = 0;
        Outcomes outcomes;
        qint64 cliMicros = 30000;
        qint64 driverOpMicros = 5000;
        int kills = 0;

        const auto check = [&](const Favorites &before, const Favorites &after, bool acknowledged,
                               const QString &step) {
            const ReadBack back = readBack(path);
            if (!back.problem.isEmpty())
                return u"after %1: %2"_s.arg(step, back.problem);
            if (back.color != 7)
                return u"after %1: the colour setting is %2"_s.arg(step).arg(back.color);
            if (back.list == after) {
                if (acknowledged)
                    ++outcomes.acknowledged;
                else if (after != before)
                    ++outcomes.killedAfter;
                else
                    ++outcomes.killedBefore;
                model = after;
                return QString();
            }
            if (back.list == before && !acknowledged) {
                ++outcomes.killedBefore;
                return QString();
            }
            return u"after %1%2: the file holds\n  %3\nnot\n  %4"_s.arg(
                step, acknowledged ? u" (acknowledged)"_s : QString(), names(back.list).join(u' '),
                names(after).join(u' '));
        };

        QElapsedTimer clock;
        clock.start();
        for (int round = 0; round < 130; ++round) {
            // The command line: an add, and every other round a remove.
            for (int cli = 0; cli < (round % 2 == 0 ? 2 : 1); ++cli) {
                const Favorites before = model;
                Favorites after = model;
                QStringList arguments;
                if (cli == 1 && !model.isEmpty()) {
                    const qsizetype index = m_random.bounded(model.size());
                    arguments = {u"favorites"_s, u"remove"_s, QString::number(index)};
                    after.removeAt(index);
                } else {
                    const QString name = u"c%1"_s.arg(++serial);
                    const QDate date(m_random.bounded(1950, 2021), m_random.bounded(1, 13),
                                     m_random.bounded(1, 29));
                    arguments = {u"favorites"_s, u"add"_s, name, date.toString(Qt::ISODate)};
                    after.append(
                        {name, u"%1 %2 %3"_s.arg(date.day()).arg(date.month()).arg(date.year())});
                }
                QElapsedTimer ran;
                ran.start();
                const auto process = startTavlo(home, arguments);
                const bool acknowledged = killAtRandom(*process, path, cliMicros);
                if (acknowledged) {
                    QCOMPARE(process->exitCode(), 0);
                    cliMicros = (cliMicros + ran.nsecsElapsed() / 1000) / 2;
                } else {
                    ++kills;
                }
                const QString problem = check(before, after, acknowledged, arguments.join(u' '));
                QVERIFY2(problem.isEmpty(), qPrintable(problem));
            }

            // The driver: a run of screen changes, killed within one of them.
            QStringList commands;
            QList<Favorites> states{model};
            for (int k = 0; k < 8; ++k) {
                const Favorites &current = states.constLast();
                const int pick = m_random.bounded(100);
                QString command;
                if (current.size() < 3 || (pick < 40 && current.size() < 40)) {
                    command = u"add h%1 "_s.arg(++serial) + randomBirthday(m_random);
                } else if (pick < 65) {
                    const Favorite &chosen = current.at(m_random.bounded(current.size()));
                    command = u"rename %1 r%2"_s.arg(chosen.name).arg(++serial);
                } else if (pick < 85) {
                    command = u"delete "_s + current.at(m_random.bounded(current.size())).name;
                } else {
                    command = u"sort %1"_s.arg(m_random.bounded(3));
                }
                commands.append(command);
                states.append(applied(current, command));
            }
            const auto driver = startDriver(path);
            driver->write((commands.join(u'\n') + u'\n').toUtf8());
            const int killAfter = m_random.bounded(int(commands.size()));
            int acks = 0;
            QElapsedTimer sinceAck;
            sinceAck.start();
            while (acks < killAfter) {
                const QByteArray line = readLine(*driver);
                QVERIFY2(line.startsWith("ok "),
                         (line + " / " + driver->readAllStandardError()).constData());
                ++acks;
                driverOpMicros = (3 * driverOpMicros + sinceAck.nsecsElapsed() / 1000) / 4;
                sinceAck.restart();
            }
            QThread::usleep(m_random.bounded(quint64(driverOpMicros * 3 / 2 + 1)));
            driver->kill();
            QVERIFY(driver->waitForFinished(30000));
            ++kills;
            while (driver->canReadLine()) {
                const QByteArray line = driver->readLine().trimmed();
                QVERIFY2(line.startsWith("ok "), line.constData());
                ++acks;
            }
            // The changes acknowledged are in; the one under way may be.
            const ReadBack back = readBack(path);
            QVERIFY2(back.problem.isEmpty(), qPrintable(back.problem));
            QCOMPARE(back.color, 7);
            const Favorites &done = states.at(acks);
            if (back.list == done) {
                ++outcomes.killedBefore;
                model = done;
            } else if (acks < commands.size() && back.list == states.at(acks + 1)) {
                ++outcomes.killedAfter;
                model = states.at(acks + 1);
            } else {
                QFAIL(qPrintable(
                    u"after %1 acknowledged of\n  %2\nthe file holds\n  %3\nnot\n  %4"_s.arg(acks)
                        .arg(commands.join(u"; "_s), names(back.list).join(u' '),
                             names(done).join(u' '))));
            }
        }
        qInfo("%d kills in %lld ms: %d finished before the kill, %d killed before their change "
              "reached the file, %d killed after it",
              kills, clock.elapsed(), outcomes.acknowledged, outcomes.killedBefore,
              outcomes.killedAfter);
        // The kills must have hit both sides of the write for the test to mean anything.
        QVERIFY(outcomes.killedBefore > 0);
        QVERIFY(outcomes.killedAfter > 0);
    }

    // The driver, standing for the open favorites screen, and two command
    // lines at a time change the list at once; each acknowledges every change,
    // and every one must be in the file at the end.
    void concurrentWritersLoseNothing()
    {
        const QString home = configHome(u"concurrent"_s);
        const QString path = settingsPath(home);
        QDir().mkpath(QFileInfo(path).absolutePath());
        {
            FileSettingsStore settings(path);
            FavoritesStore store(settings);
            store.append(u"s1"_s, 1, 2, 1980);
            store.append(u"s2"_s, 3, 4, 1990);
        }
        const auto driver = startDriver(path);
        QStringList driverNames;  // the driver's favorites as they are named now
        QSet<QString> driverGone; // names the driver deleted or renamed away
        QStringList cliNames;
        int serial = 0;
        int sent = 0;
        int lists = 0;

        QElapsedTimer clock;
        clock.start();
        for (int round = 0; round < 60; ++round) {
            QStringList commands;
            for (int k = 0; k < 3; ++k) {
                const int pick = m_random.bounded(100);
                if (driverNames.size() < 2 || pick < 40) {
                    const QString name = u"h%1"_s.arg(++serial);
                    commands.append(u"add "_s + name + u' ' + randomBirthday(m_random));
                    driverNames.append(name);
                } else if (pick < 60) {
                    const qsizetype i = m_random.bounded(driverNames.size());
                    const QString name = u"r%1"_s.arg(++serial);
                    commands.append(u"rename %1 %2"_s.arg(driverNames.at(i), name));
                    driverGone.insert(driverNames.at(i));
                    driverNames[i] = name;
                } else if (pick < 75) {
                    const QString name = driverNames.takeAt(m_random.bounded(driverNames.size()));
                    commands.append(u"delete "_s + name);
                    driverGone.insert(name);
                } else if (pick < 90) {
                    commands.append(u"sort %1"_s.arg(m_random.bounded(3)));
                } else {
                    commands.append(u"reload"_s);
                }
            }
            driver->write((commands.join(u'\n') + u'\n').toUtf8());
            sent += int(commands.size());

            std::vector<std::unique_ptr<QProcess>> processes;
            for (int k = 0; k < 2; ++k) {
                const QString name = u"c%1"_s.arg(++serial);
                cliNames.append(name);
                processes.push_back(
                    startTavlo(home, {u"favorites"_s, u"add"_s, name, u"2001-02-03"_s}));
            }
            const bool listing = round % 4 == 0;
            if (listing)
                processes.push_back(startTavlo(home, {u"favorites"_s, u"list"_s, u"--json"_s}));
            for (const auto &process : processes) {
                QVERIFY(process->waitForFinished(30000));
                QCOMPARE(process->exitStatus(), QProcess::NormalExit);
                QVERIFY2(process->exitCode() == 0, process->readAllStandardError().constData());
            }
            if (listing) {
                // A list read in the middle of it all is a whole list too.
                const QList<QByteArray> lines =
                    processes.back()->readAllStandardOutput().split('\n');
                QCOMPARE(lines.constLast(), QByteArray());
                for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
                    const QJsonObject object = QJsonDocument::fromJson(lines.at(i)).object();
                    QCOMPARE(object.value(u"index"_s).toInteger(-1), i);
                    QVERIFY(!object.value(u"name"_s).toString().isEmpty());
                }
                ++lists;
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
        const QStringList stored = names(back.list);
        const QSet<QString> storedSet(stored.cbegin(), stored.cend());
        QCOMPARE(storedSet.size(), stored.size());
        QStringList missing;
        for (const QStringList &expected : {QStringList{u"s1"_s, u"s2"_s}, cliNames, driverNames}) {
            for (const QString &name : expected) {
                if (!storedSet.contains(name))
                    missing.append(name);
            }
        }
        QStringList kept;
        for (const QString &name : driverGone) {
            if (storedSet.contains(name))
                kept.append(name);
        }
        qInfo("%d driver changes, %lld command-line adds and %d lists in %lld ms; %lld favorites",
              sent, qint64(cliNames.size()), lists, clock.elapsed(), qint64(stored.size()));
        QVERIFY2(missing.isEmpty(),
                 qPrintable(u"acknowledged but missing: "_s + missing.join(u' ')));
        QVERIFY2(kept.isEmpty(),
                 qPrintable(u"deleted or renamed but still there: "_s + kept.join(u' ')));
        QCOMPARE(stored.size(), 2 + cliNames.size() + driverNames.size());
    }
};

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], driveArgument) == 0)
        return runDriver(QString::fromLocal8Bit(argv[2]));
    QCoreApplication app(argc, argv);
    TestCrashSafety test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crashsafety.moc"
