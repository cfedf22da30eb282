// SPDX-License-Identifier: MIT
// Sync with 5,000 cards on a real server on loopback: the first sync of a
// new device, syncs with nothing changed (time, requests and where the
// time goes), sending one change, and the memory the first sync takes.
// Prints figures; run by hand:
//   build/bench/sync_5000                  Radicale
//   build/bench/sync_5000 xandikos         Xandikos
//   build/bench/sync_5000 app build/tavlo  the app syncing the 5,000 cards
//                                          from Radicale, with its hold-ups
//                                          of the interface thread
// Both servers are filled straight in their storage before the syncs.
#include "CardDavServer.h"
#include "FaultProxy.h"
#include "SecretServiceBus.h"
#include "SyncHarness.h"
#include "sync/SyncTokenFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int cards = 5000;

// VmRSS (now) or VmHWM (the peak so far), in kB.
qint64 residentKb(const QString &field)
{
    QFile status(u"/proc/self/status"_s);
    status.open(QIODevice::ReadOnly);
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field.toLatin1()))
            return line.mid(field.size()).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

// Card `i` as a phone would have made it.
QByteArray cardText(int i)
{
    return QStringLiteral("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:card-%1\r\nN:Person;Number %1;;;\r\n"
                          "FN:Number %1 Person\r\nTEL;TYPE=cell:+49 30 %1\r\n"
                          "EMAIL:person%1@example.org\r\nBDAY:%2-%3-%4\r\nEND:VCARD\r\n")
        .arg(i)
        .arg(1940 + i % 70)
        .arg(1 + i % 12, 2, 10, QLatin1Char('0'))
        .arg(1 + i % 28, 2, 10, QLatin1Char('0'))
        .toUtf8();
}

// The 5,000 cards as files card0.vcf ... in `folder`.
void writeCards(const QString &folder)
{
    for (int i = 0; i < cards; ++i) {
        QFile card(folder + u"/card%1.vcf"_s.arg(i));
        card.open(QIODevice::WriteOnly);
        card.write(cardText(i));
    }
}

// The address book written straight into Radicale's storage before it
// starts.
void fillRadicale(const QString &folder)
{
    const QString book = folder + u"/collections/collection-root/user/bench"_s;
    QDir().mkpath(book);
    QFile props(book + u"/.Radicale.props"_s);
    props.open(QIODevice::WriteOnly);
    props.write(R"({"D:displayname": "bench", "tag": "VADDRESSBOOK"})");
    writeCards(book);
}

// Xandikos keeps an address book made by MKCOL as a git repository with a
// working tree and an index: the cards are written into the tree and
// committed once with the git library Xandikos itself uses (dulwich),
// where 5,000 PUTs would make 5,000 commits (over 12 minutes).
bool fillXandikos(const QString &book, QString *whyNot)
{
    writeCards(book);
    QProcess git;
    git.start(u"/usr/bin/python3"_s, {u"-c"_s, uR"(import os, sys, dulwich.repo
repo = dulwich.repo.Repo(sys.argv[1])
repo.stage(sorted(n for n in os.listdir(sys.argv[1]) if n.endswith(".vcf")))
repo.do_commit(b"5,000 cards", committer=b"bench <bench@example.org>")
)"_s,
                                      book});
    if (!git.waitForFinished(600000) || git.exitStatus() != QProcess::NormalExit ||
        git.exitCode() != 0) {
        *whyNot = u"committing the cards failed: "_s + git.errorString() + u' ' +
                  QString::fromLocal8Bit(git.readAllStandardError());
        return false;
    }
    return true;
}

// The middle of `values`.
qint64 median(QList<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.value(values.size() / 2);
}

// "median 120 ms (110 to 140)"
QString spread(const QList<qint64> &values)
{
    return u"median %1 ms (%2 to %3)"_s.arg(median(values))
        .arg(*std::min_element(values.cbegin(), values.cend()))
        .arg(*std::max_element(values.cbegin(), values.cend()));
}

QString loadAverage()
{
    QFile file(u"/proc/loadavg"_s);
    file.open(QIODevice::ReadOnly);
    return QString::fromLatin1(file.readAll().split(' ').mid(0, 3).join(' '));
}

