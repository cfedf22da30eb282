// SPDX-License-Identifier: MIT
#include "NotificationServer.h"
#include "RecordingRunner.h"
#include "TavloProcess.h"
#include "TestFiles.h"
#include "TimeZoneScope.h"
#include "core/Clock.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/LinkHandlers.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/SystemdTimers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// Texts of a reminder with markup in them, as a vCard may bring in a name.
const QString markupTitle = u"Reminder <b>&</b>"_s;
const QString markupName = u"<a href=\"https://example.invalid/\">x</a> & "
                           "<img src=\"file:///etc/passwd\"/> has a birthday today!"_s;

// The notification server is a Python process on a private bus: on a busy
// machine its answers can take seconds. Waits end as soon as they come.
constexpr int busPatience = 20000;

QDateTime at(int month, int day, int hour, int minute, int second = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute, second));
}

// Due at 7:30 on `day` March 2026, about the favorite "id of <body>".
PendingReminder reminder(const QString &identifier, int day, const QString &body = u"Anna"_s)
{
    const QDateTime fire = at(3, day, 7, 30);
    return {
        {identifier, u"Birthday Reminder"_s, body, CalendarTrigger::at(fire), u"id of "_s + body},
        fire};
}

class Answer final : public NotificationCenterDelegate
{
public:
    PresentationOptions options;
    PresentationOptions willPresent(const NotificationRequest &) override { return options; }
};

// Every file and link under `folder` with its bytes or its link target.
QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        QFile file(info.filePath());
        files.insert(QDir(folder).relativeFilePath(info.filePath()),
                     info.isSymLink() ? info.symLinkTarget().toUtf8()
                                      : (file.open(QIODevice::ReadOnly) ? file.readAll() : "?"));
    }
    return files;
}

QStringList systemctl(const QStringList &arguments)
{
    return QStringList{u"systemctl"_s, u"--user"_s} + arguments;
}

} // namespace

