// SPDX-License-Identifier: MIT
#include "session/RatingRule.h"

#include "settings/SettingsStore.h"

RatingDecision applyRatingRule(SettingsStore &settings, qsizetype favoriteCount,
                               const QString &currentVersion)
{
    RatingDecision decision;
    decision.askedVersion = settings.value(SettingsKeys::reviewedVersion)
                                .value_or(SettingsKeys::reviewedVersionWhenAbsent);
    decision.appStarts = settings.value(SettingsKeys::appStarts);
    if (decision.askedVersion == currentVersion)
        return decision;

    decision.appStarts += 1;
    settings.set(SettingsKeys::appStarts, decision.appStarts);
    if (decision.appStarts > 12 && favoriteCount > 3) {
        settings.set(SettingsKeys::reviewedVersion, currentVersion);
        settings.set(SettingsKeys::appStarts, 0);
        decision.askForRating = true;
    }
    return decision;
}
