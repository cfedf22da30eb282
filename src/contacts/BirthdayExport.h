// SPDX-License-Identifier: MIT
#pragma once

#include "core/DayOfBirth.h"
#include "favorites/FavoritesStore.h"
#include "texts/UiStrings.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

// The favorites as files other programs read: address-book cards and a
// calendar of yearly birthdays. Lines end in CRLF and are folded at 75
// octets; texts are escaped. A favorite whose birthday is no record date
// ("12 3 1985", "12 3") cannot be written and is counted in `unreadable`.
namespace BirthdayExport {

struct Output
{
    QByteArray text;
    qsizetype written = 0;
    qsizetype unreadable = 0;
};

// vCard 4.0, one card per favorite: FN with the name, BDAY with the date
// ("--0312" without a year), and the favorite's identity as UID, the same
// from one export to the next. A name with a
// carriage return or another control character that vCard text cannot carry
// also goes exactly into FN's parameter exactNameParameter, as
// percent-encoded UTF-8, so that Tavlo's import gives back the same name.
Output vCards(const QList<Favorite> &favorites);

// The pieces of those cards, for cards written one at a time: a content
// line folded and CRLF-ended, the FN line of a name, and BDAY's value in
// vCard 4.0 ("19850312", "--0312").
QByteArray contentLine(const QString &line);
QString nameLine(const QString &name);
QString birthdayText(const DayOfBirth &day);

// FN;X-TAVLO-NAME=Ann%0DLee:Ann\nLee
inline constexpr char exactNameParameter[] = "X-TAVLO-NAME";

// An iCalendar of one all-day event per favorite, repeating every year from
// the day of birth (from this year's birthday when the year is not known);
// its summary ("Anna's birthday") and, with a year, its description with the
// year of birth ("born 1985") in the language of `strings`. Born on
// 29 February, the birthday falls on 1 March in common years, as Tavlo counts
// it. `stamp` is the moment of writing (DTSTAMP).
Output calendar(const QList<Favorite> &favorites, const UiStrings &strings, const QDateTime &stamp);

} // namespace BirthdayExport
