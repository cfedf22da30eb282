// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>
#include <optional>

// The three languages Tavlo speaks.
enum class Language { English, German, Russian };

// "en", "de" or "ru".
QString languageCode(Language language);
std::optional<Language> languageFromCode(QStringView code);

// The locale that dates, month and weekday names follow in a language.
QLocale localeFor(Language language);

// What one language decision yields: the language and the override it read.
struct LanguageDecision
{
    Language language = Language::English;
    qint64 override = 0;
};

// Picks the interface language from the device's preferred languages (first
// entry wins) and the stored override: 1 = German, 2 = Russian, 3 = English,
// any other value leaves the device's choice. An empty list, or a first entry
// too short to name a language, counts as English.
LanguageDecision decideLanguage(const QStringList &preferredLanguages, qint64 storedOverride);
