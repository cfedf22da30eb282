// SPDX-License-Identifier: MIT
#include "RecordingNotificationCenter.h"
#include "TimeZoneScope.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestRemindersCommand : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    MemorySettingsStore m_settings;
    FixedClock m_clock{QDateTime(QDate(2026, 3, 1), QTime(10, 0))};
    QString m_out, m_err;

    RecordingNotificationCenter m_center;

    int tavlo(const QStringList &arguments)
    {
        m_out.clear();
        m_err.clear();
        QTextStream out(&m_out), err(&m_err);
        CommandContext context{m_settings, {QStringLiteral("en-US")}, m_clock, out, err};
        context.notifications = [this] { return &m_center; };
        return runCommandLine(QStringList{QStringLiteral("tavlo")} + arguments, context);
    }

private slots:
    void init()
    {
        m_settings = MemorySettingsStore();
        m_settings.set(SettingsKeys::favorites,
                       QList<QStringList>{{"Anna", "14 3 1985"}, {"Bo", "2 3 1990"}});
    }

    void malformedInput_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named"); // the message must name this
        QTest::newRow("no such date") << QStringList{"--now", "2026-02-30"} << "2026-02-30";
        QTest::newRow("--now without value") << QStringList{"--now"} << "now";
        QTest::newRow("--now twice")
            << QStringList{"--now", "2026-03-01", "--now", "2026-03-02"} << "--now";
        QTest::newRow("unknown option") << QStringList{"--all"} << "all";
        QTest::newRow("stray argument") << QStringList{"Anna"} << "Anna";
    }
    void malformedInput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const qsizetype writes = m_settings.writeCount();
        QCOMPARE(tavlo(QStringList{"reminders"} + arguments), 2);
        QCOMPARE(m_out, QString());
        QCOMPARE(m_err.count(u'\n'), 1);
        QVERIFY2(m_err.startsWith(u"tavlo reminders: ") && m_err.contains(named),
                 qPrintable(m_err));
        QCOMPARE(m_settings.writeCount(), writes);
    }

    // Scheduled as the app schedules at its start: the same requests and
    // diagnostic lines, printed as scheduled.
    void scheduleArmsWhatThePlanSays_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("printed");
        QTest::newRow("allowed") << int(AuthorizationStatus::Authorized)
                                 << "birthdayReminder1 2026-03-02T07:30:00+01:00 Birthday "
                                    "Reminder: Bo has a birthday today!\n"
                                    "birthdayReminder2 2026-03-14T07:30:00+01:00 Birthday "
                                    "Reminder: Anna has a birthday today!\n";
        QTest::newRow("not allowed")
            << int(AuthorizationStatus::Denied) << "No reminders scheduled.\n";
    }
    void scheduleArmsWhatThePlanSays()
    {
        QFETCH(int, status);
        m_center = RecordingNotificationCenter();
        m_center.status = AuthorizationStatus(status);
        QCOMPARE(tavlo({"reminders", "schedule"}), 0);
        QCOMPARE(m_err, QString());
        QTEST(m_out, "printed");
        const bool allowed = m_center.status == AuthorizationStatus::Authorized;
        QCOMPARE(m_center.added.size(), allowed ? 2 : 0);
        QCOMPARE(m_settings.value(SettingsKeys::scheduledReminder(1)).has_value(), allowed);
    }

    void scheduleThatCouldNotBeStored()
    {
        m_center = RecordingNotificationCenter();
        m_center.addError = NotificationError{
            "WakeUpNotWritten", "could not save /u/tavlo-birthdayReminder1.timer: Disk full"};
        QCOMPARE(tavlo({"reminders", "schedule"}), 1);
        QCOMPARE(m_out, QString());
        QCOMPARE(m_err, "tavlo: could not save /u/tavlo-birthdayReminder1.timer: Disk full\n");
    }

    void textLinesAndNothingWritten()
    {
        const qsizetype writes = m_settings.writeCount();
        QCOMPARE(tavlo({"reminders"}), 0);
        QCOMPARE(m_out, "birthdayReminder1 2026-03-02T07:30:00+01:00 Birthday Reminder: Bo has a "
                        "birthday today!\n"
                        "birthdayReminder2 2026-03-14T07:30:00+01:00 Birthday Reminder: Anna has a "
                        "birthday today!\n");
        QCOMPARE(m_err, QString());
        QCOMPARE(m_settings.writeCount(), writes);
    }

    void jsonInTheAppLanguageAtTheGivenMoment()
    {
        m_settings.set(SettingsKeys::preferredLanguage, 2); // Russian
        QCOMPARE(tavlo({"reminders", "--json", "--now", "2026-03-05T08:00"}), 0);
        // Bo's birthday has passed; next year's is beyond 201 days.
        QCOMPARE(m_out.count(u'\n'), 1);
        const QJsonObject line = QJsonDocument::fromJson(m_out.toUtf8()).object();
        QCOMPARE(line.keys(), (QStringList{"body", "fire", "identifier", "title"}));
        QCOMPARE(line.value("identifier"), "birthdayReminder1");
        QCOMPARE(line.value("fire"), "2026-03-14T07:30:00+01:00");
        QCOMPARE(line.value("title"), "День рождения");
        QCOMPARE(line.value("body"), "Anna отмечает сегодня день рождения!");
    }

    void aNameReachesTheOutputAsTyped()
    {
        const QString name = QStringLiteral("$(touch /tmp/x); '\"\\ \t<b>");
        m_settings.set(SettingsKeys::favorites, QList<QStringList>{{name, "2 3 1990"}});
        tavlo({"reminders", "--json"});
        QCOMPARE(QJsonDocument::fromJson(m_out.toUtf8()).object().value("body"),
                 name + " has a birthday today!");
    }

    void helpAndUsage()
    {
        QCOMPARE(tavlo({"reminders", "--help"}), 0);
        QVERIFY(m_out.startsWith(u"Usage: tavlo reminders") && m_out.contains(u"--json"));
        tavlo({"--help"});
        QVERIFY(m_out.contains(u"\n  reminders "));
    }
};

QTEST_GUILESS_MAIN(TestRemindersCommand)
#include "tst_reminderscommand.moc"
