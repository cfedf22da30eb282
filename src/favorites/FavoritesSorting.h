// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"

#include <QList>

// The three orders of the favorites list, by the setting "sort".
namespace FavoritesSorting {

enum class Order { ByName = 0, ByAge = 1, ByBirthday = 2 };

// 0 is by name, 1 by age, and 2 or any other value by birthday.
Order orderFor(qint64 sortSetting);

// A stable sort:
// - by name: plain code-point order, case-sensitive ("Anna", "Zoe", "bob"),
//   letters composed or not alike;
// - by age: the youngest first; a birthday that cannot be read stops the
//   program, naming the favorite;
// - by birthday: by day and month from 1 January to 31 December, whatever
//   the year of birth; texts that cannot be read come first.
// The order is given as positions in `favorites`: the first is the position
// of the favorite that goes first.
QList<qsizetype> ordering(const QList<Favorite> &favorites, Order order);

} // namespace FavoritesSorting
