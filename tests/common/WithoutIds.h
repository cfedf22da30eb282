// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"

// Favorites as their names and birthdays only, for the checks that are about
// what a person sees and in which order, not about identities.
inline QList<Favorite> withoutIds(QList<Favorite> favorites)
{
    for (Favorite &favorite : favorites)
        favorite.id.clear();
    return favorites;
}

// Stored favorite rows the same way: a row's third text is its identity.
inline QList<QStringList> namesAndBirthdays(const std::optional<QList<QStringList>> &stored)
{
    QList<QStringList> rows = stored.value_or(QList<QStringList>{});
    for (QStringList &row : rows)
        row = row.mid(0, 2);
    return rows;
}
