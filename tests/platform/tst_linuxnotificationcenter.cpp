// SPDX-License-Identifier: MIT
#include "NotificationServer.h"
#include "RecordingRunner.h"
#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/SystemdTimers.h"
#include "reminders/ReminderScheduler.h"
#include "settings/MemorySettingsStore.h"
#include "texts/UiStrings.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// The notification server is a Python process on a private bus: on a busy
// machine its answers can take seconds. Waits end as soon as they come.
constexpr int busPatience = 20000;

QDateTime at(int month, int day, int hour, int minute, int second = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute, second));
}

NotificationRequest request(const QString &identifier, const QString &body, int month, int day)
{
    return {identifier, u"Birthday Reminder"_s, body, CalendarTrigger::at(at(month, day, 7, 30))};
}

class Answer final : public NotificationCenterDelegate
{
public:
    PresentationOptions options;
    PresentationOptions willPresent(const NotificationRequest &) override { return options; }
};

} // namespace

// What a person meets: Tavlo against a real notification server on a
// private bus.
class TestLinuxNotificationCenter : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    NotificationServer m_server;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReminderStore> m_store;

    static QDBusConnection client() { return QDBusConnection(u"tavlo"_s); }
    static LinuxNotificationCenter::Options options(const QString &bus = u"tavlo"_s)
    {
        LinuxNotificationCenter::Options o;
        o.bus = QDBusConnection(bus);
        o.iconPath = u"/icons/tavlo.svg"_s;
        return o;
    }
    static std::optional<NotificationError> add(NotificationCenter &c, const NotificationRequest &r)
    {
        std::optional<std::optional<NotificationError>> answer;
        c.add(r, [&](const std::optional<NotificationError> &e) { answer = e; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }, busPatience))
            qFatal("no answer to add()");
        return *answer;
    }
    // What the server has received once what was sent before has reached it.
    QList<NotificationServer::Shown> shownSoFar()
    {
        client().call(QDBusMessage::createMethodCall(
                          u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                          u"org.freedesktop.Notifications"_s, u"GetCapabilities"_s),
                      QDBus::Block, 5000);
        return m_server.shown();
    }
    // A tavlo with the app's files in the test's folder, on the private bus.
    QProcessEnvironment tavloEnvironment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_server.address());
        env.insert(u"XDG_DATA_HOME"_s, m_dir->filePath(u"data"_s));
        env.insert(u"XDG_CONFIG_HOME"_s, m_dir->filePath(u"config"_s));
        return env;
    }
    static void checkStays(const NotificationServer::Shown &shown)
    {
        QCOMPARE(shown.hints.value(u"desktop-entry"_s), u"io.github.tavlo.Tavlo"_s);
        QVERIFY(!shown.hints.contains(u"transient"_s));
        QVERIFY(!shown.hints.contains(u"suppress-sound"_s));
        QCOMPARE(shown.actions.value(0), u"default"_s);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_server.startBus(u"tavlo"_s));
        QVERIFY2(m_server.startServer(), "python3-dbusmock's notification server did not start");
    }
    void cleanupTestCase() { m_server.stop(); }
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<ReminderStore>(m_dir->filePath(u"tavlo/reminders.json"_s));
        m_server.clear();
    }

    void allowedWhenAServiceAnswers_data()
    {
        QTest::addColumn<QString>("bus");
        QTest::addColumn<bool>("serviceThere");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("a service answers") << "tavlo" << true << true;
        QTest::newRow("no service on the bus") << "tavlo" << false << false;
        QTest::newRow("no session bus") << "none" << true << false;
    }
    void allowedWhenAServiceAnswers()
    {
        QFETCH(QString, bus);
        QFETCH(bool, serviceThere);
        if (!serviceThere)
            m_server.stopServer();
        const FixedClock clock(at(3, 1, 10, 0));
        LinuxNotificationCenter center(*m_store, clock, options(bus));
        std::optional<AuthorizationStatus> status;
        std::optional<bool> granted;
        center.getAuthorizationStatus([&](AuthorizationStatus s) { status = s; });
        center.requestAuthorization({}, [&](bool g, const auto &) { granted = g; });
        QTRY_VERIFY_WITH_TIMEOUT(status && granted, busPatience);
        if (!serviceThere)
            QVERIFY(m_server.startServer());
        QFETCH(bool, allowed);
        QCOMPARE(*status, allowed ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied);
        QCOMPARE(*granted, allowed);
    }

    // The app open: in front, the screen's answer (a banner that does not
    // stay); otherwise an ordinary notification that stays, with sound.
    void shownAtItsMomentWhileTheAppRuns_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<int>("answer"); // -1: no main screen to ask
        QTest::addColumn<int>("shown");
        QTest::addColumn<bool>("stays");
        QTest::newRow("active, main screen: banner")
            << true << int(PresentationOption::Banner) << 1 << false;
        QTest::newRow("active, another screen: banner") << true << -1 << 1 << false;
        QTest::newRow("active, screen wants nothing") << true << 0 << 0 << false;
        QTest::newRow("not active: stays") << false << int(PresentationOption::Banner) << 1 << true;
        QTest::newRow("not active, another screen: stays") << false << -1 << 1 << true;
    }
    void shownAtItsMomentWhileTheAppRuns()
    {
        QFETCH(bool, active);
        QFETCH(int, answer);
        FixedClock clock(at(3, 2, 7, 0));
        LinuxNotificationCenter::Options o = options();
        o.inFront = [active] { return active; };
        LinuxNotificationCenter center(*m_store, clock, o);
        Answer screen;
        screen.options = PresentationOptions::fromInt(std::max(answer, 0));
        center.setDelegate(answer >= 0 ? &screen : nullptr);
        QVERIFY(
            !add(center, request(u"birthdayReminder1"_s, u"Anna has a birthday today!"_s, 3, 2)));
        center.deliverDue();
        QCOMPARE(m_store->pending().size(), 1);
        clock.set(at(3, 2, 7, 30));
        center.deliverDue();
        QCOMPARE(m_store->pending().size(), 0);
        const QList<NotificationServer::Shown> shown = shownSoFar();
        QTEST(int(shown.size()), "shown");
        if (shown.isEmpty())
            return;
        qInfo() << "received:" << shown[0].hints;
        QCOMPARE(shown[0].app, "Tavlo");
        QCOMPARE(shown[0].icon, "/icons/tavlo.svg");
        QCOMPARE(shown[0].summary, "Birthday Reminder");
        QCOMPARE(shown[0].body, "Anna has a birthday today!");
        QFETCH(bool, stays);
        if (stays) {
            checkStays(shown[0]);
        } else {
            QCOMPARE(shown[0].hints.value(u"desktop-entry"_s), u"io.github.tavlo.Tavlo"_s);
            QCOMPARE(shown[0].hints.value(u"transient"_s), true);
            QCOMPARE(shown[0].hints.value(u"suppress-sound"_s), true);
        }

        // A tap on it opens Tavlo; a tap on another app's notification does not.
        int opened = 0;
        center.setOnActivated([&] { ++opened; });
        m_server.invoke(shown[0].id + 100, u"default"_s);
        m_server.invoke(shown[0].id, u"default"_s);
        QTRY_COMPARE_WITH_TIMEOUT(opened, 1, busPatience);
        QTest::qWait(100);
        QCOMPARE(opened, 1);
    }

    void sameIdentifierReplacesAndPendingOutlivesTheApp()
    {
        {
            const FixedClock clock(at(3, 1, 10, 0));
            LinuxNotificationCenter center(*m_store, clock, options());
            QVERIFY(!add(center, request(u"birthdayReminder1"_s, u"first"_s, 3, 5)));
            QVERIFY(!add(center, request(u"birthdayReminder2"_s, u"second"_s, 3, 6)));
            QVERIFY(!add(center, request(u"birthdayReminder1"_s, u"again"_s, 3, 7)));
        }
        ReminderStore reopened(m_store->filePath());
        const QList<PendingReminder> pending = reopened.pending();
        QCOMPARE(pending.size(), 2);
        QCOMPARE(pending[0].fire, at(3, 6, 7, 30));
        QCOMPARE(pending[1].request, request(u"birthdayReminder1"_s, u"again"_s, 3, 7));
        QCOMPARE(pending[1].fire, at(3, 7, 7, 30));

        // Started at nine on the 7th: that morning's is shown late, the 6th's dropped.
        const FixedClock later(at(3, 7, 9, 0));
        LinuxNotificationCenter restarted(reopened, later, options());
        restarted.start();
        QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, busPatience);
        QCOMPARE(shownSoFar().size(), 1);
        QCOMPARE(m_server.shown()[0].body, "again");
        QCOMPARE(reopened.pending().size(), 0);
    }

    void timerDelivery_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<bool>("appRunning");
        QTest::addColumn<int>("shown");
        QTest::addColumn<int>("pending");
        const QString id = u"birthdayReminder1"_s;
        QTest::newRow("due") << at(3, 2, 7, 30) << id << false << 1 << 0;
        QTest::newRow("a moment early") << at(3, 2, 7, 29, 30) << id << false << 1 << 0;
        QTest::newRow("not yet due") << at(3, 2, 7, 0) << id << false << 0 << 1;
        QTest::newRow("missed on an earlier day") << at(3, 3, 7, 30) << id << false << 0 << 0;
        QTest::newRow("not pending")
            << at(3, 2, 7, 30) << u"birthdayReminder9"_s << false << 0 << 1;
        QTest::newRow("the running app shows it") << at(3, 2, 7, 30) << id << true << 0 << 1;
    }
    void timerDelivery()
    {
        QFETCH(QDateTime, now);
        QFETCH(QString, identifier);
        QFETCH(bool, appRunning);
        QVERIFY(!m_store->put({request(u"birthdayReminder1"_s, u"Anna"_s, 3, 2), at(3, 2, 7, 30)}));
        QLockFile app(m_store->runningLockPath()); // as start() takes it
        if (appRunning)
            QVERIFY(app.tryLock(0));
        const FixedClock clock(now);
        DBusNotifier notifier(client(), {});
        QCOMPARE(DeliveryCommand::deliver(identifier, *m_store, clock, notifier), 0);
        const QList<NotificationServer::Shown> shown = shownSoFar();
        QTEST(int(shown.size()), "shown");
        if (!shown.isEmpty())
            checkStays(shown[0]);
        QTEST(int(m_store->pending().size()), "pending");
    }

    void aTypedNameIsNeverRunAndArrivesAsTyped()
    {
        const QString trap = m_dir->filePath(u"x"_s);
        const QString name = u"$(touch %1); `touch %1` '\"; rm -rf ~ %%n"_s.arg(trap);
        MemorySettingsStore settings;
        settings.set(SettingsKeys::favorites, QList<QStringList>{{name, u"2 3 1990"_s}});
        FavoritesStore favorites(settings);
        favorites.load();
        FixedClock clock(at(3, 1, 10, 0));
        RecordingRunner runner;
        SystemdTimers timers(m_dir->filePath(u"units"_s), u"/usr/bin/tavlo"_s, {}, &runner);
        LinuxNotificationCenter::Options o = options();
        o.wakeups = &timers;
        LinuxNotificationCenter center(*m_store, clock, o);
        const UiStrings strings;
        bool done = false;
        ReminderScheduler(center, settings, clock, favorites, strings)
            .checkNotificationPermission([&](const auto &, const auto &) { done = true; });
        QTRY_VERIFY_WITH_TIMEOUT(done, busPatience);
        runner.finishAll();
        QCOMPARE(runner.commands.size(), 2);
        for (const QStringList &command : runner.commands)
            QVERIFY(!command.join(u' ').contains(u"touch"));
        for (const QString &unit : QDir(m_dir->filePath(u"units"_s)).entryList(QDir::Files)) {
            QFile file(QDir(m_dir->filePath(u"units"_s)).filePath(unit));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY(!file.readAll().contains("touch"));
            QVERIFY(!unit.contains(u"touch"));
        }
        clock.set(at(3, 2, 7, 30));
        center.deliverDue();
        QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, busPatience);
        QCOMPARE(m_server.shown()[0].body, name + u" has a birthday today!"_s);
        QVERIFY(!QFile::exists(trap));
    }

    void anUnreadableFileIsKeptAside()
    {
        const QByteArray broken = "{\"reminders\": [{\"identifier\": 1}]}";
        QDir().mkpath(QFileInfo(m_store->filePath()).absolutePath());
        QFile file(m_store->filePath());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(broken) == broken.size());
        file.close();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be read.*kept as"_s));
        QCOMPARE(m_store->pending().size(), 0);
        QFile kept(m_store->filePath() + u".unreadable"_s);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), broken);
        QVERIFY(!m_store->put({request(u"birthdayReminder1"_s, u"a"_s, 3, 5), at(3, 5, 7, 30)}));
        QCOMPARE(m_store->pending().size(), 1);
    }

    // The app closed: the timer's own ExecStart line, as systemd runs it.
    void theTimersExecStartShowsTheReminder()
    {
        if (QTime::currentTime() < QTime(0, 0, 5)) // shown only on its own day
            QTest::qWait(6000);
        const QProcessEnvironment env = tavloEnvironment();
        ReminderStore store(m_dir->filePath(u"data/tavlo/reminders.json"_s));
        const QDateTime fire = QDateTime::currentDateTime().addSecs(-1);
        const PendingReminder reminder{{u"birthdayReminder3"_s, u"Birthday Reminder"_s,
                                        u"Bo has a birthday today!"_s, CalendarTrigger::at(fire)},
                                       fire};
        QVERIFY(!store.put(reminder));
        SystemdTimers timers(m_dir->filePath(u"config/systemd/user"_s), TAVLO_EXECUTABLE,
                             {u"XDG_DATA_HOME="_s + env.value(u"XDG_DATA_HOME"_s)}, nullptr);
        QVERIFY(!timers.apply({reminder}));

        QProcess tavlo;
        QProcessEnvironment serviceEnv = env;
        for (const QByteArray &line : timers.serviceUnit(reminder).split('\n')) {
            if (line.startsWith("Environment=")) {
                const QString pair =
                    QProcess::splitCommand(QString::fromUtf8(line.mid(12))).value(0);
                serviceEnv.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
            }
            if (line.startsWith("ExecStart=")) {
                const QStringList command = QProcess::splitCommand(QString::fromUtf8(line.mid(10)));
                tavlo.setProgram(command.value(0));
                tavlo.setArguments(command.mid(1));
            }
        }
        tavlo.setProcessEnvironment(serviceEnv);
        tavlo.start();
        QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, 20000);
        const NotificationServer::Shown shown = m_server.shown()[0];
        qInfo() << "received:" << shown.hints;
        QCOMPARE(shown.body, "Bo has a birthday today!");
        checkStays(shown);
        QVERIFY(QFile::exists(shown.icon));
        QCOMPARE(store.pending().size(), 0);
        // It waits to open Tavlo on a tap, and ends when the notification goes.
        QVERIFY(!tavlo.waitForFinished(300));
        m_server.close(shown.id);
        QVERIFY(tavlo.waitForFinished(10000));
        QCOMPARE(tavlo.readAllStandardError(), QByteArray());
        QCOMPARE(tavlo.exitCode(), 0);
    }

    // Without systemd: the background Tavlo the autostart entry starts
    // sleeps until the reminder is due, delivers it the same way, and ends
    // when nothing is left, taking the entry with it.
    void theBackgroundTavloDeliversAndEnds()
    {
        if (QTime::currentTime() > QTime(23, 59, 40))
            QTest::qWait(25000);
        const QProcessEnvironment env = tavloEnvironment();
        ReminderStore store(m_dir->filePath(u"data/tavlo/reminders.json"_s));
        const QDateTime fire = QDateTime::currentDateTime().addSecs(2);
        QVERIFY(!store.put({{u"birthdayReminder1"_s, u"Birthday Reminder"_s,
                             u"Anna has a birthday today!"_s, CalendarTrigger::at(fire)},
                            fire}));
        const QString entry =
            m_dir->filePath(u"config/autostart/io.github.tavlo.Tavlo-reminders.desktop"_s);
        QDir().mkpath(QFileInfo(entry).absolutePath());
        QFile file(entry);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\n");
        file.close();

        QProcess tavlo;
        tavlo.setProcessEnvironment(env);
        tavlo.start(QStringLiteral(TAVLO_EXECUTABLE), {u"deliver-reminders"_s});
        QTest::qWait(500);
        QCOMPARE(m_server.shown().size(), 0); // not yet due
        QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, 20000);
        const NotificationServer::Shown shown = m_server.shown()[0];
        qInfo() << "received:" << shown.hints;
        QCOMPARE(shown.body, "Anna has a birthday today!");
        checkStays(shown);
        m_server.close(shown.id);
        QVERIFY(tavlo.waitForFinished(20000));
        QCOMPARE(tavlo.exitCode(), 0);
        QVERIFY(!QFile::exists(entry));
        QCOMPARE(store.pending().size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLinuxNotificationCenter)
#include "tst_linuxnotificationcenter.moc"
