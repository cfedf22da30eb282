// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class SettingsStore;

// What one start did to the rating prompt's state.
struct RatingDecision
{
    // "myReviewVers" as it was: the version last asked for, "0.0" before any.
    QString askedVersion;
    qint64 appStarts = 0;
    bool askForRating = false;
};

// Counts a start of the main screen towards the rating prompt and decides
// whether to ask now: from the 13th counted start with at least four
// favorites, once per version of the app.
RatingDecision applyRatingRule(SettingsStore &settings, qsizetype favoriteCount,
                               const QString &currentVersion);
