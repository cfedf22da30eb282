// SPDX-License-Identifier: MIT
#include "sync/DavClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

DavClient::DavClient(QString user, QString password, QObject *parent)
    : QObject(parent), m_network(new QNetworkAccessManager(this))
{
    m_authorization = "Basic " + (user.toUtf8() + ':' + password.toUtf8()).toBase64();
    // Nothing of the account is ever written to the network library's cache
    // or cookie jar; each request carries its credentials itself.
    m_network->setCookieJar(nullptr);
}

void DavClient::send(const QByteArray &method, const QUrl &url, const QByteArray &body,
                     const Headers &headers, Done done)
{
    if (m_host.isEmpty())
        m_host = url.host();
    sendTo(method, url, body, headers, std::move(done), 5);
}

void DavClient::sendTo(const QByteArray &method, const QUrl &url, const QByteArray &body,
                       const Headers &headers, Done done, int redirectsLeft)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setTransferTimeout(m_timeoutMs);
    // The password goes only to the host the account names.
    if (url.host() == m_host)
        request.setRawHeader("Authorization", m_authorization);
    for (const auto &[name, value] : headers)
        request.setRawHeader(name, value);
    QNetworkReply *reply = m_network->sendCustomRequest(request, method, body);
    ++m_inFlight;
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, method, body, headers, done = std::move(done), redirectsLeft] {
                reply->deleteLater();
                --m_inFlight;
                DavResponse response;
                response.url = reply->url();
                response.status =
                    reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
                const QUrl location =
                    reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
                if (response.status >= 301 && response.status <= 308 && response.status != 304 &&
                    location.isValid() && redirectsLeft > 0) {
                    sendTo(method, reply->url().resolved(location), body, headers, done,
                           redirectsLeft - 1);
                    return;
                }
                if (response.status == 0) {
                    // A transfer timeout ends the reply as cancelled.
                    response.networkProblem =
                        reply->error() == QNetworkReply::OperationCanceledError
                            ? QStringLiteral("no answer for %1 s").arg(m_timeoutMs / 1000.0)
                            : reply->errorString();
                    done(response);
                    return;
                }
                response.body = reply->readAll();
                response.etag = reply->rawHeader("ETag");
                done(response);
            });
}

void DavClient::propfind(const QUrl &url, int depth, const QByteArray &body, Done done)
{
    send("PROPFIND", url, body,
         {{"Depth", QByteArray::number(depth)}, {"Content-Type", "application/xml; charset=utf-8"}},
         std::move(done));
}

void DavClient::report(const QUrl &url, int depth, const QByteArray &body, Done done)
{
    send("REPORT", url, body,
         {{"Depth", QByteArray::number(depth)}, {"Content-Type", "application/xml; charset=utf-8"}},
         std::move(done));
}

void DavClient::get(const QUrl &url, Done done)
{
    send("GET", url, {}, {}, std::move(done));
}

void DavClient::put(const QUrl &url, const QByteArray &card, const QByteArray &etag, Done done)
{
    Headers headers{{"Content-Type", "text/vcard; charset=utf-8"}};
    if (etag.isEmpty())
        headers.append(std::pair<QByteArray, QByteArray>("If-None-Match", "*"));
    else
        headers.append(std::pair<QByteArray, QByteArray>("If-Match", etag));
    send("PUT", url, card, headers, std::move(done));
}

void DavClient::remove(const QUrl &url, const QByteArray &etag, Done done)
{
    send("DELETE", url, {}, {{"If-Match", etag}}, std::move(done));
}