// Syncs with nothing changed, and where the time goes: the server's own
// answer to the one request, asked the same way, and the files a sync
// reads (the token file on the way of a sync with nothing changed, the
// whole state only when something did).
void unchanged(QTextStream &out, SyncDevice &device, const SyncAccount &account,
               const FaultProxy &counter)
{
    constexpr int runs = 11;
    out << "(load average before: " << loadAverage() << ")\n";
    QElapsedTimer timer;
    QList<qint64> syncs;
    int requests = 0;
    bool ok = true;
    for (int i = 0; i < runs; ++i) {
        const int before = counter.requests();
        timer.restart();
        ok &= device.sync(account).ok;
        syncs.append(timer.elapsed());
        requests = std::max(requests, counter.requests() - before);
    }
    out << "sync with nothing changed: " << spread(syncs) << ", at most " << requests
        << " request(s)" << (ok ? "" : ", failed") << '\n';
    QList<qint64> tokenReads;
    for (int i = 0; i < runs; ++i) {
        timer.restart();
        const bool found = SyncTokenFile::readCurrent(device.statePath).has_value();
        tokenReads.append(timer.nsecsElapsed() / 1000);
        if (!found)
            out << "  no token file beside the state\n";
    }
    out << "  of which reading the token file: median " << median(tokenReads) << " us\n";
    QList<qint64> stateReads;
    SyncState state;
    for (int i = 0; i < 3; ++i) {
        timer.restart();
        state = SyncState::read(device.statePath);
        stateReads.append(timer.elapsed());
    }
    out << "  not read: the sync state (" << state.entries.size() << " cards, "
        << QFileInfo(device.statePath).size() / 1024 << " kB), " << spread(stateReads) << '\n';
    AddressBookView view(account.addressBook, account.user, account.password);
    QList<qint64> answers;
    for (int i = 0; i < runs; ++i) {
        timer.restart();
        view.request("REPORT", account.addressBook, DavXml::syncCollection(state.syncToken),
                     {{"Depth", "0"}});
        answers.append(timer.elapsed());
    }
    out << "  the server's own answer to that request: " << spread(answers) << '\n';
    out << "(load average after: " << loadAverage() << ")\n";
}

// The first sync of a new device: time, requests and the memory it took
// over `memoryAtStart` (kB). False when it failed.
bool firstSync(QTextStream &out, SyncDevice &device, const SyncAccount &account,
               const FaultProxy &counter, qint64 memoryAtStart)
{
    const int requestsBefore = counter.requests();
    QElapsedTimer timer;
    timer.start();
    const SyncOutcome outcome = device.sync(account, {}, 600000);
    const qint64 firstMs = timer.elapsed();
    const qint64 memoryAfter = residentKb(u"VmHWM:"_s);
    if (!outcome.ok) {
        out << "first sync failed: " << outcome.problem << '\n';
        return false;
    }
    out << "first sync of " << cards << " cards: " << firstMs << " ms, "
        << counter.requests() - requestsBefore << " requests, "
        << SyncEngine::summary(outcome.counts) << '\n';
    out << "peak memory over the start, after the first syncs: "
        << (memoryAfter - memoryAtStart) / 1024.0 << " MB\n";
    return true;
}

int xandikos(QTextStream &out, const QString &folder)
{
    QString whyNot;
    auto server = CardDavServer::start(CardDavServer::Kind::Xandikos, folder, &whyNot);
    if (!server) {
        out << "Xandikos cannot start: " << whyNot << '\n';
        return 77;
    }
    FaultProxy counter(server->port());
    SyncAccount account;
    QUrl home = server->home();
    home.setPort(counter.port());
    account.addressBook = newAddressBook(home, u"bench"_s, server->user(), server->password());
    account.user = server->user();
    account.password = server->password();
    account.vCardVersion = u"3.0"_s;
    QElapsedTimer timer;
    timer.start();
    if (!fillXandikos(folder + u"/data"_s + server->home().path() + u"bench"_s, &whyNot)) {
        out << whyNot << '\n';
        return 1;
    }
    out << "(filling Xandikos with " << cards << " cards, one commit: " << timer.elapsed()
        << " ms)\n";
    const qint64 memoryAtStart = residentKb(u"VmRSS:"_s);
    SyncDevice device(folder + u"/device"_s);
    if (!firstSync(out, device, account, counter, memoryAtStart))
        return 1;
    unchanged(out, device, account, counter);
    return 0;
}

