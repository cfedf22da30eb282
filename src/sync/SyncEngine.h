// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "settings/AtomicFileWriter.h"
#include "sync/DavClient.h"
#include "sync/DavXml.h"
#include "sync/SyncLock.h"
#include "sync/SyncMerge.h"
#include "sync/SyncProblem.h"
#include "sync/SyncState.h"
#include "sync/SyncTokenFile.h"

#include <QDate>
#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QUrl>
#include <functional>
#include <memory>

// The account a sync talks to.
struct SyncAccount
{
    // The address book's own URL.
    QUrl addressBook;
    QString user;
    QString password;
    // "4.0", or "3.0" for a server that offers nothing newer; new cards are
    // written so.
    QString vCardVersion = QStringLiteral("4.0");
};

// How a sync ended: done, or why not in one plain line.
struct SyncOutcome
{
    bool ok = false;
    QString problem;
    SyncProblem::Kind failure = SyncProblem::Kind::None;
    SyncCounts counts;
};

// One two-way sync of the favorites with a CardDAV address book, entirely
// asynchronous. In order:
//
// 1. What changed on the server: sync-collection (RFC 6578) from the stored
//    token, or, where the server refuses the token or the report (403, 409,
//    500, ...), a listing of every card's ETag compared with the state.
// 2. The changed cards, fetched by addressbook-multiget, or, when they are
//    many (a first sync), by one addressbook-query for every card.
// 3. Their changes put together with the favorites (SyncMerge) and stored
//    with the state and its new token, so that a stop anywhere leaves the
//    two agreeing: the state goes aside first, the favorites are stored
//    with its mark, then the state is put in place. The next sync takes
//    the state aside only if the favorites hold its mark (SyncState).
// 4. What changed here sent: deletes (recorded as pending before they go,
//    dropped only once the server confirms), changes with If-Match and the
//    stored ETag, new cards with If-None-Match: *. A 412 fetches the card
//    and puts the two together again; a change refused only because the
//    ETag moved on goes again.
//
// Reading and writing the state and reading large answers run on other
// threads, so that 5,000 cards never hold up a frame; their results come
// back to the engine's thread in order. The state is written only once the
// favorites it speaks of are on the disk (the app's settings store writes
// in the background), and not at all when nothing in it changed.
//
// A sync that ended with nothing left to do leaves its token in a small
// file beside the state (SyncTokenFile). The next sync, when the favorites
// are still the same, asks with that token at once and reads the state
// only when the answer names a change: with nothing changed, a sync is one
// request and a few hundred bytes read.
//
// Any other answer (401, 5xx, no answer, garbage) ends the sync at once:
// what was confirmed is kept in the state, nothing else changes, and the
// next sync goes on from there. One sync at a time per state file (a lock
// file beside it).
class SyncEngine : public QObject
{
    Q_OBJECT
public:
    // Works on the favorites of `settings` through a store of its own, so
    // that changes made meanwhile through another (the screens') are merged
    // with its own as another process's would be.
    SyncEngine(SettingsStore &settings, QString statePath, SyncAccount account,
               QObject *parent = nullptr);
    ~SyncEngine() override;

    void setToday(QDate today) { m_today = today; }
    void setTimeout(int milliseconds) { m_client->setTimeout(milliseconds); }
    // "%1 (conflict copy)" in the person's language.
    void setConflictName(QString pattern) { m_conflictName = std::move(pattern); }
    void setStateWriter(AtomicFileWriter writer) { m_writer = std::move(writer); }
    // More cards to fetch than `count` go in one query for every card.
    void setFetchEveryCardFrom(qsizetype count) { m_fetchEveryCardFrom = count; }
    // Told of every change the sync stores in the favorites, as the store
    // that makes it tells (the birthdays calendar follows).
    void setFavoritesListener(FavoritesStore::ChangeListener listener)
    {
        m_favorites.setChangeListener(std::move(listener));
    }

    // Points between the steps, for tests that change the server meanwhile;
    // a sync that finds nothing changed through the token file has none.
    enum class Step { Listed, Applied, Sending, Storing, Stored };
    void setStepHook(std::function<void(Step)> hook) { m_stepHook = std::move(hook); }

    using Done = std::function<void(const SyncOutcome &)>;
    void start(Done done);

    // "sent 3, received 2, deleted 1, conflicts kept 0"
    static QString summary(const SyncCounts &counts);
    // A plain line for an answer that ended a sync.
    static SyncProblem problemOf(const DavResponse &response, const QString &what);

