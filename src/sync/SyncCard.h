// SPDX-License-Identifier: MIT
#pragma once

#include "core/DayOfBirth.h"
#include "favorites/FavoritesStore.h"

#include <QByteArray>
#include <QDate>
#include <QString>
#include <optional>

// One favorite as one address-book card on the server, and back.
namespace SyncCard {

// What a card says as a favorite would hold it: the name, the birthday's
// record text ("12 3 1985", "12 3") and as id the UUID of its UID (empty when
// the UID is none). Nothing for a card without a birthday Tavlo can read:
// such a card is not a favorite and is left alone.
std::optional<Favorite> favoriteOf(const QByteArray &card, QDate today);

// The card's UID as written; empty without one.
QString uidOf(const QByteArray &card);

// A new card of `version` ("4.0" or "3.0") for the favorite: UID, FN and
// BDAY (without a year "--0312" in 4.0, or 3.0's placeholder year 1604 with
// X-APPLE-OMIT-YEAR), and N, which 3.0 requires.
QByteArray newCard(const Favorite &favorite, const DayOfBirth &day, const QString &version);

// `card` with the favorite's name and birthday: FN and BDAY are rewritten
// only when they say something else, in the card's own version; every
// other line, folded as it was, stays byte for byte (only a bare LF line
// end, as XML delivers cards, becomes the CRLF vCard requires).
QByteArray changedCard(const QByteArray &card, const Favorite &favorite, const DayOfBirth &day);

} // namespace SyncCard
