// SPDX-License-Identifier: MIT
#include "sync/SyncEngine.h"

#include "sync/DavXml.h"
#include "sync/SyncCard.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QFuture>
#include <QSet>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// Cards per addressbook-multiget: large enough that 5,000 cards are a few
// requests, small enough that no answer is huge.
constexpr qsizetype fetchBatch = 250;
// Requests on the way at once while sending.
constexpr int parallelSends = 4;
// Confirmed sends between two writes of the state.
constexpr int saveEvery = 200;
// A change refused because the card's ETag moved on goes again this often.
constexpr int maxAttempts = 3;
// More cards to fetch than this go in one query for every card.
constexpr qsizetype fetchEveryCardFrom = 2 * fetchBatch;
// Answers up to this size are read on the engine's thread.
constexpr qsizetype smallAnswer = 16 * 1024;

// `after` made of `before` (ids added, changed and removed), done again on
// `fresh`: the list as it is stored now, with what others changed since.
QList<Favorite> sameEdits(const QList<Favorite> &before, const QList<Favorite> &after,
                          QList<Favorite> fresh)
{
    QHash<QString, const Favorite *> was;
    for (const Favorite &favorite : before)
        was.insert(favorite.id, &favorite);
    QHash<QString, const Favorite *> now;
    for (const Favorite &favorite : after)
        now.insert(favorite.id, &favorite);
    QList<Favorite> result;
    result.reserve(fresh.size() + after.size());
    QSet<QString> placed;
    for (const Favorite &favorite : fresh) {
        if (was.contains(favorite.id) && !now.contains(favorite.id))
            continue;
        if (const Favorite *changed = now.value(favorite.id);
            changed && was.contains(favorite.id) && !placed.contains(favorite.id) &&
            !SyncMerge::sameContent(*changed, *was.value(favorite.id))) {
            result.append(*changed);
        } else {
            result.append(favorite);
        }
        placed.insert(favorite.id);
    }
    for (const Favorite &favorite : after) {
        if (!was.contains(favorite.id) && !placed.contains(favorite.id))
            result.append(favorite);
    }
    return result;
}

} // namespace

SyncEngine::SyncEngine(SettingsStore &settings, QString statePath, SyncAccount account,
                       QObject *parent)
    : QObject(parent), m_settings(settings), m_favorites(settings),
      m_statePath(std::move(statePath)), m_account(std::move(account)),
      m_client(new DavClient(m_account.user, m_account.password, this)),
      m_today(QDate::currentDate()), m_fetchEveryCardFrom(fetchEveryCardFrom)
{
    QString path = m_account.addressBook.path();
    if (!path.endsWith(u'/'))
        m_account.addressBook.setPath(path + u'/');
    m_stateWrites.setMaxThreadCount(1);
}

// The pool waits for a state write under way before it goes.
SyncEngine::~SyncEngine() = default;

template <typename Work, typename Then>
void SyncEngine::offThread(Work work, Then then)
{
    QtConcurrent::run(std::move(work)).then(this, std::move(then));
}

void SyncEngine::readAnswer(const QByteArray &body,
                            std::function<void(const std::optional<DavMultistatus> &)> then)
{
    // A small answer (no change, a few cards) costs less to read here than
    // the trip to another thread and back.
    if (body.size() <= smallAnswer)
        return then(DavXml::readMultistatus(body));
    offThread(
        [body] { return DavXml::readMultistatus(body); },
        [then = std::move(then)](const std::optional<DavMultistatus> &answer) { then(answer); });
}

QString SyncEngine::summary(const SyncCounts &counts)
{
    return u"sent %1, received %2, deleted %3, conflicts kept %4"_s.arg(counts.sent)
        .arg(counts.received)
        .arg(counts.deleted)
        .arg(counts.conflicts);
}

SyncProblem SyncEngine::problemOf(const DavResponse &response, const QString &what)
{
    using Kind = SyncProblem::Kind;
    if (response.status == 0)
        return {Kind::Unreachable, u"cannot reach the server: %1"_s.arg(response.networkProblem)};
    if (response.status == 401)
        return {Kind::LoginRefused, u"the server refused the login (wrong user or password)"_s};
    if (response.status >= 500)
        return SyncProblem::other(
            u"the server failed (HTTP %1) while %2"_s.arg(response.status).arg(what));
    return SyncProblem::other(
        u"the server answered HTTP %1 while %2"_s.arg(response.status).arg(what));
}

