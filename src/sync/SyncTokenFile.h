// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "settings/AtomicFileWriter.h"
#include "settings/WriteResult.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

// The collection's sync token in a small file of its own beside the sync
// state, so that a sync the server answers with "nothing changed" needs
// neither the state (1.5 MB for 5,000 cards) nor the time to read it.
//
// It is written only after a sync that ended in full agreement (nothing
// left to send, nothing pending), once the state is on the disk, and it is
// removed before the state is written again. It speaks for the state only
// while it names the state file as that file is now (inode, size, time of
// the last change) and for the favorites only as they were then (a digest
// of them). Anything else, a file missing, damaged or naming another
// state, means no token here: the sync reads the state as always.
class SyncTokenFile
{
public:
    QString addressBook;
    QString syncToken;
    // digestOf() the favorites the state agreed with.
    QByteArray favoritesDigest;
    // identityOf() the state file it was written for.
    QByteArray stateIdentity;

    // "<state>.token", beside the state's lock file.
    static QString pathBeside(const QString &statePath);

    // The token file beside `statePath`, when it is whole and was written
    // for that state file as it is now; nothing otherwise.
    static std::optional<SyncTokenFile> readCurrent(const QString &statePath);
    WriteResult write(const QString &statePath, const AtomicFileWriter &writer = {}) const;
    // Removes the token file beside `statePath`, for good (the folder is
    // synced), before that state changes. No file is no failure.
    static WriteResult remove(const QString &statePath);

    // Inode, size and time of the last change of the file at `path`; empty
    // when there is none.
    static QByteArray identityOf(const QString &path);
    // What the sync compares of the favorites (id, name, birthday), in
    // their order: a list sorted anew reads the state once more.
    static QByteArray digestOf(const QList<Favorite> &favorites);
};
