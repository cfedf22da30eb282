// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QUrl>
#include <csignal>
#include <map>
#include <memory>
#include <sys/prctl.h>

// A real CardDAV server from the distribution, started on a free loopback
// port in a folder of its own and stopped with the object: Radicale with
// an htpasswd login, or Xandikos (which has no login of its own and takes
// any). Exit 77 (skip) is for when the server truly cannot start.
class CardDavServer
{
public:
    enum class Kind { Radicale, Xandikos };

    static QString nameOf(Kind kind)
    {
        return kind == Kind::Radicale ? QStringLiteral("Radicale") : QStringLiteral("Xandikos");
    }

    // Nothing, with `whyNot` set, when the server cannot start here.
    static std::unique_ptr<CardDavServer> start(Kind kind, const QString &folder, QString *whyNot)
    {
        std::unique_ptr<CardDavServer> server(new CardDavServer(kind, folder));
        if (!server->launch(whyNot))
            return nullptr;
        return server;
    }

    // Radicale and Xandikos both, in folders under `folder`; false, with
    // the reason told, when either cannot start.
    static bool startBoth(const QString &folder,
                          std::map<Kind, std::unique_ptr<CardDavServer>> &servers)
    {
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos}) {
            QString whyNot;
            auto server = start(kind, QDir(folder).filePath(nameOf(kind)), &whyNot);
            if (!server) {
                qWarning("%s cannot start: %s", qPrintable(nameOf(kind)), qPrintable(whyNot));
                return false;
            }
            servers[kind] = std::move(server);
        }
        return true;
    }

    ~CardDavServer()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000))
            m_process.kill();
        m_process.waitForFinished(5000);
    }

    Kind kind() const { return m_kind; }
    quint16 port() const { return m_port; }
    QUrl root() const { return QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(m_port)); }
    // Where the user's address books are made.
    QUrl home() const
    {
        return root().resolved(QUrl(m_kind == Kind::Radicale ? QStringLiteral("/user/")
                                                             : QStringLiteral("/user/contacts/")));
    }
    QString user() const { return QStringLiteral("user"); }
    QString password() const { return QStringLiteral("correct horse"); }
    QString log() const { return QString::fromLocal8Bit(m_process.readAllStandardError()); }

    // Stops the server hard and starts it again on the same port and data.
    bool restart(QString *whyNot)
    {
        m_process.kill();
        m_process.waitForFinished(5000);
        return launch(whyNot);
    }

private:
    CardDavServer(Kind kind, QString folder) : m_kind(kind), m_folder(std::move(folder)) {}

    static quint16 freePort()
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        return probe.serverPort();
    }

    bool launch(QString *whyNot)
    {
        QDir().mkpath(m_folder);
        if (m_port == 0)
            m_port = freePort();
        QStringList arguments;
        QString program;
        if (m_kind == Kind::Radicale) {
            program = QStringLiteral("/usr/bin/radicale");
            const QString htpasswd = QStandardPaths::findExecutable(QStringLiteral("htpasswd"));
            if (!QFile::exists(program) || htpasswd.isEmpty()) {
                *whyNot = QStringLiteral("radicale or htpasswd (apache2-utils) is not installed");
                return false;
            }
            const QString users = m_folder + QStringLiteral("/users");
            if (!QFile::exists(users) &&
                QProcess::execute(htpasswd, {QStringLiteral("-m"), QStringLiteral("-b"),
                                             QStringLiteral("-c"), users, user(), password()}) !=
                    0) {
                *whyNot = QStringLiteral("htpasswd failed");
                return false;
            }
            QFile config(m_folder + QStringLiteral("/config"));
            config.open(QIODevice::WriteOnly | QIODevice::Truncate);
            config.write(QStringLiteral("[server]\nhosts = 127.0.0.1:%1\n"
                                        "[auth]\ntype = htpasswd\nhtpasswd_filename = %2\n"
                                        "htpasswd_encryption = md5\ndelay = 0\n"
                                        "[rights]\ntype = owner_only\n"
                                        "[storage]\nfilesystem_folder = %3/collections\n"
                                        "[logging]\nlevel = warning\n")
                             .arg(m_port)
                             .arg(users, m_folder)
                             .toUtf8());
            config.close();
            arguments = {QStringLiteral("--config"), config.fileName()};
        } else {
            program = QStringLiteral("/usr/bin/xandikos");
            if (!QFile::exists(program)) {
                *whyNot = QStringLiteral("xandikos is not installed");
                return false;
            }
            arguments = {QStringLiteral("--defaults"),
                         QStringLiteral("-d"),
                         m_folder + QStringLiteral("/data"),
                         QStringLiteral("-l"),
                         QStringLiteral("127.0.0.1"),
                         QStringLiteral("-p"),
                         QString::number(m_port)};
        }
        m_process.setProcessChannelMode(QProcess::SeparateChannels);
        // Gone with the test, however the test ends.
        m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_process.start(program, arguments);
        if (!m_process.waitForStarted(10000)) {
            *whyNot = program + QStringLiteral(" does not start: ") + m_process.errorString();
            return false;
        }
        // Ready once it answers on its port.
        QElapsedTimer waited;
        waited.start();
        while (waited.elapsed() < 20000) {
            QTcpSocket probe;
            probe.connectToHost(QHostAddress::LocalHost, m_port);
            if (probe.waitForConnected(200))
                return true;
            if (m_process.state() == QProcess::NotRunning) {
                *whyNot = program + QStringLiteral(" stopped: ") +
                          QString::fromLocal8Bit(m_process.readAllStandardError());
                return false;
            }
            QTest::qWait(100);
        }
        *whyNot = program + QStringLiteral(" did not open its port");
        return false;
    }

    Kind m_kind;
    QString m_folder;
    quint16 m_port = 0;
    mutable QProcess m_process;
};