QString SyncEngine::hrefOf(const QString &serverHref) const
{
    return m_account.addressBook.resolved(QUrl(serverHref)).path(QUrl::FullyEncoded);
}

QUrl SyncEngine::urlOf(const QString &href) const
{
    QUrl url = m_account.addressBook;
    url.setPath(href, QUrl::TolerantMode);
    return url;
}

void SyncEngine::start(Done done)
{
    m_done = std::move(done);
    QDir().mkpath(QFileInfo(m_statePath).absolutePath());
    // A sync that takes long is not broken into; one whose process is gone
    // holds nothing.
    SyncLock::Outcome locked = SyncLock::Outcome::Failed;
    m_lock = SyncLock::tryTake(m_statePath + u".lock"_s, &locked);
    if (!m_lock) {
        fail(SyncProblem::other(locked == SyncLock::Outcome::Held
                                    ? u"another sync of these favorites is running"_s
                                    : u"cannot lock %1.lock"_s.arg(m_statePath)));
        return;
    }
    // Whether the token file speaks for the state and for the favorites as
    // they are now: a few hundred bytes, read here at once.
    m_favorites.load();
    m_storedMark = m_settings.value(SettingsKeys::syncStored).value_or(QString());
    const std::optional<SyncTokenFile> token = SyncTokenFile::readCurrent(m_statePath);
    if (token && token->addressBook == m_account.addressBook.toString() &&
        token->favoritesDigest == SyncTokenFile::digestOf(m_favorites.all()))
        return listChangesSince(*token);
    readState([this] { listChanges(); });
}

void SyncEngine::readState(std::function<void()> then)
{
    offThread(
        [path = m_statePath, mark = m_storedMark] {
            // A sync stopped after it stored favorites, before it put their
            // state in place, left that state aside: it is the one that holds.
            if (std::optional<SyncState> aside = SyncState::readAside(path, mark))
                return std::pair(std::move(*aside), true);
            return std::pair(SyncState::read(path), false);
        },
        [this, then = std::move(then)](const std::pair<SyncState, bool> &read) {
            const auto &[state, aside] = read;
            m_state = state;
            // One taken from aside is written in place at the next write.
            m_saved = aside ? SyncState() : state;
            const QString book = m_account.addressBook.toString();
            if (m_state.addressBook != book) {
                // Another address book, or none yet: what is known of
                // cards starts afresh; favorites and cards are paired
                // again by UID and content.
                m_state = SyncState();
                m_state.addressBook = book;
            }
            then();
        });
}

void SyncEngine::listChangesSince(const SyncTokenFile &token)
{
    const QString sent = token.syncToken;
    m_client->report(
        m_account.addressBook, 0, DavXml::syncCollection(sent),
        [this, sent](const DavResponse &response) {
            if (response.status == 0 || response.status == 401)
                return fail(problemOf(response, u"listing the changes"_s));
            // The answer as if asked with the state's token, which it is,
            // unless the state is not the one the token file was written
            // with: then once more with the state's own.
            const auto withState = [this, sent, response](std::optional<DavMultistatus> listing) {
                readState([this, sent, response, listing = std::move(listing)] {
                    if (m_state.syncToken != sent)
                        return listChanges();
                    takeChanges(response, listing);
                });
            };
            if (response.status != 207)
                return withState(std::nullopt);
            readAnswer(response.body, [this, sent, withState](const auto &listing) {
                const QString collection = m_account.addressBook.path(QUrl::FullyEncoded);
                const bool unchanged =
                    listing && listing->syncToken == sent &&
                    std::all_of(listing->responses.cbegin(), listing->responses.cend(),
                                [&](const DavResource &resource) {
                                    return resource.isCollection ||
                                           hrefOf(resource.href) == collection;
                                });
                if (!unchanged)
                    return withState(listing);
                // Nothing on the server and nothing here: the state, the
                // token file and the favorites stay as they are.
                m_outcome.ok = true;
                finish();
            });
        });
}

