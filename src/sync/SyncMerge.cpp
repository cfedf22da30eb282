// SPDX-License-Identifier: MIT
#include "sync/SyncMerge.h"

#include "sync/SyncCard.h"

#include <QHash>
#include <QSet>

namespace {

qsizetype indexOfId(const QList<Favorite> &favorites, const QString &id)
{
    if (id.isEmpty())
        return -1;
    for (qsizetype i = 0; i < favorites.size(); ++i) {
        if (favorites.at(i).id == id)
            return i;
    }
    return -1;
}

Favorite baseOf(const SyncEntry &entry)
{
    return {entry.name, entry.birthday, entry.id};
}

SyncEntry entryFor(const ServerCard &card, const QString &id, const std::optional<Favorite> &said)
{
    SyncEntry entry;
    entry.href = card.href;
    entry.etag = card.etag;
    entry.id = said ? id : QString();
    if (said) {
        entry.name = said->name;
        entry.birthday = said->birthday;
        entry.card = card.card;
    }
    return entry;
}

// Ids looked up often: every favorite's position and the ids linked to a card.
class Index
{
public:
    Index(const QList<Favorite> &favorites, const SyncState &state)
    {
        for (qsizetype i = 0; i < favorites.size(); ++i)
            m_position.insert(favorites.at(i).id, i);
        for (const SyncEntry &entry : state.entries) {
            if (!entry.id.isEmpty())
                m_linked.insert(entry.id);
        }
        for (const SyncEntry &entry : state.pendingDeletes)
            m_linked.insert(entry.id);
    }
    // Positions change only at removals, which rebuild.
    void rebuild(const QList<Favorite> &favorites)
    {
        m_position.clear();
        for (qsizetype i = 0; i < favorites.size(); ++i)
            m_position.insert(favorites.at(i).id, i);
    }
    qsizetype position(const QString &id) const
    {
        return id.isEmpty() ? -1 : m_position.value(id, -1);
    }
    void added(const QString &id, qsizetype position) { m_position.insert(id, position); }
    bool linked(const QString &id) const { return m_linked.contains(id); }
    void link(const QString &id) { m_linked.insert(id); }

private:
    QHash<QString, qsizetype> m_position;
    QSet<QString> m_linked;
};

struct Merger
{
    QList<Favorite> favorites;
    SyncState state;
    SyncCounts counts;
    QDate today;
    QString conflictName;
    QList<qsizetype> toRemove;

    void append(const Favorite &favorite, Index &index)
    {
        favorites.append(favorite);
        index.added(favorite.id, favorites.size() - 1);
    }

    // The server's version takes the favorite's place; the one made here
    // stays beside it as a conflict copy.
    void keepBoth(qsizetype position, const std::optional<Favorite> &server, Index &index)
    {
        const Favorite here = favorites.at(position);
        if (server)
            favorites[position] = Favorite(server->name, server->birthday, here.id);
        else
            toRemove.append(position);
        append(Favorite(conflictName.arg(here.name), here.birthday, FavoritesStore::newId()),
               index);
        ++counts.conflicts;
    }

    void take(qsizetype position, const Favorite &server)
    {
        Favorite &here = favorites[position];
        if (!SyncMerge::sameContent(here, server)) {
            here.name = server.name;
            here.birthday = server.birthday;
            ++counts.received;
        }
    }
};

} // namespace

