// SPDX-License-Identifier: MIT
#include "favorites/FavoritesStore.h"

#include "favorites/FavoriteHandOver.h"

#include "core/DatePattern.h"
#include "core/DebugLog.h"
#include "core/FatalError.h"

#include <QHash>
#include <QUuid>
#include <algorithm>
#include <utility>

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

namespace {

// Tavlo's own namespace for the name-based identities of favorites stored
// without one.
const QUuid derivedIdNamespace(u"6f1b0c2e-5a4d-4c1e-9a7b-3d2f8e6c1a90"_s);

// A birthday stored in a placeholder year ("2 3 1604") as the day and month
// it stands for; nothing for any other text, which stays as it is. Only a
// text that ends in such a year is read at all, so that 10,000 rows cost
// nothing.
std::optional<QString> withoutPlaceholderYear(const QString &birthday)
{
    if (!(birthday.endsWith(u"1604") || birthday.endsWith(u"0000") || birthday.endsWith(u"0001")))
        return std::nullopt;
    const std::optional<DayOfBirth> day = DayOfBirth::fromStored(birthday);
    return day && !day->hasYear() ? std::optional(day->stored()) : std::nullopt;
}

// Stored rows as this version reads them: each with its identity, the
// derived one for a row of earlier versions, and no placeholder year.
// Rows cut short are left as they are, to be listed and fixed.
QList<QStringList> withIdentities(QList<QStringList> rows)
{
    QHash<QString, int> repeats;
    for (QStringList &row : rows) {
        if (row.size() < 2)
            continue;
        if (row.size() == 2) {
            int &repeat = repeats[row.at(0) + u'\x1f' + row.at(1)];
            row.append(FavoritesStore::derivedId(row.at(0), row.at(1), repeat++));
        }
        // Written only when it changes: a row left alone stays shared.
        if (std::optional<QString> birthday = withoutPlaceholderYear(row.at(1)))
            row[1] = std::move(*birthday);
    }
    return rows;
}

std::optional<QList<QStringList>> withIdentities(std::optional<QList<QStringList>> rows)
{
    if (rows)
        return withIdentities(std::move(*rows));
    return rows;
}

QStringList rowOf(const Favorite &favorite)
{
    return {favorite.name, favorite.birthday,
            favorite.id.isEmpty() ? FavoritesStore::newId() : favorite.id};
}

// The add dialog's idea of white space: tabs and any space separator (the
// platform's "whitespaces"); a line feed is text.
bool isBlankOrTab(QChar c)
{
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

bool isBlankText(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), isBlankOrTab);
}

// Earlier versions put a running number before or after each name ("1. Ann").
QString withoutRunningNumber(const QString &name)
{
    const auto isNumberChar = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.'; };
    qsizetype begin = 0;
    qsizetype end = name.size();
    while (begin < end && isNumberChar(name.at(begin)))
        ++begin;
    while (end > begin && isNumberChar(name.at(end - 1)))
        --end;
    // Only trailing blanks go: a blank between the number and the name stays.
    while (end > begin && name.at(end - 1) == u' ')
        --end;
    return name.mid(begin, end - begin);
}

// An array as the earlier version printed it: ["1. Ann", "Bob 2"]. Escaped so
// that the diagnostic stays one line.
QString printed(const QStringList &list)
{
    QStringList quoted;
    for (QString item : list) {
        item.replace(u'\\', QStringLiteral("\\\\"))
            .replace(u'"', QStringLiteral("\\\""))
            .replace(u'\n', QStringLiteral("\\n"))
            .replace(u'\r', QStringLiteral("\\r"))
            .replace(u'\t', QStringLiteral("\\t"));
        quoted.append(u'"' + item + u'"');
    }
    return u'[' + quoted.join(QStringLiteral(", ")) + u']';
}

// Our change merged into the stored list: `base` is our list before the
// change, `changed` after it, `stored` the list on disk now. Rows stored but
// not in `base` were added elsewhere and go at the end; rows of `base` not
// stored were removed elsewhere and leave `changed` too. Equal rows count
// as many times as they occur.
QList<QStringList> merged(const QList<QStringList> &base, const QList<QStringList> &changed,
                          const QList<QStringList> &stored)
{
    if (stored == base)
        return changed;
    QHash<QStringList, qsizetype> removedElsewhere;
    for (const QStringList &row : base)
        ++removedElsewhere[row];
    QList<QStringList> addedElsewhere;
    for (const QStringList &row : stored) {
        const auto found = removedElsewhere.find(row);
        if (found != removedElsewhere.end() && *found > 0)
            --*found;
        else
            addedElsewhere.append(row);
    }
    QList<QStringList> result;
    result.reserve(changed.size() + addedElsewhere.size());
    for (const QStringList &row : changed) {
        const auto found = removedElsewhere.find(row);
        if (found != removedElsewhere.end() && *found > 0)
            --*found;
        else
            result.append(row);
    }
    result.append(addedElsewhere);
    return result;
}

