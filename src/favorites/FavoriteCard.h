// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "texts/Language.h"
#include "texts/UiStrings.h"
#include "themes/Themes.h"

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QVariantMap>
#include <optional>

// What one row of the favorites list shows.
struct FavoriteCard
{
    // The name without trailing blanks, or "Unknown" when nothing is left.
    QString name;
    // The birthday as the language writes dates, names from the device's locale.
    QString birthdayText;
    // Whole years completed; nothing when the year of birth is not known.
    std::optional<qint64> age;
    // The sign picture: "aquarius" ... "capricorn".
    QString signKey;
    // "★" when this year's birthday is today or still to come, or cannot be
    // read (29 February in a common year).
    QString star;
    // What a screen reader says for the row (see spokenRow()).
    QString spoken;
    // False for a birthday that cannot be read: then only the name and the
    // stored text are known, and the row asks to be fixed.
    bool readable = true;
};

// The colours of a row, by theme and appearance.
struct FavoriteCardColors
{
    Rgb signCircle;
    Rgb star;
    Rgb birthday;
    Rgb age{1, 1, 1};
    // The name and the age are drawn thin where their thin strokes read on
    // the card, and in the light face elsewhere.
    Rgb name;
    bool thinName = true;
    bool thinAge = true;
};

namespace FavoriteCards {

// The row of `favorite`. A birthday that cannot be read gives a row that is
// not `readable`, with the stored text.
FavoriteCard card(const Favorite &favorite, const QDateTime &now, Language language,
                  const QLocale &deviceLocale, bool showWeekday, bool markComing);

// The name as a row shows it: without trailing blanks, "Unknown" when
// nothing is left.
QString displayName(const QString &name);

// Whether this year's birthday is today or still to come, by day and month;
// nothing when the text cannot be read with this year put in (29 February
// in a common year).
std::optional<bool> birthdayStillToCome(const QString &birthday, QDate today);

// The sign picture of a day and month, by the cell's own boundaries; nothing
// for an impossible month.
std::optional<QString> signPicture(int day, int month);

// What a screen reader says for a row, in the interface language: the name,
// the birthday, the age, the sign and, with the star, that the birthday is
// still to come. `names` are the screen's accessibleNames().
QString spokenRow(const FavoriteCard &card, const UiStrings &strings, const QVariantMap &names);

// Theme 9's colour is dark grey here, as on the favorites screen.
FavoriteCardColors colors(const ThemeTable &themes, int theme, Appearance appearance);

// What lies behind a card's text: the card, the system background at 0.2,
// over each colour of the screen's backdrop.
QList<Rgb> cardBackdrop(Appearance appearance, const QList<Rgb> &screenBackdrop);

// The colours of a row with the star, the birthday and the age moved in
// lightness just enough to read on the card.
FavoriteCardColors legible(FavoriteCardColors colors, const QList<Rgb> &cardBackdrop);

} // namespace FavoriteCards
