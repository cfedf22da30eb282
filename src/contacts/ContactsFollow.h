// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/VCardReader.h"
#include "favorites/FavoritesStore.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

// One address book as it was last read: an evolution-data-server book
// ("eds:<source uid>"), a file of the contacts folder ("folder:own/a.vcf"),
// or a whole service or folder that could not be listed ("eds:", "folder:").
struct ContactBook
{
    QString source;
    // Every card of the book was read. A book that is not complete (still
    // loading, its service gone, its file cut off) changes nothing: the
    // favorites that came from it stay as they are.
    bool complete = false;
    QList<VCardContact> contacts;
    // Cards the book holds but that could not be read, by UID; their
    // favorites stay as they are.
    QStringList unreadableUids;
    // Why the book is not complete, or what it has that could not be read.
    enum class Problem {
        None,
        // Its service has not answered yet.
        Loading,
        // No address-book service answers.
        ServiceMissing,
        // The service went away while Tavlo read or watched the book.
        ServiceStopped,
        // The folder, or a folder in it, cannot be listed.
        FolderUnreadable,
        // A file of the folder cannot be read.
        FileUnreadable,
        // A file of the folder ends inside a card: cut off, or still being written.
        FileCutOff,
    };
    Problem problem = Problem::None;
    // The file or book the problem is with, for the person and the log.
    QString problemAt;
};

// What Tavlo remembers of a contact it follows, by the contact's UID: the
// favorite made from it, and what the contact said when the favorite was last
// set from it. A favorite that no longer says that was changed by the person.
struct FollowedContact
{
    enum class State {
        // The favorite follows the contact.
        Following,
        // The person renamed or redated the favorite: it is theirs now.
        Kept,
        // The person deleted the favorite: it does not come back.
        Deleted,
    };

    QString uid;
    QString source;
    QString favoriteId;
    State state = State::Following;
    QString name;
    QString birthday;

    friend bool operator==(const FollowedContact &, const FollowedContact &) = default;
};

namespace ContactsFollow {

// The remembered contacts as stored: [uid, source, favorite id, state
// ("follow", "kept" or "deleted"), name, birthday] each. Rows that make no
// sense are dropped.
QList<FollowedContact> fromTable(const QList<QStringList> &table);
QList<QStringList> toTable(const QList<FollowedContact> &followed);

// A whole service ("eds:") or folder ("folder:own/") that could not be
// listed covers the books it would have listed.
bool covers(const QString &incompleteSource, const QString &source);

struct Step
{
    // The favorites after following, in order: new ones at the end.
    QList<Favorite> favorites;
    QList<FollowedContact> followed;
    qsizetype added = 0;
    qsizetype changed = 0;
    qsizetype removed = 0;
    // Names (or UIDs) of cards whose birthday could not be read.
    QStringList unreadable;

    bool favoritesChanged() const { return added + changed + removed > 0; }
};

// Brings `favorites` in step with `books`. A contact with a readable birthday
// that is not yet followed becomes a favorite (an existing one with its UUID,
// or with its name and birthday, is taken over instead of doubled); a followed
// contact's new name or birthday is its favorite's; a contact that is gone,
// or has no birthday any more, takes its favorite with it. Favorites the
// person changed or deleted since they were last set from their contact keep
// the person's choice, and favorites that came from no contact are never
// touched. Nothing changes for contacts of books that are not complete, nor
// for cards that could not be read.
Step follow(const QList<ContactBook> &books, const QList<FollowedContact> &followed,
            const QList<Favorite> &favorites, QDate today);

} // namespace ContactsFollow
