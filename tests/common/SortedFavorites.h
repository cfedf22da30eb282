// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesSorting.h"

// The favorites in the order FavoritesSorting::ordering() gives them.
inline QList<Favorite> sortedFavorites(const QList<Favorite> &favorites,
                                       FavoritesSorting::Order order)
{
    QList<Favorite> result;
    result.reserve(favorites.size());
    for (const qsizetype i : FavoritesSorting::ordering(favorites, order))
        result.append(favorites.at(i));
    return result;
}
