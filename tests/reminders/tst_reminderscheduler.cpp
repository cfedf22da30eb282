// SPDX-License-Identifier: MIT
#include "RecordingNotificationCenter.h"
#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "core/DebugLog.h"
#include "reminders/ReminderScheduler.h"
#include "settings/MemorySettingsStore.h"
#include "settings/ReminderTiming.h"
#include "texts/UiStrings.h"

#include <QTest>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

using Rows = QList<QStringList>;

namespace {

QList<Favorite> favoritesOf(const Rows &rows)
{
    QList<Favorite> favorites;
    for (const QStringList &row : rows)
        favorites.append({row.at(0), row.at(1)});
    return favorites;
}

const QDateTime march1(QDate(2026, 3, 1), QTime(10, 0));

} // namespace

class TestReminderScheduler : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    const UiStrings m_english;
    QStringList m_log;
    MemorySettingsStore m_settings;
    RecordingNotificationCenter m_center;

    // A scheduling run over these favorites at 1 March 2026, 10:00.
    void check(const Rows &rows, const UiStrings &strings)
    {
        m_settings.set(favorites, rows);
        FavoritesStore store(m_settings);
        store.load();
        const FixedClock clock(march1);
        ReminderScheduler(m_center, m_settings, clock, store, strings)
            .checkNotificationPermission();
    }

