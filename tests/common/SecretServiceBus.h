// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTest>
#include <csignal>
#include <sys/prctl.h>

// A private session bus with gnome-keyring-daemon on it as the Secret
// Service, its login keyring made and unlocked with a password, its
// files in `folder`. environment() is what programs that use it get. The
// bus has no service folders, so nothing else is started on it.
class SecretServiceBus
{
public:
    explicit SecretServiceBus(const QString &folder) : m_folder(folder)
    {
        QDir().mkpath(folder + QStringLiteral("/home"));
        QDir().mkpath(folder + QStringLiteral("/runtime"));
        QFile::setPermissions(folder + QStringLiteral("/runtime"), QFileDevice::ReadOwner |
                                                                       QFileDevice::WriteOwner |
                                                                       QFileDevice::ExeOwner);
        const QString keyring =
            QStandardPaths::findExecutable(QStringLiteral("gnome-keyring-daemon"));
        if (keyring.isEmpty()) {
            m_whyNot = QStringLiteral("gnome-keyring-daemon is not installed");
            return;
        }
        QFile config(folder + QStringLiteral("/bus.conf"));
        config.open(QIODevice::WriteOnly);
        config.write(
            QStringLiteral(
                "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration "
                "1.0//EN\" \"http://www.freedesktop.org/standards/dbus/1.0/"
                "busconfig.dtd\"><busconfig><type>session</type>"
                "<listen>unix:dir=%1</listen><policy context=\"default\">"
                "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                "<allow own=\"*\"/></policy></busconfig>")
                .arg(folder + QStringLiteral("/runtime"))
                .toUtf8());
        config.close();
        // Both gone with the test, however the test ends.
        const auto dieWithTest = [] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); };
        m_bus.setChildProcessModifier(dieWithTest);
        m_keyring.setChildProcessModifier(dieWithTest);
        m_bus.start(QStringLiteral("dbus-daemon"),
                    {QStringLiteral("--config-file=") + config.fileName(),
                     QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        if (!m_bus.waitForStarted(5000) || !m_bus.waitForReadyRead(5000)) {
            m_whyNot = QStringLiteral("dbus-daemon does not start");
            return;
        }
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();

        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                             folder + QStringLiteral("/runtime"));
        QProcessEnvironment keyringEnvironment = m_environment;
        keyringEnvironment.insert(QStringLiteral("HOME"), folder + QStringLiteral("/home"));
        keyringEnvironment.insert(QStringLiteral("XDG_DATA_HOME"),
                                  folder + QStringLiteral("/home/.local/share"));
        m_keyring.setProcessEnvironment(keyringEnvironment);
        m_keyring.start(keyring,
                        {QStringLiteral("--foreground"), QStringLiteral("--components=secrets"),
                         QStringLiteral("--unlock")});
        if (!m_keyring.waitForStarted(5000)) {
            m_whyNot = QStringLiteral("gnome-keyring-daemon does not start");
            return;
        }
        // The login keyring's password (it is made with it): any will do.
        m_keyring.write("test");
        m_keyring.closeWriteChannel();
        // Ready once it owns the Secret Service's name.
        for (int i = 0; i < 100; ++i) {
            QProcess ask;
            ask.setProcessEnvironment(m_environment);
            ask.start(QStringLiteral("dbus-send"),
                      {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                       QStringLiteral("--dest=org.freedesktop.DBus"),
                       QStringLiteral("/org/freedesktop/DBus"),
                       QStringLiteral("org.freedesktop.DBus.NameHasOwner"),
                       QStringLiteral("string:org.freedesktop.secrets")});
            ask.waitForFinished(5000);
            if (ask.readAllStandardOutput().contains("boolean true"))
                return;
            QTest::qWait(100);
        }
        m_whyNot = QStringLiteral("gnome-keyring-daemon did not take org.freedesktop.secrets: ") +
                   QString::fromLocal8Bit(m_keyring.readAllStandardError());
    }

    ~SecretServiceBus()
    {
        for (QProcess *process : {&m_keyring, &m_bus}) {
            process->terminate();
            if (!process->waitForFinished(3000))
                process->kill();
            process->waitForFinished(3000);
        }
    }

    bool ok() const { return m_whyNot.isEmpty(); }
    QString whyNot() const { return m_whyNot; }
    QProcessEnvironment environment() const { return m_environment; }
    // Where the keyring keeps its files: the only place a password may be.
    QString keyringFolder() const { return m_folder + QStringLiteral("/home"); }

private:
    QString m_folder;
    QString m_whyNot;
    QString m_address;
    QProcess m_bus;
    QProcess m_keyring;
    QProcessEnvironment m_environment;
};
