// SPDX-License-Identifier: MIT
#pragma once

#include "PrivateBus.h"

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
class NotificationServer : public PrivateBus
{
public:
    struct Shown
    {
        uint id = 0;
        QString app, icon, summary, body;
        QStringList actions;
        QVariantMap hints;
    };

    // Starts the notification server and waits until it answers. It
    // announces `capabilities` (blank-separated) in GetCapabilities; by
    // default those of a full server, "body-markup" among them.
    bool startServer(const QString &capabilities = {})
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
        m_server.setProcessEnvironment(env);
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QStringList arguments{"-m", "dbusmock", "--template", "notification_daemon"};
        if (!capabilities.isEmpty())
            arguments << "-p"
                      << "{\"capabilities\": \"" + capabilities + "\"}";
        m_server.start("/usr/bin/python3", arguments);
        m_earlier = 0;
        return QTest::qWaitFor([&] { return registered(); }, 20000);
    }
    void stopServer()
    {
        m_server.terminate();
        m_server.waitForFinished();
        (void)QTest::qWaitFor([&] { return !registered(); });
    }
    void stop()
    {
        stopServer();
        stopBus();
    }

    // Every Notify the server received, in order.
    QList<Shown> shown() const
    {
        const QDBusArgument calls =
            mockCall("GetMethodCalls", {"Notify"}).arguments().value(0).value<QDBusArgument>();
        QList<Shown> shown;
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
            // The server numbers its notifications from 1 since it started.
            shown.append({m_earlier + uint(shown.size()) + 1, args.value(0).toString(),
                          args.value(2).toString(), args.value(3).toString(),
                          args.value(4).toString(), args.value(5).toStringList(),
                          qdbus_cast<QVariantMap>(args.value(6))});
        }
        calls.endArray();
        return shown;
    }
    void clear()
    {
        m_earlier += uint(shown().size());
        mockCall("ClearCalls", {});
    }
    // What the shell sends when the person taps notification `id`, or closes it.
    void invoke(uint id, const QString &action) const
    {
        emitSignal("ActionInvoked", "us", {QVariant::fromValue(id), action});
    }
    void close(uint id) const
    {
        emitSignal("NotificationClosed", "uu", {QVariant::fromValue(id), QVariant::fromValue(2u)});
    }

private:
    static inline const QString service = "org.freedesktop.Notifications";

    bool registered() const
    {
        return QDBusConnection(m_connection).interface()->isServiceRegistered(service).value();
    }
    QDBusMessage mockCall(const QString &method, const QVariantList &args) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            service, "/org/freedesktop/Notifications", "org.freedesktop.DBus.Mock", method);
        call.setArguments(args);
        return QDBusConnection(m_connection).call(call, QDBus::Block, 5000);
    }
    void emitSignal(const QString &name, const QString &signature, const QVariantList &args) const
    {
        QVariantList wrapped;
        for (const QVariant &arg : args)
            wrapped.append(QVariant::fromValue(QDBusVariant(arg)));
        mockCall("EmitSignal", {service, name, signature, QVariant::fromValue(wrapped)});
    }

    QProcess m_server;
    uint m_earlier = 0;
};
