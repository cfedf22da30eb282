// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Why a sync, an account's set-up or the password store failed: a kind, by
// what a person can do about it, beside the one line the command line
// prints. The interface's text follows the kind, never the line's words.
struct SyncProblem
{
    enum class Kind {
        None,
        Unreachable,
        LoginRefused,
        NoPasswordStore,
        NoPassword,
        NoAddressBook,
        NotSaved,
        // Anything else: the interface shows the line itself.
        Other,
    };

    SyncProblem() = default;
    SyncProblem(Kind kind, QString line) : kind(kind), line(std::move(line)) {}
    // An empty line is no problem.
    static SyncProblem other(QString line)
    {
        return line.isEmpty() ? SyncProblem() : SyncProblem(Kind::Other, std::move(line));
    }
    // A failed write of the settings or the sync state ("could not save ...").
    static SyncProblem notSaved(QString line)
    {
        return line.isEmpty() ? SyncProblem() : SyncProblem(Kind::NotSaved, std::move(line));
    }

    bool isEmpty() const { return kind == Kind::None; }

    // The kind as the settings file keeps it: names, so that a file stays
    // readable whatever the order here.
    static QString nameOf(Kind kind);
    static Kind kindNamed(const QString &name);

    Kind kind = Kind::None;
    QString line;
};
