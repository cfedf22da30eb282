#include <QDir>
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
