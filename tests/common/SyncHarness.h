// SPDX-License-Identifier: MIT
#pragma once

#include "CardDavServer.h"
#include "FaultProxy.h"
#include "SecretServiceBus.h"

#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"
#include "sync/DavClient.h"
#include "sync/DavXml.h"
#include "sync/PasswordVault.h"
#include "sync/SyncCard.h"
#include "sync/SyncEngine.h"
#include "sync/SyncService.h"

#include <QDirIterator>
#include <QEventLoop>
#include <QHash>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <map>
#include <memory>
#include <optional>

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

// Runs one sync of `engine` to its end.
inline SyncOutcome runSync(SyncEngine &engine, int guardMs = 60000)
{
    SyncOutcome outcome;
    outcome.problem = QStringLiteral("the sync never ended");
    waitUntilDone(
        [&](auto done) {
            engine.start([&, done](const SyncOutcome &result) {
                outcome = result;
                done();
            });
        },
        guardMs);
    if (!outcome.ok)
        qInfo("sync ended: %s", qPrintable(outcome.problem));
    return outcome;
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
        const SyncOutcome outcome = runSync(engine, std::max(60000, timeoutMs));
        favorites.load();
        return outcome;
    }

    // Adds favorites given as "Ann|12 3 1985" and syncs; true when both
    // went well.
    bool addAndSync(const SyncAccount &account, const QStringList &added)
    {
        QList<Favorite> list;
        for (const QString &row : added)
            list.append(Favorite(row.section(u'|', 0, 0), row.section(u'|', 1)));
        favorites.load();
        return favorites.appendMany(list) && sync(account).ok;
    }

    // "rename:Anna", "redate:13 3 1985", "delete" on the favorite "Ann", or
    // "create:Cat|1 1 2000"; "" changes nothing.
    void change(const QString &operation)
    {
        if (operation.isEmpty())
            return;
        favorites.load();
        const QString verb = operation.section(u':', 0, 0);
        const QString what = operation.section(u':', 1);
        const qsizetype ann = indexOf(QStringLiteral("Ann"));
        if (verb == u"create") {
            QVERIFY(
                favorites.appendMany({Favorite(what.section(u'|', 0, 0), what.section(u'|', 1))}));
            return;
        }
        QVERIFY(ann >= 0);
        const Favorite favorite = favorites.at(ann);
        if (verb == u"rename")
            QVERIFY(favorites.update(ann, what, favorite.birthday));
        else if (verb == u"redate")
            QVERIFY(favorites.update(ann, favorite.name, what));
        else if (verb == u"delete")
            QVERIFY(favorites.remove(ann));
        else
            QFAIL("unknown operation");
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

    // A card written as another client writes it: new, or over what is there.
    bool put(const QString &path, const QByteArray &card, bool onlyNew = true)
    {
        DavClient::Headers headers{{"Content-Type", "text/vcard"}};
        if (onlyNew)
            headers.append(std::pair<QByteArray, QByteArray>("If-None-Match", "*"));
        return request("PUT", urlOf(path), card, headers).ok();
    }

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

// Passwords kept in memory, answered on the next turn of the event loop as
// the Secret Service would.
class MemoryVault final : public PasswordVault
{
public:
    QHash<QString, QString> passwords;

    void read(const QString &account,
              std::function<void(const QString &, const SyncProblem &)> done) override
    {
        QTimer::singleShot(0, [=, this] { done(passwords.value(account), {}); });
    }
    void write(const QString &account, const QString &password,
               std::function<void(const SyncProblem &)> done) override
    {
        passwords.insert(account, password);
        QTimer::singleShot(0, [=] { done({}); });
    }
    void remove(const QString &account, std::function<void(const SyncProblem &)> done) override
    {
        passwords.remove(account);
        QTimer::singleShot(0, [=] { done({}); });
    }
};

// `tavlo` as a person runs it: how it ended and what it printed.
struct TavloRun
{
    int status = -1;
    QString out;
    QString err;
};

// What a sync test program runs against, set up once in its main(): a
// scratch folder, Radicale (and Xandikos) on loopback, and gnome-keyring
// on a private bus where asked. Every account is a new address book, every
// device a new folder, so that tests never see each other's cards.
class SyncWorld
{
public:
    using Kind = CardDavServer::Kind;
    enum Need { radicale = 0, bothServers = 1, keyring = 2 };

    static SyncWorld &get()
    {
        static SyncWorld world;
        return world;
    }

    // Runs the test object, or returns 77 (skip) when what it needs cannot start.
    template <typename Test>
    static int run(int argc, char *argv[], int needs)
    {
        SyncWorld &world = get();
        if (needs & keyring) {
            world.m_keyring = std::make_unique<SecretServiceBus>(
                world.scratch().filePath(QStringLiteral("keyring")));
            if (!world.m_keyring->ok()) {
                qWarning("no Secret Service: %s", qPrintable(world.m_keyring->whyNot()));
                return 77;
            }
        }
        if (needs & bothServers) {
            if (!CardDavServer::startBoth(world.scratch().path(), world.m_servers))
                return 77;
        } else {
            QString whyNot;
            auto server = CardDavServer::start(
                Kind::Radicale, world.scratch().filePath(QStringLiteral("Radicale")), &whyNot);
            if (!server) {
                qWarning("Radicale cannot start: %s", qPrintable(whyNot));
                return 77;
            }
            world.m_servers[Kind::Radicale] = std::move(server);
        }
        Test test;
        const int status = QTest::qExec(&test, argc, argv);
        world.m_servers.clear();
        world.m_keyring.reset();
        return status;
    }

    CardDavServer &server(Kind kind = Kind::Radicale) { return *m_servers.at(kind); }

    QString newFolder(const QString &what = QStringLiteral("device"))
    {
        return scratch().filePath(what + QString::number(++m_made));
    }

    // An account on a new, empty address book of `kind`.
    SyncAccount newAccount(Kind kind = Kind::Radicale,
                           const QString &version = QStringLiteral("4.0"))
    {
        CardDavServer &s = server(kind);
        SyncAccount account;
        account.addressBook = newAddressBook(s.home(), QStringLiteral("book%1").arg(++m_made),
                                             s.user(), s.password());
        account.user = s.user();
        account.password = s.password();
        account.vCardVersion = version;
        return account;
    }

    static AddressBookView viewOf(const SyncAccount &account)
    {
        return AddressBookView(account.addressBook, account.user, account.password);
    }

    // A "kind" column with a row for each server.
    static void serverRows()
    {
        QTest::addColumn<Kind>("kind");
        for (const Kind kind : {Kind::Radicale, Kind::Xandikos})
            QTest::newRow(qPrintable(CardDavServer::nameOf(kind))) << kind;
    }

    // The environment of a `tavlo` with `configFolder` as its settings
    // folder and the keyring's bus, in English.
    QProcessEnvironment environmentFor(const QString &configFolder) const
    {
        QProcessEnvironment environment =
            m_keyring ? m_keyring->environment() : QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder);
        environment.insert(QStringLiteral("XDG_DATA_HOME"), configFolder + QStringLiteral("/data"));
        environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
        environment.remove(QStringLiteral("LANGUAGE"));
        return environment;
    }

private:
    SyncWorld() = default;

    // Made on first use: a program that includes the harness without a
    // world makes no folder.
    QTemporaryDir &scratch()
    {
        if (!m_scratch)
            m_scratch.emplace();
        return *m_scratch;
    }

    std::optional<QTemporaryDir> m_scratch;
    std::map<Kind, std::unique_ptr<CardDavServer>> m_servers;
    std::unique_ptr<SecretServiceBus> m_keyring;
    int m_made = 0;
};