private slots:
    void init()
    {
        m_log.clear();
        DebugLog::setSink([this](const QString &line) { m_log.append(line); });
        m_settings = MemorySettingsStore();
        m_center = RecordingNotificationCenter();
    }
    void cleanup() { DebugLog::setSink({}); }

    void plan_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<Rows>("favorites");
        QTest::addColumn<QStringList>("expected"); // number, fire, body

        const auto at = [](int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(9, 0)); };
        QTest::newRow("no favorites") << march1 << Rows{} << QStringList{};
        QTest::newRow("seven give five, by day then list order")
            << march1
            << Rows{{"A", "5 3 1980"}, {"B", "3 3 1990"}, {"C", "5 3 2000"}, {"D", "6 3 1970"},
                    {"E", "3 3 1985"}, {"F", "4 3 1999"}, {"G", "5 3 1975"}}
            << QStringList{"1 2026-03-03T07:30:00+01:00 B", "2 2026-03-03T07:30:00+01:00 E",
                           "3 2026-03-04T07:30:00+01:00 F", "4 2026-03-05T07:30:00+01:00 A",
                           "5 2026-03-05T07:30:00+01:00 C"};
        // From 10 January 2026, day 201 is 30 July and day 202 is 31 July.
        QTest::newRow("today out, day 201 in, day 202 out")
            << at(2026, 1, 10) << Rows{{"T", "10 1 1980"}, {"L", "31 7 1970"}, {"K", "30 7 1975"}}
            << QStringList{"1 2026-07-30T07:30:00+02:00 K"};
        QTest::newRow("blank names, trailing blanks")
            << march1 << Rows{{" ", "2 3 1980"}, {"Anna  ", "3 3 1980"}, {"", "4 3 1980"}}
            << QStringList{"1 2026-03-02T07:30:00+01:00 Unknown",
                           "2 2026-03-03T07:30:00+01:00 Anna",
                           "3 2026-03-04T07:30:00+01:00 Unknown"};
        QTest::newRow("29 February searched") << at(2027, 12, 1) << Rows{{"L", "29 2 2000"}}
                                              << QStringList{"1 2028-02-29T07:30:00+01:00 L"};
        QTest::newRow("29 February not searched")
            << at(2026, 12, 1) << Rows{{"L", "29 2 2000"}} << QStringList{};
        QTest::newRow("clocks go forward that day") << at(2026, 3, 20) << Rows{{"S", "29 3 1990"}}
                                                    << QStringList{"1 2026-03-29T07:30:00+02:00 S"};
        QTest::newRow("clocks go back that day") << at(2026, 10, 20) << Rows{{"W", "25 10 1990"}}
                                                 << QStringList{"1 2026-10-25T07:30:00+01:00 W"};
        QTest::newRow("texts compared as written")
            << march1 << Rows{{"Z", "07 03 1985"}, {"S", "7 3"}, {"P", "7 3 1985"}}
            << QStringList{"1 2026-03-07T07:30:00+01:00 P"};
    }
    void plan()
    {
        QFETCH(QDateTime, now);
        QFETCH(Rows, favorites);
        QStringList described;
        for (const PlannedReminder &r : Reminders::plan(now, favoritesOf(favorites), m_english)) {
            QCOMPARE(r.identifier, u"birthdayReminder"_s + QString::number(r.number));
            QVERIFY(r.body.endsWith(u" has a birthday today!"));
            described.append(
                u"%1 %2 %3"_s.arg(r.number).arg(Reminders::isoDate(r.fire), r.body.chopped(22)));
        }
        QTEST(described, "expected");
    }

    // The time and how early, as chosen on the settings screen and stored;
    // the reminder day still runs from tomorrow to day 201.
    void chosenTiming_data()
    {
        QTest::addColumn<QString>("time"); // stored text; empty: none stored
        QTest::addColumn<int>("daysBefore");
        QTest::addColumn<QStringList>("expected"); // fire, body
        QTest::newRow("unreadable values")
            << "7h30" << 2
            << QStringList{"2026-03-02T07:30:00+01:00 Anna has a birthday today!",
                           "2026-03-05T07:30:00+01:00 Bo has a birthday today!"};
        QTest::newRow("evening, on the day")
            << "21:15" << 0
            << QStringList{"2026-03-02T21:15:00+01:00 Anna has a birthday today!",
                           "2026-03-05T21:15:00+01:00 Bo has a birthday today!"};
        // Anna's birthday (2 March) is tomorrow: too late for a day's notice.
        QTest::newRow("a day before")
            << "" << 1 << QStringList{"2026-03-04T07:30:00+01:00 Bo has a birthday tomorrow"};
        QTest::newRow("three days before")
            << "06:00" << 3 << QStringList{"2026-03-02T06:00:00+01:00 Bo has a birthday in 3 days"};
        QTest::newRow("a week before, found on day 201")
            << "" << 7 << QStringList{"2026-09-18T07:30:00+02:00 Cy has a birthday in 7 days"};
    }
    void chosenTiming()
    {
        QFETCH(QString, time);
        QFETCH(int, daysBefore);
        if (!time.isEmpty())
            m_settings.set(reminderTime, time);
        m_settings.set(reminderDaysBefore, daysBefore);
        const ReminderTiming timing = ReminderTiming::from(m_settings);
        // 18 September is 201 days after 1 March; Cy's birthday a week later.
        const Rows rows{{"Anna", "2 3 1985"}, {"Bo", "5 3 1990"}, {"Cy", "25 9 1970"}};
        QStringList described;
        for (const PlannedReminder &r :
             Reminders::plan(march1, favoritesOf(rows), m_english, timing))
            described.append(Reminders::isoDate(r.fire) + u' ' + r.body);
        QTEST(described, "expected");
    }

    void timeStepsRoundTheClock_data()
    {
        QTest::addColumn<QTime>("from");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QTime>("to");
        QTest::newRow("past midnight") << QTime(23, 45) << 1 << QTime(0, 0);
        QTest::newRow("before midnight") << QTime(0, 0) << -1 << QTime(23, 45);
    }
    void timeStepsRoundTheClock()
    {
        QFETCH(QTime, from);
        QFETCH(int, steps);
        ReminderTiming timing;
        timing.timeOfDay = from;
        QTEST(timing.steppedTime(steps), "to");
    }

    // In a zone whose clocks change at 7:00 and 8:00.
    void timeTheClocksSkipOrRepeat_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("moment");
        QTest::newRow("skipped: where they jump to")
            << QDate(2026, 3, 29) << "2026-03-29T08:00:00+02:00";
        QTest::newRow("repeated: the first") << QDate(2026, 10, 25) << "2026-10-25T07:30:00+02:00";
    }
    void timeTheClocksSkipOrRepeat()
    {
        QFETCH(QDate, day);
        const TimeZoneScope zone("XST-1XDT,M3.5.0/7,M10.5.0/8");
        const QDateTime moment =
            CalendarTrigger::momentIn(QTimeZone::systemTimeZone(), day, QTime(7, 30));
        QTEST(Reminders::isoDate(moment), "moment");
    }

    void authorization_data()
    {
        QTest::addColumn<AuthorizationStatus>("status");
        QTest::addColumn<bool>("grants");
        QTest::addColumn<bool>("fails");
        QTest::addColumn<QStringList>("log");
        QTest::addColumn<bool>("scheduled");
        using S = AuthorizationStatus;
        const QString failed = "Request Authorization Failed (Denied, Said no)";
        QTest::newRow("asked, granted")
            << S::NotDetermined << true << false << QStringList{} << true;
        QTest::newRow("asked, refused, error")
            << S::NotDetermined << false << true << QStringList{failed} << false;
        QTest::newRow("asked, granted, error")
            << S::NotDetermined << true << true << QStringList{failed} << true;
        QTest::newRow("denied") << S::Denied << true << false
                                << QStringList{"Application Not Allowed to Display Notifications"}
                                << false;
        QTest::newRow("authorized") << S::Authorized << false << false << QStringList{} << true;
        QTest::newRow("provisional")
            << S::Provisional << true << false << QStringList{"provisional"} << false;
        QTest::newRow("ephemeral")
            << S::Ephemeral << true << false << QStringList{"ephemeral"} << false;
    }
    void authorization()
    {
        QFETCH(AuthorizationStatus, status);
        QFETCH(bool, scheduled);
        m_center.status = status;
        QFETCH(bool, grants);
        m_center.grants = grants;
        QFETCH(bool, fails);
        if (fails)
            m_center.authorizationError = NotificationError{"Denied", "Said no"};
        check({{"Anna", "2 3 1985"}}, m_english);
        QTEST(m_log, "log");
        QCOMPARE(m_center.authorizationRequests.size(),
                 status == AuthorizationStatus::NotDetermined ? 1 : 0);
        if (!m_center.authorizationRequests.isEmpty())
            QCOMPARE(m_center.authorizationRequests[0], AuthorizationOption::Alert |
                                                            AuthorizationOption::Badge |
                                                            AuthorizationOption::Sound);
        QCOMPARE(m_center.added.size(), scheduled ? 1 : 0);
        QCOMPARE(m_settings.value(scheduledReminder(1)).has_value(), scheduled);
    }

    void aRunAddsRequestsAndDiagnosticLines()
    {
        UiStrings german;
        german.apply(Language::German);
        m_center.addError = NotificationError{"Full", "No room"};
        m_settings.set(scheduledReminder(3), u"earlier"_s);
        check({{"Anna", "2 3 1985"}, {" ", "14 3 1990"}}, german);

        // The fake answers at once, so each failure follows its own request.
        const QString failed = u"Unable to Add Notification Request (Full, No room)"_s;
        QCOMPARE(m_log, (QStringList{failed, "nameSpace = ", failed}));
        QCOMPARE(m_center.added.size(), 2);
        const NotificationRequest &first = m_center.added[0];
        QCOMPARE(first.title, "Geburtstagserinnerung");
        QCOMPARE(first.body, "Anna hat heute Geburtstag!");
        QCOMPARE((QList<int>{first.trigger.month, first.trigger.day, first.trigger.hour,
                             first.trigger.minute}),
                 (QList<int>{3, 2, 7, 30}));
        QVERIFY(!first.trigger.repeats);
        QCOMPARE(first.trigger.timeZone.id(), "Europe/Berlin");
        QCOMPARE(m_settings.value(scheduledReminder(1)),
                 u"Selected notification: 2026-03-02 07:30:00 +0100"_s);
        QCOMPARE(m_settings.value(scheduledReminder(2)),
                 u"Selected notification: 2026-03-14 07:30:00 +0100"_s);
        QCOMPARE(m_settings.value(scheduledReminder(3)), u"earlier"_s); // kept from an earlier run
    }

    void noFavoritesWriteNothing()
    {
        check({}, m_english);
        QCOMPARE(m_center.added.size(), 0);
        QCOMPARE(m_settings.writeCount(), 1); // the empty list itself
    }
};

QTEST_GUILESS_MAIN(TestReminderScheduler)
#include "tst_reminderscheduler.moc"