// Our change of the list put together with what another process did to it
// meanwhile, as a change made here is (merged()). The settings store calls
// it when it writes, on its own thread.
QVariant mergedStored(const QVariant &base, const QVariant &ours, const QVariant &theirs)
{
    const std::optional<QList<QStringList>> changed = withIdentities(SettingsStore::tableOf(ours));
    const std::optional<QList<QStringList>> stored = withIdentities(SettingsStore::tableOf(theirs));
    if (!changed || !stored)
        return ours;
    return SettingsStore::storedTable(
        merged(withIdentities(SettingsStore::tableOf(base).value_or(QList<QStringList>())),
               *changed, *stored));
}

} // namespace

QString FavoritesStore::newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QString FavoritesStore::derivedId(const QString &name, const QString &birthday, int repeat)
{
    QString base = name + u'\n' + birthday;
    if (repeat > 0)
        base += u'\n' + QString::number(repeat);
    return QUuid::createUuidV5(derivedIdNamespace, base).toString(QUuid::WithoutBraces);
}

FavoritesStore::FavoritesStore(SettingsStore &settings, ChangeListener onChange)
    : m_settings(settings), m_onChange(std::move(onChange))
{
    m_settings.setMerge(favorites.name, &mergedStored);
}

void FavoritesStore::load()
{
    m_settings.refresh();
    // Reading 10,000 rows takes a while; while the store holds what our list
    // came from, comparing the two costs nothing.
    const QVariant raw = m_settings.stored(favorites);
    if (m_rowsStored.isValid() && raw == m_rowsStored) {
        remember(m_storeHoldsRows ? std::optional(m_rows) : std::nullopt);
        return;
    }
    const std::optional<QList<QStringList>> stored = withIdentities(m_settings.value(favorites));
    take(stored.value_or(QList<QStringList>()), raw);
    m_storeHoldsRows = stored.has_value();
    remember(stored);
}

void FavoritesStore::take(QList<QStringList> rows, const QVariant &stored)
{
    m_rows = std::move(rows);
    m_rowsStored = stored;
    m_daysOfBirth = QList<std::optional<std::optional<DayOfBirth>>>(m_rows.size());
}

void FavoritesStore::remember(const std::optional<QList<QStringList>> &stored) const
{
    m_stored = stored;
    m_storedValue = m_settings.stored(favorites);
}

WriteResult FavoritesStore::apply(QList<QStringList> changed)
{
    SettingsBatch step(m_settings);
    // Reading 10,000 rows takes a while; what we read or wrote last still
    // holds while the store holds the same value (a change to another key
    // leaves it shared, so the comparison costs nothing).
    const std::optional<QList<QStringList>> stored =
        m_settings.stored(favorites) == m_storedValue ? m_stored
                                                      : withIdentities(m_settings.value(favorites));
    // A stored value that is no list cannot be merged with; ours replaces it.
    const QList<QStringList> rows = stored ? merged(m_rows, changed, *stored) : changed;
    m_settings.set(favorites, rows);
    remember(rows);
    // Merged with other processes' changes, what is stored is not our list.
    take(std::move(changed), QVariant());
    if (rows == m_rows)
        m_rowsStored = m_settings.stored(favorites);
    m_storeHoldsRows = true;
    const WriteResult result = step.finish();
    // Those who keep a copy (the birthday calendar) hear of what was stored.
    if (m_onChange && result) {
        QList<Favorite> list;
        list.reserve(m_stored->size());
        for (const QStringList &row : *m_stored) {
            if (row.size() >= 2)
                list.append({row.at(0), row.at(1), row.value(2)});
        }
        m_onChange(list);
    }
    return result;
}

void FavoritesStore::requireIndex(qsizetype index) const
{
    if (index < 0 || index >= m_rows.size())
        fatalError(QStringLiteral("favorite %1 does not exist (the list has %2)")
                       .arg(index)
                       .arg(m_rows.size()));
}

Favorite FavoritesStore::at(qsizetype index) const
{
    requireIndex(index);
    // A row cut short (a damaged file) is a favorite whose birthday cannot
    // be read, to be fixed or deleted, not a reason to stop.
    const QStringList &row = m_rows.at(index);
    return {row.value(0), row.value(1), row.value(2)};
}

std::optional<DayOfBirth> FavoritesStore::dayOfBirth(qsizetype index) const
{
    requireIndex(index);
    std::optional<std::optional<DayOfBirth>> &day = m_daysOfBirth[index];
    if (!day)
        day = DayOfBirth::fromStored(m_rows.at(index).value(1));
    return *day;
}

