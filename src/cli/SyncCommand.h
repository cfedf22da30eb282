// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

// `tavlo sync`: one two-way sync of the favorites with the CardDAV address
// book set up by `tavlo sync setup URL USER` (password on standard input);
// `tavlo sync remove` forgets the account. Every failure is one line on
// standard error and status 1.
class SyncCommand
{
public:
    explicit SyncCommand(CommandContext &context) : m_context(context) {}
    int run(const QStringList &arguments);

private:
    int setup(const QString &url, const QString &user);
    int sync();
    int forget();
    int failed(const QString &problem);
    QString statePath() const;

    CommandContext &m_context;
};
