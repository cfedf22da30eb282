// SPDX-License-Identifier: MIT
#include "favorites/FavoritesSorting.h"

#include "core/DayOfBirth.h"

#include <algorithm>
#include <numeric>

namespace {

// Orders by a key worked out once per favorite, keeping equal keys in order.
template <typename Key, typename KeyOf, typename Less>
QList<qsizetype> orderByKey(const QList<Favorite> &favorites, KeyOf keyOf, Less less)
{
    QList<Key> keys;
    keys.reserve(favorites.size());
    for (qsizetype i = 0; i < favorites.size(); ++i)
        keys.append(keyOf(favorites.at(i), i));
    QList<qsizetype> order(favorites.size());
    std::iota(order.begin(), order.end(), 0);
    // Mostly the list is in order already: it was sorted when last shown.
    if (!std::is_sorted(keys.cbegin(), keys.cend(), less)) {
        std::stable_sort(order.begin(), order.end(),
                         [&](qsizetype a, qsizetype b) { return less(keys.at(a), keys.at(b)); });
    }
    return order;
}

// Code-point order on UTF-16: units from U+E000 up sort after the
// surrogates that make up the code points beyond U+FFFF.
bool codePointLess(const QString &a, const QString &b)
{
    const auto weight = [](char16_t unit) -> int {
        if (unit >= 0xE000)
            return unit - 0x800;
        if (unit >= 0xD800)
            return unit + 0x2000;
        return unit;
    };
    const char16_t *x = QStringView(a).utf16();
    const char16_t *y = QStringView(b).utf16();
    const qsizetype common = std::min(a.size(), b.size());
    const auto [i, j] = std::mismatch(x, x + common, y);
    if (i != x + common)
        return weight(*i) < weight(*j);
    return a.size() < b.size();
}

} // namespace

FavoritesSorting::Order FavoritesSorting::orderFor(qint64 sortSetting)
{
    if (sortSetting == 0)
        return Order::ByName;
    if (sortSetting == 1)
        return Order::ByAge;
    return Order::ByBirthday;
}

QList<qsizetype> FavoritesSorting::ordering(const QList<Favorite> &favorites, Order order)
{
    switch (order) {
    case Order::ByName:
        // Names that differ only in how their letters are composed ("é" or
        // "e" and an accent) are the same name.
        return orderByKey<QString>(
            favorites,
            [](const Favorite &f, qsizetype) {
                return f.name.normalized(QString::NormalizationForm_C);
            },
            codePointLess);
    case Order::ByAge: {
        // The youngest first. Without a year there is no age: such favorites
        // come after everyone with one, by name; a birthday that cannot be
        // read after those, where it waits to be fixed.
        struct AgeKey
        {
            QDate born;
            int rank = 0; // 0 with an age, 1 without a year, 2 unreadable
            QString name;
        };
        return orderByKey<AgeKey>(
            favorites,
            [](const Favorite &f, qsizetype) {
                const std::optional<DayOfBirth> day = DayOfBirth::fromStored(f.birthday);
                if (!day)
                    return AgeKey{QDate(), 2, QString()};
                if (const std::optional<QDate> born = day->date())
                    return AgeKey{*born, 0, QString()};
                return AgeKey{QDate(), 1, f.name.normalized(QString::NormalizationForm_C)};
            },
            [](const AgeKey &a, const AgeKey &b) {
                if (a.rank != b.rank)
                    return a.rank < b.rank;
                if (a.rank == 1)
                    return codePointLess(a.name, b.name);
                return b.born < a.born;
            });
    }
    case Order::ByBirthday:
        break;
    }
    // Day and month in a leap year, so 29 February has its place, with or
    // without a year; a text that cannot be read sorts before every date.
    return orderByKey<QDate>(
        favorites,
        [](const Favorite &f, qsizetype) {
            const std::optional<DayOfBirth> day = DayOfBirth::fromStored(f.birthday);
            return day ? day->inLeapYear() : QDate();
        },
        [](QDate a, QDate b) { return a < b; });
}
