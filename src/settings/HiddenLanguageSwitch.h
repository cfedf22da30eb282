// SPDX-License-Identifier: MIT
#pragma once

#include "texts/Language.h"

#include <QString>
#include <optional>

class SettingsStore;

// The language switch hidden behind taps on the version button. Taps only
// count in theme 6 with the details switch off; from the 40th on they show
// diagnostics, then store German, Russian, English and the device's
// language in turn, each taking effect when the main screen loads again.
class HiddenLanguageSwitch
{
public:
    struct Answer
    {
        QString text;
        // Whether the label is to be shown from now on.
        bool reveal = false;
    };

    // One tap. `language` is the one in force now, `favorites` how many are saved.
    Answer tap(qint64 color, bool detailsOn, Language language, qsizetype favorites,
               SettingsStore &settings);

    qint64 count() const { return m_count; }

    // The language, the fire dates of the scheduled reminders and the
    // number of favorites.
    static QString diagnostics(Language language, qsizetype favorites,
                               const SettingsStore &settings);

private:
    qint64 m_count = 0;
};
