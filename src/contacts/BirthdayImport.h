// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/VCardReader.h"
#include "core/DayOfBirth.h"
#include "favorites/FavoritesStore.h"
#include "texts/UiStrings.h"

#include <QDate>
#include <QList>

// What an import does with one card.
enum class ImportOutcome {
    Added,
    // The UID of a favorite (a card Tavlo exported), or the same name and
    // birthday as a favorite or as a card before it.
    AlreadyThere,
    NoBirthday,
    // Written as a date that does not exist, such as 1985-02-30.
    ImpossibleDate,
    FutureDate,
    // A phrase ("circa 1800") or a form no address book writes.
    UnreadableDate,
};

// The counts of an import, as its summary line tells them.
struct ImportSummary
{
    qsizetype added = 0;
    qsizetype alreadyThere = 0;
    qsizetype noBirthday = 0;
    qsizetype impossibleDate = 0;
    qsizetype futureDate = 0;
    qsizetype unreadableDate = 0;

    qsizetype skipped() const { return noBirthday + impossibleDate + futureDate + unreadableDate; }
    void count(ImportOutcome outcome);
    friend bool operator==(const ImportSummary &, const ImportSummary &) = default;
};

// What importing some cards into the favorites will do: the favorites to
// append, in the cards' order, and the counts.
struct ImportPlan
{
    QList<Favorite> additions;
    ImportSummary summary;
};

namespace BirthdayImport {

// The birthday of a card as a day of birth, with or without its year, or
// why it is none. `today` decides what is in the future. "--0312" and a date
// in a year that stands for "not known" (X-APPLE-OMIT-YEAR's, else 1604,
// 0000 or 0001) are a day and month without a year.
struct Birthday
{
    ImportOutcome outcome = ImportOutcome::Added;
    // Only when Added.
    std::optional<DayOfBirth> day;
};
Birthday birthday(const VCardContact &contact, QDate today);

// The UUID in a card's UID ("urn:uuid:…", or the bare UUID), without
// braces; empty for any other UID.
QString uuidOf(const QString &uid);

// Plans the import of `contacts` into a list that holds `existing`.
ImportPlan plan(const QList<VCardContact> &contacts, const QList<Favorite> &existing, QDate today);

// Imports `contacts` into `store` as it is stored now: the plan, then its
// additions appended in one write. Returns the counts and whether the
// additions were stored.
struct Imported
{
    ImportSummary summary;
    WriteResult stored;
};
Imported importInto(FavoritesStore &store, const QList<VCardContact> &contacts, QDate today);

// "8 added, 1 already there, 4 skipped (1 no birthday, 2 impossible date,
// 1 date in the future)" in the interface language of `strings`; only the reasons
// that occurred are named.
QString summaryText(const ImportSummary &summary, const UiStrings &strings);

} // namespace BirthdayImport
