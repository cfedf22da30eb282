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

    QProcess *start(const QStringList &arguments, const QByteArray &language = "en_US.UTF-8")
    {
        auto *process = new QProcess(this);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("TZ"), QStringLiteral("Europe/Berlin"));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
        env.remove(QStringLiteral("LANGUAGE"));
        env.remove(QStringLiteral("LC_ALL"));
        env.remove(QStringLiteral("LC_MESSAGES"));
        env.insert(QStringLiteral("LANG"), QString::fromLatin1(language));
        process->setProcessEnvironment(env);
        process->start(QStringLiteral(TAVLO_EXECUTABLE), arguments);
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
        QVERIFY(out.contains("\"zodiacSign\":\"Pisces ♓︎\""));
        QVERIFY(out.endsWith("}\n"));
        QVERIFY(!QDir(m_home.filePath(QStringLiteral("config"))).exists());
    }

    void followsTheDeviceLanguage()
    {
        QProcess *p = start({"report", "--now", "2026-11-22", "1985-03-12"}, "ru_RU.UTF-8");
        QCOMPARE(p->exitCode(), 0);
        QVERIFY(p->readAllStandardOutput().startsWith("Твой \n"));
    }

    // A favorites list that cannot be read schedules nothing; without a
    // notification service nothing is scheduled either.
    void remindersSchedule_data()
    {
        QTest::addColumn<QByteArray>("favorites");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("out");
        QTest::newRow("unreadable favorites")
            << QByteArray("[person]\n1\\1=Anna\n1\\size=1\nsize=1\n") << 2 << QByteArray();
        QTest::newRow("no notification service")
            << QByteArray("[person]\n1\\1=Anna\n1\\2=2 3 1985\n1\\size=2\nsize=1\n") << 0
            << QByteArray("Application Not Allowed to Display Notifications\nNo reminders "
                          "scheduled.\n");
    }
    void remindersSchedule()
    {
        QFETCH(QByteArray, favorites);
        QDir().mkpath(m_home.filePath(QStringLiteral("config/tavlo")));
        QFile file(m_home.filePath(QStringLiteral("config/tavlo/tavlo.conf")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(favorites);
        file.close();
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        QProcess *p = start({"reminders", "schedule"});
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QTEST(p->exitCode(), "status");
        QTEST(p->readAllStandardOutput(), "out");
        const QByteArray err = p->readAllStandardError();
        QCOMPARE(err.count('\n'), p->exitCode() == 2 ? 1 : 0);
        QVERIFY(!QDir(m_home.filePath(QStringLiteral("config/autostart"))).exists());
    }

    void malformedDateGivesOneLineAndStatusTwo()
    {
        QProcess *p = start({"report", "1985-02-30"});
        QCOMPARE(p->exitCode(), 2);
        QCOMPARE(p->readAllStandardOutput(), QByteArray());
        const QByteArray err = p->readAllStandardError();
        QCOMPARE(err.count('\n'), 1);
        QVERIFY(err.contains("1985-02-30"));
    }
};

QTEST_GUILESS_MAIN(TestTavloExecutable)
#include "tst_tavloexecutable.moc"
