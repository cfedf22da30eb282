// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"

#include <QTextStream>

// A favorite whose stored birthday is no date ("31 2 x") cannot be listed or
// reminded of. The commands print every other favorite, then name each of
// these in one line on standard error and end with the usage status.
class UnreadableBirthdays
{
public:
    // Notes the favorite at `index` when its birthday cannot be read;
    // returns whether it can.
    bool check(qsizetype index, const Favorite &favorite);
    // Notes every favorite whose birthday cannot be read.
    void checkAll(const QList<Favorite> &favorites);

    bool any() const { return !m_lines.isEmpty(); }
    // Prints one line per favorite noted, such as
    //   tavlo: favorite 3 ("Anna") has an unreadable birthday "31 2 x"
    // and returns the status to end with.
    int report(QTextStream &err) const;

private:
    QStringList m_lines;
};