// The app (`tavlo`) set up with the account and started with
// TAVLO_STALL_TRACE=1 until its first sync has ended, then once more for a
// sync with nothing changed: what it writes of hold-ups over 50 ms.
void appSyncing(QTextStream &out, const QString &tavlo, const QString &folder,
                const SyncAccount &account)
{
    SecretServiceBus bus(folder + u"/bus"_s);
    if (!bus.ok()) {
        out << "no Secret Service here: " << bus.whyNot() << '\n';
        return;
    }
    QProcessEnvironment environment = bus.environment();
    environment.insert(u"XDG_CONFIG_HOME"_s, folder + u"/config"_s);
    environment.insert(u"XDG_DATA_HOME"_s, folder + u"/data"_s);
    environment.insert(u"TAVLO_STALL_TRACE"_s, u"1"_s);
    if (!environment.contains(u"DISPLAY"_s))
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    QProcess setup;
    setup.setProcessEnvironment(environment);
    setup.start(tavlo, {u"sync"_s, u"setup"_s, account.addressBook.toString(), account.user});
    setup.write(account.password.toUtf8() + '\n');
    setup.closeWriteChannel();
    // The proxy in this process forwards its requests meanwhile.
    if (!QTest::qWaitFor([&setup] { return setup.state() == QProcess::NotRunning; }, 120000))
        out << "app: set up did not end in two minutes\n";
    out << "app: set up: " << setup.readAllStandardOutput().trimmed()
        << setup.readAllStandardError().trimmed() << '\n';
    out.flush();
    if (setup.exitStatus() != QProcess::NormalExit || setup.exitCode() != 0)
        return;
    const QString conf = folder + u"/config/tavlo/tavlo.conf"_s;
    // How the last sync ended, as the settings row reads it.
    const auto lastDone = [&conf] {
        QFile file(conf);
        file.open(QIODevice::ReadOnly);
        QByteArray found;
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("syncLastDone=") ||
                (line.startsWith("syncProblem=") && line.size() > 12))
                found += line + ' ';
        }
        return found.trimmed();
    };
    for (const char *what : {"first sync of 5,000 cards", "sync with nothing changed"}) {
        QProcess app;
        app.setProcessEnvironment(environment);
        QElapsedTimer timer;
        timer.start();
        const QByteArray before = lastDone();
        app.start(tavlo, {});
        while (lastDone() == before && timer.elapsed() < 600000)
            QTest::qWait(20);
        const qint64 syncedMs = timer.elapsed();
        QTest::qWait(1000);
        app.terminate();
        if (!QTest::qWaitFor([&app] { return app.state() == QProcess::NotRunning; }, 20000))
            out << "app, " << what << ": did not end after SIGTERM\n";
        out << "app, " << what << ": ended " << syncedMs << " ms after start (" << lastDone()
            << ")\n";
        out.flush();
        for (const QByteArray &line : app.readAllStandardError().split('\n')) {
            if (line.startsWith("stall"))
                out << "  " << line << '\n';
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTemporaryDir folder;
    const QStringList arguments = app.arguments();
    if (arguments.value(1) == u"xandikos")
        return xandikos(out, folder.filePath(u"xandikos"_s));
    const QString serverFolder = folder.filePath(u"radicale"_s);
    // The user's htpasswd file first, then the cards.
    QString whyNot;
    {
        auto probe = CardDavServer::start(CardDavServer::Kind::Radicale, serverFolder, &whyNot);
        if (!probe) {
            out << "Radicale cannot start: " << whyNot << '\n';
            return 77;
        }
    }
    fillRadicale(serverFolder);
    auto server = CardDavServer::start(CardDavServer::Kind::Radicale, serverFolder, &whyNot);
    if (!server) {
        out << "Radicale cannot start: " << whyNot << '\n';
        return 77;
    }
    FaultProxy counter(server->port());
    SyncAccount account;
    account.addressBook = QUrl(u"http://127.0.0.1:%1/user/bench/"_s.arg(counter.port()));
    account.user = server->user();
    account.password = server->password();
    account.vCardVersion = u"3.0"_s;

    const qint64 memoryAtStart = residentKb(u"VmRSS:"_s);
    QElapsedTimer timer;
    // Radicale reads and indexes all 5,000 files at its first request; a
    // server in use has done so long before. Not Tavlo's time: told apart.
    {
        SyncDevice warmUp(folder.filePath(u"warm-up"_s));
        timer.start();
        const SyncOutcome warm = warmUp.sync(account, {}, 600000);
        out << "(Radicale's first reading of its 5,000 files, through a first sync: "
            << timer.elapsed() << " ms" << (warm.ok ? "" : ", failed") << ")\n";
    }
    if (arguments.value(1) == u"app") {
        appSyncing(out, arguments.value(2), folder.filePath(u"app"_s), account);
        return 0;
    }
    SyncDevice device(folder.filePath(u"device"_s));
    if (!firstSync(out, device, account, counter, memoryAtStart))
        return 1;

    unchanged(out, device, account, counter);

    device.favorites.load();
    device.favorites.update(0, device.favorites.at(0).name + u" Jr."_s,
                            device.favorites.at(0).birthday);
    int before = counter.requests();
    timer.restart();
    SyncOutcome outcome = device.sync(account);
    out << "sync sending one change: " << timer.elapsed() << " ms, " << counter.requests() - before
        << " requests, " << SyncEngine::summary(outcome.counts) << '\n';

    // A second device that already holds all 5,000 (a restored backup): paired by content.
    SyncDevice second(folder.filePath(u"second"_s));
    device.favorites.load();
    second.favorites.appendMany(device.favorites.all());
    before = counter.requests();
    timer.restart();
    outcome = second.sync(account);
    out << "first sync of a device holding the same 5,000: " << timer.elapsed() << " ms, "
        << counter.requests() - before << " requests, " << SyncEngine::summary(outcome.counts)
        << '\n';
    return 0;
}
