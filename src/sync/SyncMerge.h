// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "sync/SyncState.h"

#include <QDate>
#include <QList>
#include <QString>

// A card as the server holds it now.
struct ServerCard
{
    QString href;
    QByteArray etag;
    QByteArray card;
};

struct SyncCounts
{
    qsizetype sent = 0;
    qsizetype received = 0;
    qsizetype deleted = 0;
    qsizetype conflicts = 0;

    friend bool operator==(const SyncCounts &, const SyncCounts &) = default;
};

// The rules that put the server's changes together with the favorites.
// Nothing is lost: a favorite changed on both sides since the last sync
// takes the server's version and the version made here stays beside it as a
// new favorite, its name marked as a conflict copy; a card changed on the
// server wins over a delete made here; a favorite changed here outlives the
// card's delete on the server (and is sent again).
namespace SyncMerge {

struct Result
{
    QList<Favorite> favorites;
    SyncState state;
    SyncCounts counts;
};

// `changed` are the cards added or changed on the server since `state`,
// `removed` the hrefs it no longer has. `conflictName` makes the name of a
// conflict copy from the name ("%1 (conflict copy)").
Result fromServer(const QList<Favorite> &favorites, const SyncState &state,
                  const QList<ServerCard> &changed, const QStringList &removed, QDate today,
                  const QString &conflictName);

// One card's 412 answered: the server's card `server` (nothing when the
// server has none at that href any more) against the favorite `id` as it
// stands in `favorites`. The entry for the href is updated or dropped.
// Returns whether the change made here should be sent again (the server's
// card still says what the state remembers, only its ETag changed).
bool resolveRefused(QList<Favorite> &favorites, SyncState &state, SyncCounts &counts,
                    const QString &href, const QString &id, const std::optional<ServerCard> &server,
                    QDate today, const QString &conflictName);

bool sameContent(const Favorite &a, const Favorite &b);

} // namespace SyncMerge
