// SPDX-License-Identifier: MIT
#include "favorites/FavoriteHandOver.h"

#include "core/DayOfBirth.h"
#include "settings/SettingsStore.h"

using namespace SettingsKeys;
using namespace Qt::Literals::StringLiterals;

WriteResult FavoriteHandOver::hand(SettingsStore &settings, const Favorite &favorite, qint64 index)
{
    // One write of the file, so that no interruption leaves half of it.
    SettingsBatch batch(settings);
    settings.set(handOverPending, true);
    settings.set(handOverBirthday, favorite.birthday);
    settings.set(handOverName, favorite.name);
    settings.set(handOverMovePicker, true);
    settings.set(handOverIndex, index);
    return batch.finish();
}

std::optional<WriteResult> FavoriteHandOver::handById(SettingsStore &settings,
                                                      const QList<Favorite> &favorites,
                                                      const QString &id)
{
    if (id.isEmpty())
        return std::nullopt;
    for (qsizetype i = 0; i < favorites.size(); ++i) {
        if (favorites.at(i).id == id)
            return hand(settings, favorites.at(i), i);
    }
    return std::nullopt;
}

FavoriteHandOver::Waiting FavoriteHandOver::waiting(const SettingsStore &settings)
{
    return {settings.value(handOverPending), settings.value(handOverMovePicker),
            settings.value(handOverIndex)};
}

std::optional<Favorite> FavoriteHandOver::favorite(const SettingsStore &settings)
{
    const std::optional<QString> name = settings.value(handOverName);
    const std::optional<QString> birthday = settings.value(handOverBirthday);
    if (!name || !birthday || !DayOfBirth::fromStored(*birthday))
        return std::nullopt;
    return Favorite{*name, *birthday};
}

void FavoriteHandOver::taken(SettingsStore &settings, bool pickerMoved)
{
    if (pickerMoved)
        settings.set(handOverMovePicker, false);
    settings.set(handOverPending, false);
}
