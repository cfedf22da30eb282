// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

// Stands between Tavlo and a real server on loopback and passes every
// request on, until told to break: from the n-th request on it answers
// 500, 401 or garbage, or never answers (a server that hangs). One request
// per connection; the answer is the server's, whole.
class FaultProxy : public QObject
{
public:
    enum class Fault { None, Status500, Status401, Garbage, Silent };

    explicit FaultProxy(quint16 upstream) : m_upstream(upstream)
    {
        m_server.listen(QHostAddress::LocalHost, 0);
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *client = m_server.nextPendingConnection())
                serve(client);
        });
    }

    quint16 port() const { return m_server.serverPort(); }
    // Request `n` (counted from 1) and every later one get `fault`.
    void failFrom(int n, Fault fault)
    {
        m_failFrom = n;
        m_fault = fault;
    }
    int requests() const { return m_requests; }

private:
    void serve(QTcpSocket *client)
    {
        auto *buffer = new QByteArray;
        connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
        connect(client, &QObject::destroyed, this, [buffer] { delete buffer; });
        connect(client, &QTcpSocket::readyRead, this, [this, client, buffer] {
            buffer->append(client->readAll());
            const qsizetype headerEnd = buffer->indexOf("\r\n\r\n");
            if (headerEnd < 0)
                return;
            qsizetype length = 0;
            for (const QByteArray &line : buffer->left(headerEnd).split('\n')) {
                if (line.toLower().startsWith("content-length:"))
                    length = line.mid(15).trimmed().toLongLong();
            }
            if (buffer->size() < headerEnd + 4 + length)
                return;
            const QByteArray request = buffer->left(headerEnd + 4 + length);
            buffer->remove(0, request.size());
            answer(client, request);
        });
    }

    void answer(QTcpSocket *client, const QByteArray &request)
    {
        ++m_requests;
        const Fault fault = m_failFrom > 0 && m_requests >= m_failFrom ? m_fault : Fault::None;
        if (fault == Fault::Silent)
            return;
        if (fault != Fault::None) {
            const QByteArray body = fault == Fault::Garbage
                                        ? QByteArray("<?xml version=\"1.0\"?><multistatus "
                                                     "xmlns=\"DAV:\"><response><href>/x\0\1")
                                        : QByteArray("failed");
            const QByteArray status = fault == Fault::Status500   ? "500 Internal Server Error"
                                      : fault == Fault::Status401 ? "401 Unauthorized"
                                                                  : "207 Multi-Status";
            client->write("HTTP/1.1 " + status + "\r\nContent-Type: application/xml\r\n" +
                          "Content-Length: " + QByteArray::number(body.size()) +
                          "\r\nConnection: close\r\n\r\n" + body);
            client->disconnectFromHost();
            return;
        }
        // Passed on with the connection closed after the answer.
        QByteArray forwarded;
        const qsizetype headerEnd = request.indexOf("\r\n\r\n");
        for (const QByteArray &line : request.left(headerEnd).split('\n')) {
            if (!line.toLower().startsWith("connection:") && !line.trimmed().isEmpty())
                forwarded += line.trimmed() + "\r\n";
        }
        forwarded += "Connection: close\r\n\r\n" + request.mid(headerEnd + 4);
        auto *upstream = new QTcpSocket(this);
        auto *response = new QByteArray;
        connect(upstream, &QTcpSocket::connected, upstream,
                [upstream, forwarded] { upstream->write(forwarded); });
        connect(upstream, &QTcpSocket::readyRead, upstream,
                [upstream, response] { response->append(upstream->readAll()); });
        const QPointer<QTcpSocket> to(client);
        connect(upstream, &QTcpSocket::disconnected, this, [upstream, response, to] {
            response->append(upstream->readAll());
            if (to) {
                to->write(*response);
                to->disconnectFromHost();
            }
            delete response;
            upstream->deleteLater();
        });
        upstream->connectToHost(QHostAddress::LocalHost, m_upstream);
    }

    QTcpServer m_server;
    quint16 m_upstream;
    int m_failFrom = 0;
    Fault m_fault = Fault::None;
    int m_requests = 0;
};
