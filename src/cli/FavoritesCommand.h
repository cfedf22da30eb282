// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

class CommandArguments;

// `tavlo favorites list [--json]`, `tavlo favorites add NAME YYYY-MM-DD`,
// `tavlo favorites remove INDEX`: the saved favorites, as the app keeps them.
// `tavlo favorites import FILE...|--contacts` and `tavlo favorites export
// FILE.vcf`: to and from address books.
class FavoritesCommand
{
public:
    explicit FavoritesCommand(CommandContext &context) : m_context(context) {}

    // arguments[0] is "favorites".
    int run(const QStringList &arguments);

private:
    int list(const QStringList &arguments);
    int add(const QStringList &arguments);
    int remove(const QStringList &arguments);
    int importCards(const QStringList &arguments);
    int exportCards(const QStringList &arguments);
    int fail(const QString &message);
    // Fails for an option the action does not take, naming it.
    int unknownOption(const CommandArguments &parsed);

    CommandContext &m_context;
};
