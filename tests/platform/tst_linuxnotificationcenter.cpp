#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "main/ReminderScheduler.h"
#include "platform/linux/CommandRunner.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "settings/MemorySettingsStore.h"
#include "settings/UiStrings.h"

#include <QDBusMessage>
#include <QFile>
#include <QLockFile>
#include <QMutex>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace {

QDateTime at(int month, int day, int hour, int minute, int second = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute, second));
}

NotificationRequest request(const QString &identifier, const QString &body, int month, int day)
{
    return {identifier, u"Birthday Reminder"_s, body, CalendarTrigger::at(at(month, day, 7, 30))};
}

// Records the commands; each ends only when the test says so.
class RecordingRunner final : public CommandRunner
{
public:
    QList<QStringList> commands; // program first
    QList<Handler> waiting;
    void run(const QString &program, const QStringList &arguments, Handler done) override
    {
        commands.append(QStringList{program} + arguments);
        waiting.append(std::move(done));
    }
    void finishNext(int exitCode, const QString &output = {}, const QString &errors = {})
    {
        waiting.takeFirst()({true, exitCode, output, errors});
    }
};

class Answer final : public NotificationCenterDelegate
{
public:
    PresentationOptions options;
    PresentationOptions willPresent(const NotificationRequest &) override { return options; }
};

} // namespace

// A notification service on the private bus, served from a thread of its own.
class FakeNotificationServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown
    {
        QString app, icon, summary, body;
        QVariantMap hints;
    };
    QList<Shown> shown() const
    {
        QMutexLocker locker(&m_mutex);
        return m_shown;
    }
    void clear()
    {
        QMutexLocker locker(&m_mutex);
        m_shown.clear();
    }

public slots:
    uint Notify(const QString &app, uint, const QString &icon, const QString &summary,
                const QString &body, const QStringList &, const QVariantMap &hints, int)
    {
        QMutexLocker locker(&m_mutex);
        m_shown.append({app, icon, summary, body, hints});
        return uint(m_shown.size());
    }
    QStringList GetCapabilities() { return {u"body"_s}; }
    QString GetServerInformation(QString &vendor, QString &version, QString &specVersion)
    {
        vendor = version = specVersion = u"test"_s;
        return u"fake"_s;
    }
    void CloseNotification(uint) {}

private:
    mutable QMutex m_mutex;
    QList<Shown> m_shown;
};

class TestLinuxNotificationCenter : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    QTemporaryDir m_busDir;
    QProcess m_daemon;
    QString m_address;
    QThread m_serverThread;
    FakeNotificationServer *m_server = new FakeNotificationServer;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReminderStore> m_store;

    static QDBusConnection client() { return QDBusConnection(u"tavlo"_s); }
    static QDBusConnection serverSide() { return QDBusConnection(u"server"_s); }
    static LinuxNotificationCenter::Options options(const QString &bus = u"tavlo"_s,
                                                    CommandRunner *timers = nullptr)
    {
        LinuxNotificationCenter::Options o;
        o.bus = QDBusConnection(bus);
        o.timers = timers;
        o.program = u"/opt/tavlo bin/tavlo"_s;
        o.iconPath = u"/icons/tavlo.svg"_s;
        return o;
    }
    static std::optional<NotificationError> add(NotificationCenter &c, const NotificationRequest &r)
    {
        std::optional<std::optional<NotificationError>> answer;
        c.add(r, [&](const std::optional<NotificationError> &e) { answer = e; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }))
            qFatal("no answer to add()");
        return *answer;
    }
    // What was sent before has been handled by the service.
    QList<FakeNotificationServer::Shown> shownSoFar()
    {
        const QDBusMessage call = QDBusMessage::createMethodCall(
            u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
            u"org.freedesktop.Notifications"_s, u"GetCapabilities"_s);
        client().call(call, QDBus::Block, 5000);
        return m_server->shown();
    }