void SyncEngine::listChanges()
{
    m_client->report(m_account.addressBook, 0, DavXml::syncCollection(m_state.syncToken),
                     [this](const DavResponse &response) {
                         if (response.status != 207)
                             return takeChanges(response, std::nullopt);
                         readAnswer(response.body, [this, response](const auto &listing) {
                             takeChanges(response, listing);
                         });
                     });
}

void SyncEngine::takeChanges(const DavResponse &response,
                             const std::optional<DavMultistatus> &listing)
{
    if (response.status == 207) {
        if (!listing)
            return fail(SyncProblem::other(u"the server's answer could not be read"_s));
        const bool removals = std::any_of(listing->responses.cbegin(), listing->responses.cend(),
                                          [](const DavResource &r) { return r.status == 404; });
        m_state.removalsReported |= removals;
        // Something changed that the answer does not name, on a server that
        // may leave removals out (or has not been listed whole for a day):
        // the full listing finds them.
        const QDateTime listed = QDateTime::fromString(m_state.fullyListed, Qt::ISODate);
        const bool due =
            !listed.isValid() || listed.secsTo(QDateTime::currentDateTimeUtc()) > 24 * 60 * 60;
        if (!m_state.removalsReported && !m_state.syncToken.isEmpty() &&
            listing->syncToken != m_state.syncToken && (listing->responses.isEmpty() || due))
            return listAll(listing->syncToken);
        return takeListing(listing->responses, m_state.syncToken.isEmpty(), listing->syncToken);
    }
    if (response.status == 0 || response.status == 401)
        return fail(problemOf(response, u"listing the changes"_s));
    // An unknown or expired token (403, 409, 500), or no sync-collection at
    // all: list every card.
    listAll(QString());
}

void SyncEngine::listAll(const QString &token)
{
    m_client->propfind(
        m_account.addressBook, 1, DavXml::etagProperties(),
        [this, token](const DavResponse &response) {
            if (response.status != 207)
                return fail(problemOf(response, u"listing the cards"_s));
            readAnswer(response.body, [this, token](const auto &listing) {
                if (!listing)
                    return fail(SyncProblem::other(u"the server's answer could not be read"_s));
                takeListing(listing->responses, true, token);
            });
        });
}

void SyncEngine::takeListing(const QList<DavResource> &resources, bool complete,
                             const QString &token)
{
    m_newToken = token;
    QHash<QString, QByteArray> known;
    for (const SyncEntry &entry : std::as_const(m_state.entries))
        known.insert(entry.href, entry.etag);
    for (const SyncEntry &entry : std::as_const(m_state.pendingDeletes))
        known.insert(entry.href, entry.etag);
    const QString collection = m_account.addressBook.path(QUrl::FullyEncoded);
    QSet<QString> seen;
    for (const DavResource &resource : resources) {
        const QString href = hrefOf(resource.href);
        if (href == collection || resource.isCollection)
            continue;
        if (resource.status == 404) {
            m_removed.append(href);
            continue;
        }
        seen.insert(href);
        const auto found = known.constFind(href);
        if (found == known.cend() || resource.etag.isEmpty() || *found != resource.etag)
            m_toFetch.append(href);
    }
    if (complete) {
        m_state.fullyListed = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        for (auto it = known.cbegin(); it != known.cend(); ++it) {
            if (!seen.contains(it.key()))
                m_removed.append(it.key());
        }
    }
    if (m_stepHook)
        m_stepHook(Step::Listed);
    fetchNext();
}

QSet<QString> SyncEngine::takeCards(const QList<DavResource> &answer, const QStringList &asked)
{
    const QSet<QString> wanted(asked.cbegin(), asked.cend());
    QSet<QString> taken;
    for (const DavResource &resource : answer) {
        const QString href = hrefOf(resource.href);
        if (resource.hasAddressData && wanted.contains(href) && !taken.contains(href)) {
            m_fetched.append({href, resource.etag, resource.addressData});
            taken.insert(href);
        }
    }
    return taken;
}