QList<Favorite> FavoritesStore::all() const
{
    QList<Favorite> result;
    result.reserve(m_rows.size());
    for (qsizetype i = 0; i < m_rows.size(); ++i)
        result.append(at(i));
    return result;
}

WriteResult FavoritesStore::append(const QString &fieldText, qint64 day, qint64 month,
                                   std::optional<qint64> year)
{
    const QString name = isBlankText(fieldText) ? QStringLiteral("Unknown") : fieldText;
    QString birthday = QString::number(day) + u' ' + QString::number(month);
    if (year)
        birthday += u' ' + QString::number(*year);
    QList<QStringList> rows = m_rows;
    rows.append({name, birthday, newId()});
    return apply(std::move(rows));
}

WriteResult FavoritesStore::appendMany(const QList<Favorite> &favorites)
{
    if (favorites.isEmpty())
        return {};
    QList<QStringList> rows = m_rows;
    rows.reserve(rows.size() + favorites.size());
    for (const Favorite &favorite : favorites)
        rows.append(rowOf(favorite));
    return apply(std::move(rows));
}

WriteResult FavoritesStore::remove(qsizetype index)
{
    requireIndex(index);
    QList<QStringList> rows = m_rows;
    rows.removeAt(index);
    return apply(std::move(rows));
}

WriteResult FavoritesStore::insert(qsizetype index, const Favorite &favorite)
{
    QList<QStringList> rows = m_rows;
    rows.insert(std::clamp<qsizetype>(index, 0, rows.size()), rowOf(favorite));
    return apply(std::move(rows));
}

WriteResult FavoritesStore::update(qsizetype index, const QString &name, const QString &birthday)
{
    requireIndex(index);
    QList<QStringList> rows = m_rows;
    QStringList &row = rows[index];
    // A row cut short has no identity yet: it gets one now.
    const QString id = row.size() >= 3 ? row.at(2) : newId();
    row = {name, birthday, id};
    return apply(std::move(rows));
}

WriteResult FavoritesStore::reorder(const QList<qsizetype> &order)
{
    if (order.size() != m_rows.size())
        fatalError(QStringLiteral("a new order of %1 favorites for a list of %2")
                       .arg(order.size())
                       .arg(m_rows.size()));
    // A list sorted as it already was would write the same file again.
    qsizetype position = 0;
    const bool unchanged =
        std::all_of(order.cbegin(), order.cend(), [&](qsizetype i) { return i == position++; });
    if (unchanged && m_storeHoldsRows)
        return {};
    // Every favorite once: a mistaken order must not lose or double one.
    QList<bool> placed(m_rows.size());
    QList<QStringList> rows;
    rows.reserve(order.size());
    for (const qsizetype index : order) {
        requireIndex(index);
        if (std::exchange(placed[index], true))
            fatalError(QStringLiteral("favorite %1 comes twice in a new order").arg(index));
        rows.append(m_rows.at(index));
    }
    return apply(std::move(rows));
}

WriteResult FavoritesStore::replaceAll(const QList<Favorite> &favorites)
{
    QList<QStringList> rows;
    rows.reserve(favorites.size());
    for (const Favorite &favorite : favorites)
        rows.append(rowOf(favorite));
    return apply(std::move(rows));
}

WriteResult FavoritesStore::select(qsizetype index) const
{
    // Read (and so check) the row before writing anything: a bad row must not
    // leave half a hand-over behind.
    const Favorite chosen = at(index);
    return FavoriteHandOver::hand(m_settings, chosen, index);
}

bool FavoritesStore::convertOlderForm()
{
    if (m_settings.value(firstStartDone))
        return false;
    m_settings.set(firstStartDone, true);

    const QStringList names = m_settings.value(olderFavoriteNames).value_or(QStringList());
    const QStringList birthdays = m_settings.value(olderFavoriteBirthdays).value_or(QStringList());
    DebugLog::line(QStringLiteral("name: ") + printed(names) + QStringLiteral("  -   bd: ") +
                   printed(birthdays));

    // Checked up front so that "person" is never left half converted.
    if (birthdays.size() < names.size())
        fatalError(QStringLiteral("older favorites: %1 names but %2 birth dates")
                       .arg(names.size())
                       .arg(birthdays.size()));

    if (!names.isEmpty()) {
        QList<QStringList> rows;
        for (qsizetype i = 0; i < names.size(); ++i) {
            rows.append({withoutRunningNumber(names.at(i)), birthdays.at(i)});
            // Written after each one, so an interruption leaves a valid prefix.
            m_settings.set(favorites, rows);
        }
    }
    load();
    return true;
}
