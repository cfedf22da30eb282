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