    // Whether the engine is storing favorites just now: a change of the
    // favorites heard meanwhile is the server's, not the person's.
    bool storing() const { return m_storing; }

signals:
    // Favorites were changed from the server and stored.
    void favoritesStored();

private:
    // Runs `work` on another thread and `then` with its result back here;
    // nothing once the engine is gone.
    template <typename Work, typename Then>
    void offThread(Work work, Then then);
    void readAnswer(const QByteArray &body,
                    std::function<void(const std::optional<DavMultistatus> &)> then);
    // Reads the state on another thread, then `then`.
    void readState(std::function<void()> then);
    // Asks for changes since the token file's token, before the state is
    // read; the state only if the answer names any.
    void listChangesSince(const SyncTokenFile &token);
    void listChanges();
    // The answer to sync-collection (`listing` read from a 207).
    void takeChanges(const DavResponse &response, const std::optional<DavMultistatus> &listing);
    // Every card's ETag; `token` is the one to keep after (none after a
    // token the server refused).
    void listAll(const QString &token);
    void takeListing(const QList<DavResource> &resources, bool complete, const QString &token);
    // The next batch of m_toFetch by multiget, or all of them at once with
    // fetchAll() when they are many and `wholeAllowed`.
    void fetchNext(bool wholeAllowed = true);
    void fetchAll();
    // Keeps the cards of an answer that were asked for, each once; returns
    // the paths of those kept.
    QSet<QString> takeCards(const QList<DavResource> &answer, const QStringList &asked);
    void applyServerChanges();
    void applyMerged(std::optional<SyncMerge::Result> merged, const QList<Favorite> &before);
    void send();
    void queueChange(const QString &href, const Favorite &favorite, int attempt);
    void sendNext();
    void confirmed();
    void sent(const QString &href, const Favorite &favorite, const QByteArray &card,
              const DavResponse &response, bool create, int attempt);
    void refused(const QString &href, const QString &id, bool create, int attempt);
    void deleted(const SyncEntry &entry, const DavResponse &response);
    void readEtagBack(const QString &href);
    void failSending(const SyncProblem &problem);
    void finishSending();
    void fail(const SyncProblem &problem);
    void finish();
    // Writes the state as it is now, after every write before it, and
    // goes on with `then` and how the write went.
    void saveState(std::function<void(const WriteResult &)> then);
    // Writes only a state that changed since it was read or last written.
    void saveChangedState(std::function<void(const WriteResult &)> then);
    // Leaves the token file for the state as written, after it.
    void saveToken();
    // Stores `after`, made of `before`, as the same edits on the favorites
    // as they are stored now, marked `mark` in the same write.
    WriteResult storeFavorites(const QList<Favorite> &before, const QList<Favorite> &after,
                               const QString &mark);
    // Stores the favorites and then the state as it is now, so that a stop
    // anywhere between leaves the two agreeing.
    void storeWithState(const QList<Favorite> &before, const QList<Favorite> &after,
                        std::function<void(const WriteResult &)> then);

    QString hrefOf(const QString &serverHref) const;
    QUrl urlOf(const QString &href) const;

    SettingsStore &m_settings;
    FavoritesStore m_favorites;
    QString m_statePath;
    SyncAccount m_account;
    DavClient *m_client;
    AtomicFileWriter m_writer;
    std::unique_ptr<SyncLock> m_lock;
    QDate m_today;
    QString m_conflictName = QStringLiteral("%1 (conflict copy)");
    std::function<void(Step)> m_stepHook;
    Done m_done;

    SyncState m_state;
    // The state as last read or written.
    SyncState m_saved;
    // One thread, so that writes of the state reach the disk in order.
    QThreadPool m_stateWrites;
    bool m_storing = false;
    SyncOutcome m_outcome;
    QString m_newToken;
    // The mark of the favorites as this sync found them stored.
    QString m_storedMark;
    QStringList m_toFetch;
    QStringList m_removed;
    QList<ServerCard> m_fetched;
    // The favorites the sending round works on; changes that 412s bring are
    // made here and stored at the round's end.
    QList<Favorite> m_local;
    QList<Favorite> m_localBefore;
    QList<std::function<void()>> m_queue;
    int m_round = 0;
    // Cards written or deleted on the server in this pass.
    int m_written = 0;
    int m_sinceSaved = 0;
    // The last sending round found nothing to send or delete.
    bool m_nothingToSend = false;
    qsizetype m_fetchEveryCardFrom;
    // Writes were sent to m_stateWrites, which the end waits for.
    bool m_wroteState = false;
    bool m_failed = false;
};
