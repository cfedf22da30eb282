// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

// A language Tavlo speaks, by its code: "en" (the texts as written in the
// code), or any language with a translation file ("de", "ru", ...).
class Language
{
public:
    static const Language English;
    static const Language German;
    static const Language Russian;

    constexpr Language() : Language("en") {}

    // "en", "de", "ru", ...
    QString code() const { return QString::fromLatin1(m_code.data()); }

    friend constexpr bool operator==(const Language &a, const Language &b)
    {
        for (size_t i = 0; i < a.m_code.size(); ++i) {
            if (a.m_code[i] != b.m_code[i])
                return false;
        }
        return true;
    }
    friend constexpr bool operator!=(const Language &a, const Language &b) { return !(a == b); }

private:
    friend std::optional<Language> languageFromCode(QStringView code);

    explicit constexpr Language(const char *code)
    {
        for (size_t i = 0; i + 1 < m_code.size() && code[i] != '\0'; ++i)
            m_code[i] = code[i];
    }

    std::array<char, 8> m_code{};
};

inline constexpr Language Language::English{"en"};
inline constexpr Language Language::German{"de"};
inline constexpr Language Language::Russian{"ru"};

Q_DECLARE_METATYPE(Language)

// "en", "de", "ru", ...
QString languageCode(Language language);
// The language of `code` when Tavlo has a translation for it.
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
// any other value leaves the device's choice. An empty list, a first entry
// too short to name a language, or a language without a translation counts
// as English.
LanguageDecision decideLanguage(const QStringList &preferredLanguages, qint64 storedOverride);
