// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

// A session bus of the test's own: dbus-daemon with a configuration that
// names no service folders, so nothing installed on the machine starts on
// it. The test's side connects under a name of its choosing.
class PrivateBus
{
public:
    // False when dbus-daemon cannot run here.
    bool startBus(const QString &connectionName)
    {
        QFile config(m_dir.filePath("bus.conf"));
        if (!config.open(QIODevice::WriteOnly))
            return false;
        config.write("<busconfig><type>session</type><listen>unix:tmpdir=" + m_dir.path().toUtf8() +
                     "</listen><policy context=\"default\"><allow send_destination=\"*\" "
                     "eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>"
                     "</busconfig>");
        config.close();
        m_bus.start("dbus-daemon",
                    {"--config-file=" + config.fileName(), "--nofork", "--print-address"});
        if (!m_bus.waitForReadyRead(10000))
            return false;
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
        m_connection = connectionName;
        return QDBusConnection::connectToBus(m_address, connectionName).isConnected();
    }
    void stopBus()
    {
        QDBusConnection::disconnectFromBus(m_connection);
        m_bus.kill();
        m_bus.waitForFinished();
    }

    QString address() const { return m_address; }
    QDBusConnection connection() const { return QDBusConnection(m_connection); }

protected:
    QTemporaryDir m_dir;
    QProcess m_bus;
    QString m_address;
    QString m_connection;
};
