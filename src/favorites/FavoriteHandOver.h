// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "settings/WriteResult.h"

#include <QtGlobal>

class SettingsStore;

// The favorite the favorites screen hands to the next main screen, kept in
// the settings so that the main screen opens on it: "dataSave" says one
// waits, "birthdayMove" that the wheels are to go to its date, "Name" and
// "birthday" are the favorite and "indexCount" its row, where the swipes
// go on from.
namespace FavoriteHandOver {

struct Waiting
{
    bool pending = false;
    bool movePicker = false;
    qint64 index = 0;
};

// Hands `favorite`, row `index`, over in one write.
WriteResult hand(SettingsStore &settings, const Favorite &favorite, qint64 index);

// Hands over the favorite whose id is `id` (a tapped reminder's), at its row
// in `favorites`; nothing when none has it (deleted since).
std::optional<WriteResult> handById(SettingsStore &settings, const QList<Favorite> &favorites,
                                    const QString &id);

Waiting waiting(const SettingsStore &settings);

// The favorite handed over; nothing when "Name" or "birthday" is missing or
// the birthday is no date (a hand-over cut short, or a hand edit).
std::optional<Favorite> favorite(const SettingsStore &settings);

// The main screen has taken the hand-over; `pickerMoved` when its wheels went
// to the favorite's date.
void taken(SettingsStore &settings, bool pickerMoved);

} // namespace FavoriteHandOver
