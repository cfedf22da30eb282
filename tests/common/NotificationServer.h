// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// A private session bus with a real notification server on it:
// python3-dbusmock's notification_daemon template. Nothing installed on the
// machine starts on this bus (its configuration names no service folders).
class NotificationServer
{
public:
    struct Shown
    {
        uint id = 0;
        QString app, icon, summary, body;
        QStringList actions;
        QVariantMap hints;
    };

    // Starts the bus; connects `connectionName` to it for the test's side.
    bool startBus(const QString &connectionName)
    {
        QFile config(m_dir.filePath(QStringLiteral("bus.conf")));
        if (!config.open(QIODevice::WriteOnly))
            return false;
        config.write("<busconfig><type>session</type><listen>unix:tmpdir=" + m_dir.path().toUtf8() +
                     "</listen><policy context=\"default\"><allow send_destination=\"*\" "
                     "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
                     "</busconfig>");
        config.close();
        m_bus.start(QStringLiteral("dbus-daemon"),
                    {QStringLiteral("--config-file=") + config.fileName(),
                     QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (!m_bus.waitForReadyRead(10000))
            return false;
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
        m_connection = connectionName;
        return QDBusConnection::connectToBus(m_address, connectionName).isConnected();
    }
    // Starts the notification server and waits until it answers.
    bool startServer()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
        m_server.setProcessEnvironment(env);
        m_earlier = 0;
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(QStringLiteral("/usr/bin/python3"),
                       {QStringLiteral("-m"), QStringLiteral("dbusmock"),
                        QStringLiteral("--template"), QStringLiteral("notification_daemon")});
        return QTest::qWaitFor(
            [&] { return connection().interface()->isServiceRegistered(service).value(); }, 20000);
    }
    void stopServer()
    {
        m_server.terminate();
        m_server.waitForFinished();
        QTest::qWaitFor(
            [&] { return !connection().interface()->isServiceRegistered(service).value(); });
    }
    void stop()
    {
        stopServer();
        QDBusConnection::disconnectFromBus(m_connection);
        m_bus.kill();
        m_bus.waitForFinished();
    }

    QString address() const { return m_address; }
    QDBusConnection connection() const { return QDBusConnection(m_connection); }

    // Every Notify the server received, in order.
    QList<Shown> shown() const
    {
        const QDBusMessage reply =
            mockCall(QStringLiteral("GetMethodCalls"), {QStringLiteral("Notify")});
        QList<Shown> shown;
        const QDBusArgument calls = reply.arguments().value(0).value<QDBusArgument>();
        calls.beginArray();
        while (!calls.atEnd()) {
            quint64 time = 0;
            QList<QVariant> args;
            calls.beginStructure();
            calls >> time;
            calls.beginArray();
            while (!calls.atEnd()) {
                QDBusVariant arg;
                calls >> arg;
                args.append(arg.variant());
            }
            calls.endArray();
            calls.endStructure();
            Shown s;
            // The server numbers its notifications from 1 since it started.
            s.id = m_earlier + uint(shown.size()) + 1;
            s.app = args.value(0).toString();
            s.icon = args.value(2).toString();
            s.summary = args.value(3).toString();
            s.body = args.value(4).toString();
            s.actions = args.value(5).toStringList();
            if (args.value(6).canConvert<QDBusArgument>())
                s.hints = qdbus_cast<QVariantMap>(args.value(6).value<QDBusArgument>());
            else
                s.hints = args.value(6).toMap();
            shown.append(s);
        }
        calls.endArray();
        return shown;
    }
    void clear()
    {
        m_earlier += uint(shown().size());
        mockCall(QStringLiteral("ClearCalls"), {});
    }
    // What the shell sends when the person taps notification `id`, or closes it.
    void invoke(uint id, const QString &action) const
    {
        emitSignal(QStringLiteral("ActionInvoked"), QStringLiteral("us"),
                   {QVariant::fromValue(id), action});
    }
    void close(uint id) const
    {
        emitSignal(QStringLiteral("NotificationClosed"), QStringLiteral("uu"),
                   {QVariant::fromValue(id), QVariant::fromValue(2u)});
    }

private:
    static inline const QString service = QStringLiteral("org.freedesktop.Notifications");
    static inline const QString path = QStringLiteral("/org/freedesktop/Notifications");

    QDBusMessage mockCall(const QString &method, const QVariantList &args) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.DBus.Mock"), method);
        call.setArguments(args);
        return connection().call(call, QDBus::Block, 5000);
    }
    void emitSignal(const QString &name, const QString &signature, const QVariantList &args) const
    {
        QVariantList wrapped;
        for (const QVariant &arg : args)
            wrapped.append(QVariant::fromValue(QDBusVariant(arg)));
        mockCall(QStringLiteral("EmitSignal"),
                 {service, name, signature, QVariant::fromValue(wrapped)});
    }

    QTemporaryDir m_dir;
    QProcess m_bus;
    QProcess m_server;
    QString m_address;
    QString m_connection;
    uint m_earlier = 0;
};
