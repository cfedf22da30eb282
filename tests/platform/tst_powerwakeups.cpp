// SPDX-License-Identifier: MIT
#include "NotificationServer.h"
#include "PowerService.h"
#include "TavloProcess.h"
#include "core/Clock.h"
#include "platform/linux/PowerWakeups.h"
#include "reminders/ReminderStore.h"

#include <QDBusPendingCall>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int busPatience = 20000;

// The service refuses moments past by its own clock: the plans lie ahead of
// the real now.
const QDateTime now = QDateTime::currentDateTime();

// Due at 7:30 local time `days` days from now.
PendingReminder reminder(int number, int days)
{
    const QDateTime fire(now.date().addDays(days), QTime(7, 30));
    const QString identifier = u"birthdayReminder"_s + QString::number(number);
    return {{identifier,
             u"Birthday Reminder"_s,
             u"Anna has a birthday today!"_s,
             CalendarTrigger::at(fire),
             {}},
            fire};
}

using Wakeup = PowerService::Wakeup;

// What the service should hold for `plan`, with these cookies in turn.
QList<Wakeup> wakeupsFor(const QList<PendingReminder> &plan, const QList<uint> &cookies)
{
    QList<Wakeup> wakeups;
    for (qsizetype i = 0; i < plan.size(); ++i) {
        wakeups.append({cookies.at(i), PowerWakeups::callbackService, PowerWakeups::callbackPath,
                        plan.at(i).fire.toSecsSinceEpoch() - 60});
    }
    return wakeups;
}

QString described(const QList<Wakeup> &wakeups)
{
    QStringList lines;
    for (const Wakeup &w : wakeups) {
        lines.append(u"cookie %1 at %2"_s.arg(w.cookie).arg(
            QDateTime::fromSecsSinceEpoch(w.moment).toString(Qt::ISODate)));
    }
    return lines.join(u"; "_s);
}

} // namespace

// Waking a suspended phone for its reminders through Plasma's power
// management, against a stand-in service on a private bus.
class TestPowerWakeups : public QObject
{
    Q_OBJECT

    NotificationServer m_bus;
    std::unique_ptr<PowerService> m_power;
    std::unique_ptr<QTemporaryDir> m_dir;
    const FixedClock m_clock{now};

