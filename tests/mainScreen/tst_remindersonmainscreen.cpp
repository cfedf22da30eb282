// SPDX-License-Identifier: MIT
#include "RecordingNotificationCenter.h"
#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "core/DebugLog.h"
#include "mainScreen/ViewController.h"
#include "reminders/ReminderScheduler.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"

#include <QTest>
#include <memory>

using namespace SettingsKeys;

// The main screen asks for the reminders at its load and after a favorite
// is added, and answers for reminders shown while it is there.
class TestRemindersOnMainScreen : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    MemorySettingsStore m_settings;
    FixedClock m_clock{QDateTime(QDate(2026, 3, 1), QTime(10, 0))};
    RecordingNotificationCenter m_center;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<ReminderScheduler> m_scheduler;
    DebugLog::Sink m_previousSink;

private slots:
    void init()
    {
        m_previousSink = DebugLog::setSink([](const QString &) {});
        m_settings = MemorySettingsStore();
        m_center = RecordingNotificationCenter();
        m_settings.set(favorites, QList<QStringList>{{"Anna", "2 3 1985"}});
        m_session =
            std::make_unique<Session>(m_settings, m_clock, QStringList{"en-US"}, Appearance::Light);
        m_scheduler = std::make_unique<ReminderScheduler>(m_center, m_settings, m_clock,
                                                          m_session->favorites, m_session->strings);
        m_session->reminders = m_scheduler.get();
    }
    void cleanup() { DebugLog::setSink(m_previousSink); }

    void loadAndAddSchedule()
    {
        auto controller = std::make_unique<ViewController>(*m_session);
        controller->viewDidLoad();
        QCOMPARE(m_center.added.size(), 1);
        QCOMPARE(m_center.added[0].body, "Anna has a birthday today!");

        controller->pickDate(3, 3, 1990);
        controller->addFavorite("Bo");
        QCOMPARE(m_center.statusQueries, 2);
        QCOMPARE(m_center.added.size(), 3);
        QCOMPARE(m_center.added[2].identifier, "birthdayReminder2");
        QCOMPARE(m_center.added[2].body, "Bo has a birthday today!");

        // A favorite chosen in the list loads the screen without a check.
        m_settings.set(handOverPending, true);
        ViewController(*m_session).viewDidLoad();
        QCOMPARE(m_center.statusQueries, 2);
    }

    void theShownScreenAnswersBannerOnly()
    {
        QCOMPARE(m_center.delegate(), nullptr);
        auto first = std::make_unique<ViewController>(*m_session);
        first->viewDidLoad();
        QVERIFY(m_center.delegate());
        QCOMPARE(m_center.delegate()->willPresent({}),
                 PresentationOptions(PresentationOption::Banner));

        // A new main screen takes over; the old one going leaves it in place.
        auto second = std::make_unique<ViewController>(*m_session);
        second->viewDidLoad();
        NotificationCenterDelegate *answering = m_center.delegate();
        first.reset();
        QCOMPARE(m_center.delegate(), answering);
        second.reset();
        QCOMPARE(m_center.delegate(), nullptr);
    }
};

QTEST_MAIN(TestRemindersOnMainScreen)
#include "tst_remindersonmainscreen.moc"
