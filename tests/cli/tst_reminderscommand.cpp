// SPDX-License-Identifier: MIT
#include "CommandLineHarness.h"
#include "RecordingNotificationCenter.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
const QString twoReminders =
    "birthdayReminder1 2026-03-02T07:30:00+01:00 Birthday Reminder: Bo has "
    "a birthday today!\n"
    "birthdayReminder2 2026-03-14T07:30:00+01:00 Birthday Reminder: Anna "
    "has a birthday today!\n";
}

class TestRemindersCommand : public QObject
{
    Q_OBJECT

    CommandLineHarness m_cli{at(2026, 3, 1, 10)};
    RecordingNotificationCenter m_center;

private slots:
    void init()
    {
        m_cli.settings = MemorySettingsStore();
        m_cli.settings.set(SettingsKeys::favorites,
                           QList<QStringList>{{"Anna", "14 3 1985"}, {"Bo", "2 3 1990"}});
        m_cli.notifications = [this] { return &m_center; };
        m_center = RecordingNotificationCenter();
    }

    void textLinesAndNothingWritten()
    {
        const qsizetype writes = m_cli.settings.writeCount();
        const CommandRun run = m_cli.run({"reminders"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, twoReminders);
        QCOMPARE(run.err, QString());
        QCOMPARE(m_cli.settings.writeCount(), writes);
    }

    // Scheduled as the app schedules at its start: the same requests and
    // diagnostic lines, printed as scheduled.
    void scheduleArmsWhatThePlanSays_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::addColumn<QString>("printed");
        QTest::newRow("allowed") << true << twoReminders;
        QTest::newRow("not allowed") << false << "No reminders scheduled.\n";
    }
    void scheduleArmsWhatThePlanSays()
    {
        QFETCH(bool, allowed);
        m_center.status = allowed ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied;
        const CommandRun run = m_cli.run({"reminders", "schedule"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QTEST(run.out, "printed");
        QCOMPARE(m_center.added.size(), allowed ? 2 : 0);
        QCOMPARE(m_cli.settings.value(SettingsKeys::scheduledReminder(1)).has_value(), allowed);
    }

    void scheduleThatCouldNotBeStored()
    {
        m_center.addError = NotificationError{
            "WakeUpNotWritten", "could not save /u/tavlo-birthdayReminder1.timer: Disk full"};
        const CommandRun run = m_cli.run({"reminders", "schedule"});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err, "tavlo: could not save /u/tavlo-birthdayReminder1.timer: Disk full\n");
    }

    // In the app's language, at the given moment, names as typed.
    void json()
    {
        m_cli.settings.set(SettingsKeys::preferredLanguage, 2); // Russian
        const QString name = QStringLiteral("$(touch /tmp/x); '\"\\ \t<b>");
        m_cli.settings.set(SettingsKeys::favorites,
                           QList<QStringList>{{name, "14 3 1985"}, {"Bo", "2 3 1990"}});
        const CommandRun run = m_cli.run({"reminders", "--json", "--now", "2026-03-05T08:00"});
        // Bo's birthday has passed; next year's is beyond 201 days.
        QCOMPARE(run.out.count(u'\n'), 1);
        const QJsonObject line = QJsonDocument::fromJson(run.out.toUtf8()).object();
        QCOMPARE(line.keys(), (QStringList{"body", "fire", "identifier", "title"}));
        QCOMPARE(line.value("identifier"), "birthdayReminder1");
        QCOMPARE(line.value("fire"), "2026-03-14T07:30:00+01:00");
        QCOMPARE(line.value("title"), "День рождения");
        QCOMPARE(line.value("body"), name + " отмечает сегодня день рождения!");
    }
};

QTEST_GUILESS_MAIN(TestRemindersCommand)
#include "tst_reminderscommand.moc"