namespace SyncMerge {

bool sameContent(const Favorite &a, const Favorite &b)
{
    return a.name == b.name && a.birthday == b.birthday;
}

Result fromServer(const QList<Favorite> &favorites, const SyncState &state,
                  const QList<ServerCard> &changed, const QStringList &removed, QDate today,
                  const QString &conflictName)
{
    Merger m{favorites, state, {}, today, conflictName, {}};
    Index index(m.favorites, m.state);
    QHash<QString, qsizetype> entryAt;
    for (qsizetype i = 0; i < m.state.entries.size(); ++i)
        entryAt.insert(m.state.entries.at(i).href, i);

    for (const ServerCard &card : changed) {
        const std::optional<Favorite> said = SyncCard::favoriteOf(card.card, today);
        const qsizetype e = entryAt.value(card.href, -1);
        // What a send of ours, not known to have arrived, put there.
        const qsizetype s = m.state.sendingIndexOfHref(card.href);
        const bool ours = said && s >= 0 && sameContent(*said, baseOf(m.state.sending.at(s)));
        const qsizetype p = m.state.pendingIndexOfHref(card.href);
        if (e >= 0 && !m.state.entries.at(e).id.isEmpty()) {
            SyncEntry &entry = m.state.entries[e];
            const qsizetype here = index.position(entry.id);
            if (said && (ours || sameContent(*said, baseOf(entry)))) {
                // Only the ETag or lines Tavlo does not use changed: whatever
                // was done here since still goes to the server.
                entry = entryFor(card, entry.id, said);
                continue;
            }
            if (here < 0) {
                // Deleted here while the server changed it: the server's wins.
                if (said) {
                    m.append(Favorite(said->name, said->birthday, entry.id), index);
                    ++m.counts.received;
                }
            } else if (!said) {
                // No longer a birthday card: gone from the favorites, unless
                // changed here too.
                if (sameContent(m.favorites.at(here), baseOf(entry))) {
                    m.toRemove.append(here);
                    ++m.counts.deleted;
                } else {
                    m.keepBoth(here, said, index);
                }
            } else if (sameContent(m.favorites.at(here), baseOf(entry)) ||
                       sameContent(m.favorites.at(here), *said)) {
                m.take(here, *said);
            } else {
                m.keepBoth(here, said, index);
            }
            entry = entryFor(card, entry.id, said);
            continue;
        }
        if (p >= 0) {
            // A delete made here not yet confirmed, and the server changed
            // the card since: the server's version comes back. Only a new
            // ETag is no change: the delete goes with it.
            if (said && sameContent(*said, baseOf(m.state.pendingDeletes.at(p)))) {
                m.state.pendingDeletes[p].etag = card.etag;
                continue;
            }
            const SyncEntry pending = m.state.pendingDeletes.takeAt(p);
            if (said) {
                m.append(Favorite(said->name, said->birthday, pending.id), index);
                ++m.counts.received;
            }
            m.state.entries.append(entryFor(card, pending.id, said));
            entryAt.insert(card.href, m.state.entries.size() - 1);
            continue;
        }
        QString id;
        if (said) {
            // The favorite the card was made from (its UID), else one that
            // says the same and belongs to no card yet.
            qsizetype here =
                said->id.isEmpty() || index.linked(said->id) ? -1 : index.position(said->id);
            if (here < 0) {
                for (qsizetype i = 0; i < m.favorites.size(); ++i) {
                    if (!index.linked(m.favorites.at(i).id) &&
                        sameContent(m.favorites.at(i), *said)) {
                        here = i;
                        break;
                    }
                }
            }
            if (here < 0 && ours && !m.state.sending.at(s).id.isEmpty()) {
                // Sent from here, and deleted here since: the delete goes to
                // the server next (the favorite is not brought back).
                id = m.state.sending.at(s).id;
            } else if (here >= 0) {
                id = m.favorites.at(here).id;
                if (!ours && !sameContent(m.favorites.at(here), *said))
                    m.keepBoth(here, said, index);
            } else {
                id = said->id.isEmpty() || index.position(said->id) >= 0 || index.linked(said->id)
                         ? FavoritesStore::newId()
                         : said->id;
                m.append(Favorite(said->name, said->birthday, id), index);
                ++m.counts.received;
            }
            index.link(id);
        }
        const SyncEntry entry = entryFor(card, id, said);
        if (e >= 0) {
            m.state.entries[e] = entry;
        } else {
            m.state.entries.append(entry);
            entryAt.insert(card.href, m.state.entries.size() - 1);
        }
    }

    QSet<QString> gone(removed.cbegin(), removed.cend());
    // The fate of every send to a card listed now is known.
    QSet<QString> listed = gone;
    for (const ServerCard &card : changed)
        listed.insert(card.href);
    m.state.sending.removeIf([&](const SyncEntry &sent) { return listed.contains(sent.href); });
    for (qsizetype i = m.state.pendingDeletes.size() - 1; i >= 0; --i) {
        if (gone.contains(m.state.pendingDeletes.at(i).href)) {
            m.state.pendingDeletes.removeAt(i);
            ++m.counts.deleted;
        }
    }
    QList<SyncEntry> kept;
    kept.reserve(m.state.entries.size());
    for (const SyncEntry &entry : std::as_const(m.state.entries)) {
        if (!gone.contains(entry.href)) {
            kept.append(entry);
            continue;
        }
        const qsizetype here = index.position(entry.id);
        // A favorite changed here outlives the card: it is sent again.
        if (here >= 0 && sameContent(m.favorites.at(here), baseOf(entry))) {
            m.toRemove.append(here);
            ++m.counts.deleted;
        }
    }
    m.state.entries = kept;

    std::sort(m.toRemove.begin(), m.toRemove.end());
    m.toRemove.erase(std::unique(m.toRemove.begin(), m.toRemove.end()), m.toRemove.end());
    for (auto it = m.toRemove.crbegin(); it != m.toRemove.crend(); ++it)
        m.favorites.removeAt(*it);
    return {m.favorites, m.state, m.counts};
}

bool resolveRefused(QList<Favorite> &favorites, SyncState &state, SyncCounts &counts,
                    const QString &href, const QString &id, const std::optional<ServerCard> &server,
                    QDate today, const QString &conflictName)
{
    const qsizetype e = state.indexOfHref(href);
    const std::optional<Favorite> said =
        server ? SyncCard::favoriteOf(server->card, today) : std::nullopt;
    const qsizetype here = indexOfId(favorites, id);
    if (!server) {
        // Gone from the server: what is left here is sent anew.
        if (e >= 0)
            state.entries.removeAt(e);
        return false;
    }
    if (e >= 0 && said && sameContent(*said, baseOf(state.entries.at(e)))) {
        // Only the ETag moved on: the change made here goes again.
        state.entries[e].etag = server->etag;
        state.entries[e].card = server->card;
        return true;
    }
    const SyncEntry entry = entryFor(*server, id, said);
    if (e >= 0)
        state.entries[e] = entry;
    else
        state.entries.append(entry);
    if (here < 0) {
        if (said) {
            favorites.append(Favorite(said->name, said->birthday, id));
            ++counts.received;
        }
        return false;
    }
    if (said && sameContent(favorites.at(here), *said))
        return false;
    const Favorite mine = favorites.at(here);
    if (said)
        favorites[here] = Favorite(said->name, said->birthday, id);
    else
        favorites.removeAt(here);
    favorites.append(Favorite(conflictName.arg(mine.name), mine.birthday, FavoritesStore::newId()));
    ++counts.conflicts;
    return false;
}

} // namespace SyncMerge