void SyncEngine::fetchAll()
{
    const QStringList wanted = std::exchange(m_toFetch, {});
    m_client->report(
        m_account.addressBook, 1, DavXml::everyCard(), [this, wanted](const DavResponse &response) {
            if (response.status == 0 || response.status == 401)
                return fail(problemOf(response, u"fetching cards"_s));
            // A server without the query fetches them as any other.
            if (response.status != 207) {
                m_toFetch = wanted;
                return fetchNext(false);
            }
            readAnswer(response.body, [this, wanted](const auto &cards) {
                if (!cards)
                    return fail(SyncProblem::other(u"the server's answer could not be read"_s));
                const QSet<QString> answered = takeCards(cards->responses, wanted);
                // One the answer leaves out (gone since the listing, or cut
                // off by the server) is asked for by name: only a multiget
                // tells a removed card.
                for (const QString &href : wanted) {
                    if (!answered.contains(href))
                        m_toFetch.append(href);
                }
                fetchNext(false);
            });
        });
}

void SyncEngine::fetchNext(bool wholeAllowed)
{
    if (m_toFetch.isEmpty())
        return applyServerChanges();
    if (wholeAllowed && m_toFetch.size() > m_fetchEveryCardFrom)
        return fetchAll();
    const QStringList batch = m_toFetch.mid(0, fetchBatch);
    m_toFetch.remove(0, batch.size());
    m_client->report(
        m_account.addressBook, 1, DavXml::multiget(batch),
        [this, batch](const DavResponse &response) {
            if (response.status != 207)
                return fail(problemOf(response, u"fetching cards"_s));
            readAnswer(response.body, [this, batch](const auto &cards) {
                if (!cards)
                    return fail(SyncProblem::other(u"the server's answer could not be read"_s));
                const QSet<QString> answered = takeCards(cards->responses, batch);
                // Gone between the listing and now.
                for (const QString &href : batch) {
                    if (!answered.contains(href))
                        m_removed.append(href);
                }
                fetchNext(false);
            });
        });
}

WriteResult SyncEngine::storeFavorites(const QList<Favorite> &before, const QList<Favorite> &after,
                                       const QString &mark)
{
    SettingsBatch batch(m_settings);
    m_favorites.load();
    m_storing = true;
    m_favorites.replaceAll(sameEdits(before, after, m_favorites.all()));
    m_settings.set(SettingsKeys::syncStored, mark);
    const WriteResult stored = batch.finish();
    m_storing = false;
    if (stored)
        emit favoritesStored();
    return stored;
}

void SyncEngine::storeWithState(const QList<Favorite> &before, const QList<Favorite> &after,
                                std::function<void(const WriteResult &)> then)
{
    const QString mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_wroteState = true;
    QtConcurrent::run(&m_stateWrites, [state = m_state, mark, path = m_statePath,
                                       writer = m_writer] {
        // The token file speaks for the state in place, which is about to
        // be another.
        if (const WriteResult removed = SyncTokenFile::remove(path); !removed)
            return removed;
        return state.writeAside(path, mark, writer);
    }).then(this, [this, before, after, mark, then = std::move(then)](const WriteResult &aside) {
        if (!aside)
            return then(aside);
        if (m_stepHook)
            m_stepHook(Step::Storing);
        // A failure leaves the state aside with a mark that no favorites
        // hold: nothing.
        if (const WriteResult stored = storeFavorites(before, after, mark); !stored)
            return then(stored);
        if (m_stepHook)
            m_stepHook(Step::Stored);
        saveState(then);
    });
}

void SyncEngine::saveState(std::function<void(const WriteResult &)> then)
{
    m_sinceSaved = 0;
    m_saved = m_state;
    m_wroteState = true;
    // Asked here, so that it waits for the favorites stored until now.
    SettingsStore::WrittenCheck favoritesWritten = m_settings.untilWritten();
    QtConcurrent::run(&m_stateWrites, [favoritesWritten = std::move(favoritesWritten),
                                       state = m_state, path = m_statePath, writer = m_writer] {
        // Never a state that names favorites not stored.
        if (const WriteResult favorites = favoritesWritten(); !favorites)
            return favorites;
        // The token file speaks for the state as it was: gone for good
        // before the state changes, so that no stop in between leaves it
        // beside another state.
        if (const WriteResult removed = SyncTokenFile::remove(path); !removed)
            return removed;
        return state.write(path, writer);
    }).then(this, [this, then = std::move(then)](const WriteResult &stored) {
        // The next write, whatever it holds, is needed again.
        if (!stored)
            m_saved = SyncState();
        then(stored);
    });
}