    QString statePath() const { return m_dir->filePath(u"tavlo/wakeups.json"_s); }
    std::unique_ptr<PowerWakeups> wakeups() const
    {
        return std::make_unique<PowerWakeups>(QDBusConnection(u"tavlo"_s), m_clock, statePath());
    }
    // Whether every answer of the service has come in.
    static bool settled(PowerWakeups &wakeups)
    {
        bool idle = false;
        wakeups.whenIdle([&] { idle = true; });
        return QTest::qWaitFor([&] { return idle; }, busPatience);
    }
    // `plan` taken without an error, and every answer in.
    static bool applied(PowerWakeups &wakeups, const QList<PendingReminder> &plan)
    {
        return !wakeups.apply(plan) && settled(wakeups);
    }

private slots:
    void initTestCase() { QVERIFY(m_bus.startBus(u"tavlo"_s)); }
    void cleanupTestCase() { m_bus.stop(); }
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_power = std::make_unique<PowerService>(m_bus.address(), u"tavlo"_s);
        QVERIFY2(m_power->start(), "the stand-in power management service did not start");
    }
    void cleanup() { m_power.reset(); }

    // Five reminders; then a plan with one moved and one gone; then the
    // service restarts and has forgotten everything.
    void fiveThenAChangeThenARestart()
    {
        auto power = wakeups();
        const QList<PendingReminder> five{reminder(1, 3), reminder(2, 4), reminder(3, 4),
                                          reminder(4, 10), reminder(5, 40)};
        QVERIFY(applied(*power, five));
        QCOMPARE(m_power->held(), wakeupsFor(five, {1, 2, 3, 4, 5}));
        qInfo().noquote() << "five:" << described(m_power->held());

        // Each one is asked for once: the same plan again asks nothing.
        QVERIFY(applied(*power, five));
        QCOMPARE(m_power->calls(u"scheduleWakeup"_s), 5);

        const QList<PendingReminder> changed{five[0], five[1], reminder(3, 20), five[3]};
        QVERIFY(applied(*power, changed));
        QCOMPARE(m_power->held(),
                 wakeupsFor({five[0], five[1], five[3], changed[2]}, {1, 2, 4, 6}));
        QCOMPARE(m_power->calls(u"clearWakeup"_s), 2);
        qInfo().noquote() << "changed:" << described(m_power->held());

        m_power->stop();
        QVERIFY(m_power->start());
        // The service numbers afresh; none of the old cookies is cleared, for
        // they may be someone else's now.
        QTRY_COMPARE_WITH_TIMEOUT(m_power->held().size(), 4, busPatience);
        QVERIFY(settled(*power));
        QCOMPARE(m_power->held(), wakeupsFor(changed, {1, 2, 3, 4}));
        QCOMPARE(m_power->calls(u"clearWakeup"_s), 0);
        qInfo().noquote() << "after a restart:" << described(m_power->held());
    }

    // The app starts again: what the service holds already is not asked for
    // again; nothing pending clears it all and leaves no file.
    void aNewStartKnowsItsCookies()
    {
        const QList<PendingReminder> plan{reminder(1, 2), reminder(2, 5)};
        {
            auto first = wakeups();
            QVERIFY(applied(*first, plan));
        }
        auto second = wakeups();
        QVERIFY(applied(*second, plan));
        QCOMPARE(m_power->calls(u"scheduleWakeup"_s), 2);
        QCOMPARE(m_power->held(), wakeupsFor(plan, {1, 2}));

        QVERIFY(applied(*second, {}));
        QCOMPARE(m_power->held(), QList<Wakeup>());
        QVERIFY(!QFile::exists(statePath()));
    }

    // Cookies of an owner that has gone are never cleared with the next one.
    void cookiesOfAnEarlierServiceAreDropped()
    {
        QDir().mkpath(QFileInfo(statePath()).absolutePath());
        QFile state(statePath());
        QVERIFY(state.open(QIODevice::WriteOnly));
        state.write(QJsonDocument(QJsonObject{{u"owner"_s, u":1.9999"_s},
                                              {u"wakeups"_s,
                                               QJsonArray{QJsonObject{{u"identifier"_s, u"old"_s},
                                                                      {u"moment"_s, 1.0},
                                                                      {u"cookie"_s, 1.0}}}}})
                        .toJson());
        state.close();
        auto power = wakeups();
        QVERIFY(applied(*power, {reminder(1, 2)}));
        QCOMPARE(m_power->calls(u"clearWakeup"_s), 0);
        QCOMPARE(m_power->held(), wakeupsFor({reminder(1, 2)}, {1}));
    }

    // The service's call when a wake-up comes shows what is due; a call
    // with a cookie not ours, or from anyone but the service, is ignored.
    void theCallbackIsAnswered()
    {
        auto power = wakeups();
        int woken = 0;
        QVERIFY(power->answerCallbacks([&] { ++woken; }));
        QVERIFY(applied(*power, {reminder(1, 2), reminder(2, 3)}));

        QDBusMessage stranger = QDBusMessage::createMethodCall(
            PowerWakeups::callbackService, PowerWakeups::callbackPath, u"org.kde.PowerManagement"_s,
            u"wakeupCallback"_s);
        stranger << 2;
        QDBusPendingCall answered = QDBusConnection(u"tavlo"_s).asyncCall(stranger);
        QTRY_VERIFY_WITH_TIMEOUT(answered.isFinished(), busPatience);
        QVERIFY(!answered.isError()); // answered, and ignored
        QCOMPARE(woken, 0);

        m_power->fire(2);
        QTRY_COMPARE_WITH_TIMEOUT(woken, 1, busPatience);
        // The fired one is no longer the service's: a change does not clear it.
        QVERIFY(applied(*power, {reminder(1, 2)}));
        QCOMPARE(m_power->calls(u"clearWakeup"_s), 0);
        QDBusConnection(u"tavlo"_s).unregisterService(PowerWakeups::callbackService);
        QDBusConnection(u"tavlo"_s).unregisterObject(PowerWakeups::callbackPath);
    }

    // Only what lies more than a minute ahead is asked for; without the
    // service nothing is kept, not even the login entry.
    void nothingPretends()
    {
        const QString entry = m_dir->filePath(u"autostart/wakeups.desktop"_s);
        auto power = wakeups();
        power->setLoginEntry(entry, "[Desktop Entry]\n");
        PendingReminder soon = reminder(1, 0);
        soon.fire = now.addSecs(59);
        QVERIFY(applied(*power, {soon, reminder(2, 1)}));
        QCOMPARE(m_power->held(), wakeupsFor({reminder(2, 1)}, {1}));
        QVERIFY(QFile::exists(entry));
        QVERIFY(applied(*power, {}));
        QVERIFY(!QFile::exists(entry));

        m_power->stop();
        QVERIFY(applied(*power, {reminder(2, 1)}));
        QVERIFY(!QFile::exists(statePath()));
        QVERIFY(!QFile::exists(entry));
    }

    // What Plasma starts at login: the real program asks for every pending
    // reminder's wake-up.
    void atLogin()
    {
        const QList<PendingReminder> plan{reminder(1, 2), reminder(2, 9)};
        ReminderStore store(m_dir->filePath(u"data/tavlo/reminders.json"_s));
        for (const PendingReminder &r : plan)
            QVERIFY(!store.put(r));
        const TavloRun tavlo =
            runTavlo(tavloEnvironment(m_dir->filePath(u"config"_s), m_dir->filePath(u"data"_s),
                                      m_bus.address()),
                     {u"register-wakeups"_s});
        QCOMPARE(tavlo.err, QByteArray());
        QCOMPARE(tavlo.status, 0);
        QCOMPARE(m_power->held(), wakeupsFor(plan, {1, 2}));
        // The app started afterwards knows them from the file: nothing asked twice.
        PowerWakeups app(QDBusConnection(u"tavlo"_s), m_clock,
                         PowerWakeups::statePathBeside(store.filePath()));
        QVERIFY(applied(app, plan));
        QCOMPARE(m_power->calls(u"scheduleWakeup"_s), 2);
        // And again at the next login.
        const QString entry =
            m_dir->filePath(u"config/autostart/io.github.tavlo.Tavlo-wakeups.desktop"_s);
        QFile text(entry);
        QVERIFY(text.open(QIODevice::ReadOnly));
        const QByteArray desktop = text.readAll();
        QVERIFY2(desktop.contains("\" register-wakeups\n") &&
                     desktop.contains("\nOnlyShowIn=KDE;\n"),
                 desktop.constData());
        QProcess validate;
        validate.start(u"desktop-file-validate"_s, {entry});
        QVERIFY(validate.waitForFinished(30000));
        QCOMPARE(validate.readAllStandardOutput(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestPowerWakeups)
#include "tst_powerwakeups.moc"