Q_DECLARE_METATYPE(CardDavServer::Kind)

// The test program's world, as every test reaches it.
inline SyncWorld &world = SyncWorld::get();

#ifdef TAVLO_EXECUTABLE
// The program, run to its end with `input` on standard input.
inline TavloRun tavlo(const QString &configFolder, const QStringList &arguments,
                      const QByteArray &input = {},
                      std::optional<QProcessEnvironment> environment = std::nullopt)
{
    QProcess process;
    process.setProcessEnvironment(environment.value_or(world.environmentFor(configFolder)));
    process.start(QStringLiteral(TAVLO_EXECUTABLE), arguments);
    process.write(input);
    process.closeWriteChannel();
    TavloRun run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}
#endif

// The files under `folder` that hold `bytes` anywhere.
inline QStringList filesHolding(const QString &folder, const QByteArray &bytes)
{
    QStringList found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly) || file.readAll().contains(bytes))
            found.append(file.fileName());
    }
    return found;
}

// A card's content lines, unfolded, in order of their text: what a server
// that writes cards anew (its order, its folding) keeps of them.
inline QList<QByteArray> unfoldedLines(QByteArray card)
{
    card.replace("\r\n", "\n").replace("\n ", "");
    QList<QByteArray> lines = card.split('\n');
    lines.removeAll(QByteArray());
    std::sort(lines.begin(), lines.end());
    return lines;
}

// What `got` lacks of `wanted` and has beyond it, for a failure to tell.
inline QString differenceOf(const QStringList &got, const QStringList &wanted)
{
    QStringList lines;
    for (const QString &row : wanted) {
        if (!got.contains(row))
            lines.append(QStringLiteral("lost: ") + row);
    }
    for (const QString &row : got) {
        if (!wanted.contains(row))
            lines.append(QStringLiteral("more than made: ") + row);
    }
    return lines.join(u'\n');
}

// The account as a set-up leaves it: its keys, its password in the vault.
inline void keepAccount(SettingsStore &settings, MemoryVault &vault, const SyncAccount &account)
{
    settings.set(SettingsKeys::syncAddressBook, account.addressBook.toString());
    settings.set(SettingsKeys::syncUser, account.user);
    vault.passwords.insert(PasswordVault::accountName(account.user, account.addressBook.toString()),
                           account.password);
}

// A device with the app's sync service, its account set up on a new
// address book of Radicale that it reaches through a FaultProxy; the
// delays are long, so that only what a test looks at makes a sync.
class ServiceDevice : public SyncDevice
{
public:
    explicit ServiceDevice(const QString &folder,
                           SyncAccount direct = SyncWorld::get().newAccount())
        : SyncDevice(folder), account(std::move(direct)),
          proxy(quint16(account.addressBook.port())), service(settings, &vault, statePath)
    {
        SyncAccount proxied = account;
        proxied.addressBook.setPort(proxy.port());
        keepAccount(settings, vault, proxied);
        service.setDelays(60000, 60000);
    }

    QString problem() { return settings.value(SettingsKeys::syncProblem).value_or(QString()); }
    bool synced() { return settings.value(SettingsKeys::syncLastDone).has_value(); }

    // The account as the server sees it, not through the proxy.
    SyncAccount account;
    FaultProxy proxy;
    MemoryVault vault;
    SyncService service;
};
