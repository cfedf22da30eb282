// SPDX-License-Identifier: MIT
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The installed command: process entry, real settings file, real streams.
class TestTavloExecutable : public QObject
{
    Q_OBJECT

    QTemporaryDir m_home;

    QProcess *start(const QStringList &arguments, const QString &language = "en_US.UTF-8")
    {
        auto *process = new QProcess(this);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("TZ", "Europe/Berlin");
        env.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
        env.insert("XDG_DATA_HOME", m_home.filePath("data"));
        env.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        for (const char *name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES"})
            env.remove(name);
        env.insert("LANG", language);
        process->setProcessEnvironment(env);
        process->start(TAVLO_EXECUTABLE, arguments);
        if (!process->waitForFinished(30000))
            qFatal("tavlo did not finish");
        return process;
    }

private slots:
    void reportsThroughTheRealProcess()
    {
        QProcess *p = start({"report", "--json", "--now", "2026-11-22T12:00", "1985-03-12T08:30"});
        QCOMPARE(p->exitStatus(), QProcess::NormalExit);
        QCOMPARE(p->exitCode(), 0);
        const QByteArray out = p->readAllStandardOutput();
        QVERIFY2(out.startsWith("{\"display\":\"Your age\\n\\nIn years: 41\\n"), out.constData());
        QVERIFY(out.contains("\"zodiacSign\":\"Pisces ♓︎\"") && out.endsWith("}\n"));
        QVERIFY(!QDir(m_home.filePath("config")).exists());

        p = start({"report", "--now", "2026-11-22", "1985-03-12"}, "ru_RU.UTF-8");
        QCOMPARE(p->exitCode(), 0);
        QVERIFY(p->readAllStandardOutput().startsWith("Твой \n"));

        p = start({"report", "1985-02-30"});
        QCOMPARE(p->exitCode(), 2);
        QCOMPARE(p->readAllStandardOutput(), QByteArray());
        const QByteArray err = p->readAllStandardError();
        QVERIFY(err.count('\n') == 1 && err.contains("1985-02-30"));
    }

    // Without a notification service nothing is scheduled.
    void remindersScheduleWithoutANotificationService()
    {
        const QByteArray favorites("[person]\n1\\1=Anna\n1\\2=2 3 1985\n1\\size=2\nsize=1\n");
        QDir().mkpath(m_home.filePath("config/tavlo"));
        QFile file(m_home.filePath("config/tavlo/tavlo.conf"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(favorites) == favorites.size());
        file.close();
        QProcess *p = start({"reminders", "schedule"});
        QCOMPARE(p->exitCode(), 0);
        QCOMPARE(p->readAllStandardOutput(),
                 "Application Not Allowed to Display Notifications\nNo reminders scheduled.\n");
        QCOMPARE(p->readAllStandardError(), QByteArray());
        QVERIFY(!QDir(m_home.filePath("config/autostart")).exists());
    }
};

QTEST_GUILESS_MAIN(TestTavloExecutable)
#include "tst_tavloexecutable.moc"