void SyncEngine::saveChangedState(std::function<void(const WriteResult &)> then)
{
    if (m_state == m_saved)
        return then(WriteResult());
    saveState(std::move(then));
}

void SyncEngine::saveToken()
{
    SyncTokenFile token;
    token.addressBook = m_state.addressBook;
    token.syncToken = m_state.syncToken;
    // After the state's last write, on the same thread: the token file names
    // the state file that write left.
    m_wroteState = true;
    // finish() waits for it as for every write there.
    [[maybe_unused]] const QFuture<void> written =
        QtConcurrent::run(&m_stateWrites, [token, favorites = m_local, path = m_statePath,
                                           writer = m_writer]() mutable {
            token.favoritesDigest = SyncTokenFile::digestOf(favorites);
            token.stateIdentity = SyncTokenFile::identityOf(path);
            // Without it the next sync reads the state: slower, never wrong.
            if (!token.syncToken.isEmpty() && !token.stateIdentity.isEmpty())
                token.write(path, writer);
        });
}

void SyncEngine::applyServerChanges()
{
    if (m_fetched.isEmpty() && m_removed.isEmpty())
        return applyMerged(std::nullopt, {});
    m_favorites.load();
    const QList<Favorite> before = m_favorites.all();
    offThread(
        [before, state = m_state, fetched = std::exchange(m_fetched, {}), removed = m_removed,
         today = m_today, conflictName = m_conflictName] {
            return SyncMerge::fromServer(before, state, fetched, removed, today, conflictName);
        },
        [this, before](const SyncMerge::Result &merged) { applyMerged(merged, before); });
}

void SyncEngine::applyMerged(std::optional<SyncMerge::Result> merged, const QList<Favorite> &before)
{
    QList<Favorite> after = before;
    if (merged) {
        after = std::move(merged->favorites);
        m_state = std::move(merged->state);
        m_outcome.counts.received += merged->counts.received;
        m_outcome.counts.deleted += merged->counts.deleted;
        m_outcome.counts.conflicts += merged->counts.conflicts;
    }
    m_removed.clear();
    m_state.syncToken = m_newToken;
    const auto stored = [this](const WriteResult &written) {
        if (!written)
            return fail(SyncProblem::notSaved(written.message()));
        if (m_stepHook)
            m_stepHook(Step::Applied);
        send();
    };
    if (after != before)
        return storeWithState(before, after, stored);
    saveChangedState(stored);
}

void SyncEngine::send()
{
    m_favorites.load();
    m_local = m_favorites.all();
    m_localBefore = m_local;
    if (m_stepHook)
        m_stepHook(Step::Sending);

    QHash<QString, qsizetype> position;
    for (qsizetype i = 0; i < m_local.size(); ++i) {
        if (!position.contains(m_local.at(i).id))
            position.insert(m_local.at(i).id, i);
    }
    // Deleted here: pending until the server confirms. A pending delete whose
    // favorite is back (undone) is no delete.
    for (qsizetype i = m_state.pendingDeletes.size() - 1; i >= 0; --i) {
        if (position.contains(m_state.pendingDeletes.at(i).id)) {
            m_state.entries.append(m_state.pendingDeletes.takeAt(i));
        }
    }
    QSet<QString> linked;
    for (qsizetype i = m_state.entries.size() - 1; i >= 0; --i) {
        const SyncEntry &entry = m_state.entries.at(i);
        if (entry.id.isEmpty())
            continue;
        if (!position.contains(entry.id)) {
            m_state.pendingDeletes.append(m_state.entries.takeAt(i));
        } else {
            linked.insert(entry.id);
        }
    }
    m_queue.clear();
    m_state.sending.clear();
    for (const SyncEntry &entry : std::as_const(m_state.pendingDeletes)) {
        m_queue.append([this, entry] {
            m_client->remove(
                urlOf(entry.href), entry.etag,
                [this, entry](const DavResponse &response) { deleted(entry, response); });
        });
    }
    for (const SyncEntry &entry : std::as_const(m_state.entries)) {
        if (entry.id.isEmpty())
            continue;
        const Favorite &favorite = m_local.at(position.value(entry.id));
        const std::optional<DayOfBirth> day = DayOfBirth::fromStored(favorite.birthday);
        if (!day || SyncMerge::sameContent(favorite, {entry.name, entry.birthday}))
            continue;
        m_state.sending.append({entry.href, {}, favorite.id, favorite.name, favorite.birthday, {}});
        queueChange(entry.href, favorite, 1);
    }
    for (const Favorite &favorite : std::as_const(m_local)) {
        const std::optional<DayOfBirth> day = DayOfBirth::fromStored(favorite.birthday);
        if (!day || favorite.id.isEmpty() || linked.contains(favorite.id))
            continue;
        linked.insert(favorite.id);
        const QString href = m_account.addressBook.path(QUrl::FullyEncoded) +
                             QString::fromLatin1(QUrl::toPercentEncoding(favorite.id)) + u".vcf"_s;
        const QByteArray card = SyncCard::newCard(favorite, *day, m_account.vCardVersion);
        m_state.sending.append({href, {}, favorite.id, favorite.name, favorite.birthday, {}});
        m_queue.append([this, href, card, favorite] {
            m_client->put(urlOf(href), card, {}, [=, this](const DavResponse &response) {
                sent(href, favorite, card, response, true, 1);
            });
        });
    }
    m_nothingToSend = m_queue.isEmpty();
    saveChangedState([this](const WriteResult &stored) {
        if (!stored)
            return fail(SyncProblem::notSaved(stored.message()));
        sendNext();
    });
}

