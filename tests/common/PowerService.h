// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// A stand-in for Plasma's power management service on a private bus (one
// that NotificationServer started): python3-dbusmock with the wake-up
// methods of org.kde.Solid.PowerManagement added, keeping wake-ups as the
// real service does: numbered from 1 since it started, a moment in the past
// refused, forgotten when it stops. Fire() does what the service does when a
// wake-up comes: takes it off the list and calls wakeupCallback(cookie) on
// the service and path it was given, without waiting for an answer.
class PowerService
{
public:
    struct Wakeup
    {
        uint cookie = 0;
        QString service;
        QString path;
        qint64 moment = 0;

        friend bool operator==(const Wakeup &, const Wakeup &) = default;
    };

    PowerService(QString busAddress, QString connectionName)
        : m_address(std::move(busAddress)), m_connection(std::move(connectionName))
    {}
    ~PowerService() { stop(); }

    // The methods are in place before the service answers anyone: Tavlo asks
    // the moment the name appears.
    bool start()
    {
        QFile file(m_dir.filePath("tavlo_power_template.py"));
        if (!file.open(QIODevice::WriteOnly) || file.write(templateText) != templateText.size())
            return false;
        file.close();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
        m_process.setProcessEnvironment(env);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start("/usr/bin/python3", {"-m", "dbusmock", "--session", "-t", file.fileName()});
        return QTest::qWaitFor([&] { return registered(); }, 20000);
    }
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.terminate();
        m_process.waitForFinished();
        (void)QTest::qWaitFor([&] { return !registered(); });
    }

    // The wake-ups the service holds now, by cookie.
    QList<Wakeup> held() const
    {
        const QDBusMessage reply = call(iface, "Held", {});
        const QDBusArgument list = reply.arguments().value(0).value<QDBusArgument>();
        QList<Wakeup> wakeups;
        list.beginArray();
        while (!list.atEnd()) {
            Wakeup w;
            QDBusObjectPath objectPath;
            list.beginStructure();
            list >> w.cookie >> w.service >> objectPath >> w.moment;
            list.endStructure();
            w.path = objectPath.path();
            wakeups.append(w);
        }
        list.endArray();
        return wakeups;
    }
    // How often `method` was called since the service started.
    int calls(const QString &method) const
    {
        const QDBusMessage reply = call("org.freedesktop.DBus.Mock", "GetMethodCalls", {method});
        const QDBusArgument list = reply.arguments().value(0).value<QDBusArgument>();
        int count = 0;
        list.beginArray();
        while (!list.atEnd()) {
            quint64 time = 0;
            list.beginStructure();
            list >> time;
            list.beginArray();
            while (!list.atEnd()) {
                QDBusVariant arg;
                list >> arg;
            }
            list.endArray();
            list.endStructure();
            ++count;
        }
        list.endArray();
        return count;
    }
    void fire(uint cookie) const { call(iface, "Fire", {QVariant::fromValue(cookie)}); }

    static inline const QString service = "org.kde.Solid.PowerManagement";
    static inline const QString path = "/org/kde/Solid/PowerManagement";
    static inline const QString iface = "org.kde.Solid.PowerManagement";

private:
    bool registered() const
    {
        return QDBusConnection(m_connection).interface()->isServiceRegistered(service).value();
    }
    QDBusMessage call(const QString &interface, const QString &method,
                      const QVariantList &args) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(args);
        return QDBusConnection(m_connection).call(message, QDBus::Block, 10000);
    }
    static inline const QByteArray templateText = R"(
import dbus

BUS_NAME = 'org.kde.Solid.PowerManagement'
MAIN_OBJ = '/org/kde/Solid/PowerManagement'
MAIN_IFACE = 'org.kde.Solid.PowerManagement'
SYSTEM_BUS = False


def load(mock, parameters):
    mock.held = {}
    mock.last = 0
    mock.AddMethods(MAIN_IFACE, [
        ('scheduleWakeup', 'sot', 'u',
         'import time\n'
         'if args[2] < time.time():\n'
         '    raise dbus.exceptions.DBusException("You can not schedule wakeup in past",'
         ' name="org.freedesktop.DBus.Error.InvalidArgs")\n'
         'self.last += 1\n'
         'self.held[self.last] = (str(args[0]), str(args[1]), int(args[2]))\n'
         'ret = dbus.UInt32(self.last)'),
        ('clearWakeup', 'i', '', 'self.held.pop(int(args[0]), None)'),
        ('Held', '', 'a(usot)',
         'ret = [dbus.Struct((dbus.UInt32(c), s, dbus.ObjectPath(p), dbus.UInt64(t)),'
         ' signature="usot") for c, (s, p, t) in sorted(self.held.items())]'),
        ('Fire', 'u', '',
         'import dbus.lowlevel\n'
         's, p, t = self.held.pop(int(args[0]))\n'
         'm = dbus.lowlevel.MethodCallMessage(s, p, "org.kde.PowerManagement", "wakeupCallback")\n'
         'm.append(dbus.Int32(args[0]), signature="i")\n'
         'm.set_no_reply(True)\n'
         'self.connection.send_message(m)'),
    ])
)";

    QString m_address;
    QString m_connection;
    QTemporaryDir m_dir;
    QProcess m_process;
};
