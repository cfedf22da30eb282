// SPDX-License-Identifier: MIT
#include "RecordingRunner.h"
#include "TimeZoneScope.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/SystemdTimers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

PendingReminder reminder(const QString &identifier, int day, const QString &body = u"Anna"_s)
{
    const QDateTime fire(QDate(2026, 3, day), QTime(7, 30));
    return {{identifier, u"Birthday Reminder"_s, body, CalendarTrigger::at(fire)}, fire};
}

// Every file and link under `folder` with its bytes or its link target.
QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        QFile file(info.filePath());
        files.insert(QDir(folder).relativeFilePath(info.filePath()),
                     info.isSymLink() ? info.symLinkTarget().toUtf8()
                                      : (file.open(QIODevice::ReadOnly) ? file.readAll() : "?"));
    }
    return files;
}

} // namespace

// The wake-ups with the app closed: systemd user timers, or the autostart
// entry where there is no systemd.
class TestReminderWakeups : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    std::unique_ptr<QTemporaryDir> m_dir;
    RecordingRunner m_runner;

    QString units() const { return m_dir->filePath(u"systemd/user"_s); }
    SystemdTimers timers(CommandRunner *manager, const QString &program = TAVLO_EXECUTABLE)
    {
        return SystemdTimers(units(), program, {u"XDG_DATA_HOME=/home/u/data"_s}, manager);
    }
    QStringList systemctl(const QStringList &arguments)
    {
        return QStringList{u"systemctl"_s, u"--user"_s} + arguments;
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_runner = RecordingRunner();
    }

    void unitsPassSystemdAnalyzeVerify()
    {
        // A program path that needs quoting and escaping in a unit file.
        const QString program = m_dir->filePath(u"bin dir/tavlo 100% $HOME"_s);
        QDir().mkpath(QFileInfo(program).absolutePath());
        QVERIFY(QFile::link(QStringLiteral(TAVLO_EXECUTABLE), program));
        SystemdTimers t = timers(nullptr, program);
        QVERIFY(
            !t.apply({reminder(u"birthdayReminder1"_s, 29), reminder(u"birthdayReminder2"_s, 30)}));

        const QMap<QString, QByteArray> files = snapshot(units());
        QCOMPARE(
            files.keys(),
            (QStringList{u"tavlo-birthdayReminder1.service"_s, u"tavlo-birthdayReminder1.timer"_s,
                         u"tavlo-birthdayReminder2.service"_s, u"tavlo-birthdayReminder2.timer"_s,
                         u"timers.target.wants/tavlo-birthdayReminder1.timer"_s,
                         u"timers.target.wants/tavlo-birthdayReminder2.timer"_s}));
        // The clocks go forward on the 29th: 7:30 there is 5:30 UTC.
        const QByteArray timer = files.value(u"tavlo-birthdayReminder1.timer"_s);
        QVERIFY(timer.contains("\nOnCalendar=2026-03-29 05:30:00 UTC\n"));
        QVERIFY(timer.contains("\nPersistent=true\n"));
        QCOMPARE(files.value(u"timers.target.wants/tavlo-birthdayReminder1.timer"_s),
                 QDir(units()).absoluteFilePath(u"tavlo-birthdayReminder1.timer"_s).toUtf8());

        QStringList written;
        for (const QString &name : files.keys()) {
            if (!name.contains(u'/'))
                written.append(QDir(units()).absoluteFilePath(name));
        }
        QProcess verify;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_RUNTIME_DIR"_s, m_dir->path()); // a user manager's paths, not its process
        verify.setProcessEnvironment(env);
        verify.start(u"systemd-analyze"_s,
                     QStringList{u"--user"_s, u"--man=no"_s, u"verify"_s} + written);
        QVERIFY(verify.waitForFinished(60000));
        QCOMPARE(verify.readAllStandardError(), QByteArray());
        QCOMPARE(verify.exitCode(), 0);

        // What systemd will run is the program as it is named, with its
        // environment.
        const QByteArray service = files.value(u"tavlo-birthdayReminder1.service"_s);
        QVERIFY(service.contains("\nExecStart=\"" + QDir(m_dir->path()).absolutePath().toUtf8() +
                                 "/bin dir/tavlo 100%% $HOME\" deliver-reminder "
                                 "\"birthdayReminder1\"\n"));
        QVERIFY(service.contains("\nEnvironment=\"XDG_DATA_HOME=/home/u/data\"\n"));
    }

    void onlyChangesReachTheDiskAndTheManager()
    {
        SystemdTimers t = timers(&m_runner);
        const QList<PendingReminder> plan{reminder(u"birthdayReminder1"_s, 5),
                                          reminder(u"birthdayReminder2"_s, 6),
                                          reminder(u"birthdayReminder3"_s, 7)};
        QVERIFY(!t.apply(plan));
        m_runner.finishAll();
        QCOMPARE(m_runner.commands,
                 (QList<QStringList>{systemctl({u"daemon-reload"_s}),
                                     systemctl({u"restart"_s, u"tavlo-birthdayReminder1.timer"_s,
                                                u"tavlo-birthdayReminder2.timer"_s,
                                                u"tavlo-birthdayReminder3.timer"_s})}));

        // The same plan again: nothing written, nothing run.
        const QDateTime written =
            QFileInfo(QDir(units()).filePath(u"tavlo-birthdayReminder1.timer"_s)).lastModified();
        QTest::qWait(20);
        QVERIFY(!t.apply(plan));
        QCOMPARE(m_runner.commands.size(), 2);
        QCOMPARE(
            QFileInfo(QDir(units()).filePath(u"tavlo-birthdayReminder1.timer"_s)).lastModified(),
            written);

        // One replaced, one gone.
        m_runner.commands.clear();
        QVERIFY(!t.apply({plan[0], reminder(u"birthdayReminder2"_s, 9)}));
        m_runner.finishAll();
        QCOMPARE(
            m_runner.commands,
            (QList<QStringList>{systemctl({u"stop"_s, u"tavlo-birthdayReminder3.timer"_s}),
                                systemctl({u"daemon-reload"_s}),
                                systemctl({u"restart"_s, u"tavlo-birthdayReminder2.timer"_s})}));
        QCOMPARE(snapshot(units()).size(), 6); // two units and a link each
        QVERIFY(!QFile::exists(QDir(units()).filePath(u"tavlo-birthdayReminder3.service"_s)));
        QVERIFY(snapshot(units())
                    .value(u"tavlo-birthdayReminder2.timer"_s)
                    .contains("OnCalendar=2026-03-09 06:30:00 UTC"));

        // Nothing pending: nothing of Tavlo's left; other units untouched.
        QFile other(QDir(units()).filePath(u"other.timer"_s));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.close();
        QVERIFY(!t.apply({}));
        QCOMPARE(snapshot(units()).keys(), QStringList{u"other.timer"_s});
    }

    // However the manager's answers and a new plan interleave, the disk holds
    // the newest plan and nothing re-arms an older time.
    void theNewestPlanWins_data()
    {
        QTest::addColumn<bool>("answersFirst");
        QTest::newRow("answers before the new plan") << true;
        QTest::newRow("answers after the new plan") << false;
    }
    void theNewestPlanWins()
    {
        QFETCH(bool, answersFirst);
        SystemdTimers t = timers(&m_runner);
        QVERIFY(
            !t.apply({reminder(u"birthdayReminder1"_s, 5), reminder(u"birthdayReminder2"_s, 6)}));
        if (answersFirst)
            m_runner.finishAll();
        const QList<PendingReminder> newer{reminder(u"birthdayReminder1"_s, 8)};
        QVERIFY(!t.apply(newer));
        m_runner.finishAll();

        SystemdTimers reference(m_dir->filePath(u"reference"_s), TAVLO_EXECUTABLE,
                                {u"XDG_DATA_HOME=/home/u/data"_s}, nullptr);
        QVERIFY(!reference.apply(newer));
        QMap<QString, QByteArray> expected = snapshot(m_dir->filePath(u"reference"_s));
        for (QByteArray &target : expected)
            target.replace(m_dir->filePath(u"reference"_s).toUtf8(), units().toUtf8());
        QCOMPARE(snapshot(units()), expected);
        // The manager's last word restarts the newest timer.
        QCOMPARE(m_runner.commands.constLast(),
                 systemctl({u"restart"_s, u"tavlo-birthdayReminder1.timer"_s}));
        for (const QStringList &command : m_runner.commands)
            QVERIFY(!command.join(u' ').contains(u"OnCalendar"));
    }

    void autostartEntryWhileRemindersWait()
    {
        const QString folder = m_dir->filePath(u"autostart"_s);
        const QString lock = m_dir->filePath(u"background.lock"_s);
        AutostartEntry entry(folder, u"/usr/bin/tavlo"_s, {u"XDG_DATA_HOME=/home/u/my data"_s},
                             lock, &m_runner);
        QVERIFY(!entry.apply({reminder(u"birthdayReminder1"_s, 5, u"$(rm -rf ~)"_s)}));
        const QString path = QDir(folder).filePath(u"io.github.tavlo.Tavlo-reminders.desktop"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY(text.contains("\nExec=env \"XDG_DATA_HOME=/home/u/my data\" \"/usr/bin/tavlo\" "
                              "deliver-reminders\n"));
        QVERIFY(!text.contains("rm -rf"));
        // This login too, unless a background Tavlo runs already.
        QCOMPARE(m_runner.detached,
                 (QList<QStringList>{{u"/usr/bin/tavlo"_s, u"deliver-reminders"_s}}));
        QLockFile running(lock);
        QVERIFY(running.tryLock(0));
        QVERIFY(!entry.apply({reminder(u"birthdayReminder1"_s, 6)}));
        QCOMPARE(m_runner.detached.size(), 1);

        QProcess validate;
        validate.start(u"desktop-file-validate"_s, {path});
        QVERIFY(validate.waitForFinished(30000));
        QCOMPARE(validate.readAllStandardOutput(), QByteArray());

        QVERIFY(!entry.apply({}));
        QVERIFY(!QFile::exists(path));
    }
};

QTEST_GUILESS_MAIN(TestReminderWakeups)
#include "tst_reminderwakeups.moc"
