// SPDX-License-Identifier: MIT
#pragma once

#include "sync/DavClient.h"
#include "sync/SyncProblem.h"

#include <QObject>
#include <QUrl>
#include <functional>

// Finds the address book to sync with from what a person knows: the
// server's root (through /.well-known/carddav), their principal, an
// address-book home or an address book itself. From a principal or home
// it takes the address book named "Birthdays", and makes one (extended
// MKCOL) when there is none. Asynchronous.
class AccountSetup : public QObject
{
    Q_OBJECT
public:
    AccountSetup(QUrl url, QString user, QString password, QObject *parent = nullptr);

    void setTimeout(int milliseconds) { m_client->setTimeout(milliseconds); }

    struct Found
    {
        bool ok = false;
        SyncProblem problem;
        QUrl addressBook;
        // "4.0" where the address book takes it, else "3.0".
        QString vCardVersion;
        bool created = false;
    };
    void start(std::function<void(const Found &)> done);

    static inline const QString bookName = QStringLiteral("Birthdays");

private:
    void probe(const QUrl &url, bool wellKnownTried, int hops);
    void listHome(const QUrl &home);
    void makeBook(const QUrl &home);
    void finish(Found found);
    void fail(const SyncProblem &problem);

    QUrl m_url;
    DavClient *m_client;
    std::function<void(const Found &)> m_done;
};
