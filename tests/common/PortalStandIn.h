// SPDX-License-Identifier: MIT
#pragma once

#include "PrivateBus.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// A desktop portal on a private bus: python3-dbusmock owning
// org.freedesktop.portal.Desktop, with the FileChooser methods added here.
// Each OpenFile or SaveFile makes its request object at the path a real
// portal uses (from the caller's bus name and handle_token), returns it and
// keeps what it was asked; the test then answers on the request object as
// the person would, or lets the portal hang or go away.
class PortalStandIn : public PrivateBus
{
public:
    // How the chooser's methods behave: as today's portals, as portals
    // before 0.9 (the request at a path of their own), or never replying.
    enum class Behaviour { Ask, OwnRequestPath, NeverReply };

    // `caller`: the connection the chooser under test asks on.
    bool startPortal(const QDBusConnection &caller, Behaviour behaviour = Behaviour::Ask)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", m_address);
        m_portal.setProcessEnvironment(env);
        m_portal.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_portal.setStandardOutputFile(QProcess::nullDevice());
        m_portal.start("/usr/bin/python3", {"-m", "dbusmock", service, path, chooser});
        if (!QTest::qWaitFor([&] { return registered(); }, 20000))
            return false;
        QString sender = caller.baseService().mid(1);
        sender.replace('.', '_');
        // Records the question as JSON (current_folder as hex, to see its
        // bytes and the closing NUL) and makes the request object.
        // dbusmock runs this with locals of its own: the helpers live inside
        // one function.
        const QString record =
            "def record(self, args):\n"
            "    o = args[2]\n"
            "    def b(k): return bool(o[k]) if k in o else None\n"
            "    def flt(f): return [str(f[0]), [[int(r[0]), str(r[1])] for r in f[1]]]\n"
            "    self.asked = getattr(self, 'asked', []) + [{'method': '%1',"
            " 'parent': str(args[0]), 'title': str(args[1]),"
            " 'token': str(o.get('handle_token', '')),"
            " 'multiple': b('multiple'), 'modal': b('modal'),"
            " 'folder': bytes(bytearray(o['current_folder'])).hex()"
            " if 'current_folder' in o else None,"
            " 'name': str(o['current_name']) if 'current_name' in o else None,"
            " 'filters': [flt(f) for f in o.get('filters', [])],"
            " 'filter': flt(o['current_filter']) if 'current_filter' in o else None}]\n"
            "    handle = '" +
            QString(path) + "/request/" +
            (behaviour == Behaviour::OwnRequestPath ? QString("old") : sender) +
            "/' + str(o.get('handle_token', 'x'))\n"
            "    self.asked[-1]['handle'] = handle\n"
            "    if handle not in objects:\n"
            "        self.AddObject(handle, 'org.freedesktop.portal.Request', {}, "
            "[('Close', '', '', '')])\n"
            "    return handle\n"
            "ret = record(self, args)\n" +
            QString(behaviour == Behaviour::NeverReply ? "import time\ntime.sleep(3)\n" : "");
        return addMethod(chooser, "OpenFile", "ssa{sv}", "o", record.arg("OpenFile")) &&
               addMethod(chooser, "SaveFile", "ssa{sv}", "o", record.arg("SaveFile")) &&
               addMethod("org.tavlo.Test", "Asked", "", "s",
                         "import json\nret = json.dumps(getattr(self, 'asked', []))");
    }
    void stopPortal()
    {
        m_portal.terminate();
        m_portal.waitForFinished();
        (void)QTest::qWaitFor([&] { return !registered(); });
    }
    void stop()
    {
        stopPortal();
        stopBus();
    }

    // Every question, oldest first.
    QJsonArray asked() const
    {
        const QDBusMessage reply = call(path, "org.tavlo.Test", "Asked", {});
        return QJsonDocument::fromJson(reply.arguments().value(0).toString().toUtf8()).array();
    }
    // The request object of the last question.
    QString lastRequest() const { return asked().last()["handle"].toString(); }
    // The person's answer: 0 with `uris`, 1 cancelled, 2 ended otherwise.
    bool respond(uint response, const QStringList &uris = {}) const
    {
        QVariantMap results;
        if (!uris.isEmpty())
            results.insert("uris", uris);
        const QVariantList wrapped{QVariant::fromValue(QDBusVariant(response)),
                                   QVariant::fromValue(QDBusVariant(results))};
        return call(lastRequest(), "org.freedesktop.DBus.Mock", "EmitSignal",
                    {"org.freedesktop.portal.Request", "Response", "ua{sv}",
                     QVariant::fromValue(wrapped)})
                   .type() == QDBusMessage::ReplyMessage;
    }
    // How often request `request` was withdrawn with Close.
    int closes(const QString &request) const
    {
        const QDBusMessage reply =
            call(request, "org.freedesktop.DBus.Mock", "GetMethodCalls", {"Close"});
        if (reply.type() != QDBusMessage::ReplyMessage)
            return -1;
        const QDBusArgument calls = reply.arguments().value(0).value<QDBusArgument>();
        int count = 0;
        calls.beginArray();
        while (!calls.atEnd()) {
            quint64 time = 0;
            QVariantList args;
            calls.beginStructure();
            calls >> time >> args;
            calls.endStructure();
            ++count;
        }
        calls.endArray();
        return count;
    }

private:
    static constexpr const char *service = "org.freedesktop.portal.Desktop";
    static constexpr const char *path = "/org/freedesktop/portal/desktop";
    static constexpr const char *chooser = "org.freedesktop.portal.FileChooser";

    bool registered() const
    {
        return connection().interface()->isServiceRegistered(service).value();
    }
    QDBusMessage call(const QString &object, const QString &interface, const QString &method,
                      const QVariantList &args) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, object, interface, method);
        message.setArguments(args);
        return connection().call(message, QDBus::Block, 10000);
    }
    bool addMethod(const QString &interface, const QString &name, const QString &in,
                   const QString &out, const QString &code) const
    {
        return call(path, "org.freedesktop.DBus.Mock", "AddMethod",
                    {interface, name, in, out, code})
                   .type() == QDBusMessage::ReplyMessage;
    }

    QProcess m_portal;
};