// What a person meets: Tavlo against a real notification server on a
// private bus; and the wake-ups with the app closed: systemd user timers, or
// the autostart entry where there is no systemd.
class TestLinuxNotificationCenter : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    NotificationServer m_server;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<ReminderStore> m_store;
    RecordingRunner m_runner;

    static LinuxNotificationCenter::Options options(const QString &bus = u"tavlo"_s)
    {
        LinuxNotificationCenter::Options o;
        o.bus = QDBusConnection(bus);
        o.iconPath = u"/icons/tavlo.svg"_s;
        return o;
    }
    static std::optional<NotificationError> add(NotificationCenter &c, const PendingReminder &r)
    {
        std::optional<std::optional<NotificationError>> answer;
        c.add(r.request, [&](const std::optional<NotificationError> &e) { answer = e; });
        if (!QTest::qWaitFor([&] { return answer.has_value(); }, busPatience))
            qFatal("no answer to add()");
        return *answer;
    }
    // What the server has received once what was sent before has reached it.
    QList<NotificationServer::Shown> shownSoFar()
    {
        QDBusConnection(u"tavlo"_s)
            .call(QDBusMessage::createMethodCall(
                      u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                      u"org.freedesktop.Notifications"_s, u"GetCapabilities"_s),
                  QDBus::Block, 5000);
        return m_server.shown();
    }
    // A notification that stays, with sound, or a banner that does not.
    static void checkHints(const NotificationServer::Shown &shown, bool stays = true)
    {
        QCOMPARE(shown.hints.value(u"desktop-entry"_s), u"io.github.tavlo.Tavlo"_s);
        QCOMPARE(shown.hints.value(u"transient"_s).toBool(), !stays);
        QCOMPARE(shown.hints.value(u"suppress-sound"_s).toBool(), !stays);
        QCOMPARE(shown.actions.value(0), u"default"_s);
    }
    QString units() const { return m_dir->filePath(u"systemd/user"_s); }
    // What systemd's own reading of unit files complains about, and its
    // exit status.
    std::pair<QByteArray, int> analyze(const QStringList &files) const
    {
        QProcess verify;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_RUNTIME_DIR"_s, m_dir->path()); // a user manager's paths, not its process
        verify.setProcessEnvironment(env);
        verify.start(u"systemd-analyze"_s,
                     QStringList{u"--user"_s, u"--man=no"_s, u"verify"_s} + files);
        if (!verify.waitForFinished(60000))
            qFatal("systemd-analyze did not finish");
        return {verify.readAllStandardError(), verify.exitCode()};
    }
    void verifyUnits(const QStringList &files) const
    {
        const auto [complaints, status] = analyze(files);
        QCOMPARE(complaints, QByteArray());
        QCOMPARE(status, 0);
    }
    static void validateDesktopEntry(const QString &path)
    {
        QProcess validate;
        validate.start(u"desktop-file-validate"_s, {path});
        QVERIFY(validate.waitForFinished(30000));
        QCOMPARE(validate.readAllStandardOutput(), QByteArray());
    }
    // No control character but the line ends.
    static bool linesIntact(const QByteArray &text)
    {
        return std::none_of(text.begin(), text.end(),
                            [](char c) { return (uchar(c) < 0x20 && c != '\n') || c == 0x7f; });
    }
    SystemdTimers timers(CommandRunner *manager, const QString &program = TAVLO_EXECUTABLE)
    {
        return SystemdTimers(units(), program, {u"XDG_DATA_HOME=/home/u/data"_s}, manager);
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
        m_runner = RecordingRunner();
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
        QTest::addColumn<int>("expected");
        QTest::newRow("active, main screen: banner")
            << true << int(PresentationOption::Banner) << 1;
        QTest::newRow("active, another screen: banner") << true << -1 << 1;
        QTest::newRow("active, screen wants nothing") << true << 0 << 0;
        QTest::newRow("not active: stays") << false << int(PresentationOption::Banner) << 1;
        QTest::newRow("not active, another screen: stays") << false << -1 << 1;
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
        // A typed name arrives as typed, never run by a shell.
        const QString body = u"$(touch x); `touch x` '\"; %n has a birthday today!"_s;
        QVERIFY(!add(center, reminder(u"birthdayReminder1"_s, 2, body)));
        center.deliverDue();
        QCOMPARE(m_store->pending().size(), 1);
        clock.set(at(3, 2, 7, 30));
        center.deliverDue();
        QCOMPARE(m_store->pending().size(), 0);
        QFETCH(int, expected);
        QTRY_COMPARE_WITH_TIMEOUT(int(m_server.shown().size()), expected, busPatience);
        QCOMPARE(int(shownSoFar().size()), expected);
        const QList<NotificationServer::Shown> shown = m_server.shown();
        if (shown.isEmpty())
            return;
        QCOMPARE((QStringList{shown[0].app, shown[0].icon, shown[0].summary, shown[0].body}),
                 (QStringList{"Tavlo", "/icons/tavlo.svg", "Birthday Reminder",
                              body.toHtmlEscaped().replace(u"&quot;"_s, u"\""_s)}));
        checkHints(shown[0], !active);

        // A tap on it opens Tavlo on its favorite; a tap on another app's
        // notification does not.
        QStringList opened;
        center.setOnActivated([&](const QString &favoriteId) { opened.append(favoriteId); });
        QTest::qWait(50); // lets the centre take in the id the server gave
        m_server.invoke(shown[0].id + 100, u"default"_s);
        m_server.invoke(shown[0].id, u"default"_s);
        QTRY_COMPARE_WITH_TIMEOUT(opened.size(), 1, busPatience);
        QTest::qWait(100);
        QCOMPARE(opened, QStringList{u"id of "_s + body});
    }

    // A name with markup in it is shown as typed: escaped for a server that
    // reads the texts as markup, as it is for one that does not; whether the
    // running app shows it or a timer does.
    void markupInANameStaysText_data()
    {
        QTest::addColumn<QString>("capabilities");
        QTest::addColumn<bool>("byTimer");
        QTest::addColumn<QString>("summary");
        QTest::addColumn<QString>("body");
        const QString markupSummary = u"Reminder &lt;b&gt;&amp;&lt;/b&gt;"_s;
        const QString markupBody =
            u"&lt;a href=\"https://example.invalid/\"&gt;x&lt;/a&gt; &amp; "
            "&lt;img src=\"file:///etc/passwd\"/&gt; has a birthday today!"_s;
        QTest::newRow("markup server, app running")
            << u"body body-markup"_s << false << markupSummary << markupBody;
        QTest::newRow("markup server, timer")
            << u"body body-markup"_s << true << markupSummary << markupBody;
        QTest::newRow("plain server, app running")
            << u"body"_s << false << markupTitle << markupName;
        QTest::newRow("plain server, timer") << u"body"_s << true << markupTitle << markupName;
    }
    void markupInANameStaysText()
    {
        QFETCH(QString, capabilities);
        QFETCH(bool, byTimer);
        m_server.stopServer();
        QVERIFY(m_server.startServer(capabilities));
        const QDateTime fire = at(3, 2, 7, 30);
        const PendingReminder due{
            {u"birthdayReminder1"_s, markupTitle, markupName, CalendarTrigger::at(fire), {}}, fire};
        FixedClock clock(fire.addSecs(-600));
        if (byTimer) {
            clock.set(fire);
            QVERIFY(!m_store->put(due));
            DBusNotifier notifier(QDBusConnection(u"tavlo"_s), {});
            QCOMPARE(DeliveryCommand::deliver(due.request.identifier, *m_store, clock, notifier),
                     0);
        } else {
            LinuxNotificationCenter center(*m_store, clock, options());
            QVERIFY(!add(center, due));
            clock.set(fire);
            center.deliverDue();
            QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, busPatience);
        }
        const QList<NotificationServer::Shown> shown = shownSoFar();
        m_server.stopServer();
        QVERIFY(m_server.startServer());
        QCOMPARE(shown.size(), 1);
        QTEST(shown[0].summary, "summary");
        QTEST(shown[0].body, "body");
    }

    void sameIdentifierReplacesAndPendingOutlivesTheApp()
    {
        {
            const FixedClock clock(at(3, 1, 10, 0));
            SystemdTimers wakeups = timers(&m_runner);
            LinuxNotificationCenter::Options o = options();
            o.wakeups = &wakeups;
            LinuxNotificationCenter center(*m_store, clock, o);
            QVERIFY(!add(center, reminder(u"birthdayReminder1"_s, 5, u"first"_s)));
            QVERIFY(!add(center, reminder(u"birthdayReminder2"_s, 6, u"second"_s)));
            QVERIFY(!add(center, reminder(u"birthdayReminder1"_s, 7, u"again"_s)));
            m_runner.finishAll();
            QVERIFY(m_runner.commands.contains(
                systemctl({u"restart"_s, u"tavlo-birthdayReminder1.timer"_s})));
        }
        ReminderStore reopened(m_store->filePath());
        QCOMPARE(reopened.pending(),
                 (QList<PendingReminder>{reminder(u"birthdayReminder2"_s, 6, u"second"_s),
                                         reminder(u"birthdayReminder1"_s, 7, u"again"_s)}));

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
        QVERIFY(!m_store->put(reminder(u"birthdayReminder1"_s, 2)));
        QLockFile app(m_store->runningLockPath()); // as start() takes it
        if (appRunning)
            QVERIFY(app.tryLock(0));
        const FixedClock clock(now);
        DBusNotifier notifier(QDBusConnection(u"tavlo"_s), {});
        QCOMPARE(DeliveryCommand::deliver(identifier, *m_store, clock, notifier), 0);
        const QList<NotificationServer::Shown> shown = shownSoFar();
        QTEST(int(shown.size()), "shown");
        if (!shown.isEmpty())
            checkHints(shown[0]);
        QTEST(int(m_store->pending().size()), "pending");
    }

    void anUnreadableFileIsKeptAside()
    {
        const QByteArray broken = "{\"reminders\": [{\"identifier\": 1}]}";
        writeFile(m_store->filePath(), broken);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"cannot be read.*kept as"_s));
        QCOMPARE(m_store->pending().size(), 0);
        QCOMPARE(contentsOf(m_store->filePath() + u".unreadable"_s), broken);
        QVERIFY(!m_store->put(reminder(u"birthdayReminder1"_s, 5)));
        QCOMPARE(m_store->pending().size(), 1);
    }

    // The app closed: the timer's own ExecStart line, as systemd runs it;
    // or, without systemd, the background Tavlo the autostart entry starts,
    // which sleeps until the reminder is due and ends when nothing is left,
    // taking the entry with it. Either waits to open Tavlo on a tap, and ends
    // when the notification goes.
    void theAppClosedShowsTheReminder_data()
    {
        QTest::addColumn<bool>("systemd");
        QTest::newRow("systemd timer") << true;
        QTest::newRow("autostart entry") << false;
    }
    void theAppClosedShowsTheReminder()
    {
        QFETCH(bool, systemd);
        if (QTime::currentTime() < QTime(0, 0, 5) || QTime::currentTime() > QTime(23, 59, 40))
            QTest::qWait(25000); // shown only on its own day
        const QDateTime fire = QDateTime::currentDateTime().addSecs(systemd ? -1 : 2);
        const PendingReminder due{{u"birthdayReminder1"_s,
                                   u"Birthday Reminder"_s,
                                   u"Bo has a birthday today!"_s,
                                   CalendarTrigger::at(fire),
                                   {}},
                                  fire};
        m_store = std::make_unique<ReminderStore>(m_dir->filePath(u"data/tavlo/reminders.json"_s));
        QVERIFY(!m_store->put(due));
        QProcessEnvironment env =
            tavloEnvironment(m_dir->filePath(u"config"_s), {}, m_server.address());
        const QString data = u"XDG_DATA_HOME="_s + m_dir->filePath(u"data"_s);
        const QString entry =
            m_dir->filePath(u"config/autostart/io.github.tavlo.Tavlo-reminders.desktop"_s);
        QProcess tavlo;
        tavlo.setProgram(QStringLiteral(TAVLO_EXECUTABLE));
        tavlo.setArguments({u"deliver-reminders"_s});
        if (systemd) {
            SystemdTimers timers(m_dir->filePath(u"config/systemd/user"_s), TAVLO_EXECUTABLE,
                                 {data}, nullptr);
            QVERIFY(!timers.apply({due}));
            for (const QByteArray &line : timers.serviceUnit(due).split('\n')) {
                const QString key = QString::fromUtf8(line.left(line.indexOf('=') + 1));
                const QStringList words =
                    QProcess::splitCommand(QString::fromUtf8(line.mid(key.size())));
                if (key == u"Environment=")
                    env.insert(words[0].section(u'=', 0, 0), words[0].section(u'=', 1));
                if (key == u"ExecStart=") {
                    tavlo.setProgram(words.value(0));
                    tavlo.setArguments(words.mid(1));
                }
            }
        } else {
            env.insert(data.section(u'=', 0, 0), data.section(u'=', 1));
            writeFile(entry, "[Desktop Entry]\n");
        }
        tavlo.setProcessEnvironment(env);
        tavlo.start();
        if (!systemd) {
            QTest::qWait(500);
            QCOMPARE(m_server.shown().size(), 0); // not yet due
        }
        QTRY_COMPARE_WITH_TIMEOUT(m_server.shown().size(), 1, 20000);
        const NotificationServer::Shown shown = m_server.shown()[0];
        QCOMPARE(shown.body, "Bo has a birthday today!");
        checkHints(shown);
        QVERIFY(QFile::exists(shown.icon));
        QVERIFY(!tavlo.waitForFinished(300));
        m_server.close(shown.id);
        QVERIFY(tavlo.waitForFinished(20000));
        QCOMPARE(tavlo.readAllStandardError(), QByteArray());
        QCOMPARE(tavlo.exitCode(), 0);
        QCOMPARE(m_store->pending().size(), 0);
        QVERIFY(!QFile::exists(entry));
    }

    void unitsPassSystemdAnalyzeVerify()
    {
        // A program path that needs quoting and escaping in a unit file.
        const QString program = m_dir->filePath(u"bin dir/tavlo 100% $HOME"_s);
        QDir().mkpath(QFileInfo(program).absolutePath());
        QVERIFY(QFile::link(QStringLiteral(TAVLO_EXECUTABLE), program));
        QVERIFY(!timers(nullptr, program)
                     .apply({reminder(u"birthdayReminder1"_s, 29, u"$(touch x)"_s),
                             reminder(u"birthdayReminder2"_s, 30)}));

        const QMap<QString, QByteArray> files = snapshot(units());
        QStringList written;
        for (const QString &name : {u"birthdayReminder1.service"_s, u"birthdayReminder1.timer"_s,
                                    u"birthdayReminder2.service"_s, u"birthdayReminder2.timer"_s}) {
            written.append(QDir(units()).absoluteFilePath(u"tavlo-"_s + name));
            QVERIFY(!files.value(u"tavlo-"_s + name).contains("touch"));
        }
        QCOMPARE(files.size(), 6);
        // The clocks go forward on the 29th: 7:30 there is 5:30 UTC.
        const QByteArray timer = files.value(u"tavlo-birthdayReminder1.timer"_s);
        QVERIFY(timer.contains("\nOnCalendar=2026-03-29 05:30:00 UTC\n"));
        QVERIFY(timer.contains("\nPersistent=true\n"));
        QCOMPARE(files.value(u"timers.target.wants/tavlo-birthdayReminder1.timer"_s),
                 written[1].toUtf8());

        verifyUnits(written);
        if (QTest::currentTestFailed())
            return;

        // What systemd runs is the program as it is named, with its environment.
        const QByteArray service = files.value(u"tavlo-birthdayReminder1.service"_s);
        QVERIFY(service.contains("\nExecStart=\"" + QDir(m_dir->path()).absolutePath().toUtf8() +
                                 "/bin dir/tavlo 100%% $HOME\" deliver-reminder "
                                 "\"birthdayReminder1\"\n"));
        QVERIFY(service.contains("\nEnvironment=\"XDG_DATA_HOME=/home/u/data\"\n"));
    }

    // Timers wake the system only where systemd lets a user's session set
    // wake alarms (254 and newer), whatever the machine the tests run on.
    void wakeSystemFromTheVersion_data()
    {
        QTest::addColumn<QByteArray>("versionOutput");
        QTest::addColumn<int>("version");
        QTest::addColumn<bool>("wakes");
        QTest::newRow("bookworm") << QByteArray("systemd 252 (252.38-1~deb12u1)\n+PAM +AUDIT\n")
                                  << 252 << false;
        QTest::newRow("253") << QByteArray("systemd 253 (253.5-1)\n") << 253 << false;
        QTest::newRow("254") << QByteArray("systemd 254 (254.5-1)\n") << 254 << true;
        QTest::newRow("trixie") << QByteArray("systemd 257 (257.7-1)\n-PAM\n") << 257 << true;
        QTest::newRow("a release candidate")
            << QByteArray("systemd 258 (258~rc2)\n") << 258 << true;
        QTest::newRow("no answer") << QByteArray() << 0 << false;
        QTest::newRow("something else") << QByteArray("elogind 252\n") << 0 << false;
    }
    void wakeSystemFromTheVersion()
    {
        QFETCH(QByteArray, versionOutput);
        QFETCH(int, version);
        QCOMPARE(SystemdTimers::versionFrom(versionOutput), version);
        QFETCH(bool, wakes);
        QCOMPARE(SystemdTimers::wakeSystemAllowed(version), wakes);

        SystemdTimers t = timers(nullptr);
        t.setWakeSystem(SystemdTimers::wakeSystemAllowed(version));
        QVERIFY(!t.apply({reminder(u"birthdayReminder1"_s, 5)}));
        const QString timer = QDir(units()).absoluteFilePath(u"tavlo-birthdayReminder1.timer"_s);
        const QByteArray text = snapshot(units()).value(u"tavlo-birthdayReminder1.timer"_s);
        QCOMPARE(text.contains("\nWakeSystem=true\n"), wakes);
        // systemd's parser takes the line without a word; a misspelt key it
        // names, so the check would see one.
        verifyUnits({timer, QDir(units()).absoluteFilePath(u"tavlo-birthdayReminder1.service"_s)});
        if (!wakes)
            return;
        writeFile(timer, QByteArray(text).replace("WakeSystem=", "WakeSistem="));
        QVERIFY(analyze({timer}).first.contains("Unknown key 'WakeSistem'"));
    }

    // A data folder's name with a carriage return, a line break, a tab or an
    // escape sequence in it stays inside its value: a unit gets C escapes;
    // the autostart entry gets its own escapes, and where it has none the
    // entry is refused with one line and the old one stays.
    void controlCharactersStayInTheirLine_data()
    {
        QTest::addColumn<QString>("dataHome");
        QTest::addColumn<QString>("inUnit");
        QTest::addColumn<QString>("inEntry"); // empty: refused
        QTest::newRow("carriage return")
            << u"/home/u/da\rta"_s << u"/home/u/da\\rta"_s << u"/home/u/da\\rta"_s;
        QTest::newRow("line break and tab")
            << u"/home/u/da\nta\tx"_s << u"/home/u/da\\nta\\tx"_s << u"/home/u/da\\nta\\tx"_s;
        QTest::newRow("escape sequence")
            << u"/home/u/\x1b]0;x\x07/data"_s << u"/home/u/\\x1b]0;x\\x07/data"_s << QString();
    }
    void controlCharactersStayInTheirLine()
    {
        QFETCH(QString, dataHome);
        QFETCH(QString, inUnit);
        QFETCH(QString, inEntry);
        const QStringList environment{u"XDG_DATA_HOME="_s + dataHome};
        const QList<PendingReminder> plan{reminder(u"birthdayReminder1"_s, 5)};
        QVERIFY(!SystemdTimers(units(), TAVLO_EXECUTABLE, environment, nullptr).apply(plan));
        const QByteArray service = snapshot(units()).value(u"tavlo-birthdayReminder1.service"_s);
        QVERIFY2(linesIntact(service), service.constData());
        QVERIFY2(service.contains("\nEnvironment=\"XDG_DATA_HOME=" + inUnit.toUtf8() + "\"\n"),
                 service.constData());
        verifyUnits({QDir(units()).absoluteFilePath(u"tavlo-birthdayReminder1.service"_s)});

        const QString folder = m_dir->filePath(u"autostart"_s);
        const QString path = QDir(folder).filePath(AutostartEntry::fileName());
        writeFile(path, "[Desktop Entry]\n");
        const std::optional<QString> refused =
            AutostartEntry(folder, u"/usr/bin/tavlo"_s, environment, m_dir->filePath(u"lock"_s),
                           nullptr)
                .apply(plan);
        const QByteArray entry = snapshot(folder).value(AutostartEntry::fileName());
        if (inEntry.isEmpty()) {
            QVERIFY(refused);
            QVERIFY2(!refused->contains(u'\n') && refused->contains(u"XDG_DATA_HOME"_s),
                     qPrintable(*refused));
            QCOMPARE(entry, "[Desktop Entry]\n");
            return;
        }
        QVERIFY(!refused);
        QVERIFY2(linesIntact(entry), entry.constData());
        QVERIFY2(entry.contains("\nExec=env \"XDG_DATA_HOME=" + inEntry.toUtf8() + "\" "),
                 entry.constData());
        validateDesktopEntry(path);
    }

    void onlyChangesReachTheDiskAndTheManager()
    {
        SystemdTimers t = timers(&m_runner);
        const QList<PendingReminder> plan{reminder(u"birthdayReminder1"_s, 5),
                                          reminder(u"birthdayReminder2"_s, 6),
                                          reminder(u"birthdayReminder3"_s, 7)};
        QVERIFY(!t.apply(plan));
        m_runner.finishAll();
        QCOMPARE(m_runner.commands,
                 (QList<QStringList>{systemctl({u"daemon-reload"_s}),
                                     systemctl({u"restart"_s, u"tavlo-birthdayReminder1.timer"_s,
                                                u"tavlo-birthdayReminder2.timer"_s,
                                                u"tavlo-birthdayReminder3.timer"_s})}));

        // The same plan again: nothing run.
        QVERIFY(!t.apply(plan));
        QCOMPARE(m_runner.commands.size(), 2);

        // One replaced, one gone.
        m_runner.commands.clear();
        QVERIFY(!t.apply({plan[0], reminder(u"birthdayReminder2"_s, 9)}));
        m_runner.finishAll();
        QCOMPARE(
            m_runner.commands,
            (QList<QStringList>{systemctl({u"stop"_s, u"tavlo-birthdayReminder3.timer"_s}),
                                systemctl({u"daemon-reload"_s}),
                                systemctl({u"restart"_s, u"tavlo-birthdayReminder2.timer"_s})}));
        const QMap<QString, QByteArray> files = snapshot(units());
        QCOMPARE(files.size(), 6); // two units and a link each
        QVERIFY(!files.contains(u"tavlo-birthdayReminder3.service"_s));
        QVERIFY(files.value(u"tavlo-birthdayReminder2.timer"_s)
                    .contains("OnCalendar=2026-03-09 06:30:00 UTC"));

        // Nothing pending: nothing of Tavlo's left; other units untouched.
        QVERIFY(QFile(QDir(units()).filePath(u"other.timer"_s)).open(QIODevice::WriteOnly));
        QVERIFY(!t.apply({}));
        QCOMPARE(snapshot(units()).keys(), QStringList{u"other.timer"_s});
    }

    // However the manager's answers and a new plan interleave, the disk holds
    // the newest plan and nothing re-arms an older time.
    void theNewestPlanWins_data()
    {
        QTest::addColumn<bool>("answersFirst");
        QTest::newRow("answers before the new plan") << true;
        QTest::newRow("answers after the new plan") << false;
    }
    void theNewestPlanWins()
    {
        QFETCH(bool, answersFirst);
        SystemdTimers t = timers(&m_runner);
        QVERIFY(
            !t.apply({reminder(u"birthdayReminder1"_s, 5), reminder(u"birthdayReminder2"_s, 6)}));
        if (answersFirst)
            m_runner.finishAll();
        const QList<PendingReminder> newer{reminder(u"birthdayReminder1"_s, 8)};
        QVERIFY(!t.apply(newer));
        m_runner.finishAll();

        const QMap<QString, QByteArray> files = snapshot(units());
        QCOMPARE(files.size(), 3);
        QCOMPARE(files.value(u"tavlo-birthdayReminder1.timer"_s),
                 timers(nullptr).timerUnit(newer[0]));
        QCOMPARE(files.value(u"tavlo-birthdayReminder1.service"_s),
                 timers(nullptr).serviceUnit(newer[0]));
        // The manager's last word restarts the newest timer.
        QCOMPARE(m_runner.commands.constLast(),
                 systemctl({u"restart"_s, u"tavlo-birthdayReminder1.timer"_s}));
    }

    void autostartEntryWhileRemindersWait()
    {
        const QString folder = m_dir->filePath(u"autostart"_s);
        const QString lock = m_dir->filePath(u"background.lock"_s);
        AutostartEntry entry(folder, u"/usr/bin/tavlo"_s, {u"XDG_DATA_HOME=/home/u/my data"_s},
                             lock, &m_runner);
        QVERIFY(!entry.apply({reminder(u"birthdayReminder1"_s, 5, u"$(rm -rf ~)"_s)}));
        const QString path = QDir(folder).filePath(u"io.github.tavlo.Tavlo-reminders.desktop"_s);
        const QByteArray text = snapshot(folder).value(QFileInfo(path).fileName());
        QVERIFY(text.contains("\nExec=env \"XDG_DATA_HOME=/home/u/my data\" \"/usr/bin/tavlo\" "
                              "deliver-reminders\n"));
        QVERIFY(!text.contains("rm -rf"));
        // This login too, unless a background Tavlo runs already.
        QCOMPARE(m_runner.detached,
                 (QList<QStringList>{{u"/usr/bin/tavlo"_s, u"deliver-reminders"_s}}));
        QLockFile running(lock);
        QVERIFY(running.tryLock(0));
        QVERIFY(!entry.apply({reminder(u"birthdayReminder1"_s, 6)}));
        QCOMPARE(m_runner.detached.size(), 1);

        validateDesktopEntry(path);

        QVERIFY(!entry.apply({}));
        QVERIFY(!QFile::exists(path));
    }

    // A link goes somewhere only where an application declares its scheme
    // or is associated with it; xdg-open starts either way.
    void linkHandlersAreFound_data()
    {
        QTest::addColumn<QString>("file"); // under the data or the config folder
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("found");
        const QByteArray entry = "[Desktop Entry]\nType=Application\nName=Store\nExec=store %U\n";
        const auto row = [](const char *tag, const char *file, const QByteArray &text, bool found) {
            QTest::newRow(tag) << file << text << found;
        };
        const QByteArray scheme = "MimeType=x-scheme-handler/appstream;\n";
        row("nothing installed", "", {}, false);
        row("a software centre", "data/applications/store.desktop",
            entry + "MimeType=text/plain;x-scheme-handler/appstream;\n", true);
        row("one folder down", "data/applications/kde/store.desktop",
            entry + "MimeType=x-scheme-handler/appstream\n", true);
        row("another scheme only", "data/applications/store.desktop",
            entry + "MimeType=x-scheme-handler/appstreamer;x-scheme-handler/apt;\n", false);
        row("hidden entry", "data/applications/store.desktop", entry + scheme + "Hidden=true\n",
            false);
        row("in another group", "data/applications/store.desktop",
            entry + "[Desktop Action x]\n" + scheme, false);
        row("associated by the user", "config/mimeapps.list",
            "[Default Applications]\nx-scheme-handler/appstream=store.desktop;\n", true);
        row("association removed", "config/mimeapps.list",
            "[Removed Associations]\nx-scheme-handler/appstream=store.desktop;\n", false);
    }
    void linkHandlersAreFound()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, text);
        QFETCH(bool, found);
        const QString data = m_dir->filePath(u"data"_s);
        const QString config = m_dir->filePath(u"config"_s);
        if (!file.isEmpty())
            writeFile(m_dir->filePath(file), text);
        QCOMPARE(LinkHandlers::installed(u"appstream"_s, {data}, {config}), found);
    }
};

QTEST_GUILESS_MAIN(TestLinuxNotificationCenter)
#include "tst_linuxnotificationcenter.moc"
