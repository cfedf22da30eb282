// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"
#include "sync/DavClient.h"
#include "sync/DavXml.h"
#include "sync/SyncCard.h"
#include "sync/SyncEngine.h"

#include <QEventLoop>
#include <QMap>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <memory>

// Runs `start(done)` and the event loop until done() is called, or gives
// up after `guardMs`.
template <typename Start>
bool waitUntilDone(Start start, int guardMs = 60000)
{
    QEventLoop loop;
    bool finished = false;
    start([&] {
        finished = true;
        loop.quit();
    });
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, &loop, &QEventLoop::quit);
    guard.start(guardMs);
    if (!finished)
        loop.exec();
    return finished;
}

// "Ann|12 3 1985" for each favorite, sorted: what a list holds, whatever
// its order and ids.
inline QStringList contentsOf(const QList<Favorite> &favorites)
{
    QStringList out;
    for (const Favorite &favorite : favorites)
        out.append(favorite.name + u'|' + favorite.birthday);
    out.sort();
    return out;
}

// One Tavlo: a settings folder of its own (as XDG_CONFIG_HOME gives one),
// with its favorites and sync state.
class SyncDevice
{
public:
    explicit SyncDevice(const QString &folder)
        : statePath(folder + QStringLiteral("/tavlo/sync-state.json")),
          settings(folder + QStringLiteral("/tavlo/tavlo.conf")), favorites(settings)
    {
        favorites.load();
    }

    SyncOutcome sync(const SyncAccount &account, std::function<void(SyncEngine::Step)> hook = {},
                     int timeoutMs = 20000)
    {
        SyncEngine engine(settings, statePath, account);
        engine.setStepHook(std::move(hook));
        engine.setTimeout(timeoutMs);
        if (fetchEveryCardFrom >= 0)
            engine.setFetchEveryCardFrom(fetchEveryCardFrom);
        SyncOutcome outcome;
        outcome.problem = QStringLiteral("the sync never ended");
        waitUntilDone(
            [&](auto done) {
                engine.start([&, done](const SyncOutcome &result) {
                    outcome = result;
                    done();
                });
            },
            std::max(60000, timeoutMs));
        favorites.load();
        if (!outcome.ok)
            qInfo("sync ended: %s", qPrintable(outcome.problem));
        return outcome;
    }

    QStringList contents()
    {
        favorites.load();
        return contentsOf(favorites.all());
    }
    qsizetype indexOf(const QString &name)
    {
        favorites.load();
        for (qsizetype i = 0; i < favorites.count(); ++i) {
            if (favorites.at(i).name == name)
                return i;
        }
        return -1;
    }

    QString statePath;
    // The engine's own unless set.
    qsizetype fetchEveryCardFrom = -1;
    FileSettingsStore settings;
    FavoritesStore favorites;
};

// Plain WebDAV on an address book, to see and change what the server holds
// without Tavlo's sync.
class AddressBookView
{
public:
    AddressBookView(QUrl book, QString user, QString password)
        : m_book(std::move(book)), m_client(user, password)
    {}

    DavResponse request(const QByteArray &method, const QUrl &url, const QByteArray &body = {},
                        const DavClient::Headers &headers = {})
    {
        DavResponse response;
        DavClient::Headers all = headers;
        if (!body.isEmpty() && method != "PUT")
            all.append(std::pair<QByteArray, QByteArray>("Content-Type",
                                                         "application/xml; charset=utf-8"));
        waitUntilDone([&](auto done) {
            m_client.send(method, url, body, all, [&, done](const DavResponse &r) {
                response = r;
                done();
            });
        });
        return response;
    }

    // Every card: href -> its text.
    QMap<QString, QByteArray> cards()
    {
        QMap<QString, QByteArray> result;
        const DavResponse listing =
            request("PROPFIND", m_book, DavXml::etagProperties(), {{"Depth", "1"}});
        const auto parsed = DavXml::readMultistatus(listing.body);
        if (!parsed)
            return result;
        QStringList hrefs;
        for (const DavResource &resource : parsed->responses) {
            if (!resource.isCollection)
                hrefs.append(resource.href);
        }
        // One GET each: the bytes as the server keeps them (XML would turn
        // their CRLFs into LFs).
        for (const QString &href : hrefs) {
            const QUrl url = m_book.resolved(QUrl(href));
            result.insert(url.path(), request("GET", url).body);
        }
        return result;
    }

    QStringList contents()
    {
        QList<Favorite> favorites;
        for (const QByteArray &card : cards()) {
            if (const auto favorite = SyncCard::favoriteOf(card, QDate(2100, 1, 1)))
                favorites.append(*favorite);
        }
        return contentsOf(favorites);
    }

    QUrl urlOf(const QString &path) const { return m_book.resolved(QUrl(path)); }

private:
    QUrl m_book;
    DavClient m_client;
};

// A new, empty address book called `name` in `home`.
inline QUrl newAddressBook(const QUrl &home, const QString &name, const QString &user,
                           const QString &password)
{
    const QUrl book = home.resolved(QUrl(name + u'/'));
    AddressBookView view(book, user, password);
    const DavResponse made = view.request("MKCOL", book, DavXml::makeAddressBook(name),
                                          {{"Content-Type", "application/xml"}});
    return made.ok() ? book : QUrl();
}