private slots:
    void initTestCase()
    {
        QFile config(m_busDir.filePath(u"bus.conf"_s));
        QVERIFY(config.open(QIODevice::WriteOnly));
        // No <servicedir>: nothing installed on the machine starts on this bus.
        config.write(
            "<busconfig><type>session</type><listen>unix:tmpdir=" + m_busDir.path().toUtf8() +
            "</listen><policy context=\"default\"><allow send_destination=\"*\" "
            "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
            "</busconfig>");
        config.close();
        m_daemon.start(u"dbus-daemon"_s, {u"--config-file="_s + config.fileName(), u"--nofork"_s,
                                          u"--print-address"_s});
        QVERIFY2(m_daemon.waitForReadyRead(10000), "dbus-daemon did not start");
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        QVERIFY(QDBusConnection::connectToBus(m_address, u"tavlo"_s).isConnected());
        QVERIFY(QDBusConnection::connectToBus(m_address, u"server"_s).isConnected());
        m_server->moveToThread(&m_serverThread);
        m_serverThread.start();
        QVERIFY(serverSide().registerObject(u"/org/freedesktop/Notifications"_s, m_server,
                                            QDBusConnection::ExportAllSlots));
        QVERIFY(serverSide().registerService(u"org.freedesktop.Notifications"_s));
    }
    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(u"server"_s);
        QDBusConnection::disconnectFromBus(u"tavlo"_s);
        m_server->deleteLater(); // in its own thread, as that ends
        m_serverThread.quit();
        m_serverThread.wait();
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = std::make_unique<ReminderStore>(m_dir->filePath(u"tavlo/reminders.json"_s));
        m_server->clear();
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
            serverSide().unregisterService(u"org.freedesktop.Notifications"_s);
        const FixedClock clock(at(3, 1, 10, 0));
        LinuxNotificationCenter center(*m_store, clock, options(bus));
        std::optional<AuthorizationStatus> status;
        std::optional<bool> granted;
        center.getAuthorizationStatus([&](AuthorizationStatus s) { status = s; });
        center.requestAuthorization({}, [&](bool g, const auto &) { granted = g; });
        QTRY_VERIFY(status && granted);
        serverSide().registerService(u"org.freedesktop.Notifications"_s);
        QFETCH(bool, allowed);
        QCOMPARE(*status, allowed ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied);
        QCOMPARE(*granted, allowed);
    }

    void shownAtItsMomentOverTheBus_data()
    {
        QTest::addColumn<int>("answer"); // -1: no screen to ask
        QTest::addColumn<int>("shown");
        QTest::addColumn<bool>("transient");
        QTest::newRow("no screen: kept in the list") << -1 << 1 << false;
        QTest::newRow("main screen: banner only") << int(PresentationOption::Banner) << 1 << true;
        QTest::newRow("screen wants nothing shown") << 0 << 0 << false;
    }
    void shownAtItsMomentOverTheBus()
    {
        QFETCH(int, answer);
        FixedClock clock(at(3, 2, 7, 0));
        LinuxNotificationCenter center(*m_store, clock, options());
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
        const QList<FakeNotificationServer::Shown> shown = shownSoFar();
        QTEST(int(shown.size()), "shown");
        if (shown.isEmpty())
            return;
        QCOMPARE(shown[0].app, "Tavlo");
        QCOMPARE(shown[0].icon, "/icons/tavlo.svg");
        QCOMPARE(shown[0].summary, "Birthday Reminder");
        QCOMPARE(shown[0].body, "Anna has a birthday today!");
        QCOMPARE(shown[0].hints.value(u"suppress-sound"_s), true);
        QTEST(shown[0].hints.value(u"transient"_s).toBool(), "transient");
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
        QTRY_COMPARE(m_server->shown().size(), 1);
        QCOMPARE(shownSoFar().size(), 1);
        QCOMPARE(m_server->shown()[0].body, "again");
        QCOMPARE(reopened.pending().size(), 0);
    }

    void timersReplacedOneCommandAtATime()
    {
        const FixedClock clock(at(3, 20, 10, 0));
        RecordingRunner runner;
        LinuxNotificationCenter::Options o = options(u"none"_s, &runner);
        o.timerEnvironment = {u"XDG_DATA_HOME=/home/u/data"_s};
        LinuxNotificationCenter center(*m_store, clock, o);
        std::optional<NotificationError> answer{NotificationError{}};
        // The clocks go forward on the 29th: 7:30 there is 5:30 UTC.
        center.add(request(u"birthdayReminder1"_s, u"x"_s, 3, 29),
                   [&](const auto &e) { answer = e; });
        const QStringList stop{u"systemctl"_s, u"--user"_s, u"stop"_s,
                               u"tavlo-birthdayReminder1.timer"_s,
                               u"tavlo-birthdayReminder1.service"_s};
        QCOMPARE(runner.commands, QList<QStringList>{stop}); // nothing else until it ends
        runner.finishNext(5, {}, u"Unit not loaded."_s);
        QCOMPARE(runner.commands.value(1),
                 (QStringList{u"systemd-run"_s, u"--user"_s, u"--unit=tavlo-birthdayReminder1"_s,
                              u"--description=Tavlo birthday reminder birthdayReminder1"_s,
                              u"--collect"_s, u"--on-calendar=2026-03-29 05:30:00 UTC"_s,
                              u"--timer-property=AccuracySec=1s"_s,
                              u"--setenv=XDG_DATA_HOME=/home/u/data"_s, u"--"_s,
                              u"/opt/tavlo bin/tavlo"_s, u"deliver-reminder"_s,
                              u"birthdayReminder1"_s}));
        runner.finishNext(1, {}, u"Unit tavlo-birthdayReminder1.timer already exists."_s);
        QVERIFY(answer);
        QCOMPARE(answer->printed, "systemd-run exited with status 1");
        QCOMPARE(answer->description, "Unit tavlo-birthdayReminder1.timer already exists.");
        QCOMPARE(m_store->pending().size(), 1); // the running app still shows it

        // At the next start, only the timer the session lost is made again.
        QVERIFY(!m_store->put({request(u"birthdayReminder2"_s, u"y"_s, 3, 30), at(3, 30, 7, 30)}));
        LinuxNotificationCenter restarted(*m_store, clock, o);
        restarted.start();
        QCOMPARE(runner.commands.value(2).mid(0, 3),
                 (QStringList{"systemctl", "--user", "is-active"}));
        runner.finishNext(3, u"active\ninactive\n"_s);
        QCOMPARE(runner.commands.value(3).value(3), "tavlo-birthdayReminder2.timer");
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
        const QList<FakeNotificationServer::Shown> shown = shownSoFar();
        QTEST(int(shown.size()), "shown");
        if (!shown.isEmpty())
            QCOMPARE(shown[0].hints.value(u"transient"_s), false);
        QTEST(int(m_store->pending().size()), "pending");
    }

    void aTypedNameIsNeverRunAndArrivesAsTyped()
    {
        const QString trap = m_dir->filePath(u"x"_s);
        const QString name = u"$(touch %1); `touch %1` '\"; rm -rf ~"_s.arg(trap);
        MemorySettingsStore settings;
        settings.set(SettingsKeys::favorites, QList<QStringList>{{name, u"2 3 1990"_s}});
        FavoritesStore favorites(settings);
        favorites.load();
        FixedClock clock(at(3, 1, 10, 0));
        RecordingRunner runner;
        LinuxNotificationCenter center(*m_store, clock, options(u"tavlo"_s, &runner));
        const UiStrings strings;
        ReminderScheduler(center, settings, clock, favorites, strings)
            .checkNotificationPermission();
        QTRY_COMPARE(runner.commands.size(), 1);
        runner.finishNext(0);
        runner.finishNext(0);
        for (const QStringList &command : runner.commands)
            QVERIFY(!command.join(u' ').contains(u"touch"));
        clock.set(at(3, 2, 7, 30));
        center.deliverDue();
        QTRY_COMPARE(m_server->shown().size(), 1);
        QCOMPARE(m_server->shown()[0].body, name + u" has a birthday today!"_s);
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

    void theTimersCommandShowsTheReminder()
    {
        if (QTime::currentTime() < QTime(0, 0, 5)) // shown only on its own day
            QTest::qWait(6000);
        ReminderStore store(m_dir->filePath(u"data/tavlo/reminders.json"_s));
        const QDateTime fire = QDateTime::currentDateTime().addSecs(-1);
        QVERIFY(!store.put(
            {{u"r3"_s, u"Birthday Reminder"_s, u"Bo"_s, CalendarTrigger::at(fire)}, fire}));
        QProcess tavlo;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_address);
        env.insert(u"XDG_DATA_HOME"_s, m_dir->filePath(u"data"_s));
        tavlo.setProcessEnvironment(env);
        tavlo.start(QStringLiteral(TAVLO_EXECUTABLE), {u"deliver-reminder"_s, u"r3"_s});
        QVERIFY(tavlo.waitForFinished(30000));
        QCOMPARE(tavlo.readAllStandardError(), QByteArray());
        QCOMPARE(tavlo.exitCode(), 0);
        QTRY_COMPARE(m_server->shown().size(), 1);
        QCOMPARE(m_server->shown()[0].body, "Bo");
        QVERIFY(QFile::exists(m_server->shown()[0].icon));
        QCOMPARE(store.pending().size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLinuxNotificationCenter)
#include "tst_linuxnotificationcenter.moc"
