// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>
#include <functional>
#include <utility>

class QNetworkAccessManager;

// What a WebDAV server answered to one request.
struct DavResponse
{
    // The HTTP status; 0 when no answer came (no connection, timeout).
    int status = 0;
    // Why no answer came, in the network library's words.
    QString networkProblem;
    QByteArray body;
    // The ETag header as sent, quotes included; empty without one.
    QByteArray etag;
    // The URL that answered, after redirects.
    QUrl url;

    bool ok() const { return status >= 200 && status < 300; }
};

// HTTP for WebDAV and CardDAV on Qt Network: every request is asynchronous
// and ends in its callback on the thread that made it. Basic credentials go
// with every request to the account's own host (servers answer 401 and
// never ask again otherwise), redirects are followed with the same method,
// and a request that makes no progress for the timeout ends as no answer.
class DavClient : public QObject
{
    Q_OBJECT
public:
    using Headers = QList<std::pair<QByteArray, QByteArray>>;
    using Done = std::function<void(const DavResponse &)>;

    DavClient(QString user, QString password, QObject *parent = nullptr);

    // No progress for this long ends a request; 20 s unless set.
    void setTimeout(int milliseconds) { m_timeoutMs = milliseconds; }

    void send(const QByteArray &method, const QUrl &url, const QByteArray &body,
              const Headers &headers, Done done);

    // PROPFIND with a body of <prop> names; depth 0 or 1.
    void propfind(const QUrl &url, int depth, const QByteArray &body, Done done);
    void report(const QUrl &url, int depth, const QByteArray &body, Done done);
    void get(const QUrl &url, Done done);
    // Creates a card only where none is (If-None-Match: *) when `etag` is
    // empty, else replaces only the version `etag` names (If-Match).
    void put(const QUrl &url, const QByteArray &card, const QByteArray &etag, Done done);
    // Deletes only the version `etag` names.
    void remove(const QUrl &url, const QByteArray &etag, Done done);

    // Requests sent and not yet answered.
    int inFlight() const { return m_inFlight; }

private:
    void sendTo(const QByteArray &method, const QUrl &url, const QByteArray &body,
                const Headers &headers, Done done, int redirectsLeft);

    QNetworkAccessManager *m_network;
    QByteArray m_authorization;
    QString m_host;
    int m_timeoutMs = 20000;
    int m_inFlight = 0;
};