void SyncEngine::queueChange(const QString &href, const Favorite &favorite, int attempt)
{
    m_queue.append([this, href, favorite, attempt] {
        const qsizetype e = m_state.indexOfHref(href);
        if (e < 0)
            return sendNext();
        const SyncEntry &entry = m_state.entries.at(e);
        const QByteArray card =
            SyncCard::changedCard(entry.card, favorite, *DayOfBirth::fromStored(favorite.birthday));
        m_client->put(urlOf(href), card, entry.etag, [=, this](const DavResponse &response) {
            sent(href, favorite, card, response, false, attempt);
        });
    });
}

void SyncEngine::sendNext()
{
    while (!m_failed && !m_queue.isEmpty() && m_client->inFlight() < parallelSends)
        m_queue.takeFirst()();
    if (m_client->inFlight() == 0 && (m_queue.isEmpty() || m_failed))
        finishSending();
}

void SyncEngine::confirmed()
{
    // Not while a 412 has changed favorites not yet stored: the state must
    // never say more than the favorites hold.
    if (++m_sinceSaved >= saveEvery && m_local == m_localBefore) {
        // Sending goes on meanwhile; a failure stops what has not gone yet,
        // and the end of the round, written after this, hears of it.
        saveState([this](const WriteResult &stored) {
            if (!stored)
                failSending(SyncProblem::notSaved(stored.message()));
        });
    }
    sendNext();
}

void SyncEngine::sent(const QString &href, const Favorite &favorite, const QByteArray &card,
                      const DavResponse &response, bool create, int attempt)
{
    if (response.status == 412)
        return refused(href, favorite.id, create, attempt);
    // Stored is 200, 201 or 204; anything else (a proxy's 207, a redirect
    // page) is no word that the card is there.
    if (response.status != 200 && response.status != 201 && response.status != 204) {
        failSending(problemOf(response, u"sending a card"_s));
        return sendNext();
    }
    SyncEntry entry{href, response.etag, favorite.id, favorite.name, favorite.birthday, card};
    if (const qsizetype s = m_state.sendingIndexOfHref(href); s >= 0)
        m_state.sending.removeAt(s);
    const qsizetype e = m_state.indexOfHref(href);
    if (e >= 0)
        m_state.entries[e] = entry;
    else
        m_state.entries.append(entry);
    ++m_outcome.counts.sent;
    ++m_written;
    // A server that sends no ETag with its answer is asked for it; until
    // then the card counts as changed, and is fetched again next time.
    if (response.etag.isEmpty())
        return readEtagBack(href);
    confirmed();
}

void SyncEngine::readEtagBack(const QString &href)
{
    m_client->propfind(
        urlOf(href), 0, DavXml::etagProperties(), [this, href](const DavResponse &response) {
            const std::optional<DavMultistatus> answer =
                response.status == 207 ? DavXml::readMultistatus(response.body) : std::nullopt;
            const qsizetype e = m_state.indexOfHref(href);
            if (answer && !answer->responses.isEmpty() && e >= 0)
                m_state.entries[e].etag = answer->responses.first().etag;
            confirmed();
        });
}

