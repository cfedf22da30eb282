// SPDX-License-Identifier: MIT
#include "CapturedLog.h"
#include "RecordingNotificationCenter.h"
#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "reminders/DeliveryRules.h"
#include "reminders/ReminderScheduler.h"
#include "settings/MemorySettingsStore.h"
#include "settings/ReminderTiming.h"
#include "texts/UiStrings.h"

#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

using Rows = QList<QStringList>;

namespace {

const QDateTime march1(QDate(2026, 3, 1), QTime(10, 0));

} // namespace

class TestReminderScheduler : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    const UiStrings m_english;
    std::optional<CapturedLog> m_log;
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
        m_log.emplace();
        m_settings = MemorySettingsStore();
        m_center = RecordingNotificationCenter();
    }
    void cleanup() { m_log.reset(); }

    // Planned at `now` with the time and how early as stored by the settings
    // screen; the reminder day runs from tomorrow to day 201.
    void plan_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<Rows>("favorites");
        QTest::addColumn<QString>("time"); // stored text; empty: none stored
        QTest::addColumn<int>("daysBefore");
        QTest::addColumn<int>("second"); // days before of the second reminder; -1: off
        QTest::addColumn<QStringList>(
            "expected"); // number, fire, body less " has a birthday today!"
        const auto row = [](const char *tag, QDateTime now, const Rows &favorites,
                            const QStringList &expected, const QString &time = {},
                            int daysBefore = 0, int second = -1) {
            QTest::newRow(tag) << now << favorites << time << daysBefore << second << expected;
        };
        const auto at = [](int y, int m, int d) { return QDateTime(QDate(y, m, d), QTime(9, 0)); };
        row("no favorites", march1, {}, {});
        row("seven give five, by day then list order", march1,
            {{"A", "5 3 1980"},
             {"B", "3 3 1990"},
             {"C", "5 3 2000"},
             {"D", "6 3 1970"},
             {"E", "3 3 1985"},
             {"F", "4 3 1999"},
             {"G", "5 3 1975"}},
            {"1 2026-03-03T07:30:00+01:00 B", "2 2026-03-03T07:30:00+01:00 E",
             "3 2026-03-04T07:30:00+01:00 F", "4 2026-03-05T07:30:00+01:00 A",
             "5 2026-03-05T07:30:00+01:00 C"});
        // From 10 January 2026, day 201 is 30 July and day 202 is 31 July.
        row("today out, day 201 in, day 202 out", at(2026, 1, 10),
            {{"T", "10 1 1980"}, {"L", "31 7 1970"}, {"K", "30 7 1975"}},
            {"1 2026-07-30T07:30:00+02:00 K"});
        row("blank names, trailing blanks", march1,
            {{" ", "2 3 1980"}, {"Anna  ", "3 3 1980"}, {"", "4 3 1980"}},
            {"1 2026-03-02T07:30:00+01:00 Unknown", "2 2026-03-03T07:30:00+01:00 Anna",
             "3 2026-03-04T07:30:00+01:00 Unknown"});
        row("clocks go forward that day", at(2026, 3, 20), {{"S", "29 3 1990"}},
            {"1 2026-03-29T07:30:00+02:00 S"});
        row("clocks go back that day", at(2026, 10, 20), {{"W", "25 10 1990"}},
            {"1 2026-10-25T07:30:00+01:00 W"});
        // Without a year the day and month alone decide.
        row("texts compared as written, no year alike", march1,
            {{"Z", "07 03 1985"}, {"S", "7 3"}, {"P", "7 3 1985"}, {"Q", "7 3 1604"}},
            {"1 2026-03-07T07:30:00+01:00 S", "2 2026-03-07T07:30:00+01:00 P",
             "3 2026-03-07T07:30:00+01:00 Q"});
        // 18 September is 201 days after 1 March; Cy's birthday a week later.
        const Rows abc{{"Anna", "2 3 1985"}, {"Bo", "5 3 1990"}, {"Cy", "25 9 1970"}};
        row("unreadable timing", march1, abc,
            {"1 2026-03-02T07:30:00+01:00 Anna", "2 2026-03-05T07:30:00+01:00 Bo"}, "7h30", 2);
        row("evening, on the day", march1, abc,
            {"1 2026-03-02T21:15:00+01:00 Anna", "2 2026-03-05T21:15:00+01:00 Bo"}, "21:15");
        // Anna's birthday (2 March) is tomorrow: too late for a day's notice.
        row("a day before", march1, abc, {"1 2026-03-04T07:30:00+01:00 Bo has a birthday tomorrow"},
            {}, 1);
        row("three days before", march1, abc,
            {"1 2026-03-02T06:00:00+01:00 Bo has a birthday in 3 days"}, "06:00", 3);
        row("a week before, found on day 201", march1, abc,
            {"1 2026-09-18T07:30:00+02:00 Cy has a birthday in 7 days"}, {}, 7);

        // Two reminders of each birthday, each one of the five.
        row("a week before and on the day, by day", march1,
            {{"Anna", "2 3 1985"}, {"Bo", "5 3 1990"}, {"Cy", "10 3 1970"}},
            {"1 2026-03-02T07:30:00+01:00 Anna",
             "2 2026-03-03T07:30:00+01:00 Cy has a birthday in 7 days",
             "3 2026-03-05T07:30:00+01:00 Bo", "4 2026-03-10T07:30:00+01:00 Cy"},
            {}, 0, 7);
        row("five in all, same day by list order", march1,
            {{"A", "3 3 1980"}, {"B", "4 3 1990"}, {"C", "5 3 2000"}},
            {"1 2026-03-02T20:00:00+01:00 A has a birthday tomorrow",
             "2 2026-03-03T20:00:00+01:00 A",
             "3 2026-03-03T20:00:00+01:00 B has a birthday tomorrow",
             "4 2026-03-04T20:00:00+01:00 B",
             "5 2026-03-04T20:00:00+01:00 C has a birthday tomorrow"},
            "20:00", 0, 1);
        // From 10 January: T's week's notice would be on 4 January, gone;
        // K's birthday (2 August) is day 204, its week's notice day 197.
        row("a birthday's two reminders either side of both edges", at(2026, 1, 10),
            {{"T", "11 1 1980"}, {"K", "2 8 1975"}},
            {"1 2026-01-11T07:30:00+01:00 T",
             "2 2026-07-26T07:30:00+02:00 K has a birthday in 7 days"},
            {}, 7, 0);
        // 29 February is searched for in a leap year only; the day before
        // follows it.
        row("29 February and the day before it", at(2027, 12, 1), {{"L", "29 2 2000"}},
            {"1 2028-02-28T07:30:00+01:00 L has a birthday tomorrow",
             "2 2028-02-29T07:30:00+01:00 L"},
            {}, 0, 1);
        row("no 29 February, no reminder the day before", at(2026, 12, 1), {{"L", "29 2 2000"}}, {},
            {}, 0, 1);
        row("a second the same as the first adds nothing", march1, abc,
            {"1 2026-03-02T07:30:00+01:00 Anna", "2 2026-03-05T07:30:00+01:00 Bo"}, {}, 0, 0);
        row("a second of an unknown kind is off", march1, abc,
            {"1 2026-03-02T07:30:00+01:00 Anna", "2 2026-03-05T07:30:00+01:00 Bo"}, {}, 0, 2);
    }
    void plan()
    {
        QFETCH(QDateTime, now);
        QFETCH(Rows, favorites);
        QFETCH(QString, time);
        if (!time.isEmpty())
            m_settings.set(reminderTime, time);
        QFETCH(int, daysBefore);
        m_settings.set(reminderDaysBefore, daysBefore);
        QFETCH(int, second);
        if (second >= 0) {
            m_settings.set(secondReminder, true);
            m_settings.set(secondReminderDaysBefore, second);
        }
        QList<Favorite> list;
        for (const QStringList &row : favorites)
            list.append({row.at(0), row.at(1), u"id "_s + row.at(0)});
        QStringList described;
        const QList<PlannedReminder> planned =
            Reminders::plan(now, list, m_english, ReminderTiming::from(m_settings));
        for (qsizetype i = 0; i < planned.size(); ++i) {
            const PlannedReminder &r = planned.at(i);
            QCOMPARE(r.number, i + 1);
            QCOMPARE(r.identifier, u"birthdayReminder"_s + QString::number(r.number));
            // The favorite it is about, whose name the text begins with.
            QVERIFY(r.body.startsWith(QString(r.favoriteId).remove(u"id "_s).trimmed()) ||
                    r.blankName.has_value());
            described.append(u"%1 %2 %3"_s.arg(r.number).arg(
                Reminders::isoDate(r.fire), QString(r.body).remove(u" has a birthday today!"_s)));
        }
        QTEST(described, "expected");
    }

    // The settings row's button goes round: off, each choice but the first
    // reminder's own, off again; a second the same as the first counts as off.
    void secondReminderChoices_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");      // stored; -1: off
        QTest::addColumn<QList<int>>("taps"); // the second after each tap; -1: off
        QTest::newRow("first on the day") << 0 << -1 << QList<int>{1, 3, 7, -1, 1};
        QTest::newRow("first three days before") << 3 << -1 << QList<int>{0, 1, 7, -1};
        QTest::newRow("from a week before") << 0 << 7 << QList<int>{-1, 1};
        QTest::newRow("the same as the first") << 1 << 1 << QList<int>{0, 3};
    }
    void secondReminderChoices()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        ReminderTiming::setDaysBefore(m_settings, first);
        ReminderTiming::setSecondDaysBefore(m_settings,
                                            second < 0 ? std::nullopt : std::optional<int>(second));
        QList<int> seen;
        QFETCH(QList<int>, taps);
        for (qsizetype i = 0; i < taps.size(); ++i) {
            ReminderTiming::setSecondDaysBefore(
                m_settings, ReminderTiming::from(m_settings).nextSecondChoice());
            const ReminderTiming timing = ReminderTiming::from(m_settings);
            seen.append(timing.secondDaysBefore.value_or(-1));
            QCOMPARE(timing.daysBefore, first);
            QCOMPARE(timing.leads().size(), timing.secondDaysBefore ? 2 : 1);
        }
        QCOMPARE(seen, taps);
        // Off keeps the last choice stored, but plans nothing from it.
        QCOMPARE(m_settings.value(secondReminder), taps.constLast() >= 0);
    }

    void timeRoundTheClockAndAcrossClockChanges()
    {
        ReminderTiming timing;
        timing.timeOfDay = QTime(23, 45);
        QCOMPARE(timing.steppedTime(1), QTime(0, 0));
        timing.timeOfDay = QTime(0, 0);
        QCOMPARE(timing.steppedTime(-1), QTime(23, 45));
        // Clocks that change at 7:00 and 8:00: a skipped 7:30 is where they
        // jump to, a repeated one the first.
        const TimeZoneScope zone("XST-1XDT,M3.5.0/7,M10.5.0/8");
        const auto moment = [](QDate day) {
            return Reminders::isoDate(
                CalendarTrigger::momentIn(QTimeZone::systemTimeZone(), day, QTime(7, 30)));
        };
        QCOMPARE(moment(QDate(2026, 3, 29)), "2026-03-29T08:00:00+02:00");
        QCOMPARE(moment(QDate(2026, 10, 25)), "2026-10-25T07:30:00+02:00");
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
        QTEST(m_log->lines, "log");
        const AuthorizationOptions asked =
            AuthorizationOption::Alert | AuthorizationOption::Badge | AuthorizationOption::Sound;
        QCOMPARE(m_center.authorizationRequests,
                 QList<AuthorizationOptions>(status == AuthorizationStatus::NotDetermined, asked));
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
        QCOMPARE(m_log->lines, (QStringList{failed, "nameSpace = ", failed}));
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

    // A pending reminder is shown on its own day only, however late: the
    // delivery and the running app both drop one of an earlier day, and the
    // answer to what was shown is awaited until midnight, whatever the
    // day's length.
    void deliveryDays_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<qint64>("restOfDayMs");
        QTest::addColumn<QStringList>("waiting"); // of yesterday, today, tomorrow
        const QStringList fromToday{"today", "tomorrow"};
        QTest::newRow("morning") << QDateTime(QDate(2026, 3, 1), QTime(10, 0))
                                 << qint64(14 * 3'600'000) << fromToday;
        QTest::newRow("last half second")
            << QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59, 500)) << qint64(500) << fromToday;
        QTest::newRow("clocks go forward")
            << QDateTime(QDate(2026, 3, 29), QTime(0, 0)) << qint64(23 * 3'600'000) << fromToday;
        QTest::newRow("clocks go back")
            << QDateTime(QDate(2026, 10, 25), QTime(0, 0)) << qint64(25 * 3'600'000) << fromToday;
    }
    void deliveryDays()
    {
        QFETCH(QDateTime, now);
        QFETCH(QStringList, waiting);
        QTEST(DeliveryRules::restOfDayMs(now), "restOfDayMs");
        QTemporaryDir dir;
        ReminderStore store(dir.filePath(u"reminders.json"_s));
        const QDate today = now.date();
        const auto reminder = [](const char *name, QDateTime fire) {
            PendingReminder made;
            made.request.identifier = QString::fromLatin1(name);
            made.fire = fire;
            return made;
        };
        const PendingReminder yesterday =
            reminder("yesterday", QDateTime(today.addDays(-1), QTime(23, 59)));
        const PendingReminder early = reminder("today", QDateTime(today, QTime(0, 1)));
        for (const PendingReminder &each :
             {yesterday, early, reminder("tomorrow", QDateTime(today.addDays(1), QTime(0, 0)))})
            QVERIFY(!store.put(each));
        QVERIFY(!DeliveryRules::shownToday(yesterday, now));
        QVERIFY(DeliveryRules::shownToday(early, now));
        QStringList found;
        for (const PendingReminder &reminder : DeliveryRules::waiting(store, now))
            found.append(reminder.request.identifier);
        found.sort();
        waiting.sort();
        QCOMPARE(found, waiting);
    }
};

QTEST_GUILESS_MAIN(TestReminderScheduler)
#include "tst_reminderscheduler.moc"
