#pragma once

#include "CommandLine.h"

// `tavlo favorites list [--json]`, `tavlo favorites add NAME YYYY-MM-DD`,
// `tavlo favorites remove INDEX`: the saved favorites, as the app keeps them.
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
    int fail(const QString &message);

    CommandContext &m_context;
};