void SyncEngine::refused(const QString &href, const QString &id, bool create, int attempt)
{
    Q_UNUSED(create);
    m_client->get(urlOf(href), [=, this](const DavResponse &response) {
        if (!response.ok() && response.status != 404 && response.status != 410) {
            failSending(problemOf(response, u"fetching a card changed elsewhere"_s));
            return sendNext();
        }
        std::optional<ServerCard> server;
        if (response.ok())
            server = ServerCard{href, response.etag, response.body};
        const bool again = SyncMerge::resolveRefused(m_local, m_state, m_outcome.counts, href, id,
                                                     server, m_today, m_conflictName);
        if (again && attempt < maxAttempts) {
            for (const Favorite &favorite : std::as_const(m_local)) {
                if (favorite.id == id) {
                    queueChange(href, favorite, attempt + 1);
                    break;
                }
            }
        }
        confirmed();
    });
}

void SyncEngine::deleted(const SyncEntry &entry, const DavResponse &response)
{
    if (response.status == 412) {
        m_client->get(urlOf(entry.href), [=, this](const DavResponse &current) {
            if (!current.ok() && current.status != 404 && current.status != 410) {
                failSending(problemOf(current, u"fetching a card changed elsewhere"_s));
                return sendNext();
            }
            if (const qsizetype p = m_state.pendingIndexOfHref(entry.href); p >= 0)
                m_state.pendingDeletes.removeAt(p);
            if (current.ok()) {
                // Changed on the server since: that version comes back.
                SyncMerge::resolveRefused(m_local, m_state, m_outcome.counts, entry.href, entry.id,
                                          ServerCard{entry.href, current.etag, current.body},
                                          m_today, m_conflictName);
            } else {
                ++m_outcome.counts.deleted;
            }
            confirmed();
        });
        return;
    }
    if (response.status != 200 && response.status != 204 && response.status != 404 &&
        response.status != 410) {
        failSending(problemOf(response, u"deleting a card"_s));
        return sendNext();
    }
    if (const qsizetype p = m_state.pendingIndexOfHref(entry.href); p >= 0)
        m_state.pendingDeletes.removeAt(p);
    ++m_outcome.counts.deleted;
    ++m_written;
    confirmed();
}

void SyncEngine::failSending(const SyncProblem &problem)
{
    if (!m_failed) {
        m_outcome.problem = problem.line;
        m_outcome.failure = problem.kind;
    }
    m_failed = true;
    m_queue.clear();
}

void SyncEngine::finishSending()
{
    const bool localChanged = m_local != m_localBefore;
    const auto stored = [this, localChanged](const WriteResult &written) {
        if (!written)
            failSending(SyncProblem::notSaved(written.message()));
        if (m_failed)
            return finish();
        // Once more from the listing: what was sent moved the collection on,
        // and a token from before it could name a later state too (a server
        // whose token is a hash of the contents gives the same token again
        // once a card made here is deleted elsewhere). Conflict copies made
        // just now go then.
        if ((localChanged || m_written > 0) && ++m_round < maxAttempts) {
            m_written = 0;
            return listChanges();
        }
        // Server, state and favorites agree as of the token.
        if (m_nothingToSend && !localChanged && m_written == 0)
            saveToken();
        m_outcome.ok = true;
        finish();
    };
    if (localChanged)
        return storeWithState(m_localBefore, m_local, stored);
    saveChangedState(stored);
}

void SyncEngine::fail(const SyncProblem &problem)
{
    m_outcome.ok = false;
    m_outcome.problem = problem.line;
    m_outcome.failure = problem.kind;
    finish();
}

void SyncEngine::finish()
{
    // A state write still under way ends before the lock is let go, and
    // one that failed makes the sync fail.
    const auto done = [this] {
        if (m_failed)
            m_outcome.ok = false;
        m_lock.reset();
        if (m_done)
            std::exchange(m_done, {})(m_outcome);
    };
    // From the event loop either way: whoever is told may delete the engine.
    if (!m_wroteState)
        QMetaObject::invokeMethod(this, done, Qt::QueuedConnection);
    else
        QtConcurrent::run(&m_stateWrites, [] {}).then(this, done);
}
