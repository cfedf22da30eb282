// SPDX-License-Identifier: MIT
#pragma once

#include "settings/AtomicFileWriter.h"
#include "settings/WriteResult.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <optional>

// What Tavlo knows of one card on the server since it last agreed with it.
struct SyncEntry
{
    // The card's path on the server, percent-encoded as the server names it.
    QString href;
    QByteArray etag;
    // The favorite the card is; empty for a card that is no favorite (no
    // birthday), which is remembered only so that it is not fetched again.
    QString id;
    // Name and birthday as both sides held them at the last sync: a side
    // that differs from them has changed since.
    QString name;
    QString birthday;
    // The card as the server sent it, so that a change made here keeps the
    // lines Tavlo does not use.
    QByteArray card;

    friend bool operator==(const SyncEntry &, const SyncEntry &) = default;
};

// The sync state of one address book, in a file of its own beside the
// settings: the cards known (href, ETag, what they said), the collection's
// sync token and the deletes made here that the server has not yet
// confirmed. Written whole by the same checked atomic write as the
// settings; a file that cannot be read starts the state afresh (the next
// sync then pairs cards and favorites by UID and content, losing nothing).
class SyncState
{
public:
    // The address book this state is of; a state of another is none.
    QString addressBook;
    QString syncToken;
    // Whether the server's sync-collection has ever named a removed card.
    // Some servers leave removals out; until this one has shown that it
    // reports them, a changed token that the answer does not explain, and
    // one a day, is followed by a full listing, which finds them.
    bool removalsReported = false;
    // When every card was last listed (ISO 8601, UTC).
    QString fullyListed;
    QList<SyncEntry> entries;
    // Entries of favorites deleted here, until the server confirms.
    QList<SyncEntry> pendingDeletes;
    // Cards being sent (href, id, name, birthday), written down before they
    // go: when a sync stops before it learns that one arrived, the next one
    // knows that card on the server as its own and not as a change made
    // elsewhere (which would make a needless conflict copy).
    QList<SyncEntry> sending;

    // $XDG_CONFIG_HOME/tavlo/sync-state.json
    static QString defaultPath();

    // An empty state for a missing file; `problem` says why a file that is
    // there could not be read (the state is then empty too).
    static SyncState read(const QString &path, QString *problem = nullptr);
    WriteResult write(const QString &path, const AtomicFileWriter &writer = {}) const;
    // Forgets the state at `path` and the files beside it (an account
    // removed).
    static void remove(const QString &path);

    // A sync that stores favorites it received keeps the state that goes
    // with them aside first, marked, and stores the favorites with the same
    // mark (SettingsKeys::syncStored): the state aside holds once the
    // favorites hold its mark, and is nothing otherwise. Putting a state in
    // place removes it.
    WriteResult writeAside(const QString &path, const QString &mark,
                           const AtomicFileWriter &writer = {}) const;
    // The state aside of `path` when its mark is `mark`.
    static std::optional<SyncState> readAside(const QString &path, const QString &mark);

    qsizetype indexOfHref(const QString &href) const;
    qsizetype pendingIndexOfHref(const QString &href) const;
    qsizetype sendingIndexOfHref(const QString &href) const;

    friend bool operator==(const SyncState &, const SyncState &) = default;
};
