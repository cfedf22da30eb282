// SPDX-License-Identifier: MIT
#pragma once

#include "core/DayOfBirth.h"
#include "settings/SettingsStore.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <utility>

// One saved birthday: the name as typed, the record date text ("12 3 1985",
// or "12 3" without a year) and the favorite's own lasting identity, a UUID
// that stays through renames and date changes (empty for one not yet stored).
struct Favorite
{
    Favorite() = default;
    Favorite(QString name, QString birthday, QString id = QString())
        : name(std::move(name)), birthday(std::move(birthday)), id(std::move(id))
    {}

    QString name;
    QString birthday;
    QString id;

    friend bool operator==(const Favorite &, const Favorite &) = default;
};

// The one favorites list, kept under "person" as an array of [name, birthday,
// id] string arrays in display order. Every change writes the whole list.
//
// Rows are held as stored, and a change writes back the others as they were
// loaded, with two exceptions made on reading. A row of earlier versions,
// [name, birthday], gets the identity that their exports gave it
// (derivedId()), so that a calendar or address book fed before and after
// sees the same person. And a birthday stored in a placeholder year
// ("2 3 1604", from an address book that meant "no year") is read as the day
// and month it is ("2 3"). Both are the same in every process, so rows read
// here and elsewhere still compare.
// A row with fewer than two texts (a damaged file) reads with the missing
// ones empty: a favorite whose birthday cannot be read, listed to be fixed.
//
// Another process (the command line beside the open app) may change "person"
// between our load() and a change. So each change reads "person" again in one
// batch with its write and merges: rows added elsewhere since are kept (at the
// end), rows removed elsewhere stay removed, and ours is applied to the rest.
// Rows are told apart by their texts. Our own list stays as our caller knows
// it, so the indexes it holds keep their rows; load() takes in the others'.
class FavoritesStore
{
public:
    // Called with the whole stored list after every change that this store
    // writes, so that what is made from the favorites (the birthdays
    // calendar) stays current. Rows of fewer than two texts are left out.
    using ChangeListener = std::function<void(const QList<Favorite> &)>;

    explicit FavoritesStore(SettingsStore &settings, ChangeListener onChange = {});

    // Reads "person", with what other processes wrote; missing or of another
    // type gives an empty list. A list that nothing changed since it was last
    // read or written is kept as it is, with its birth dates.
    void load();

    qsizetype count() const { return m_rows.size(); }
    // Fatal for an index outside the list: the program's own mistake.
    Favorite at(qsizetype index) const;
    // Every favorite in order.
    QList<Favorite> all() const;
    // The favorite's birthday read from its record text, kept until the list
    // changes; nothing when it cannot be read. Fatal as at().
    std::optional<DayOfBirth> dayOfBirth(qsizetype index) const;

    // Every change below writes the whole list in one step and says whether
    // it reached the disk. One that did not stays in this list (and in the
    // settings store, which writes it again with its next change).

    // The add dialog: a field of only blanks and tabs stores "Unknown", any other
    // text is kept untrimmed; the birthday is "d M yyyy" from the three
    // integers, or "d M" without a year. The new favorite gets a new id.
    WriteResult append(const QString &fieldText, qint64 day, qint64 month,
                       std::optional<qint64> year);
    // An import: appends the favorites, as given, at the end in one write;
    // one without an id gets a new one.
    WriteResult appendMany(const QList<Favorite> &favorites);
    WriteResult remove(qsizetype index);
    // Puts a favorite back at `index` (at the end when the list has grown
    // shorter since), as an undo of remove().
    WriteResult insert(qsizetype index, const Favorite &favorite);
    // A new name and birthday; the favorite keeps its id.
    WriteResult update(qsizetype index, const QString &name, const QString &birthday);
    // Puts the favorites in a new order, from sorting: `order` holds each
    // favorite's present position, the first first.
    WriteResult reorder(const QList<qsizetype> &order);
    // Makes `favorites` the list, as following the address books changes it:
    // rows keep their identities (one without an id gets a new one).
    WriteResult replaceAll(const QList<Favorite> &favorites);

    // Hands the chosen favorite to the main screen through the settings store.
    WriteResult select(qsizetype index) const;

    // Replaces the listener given at construction; an empty one stops it.
    void setChangeListener(ChangeListener onChange) { m_onChange = std::move(onChange); }

    // A new identity: a random UUID, without braces.
    static QString newId();
    // The identity of a row stored without one, as exports of earlier
    // versions named it: from the name and the birthday text, the n-th row
    // with both the same (n from 0) its own.
    static QString derivedId(const QString &name, const QString &birthday, int repeat);

    // Converts the two arrays of an earlier version once, guarded by
    // "firstStart2". Returns true when it ran; the caller then turns on
    // "moreDetails" and "star".
    bool convertOlderForm();

private:
    void requireIndex(qsizetype index) const;
    // Makes `changed` (our rows after a change) our list and writes it merged
    // with "person" as it is now.
    WriteResult apply(QList<QStringList> changed);
    // Notes what "person" holds, read or written just now.
    void remember(const std::optional<QList<QStringList>> &stored) const;

    // Makes `rows` our list, read from or written as `stored`.
    void take(QList<QStringList> rows, const QVariant &stored);

    SettingsStore &m_settings;
    ChangeListener m_onChange;
    QList<QStringList> m_rows;
    // The stored value that m_rows was read from or written as; invalid
    // when there was none or our list is not what the store holds.
    QVariant m_rowsStored;
    // Each row's day of birth once asked for: empty inside when it is none.
    mutable QList<std::optional<std::optional<DayOfBirth>>> m_daysOfBirth;
    // Whether "person" held a list when last read or written: if not, even an
    // unchanged list is written, replacing what was there.
    mutable bool m_storeHoldsRows = false;
    // "person" as last read or written, and the stored value it was then.
    mutable std::optional<QList<QStringList>> m_stored;
    mutable QVariant m_storedValue;
};
