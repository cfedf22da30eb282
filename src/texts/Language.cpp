// SPDX-License-Identifier: MIT
#include "texts/Language.h"

QString languageCode(Language language)
{
    switch (language) {
    case Language::German:
        return QStringLiteral("de");
    case Language::Russian:
        return QStringLiteral("ru");
    case Language::English:
        break;
    }
    return QStringLiteral("en");
}

std::optional<Language> languageFromCode(QStringView code)
{
    if (code == u"en")
        return Language::English;
    if (code == u"de")
        return Language::German;
    if (code == u"ru")
        return Language::Russian;
    return std::nullopt;
}

QLocale localeFor(Language language)
{
    return QLocale(languageCode(language));
}

LanguageDecision decideLanguage(const QStringList &preferredLanguages, qint64 storedOverride)
{
    QString identifier = preferredLanguages.isEmpty() ? QString() : preferredLanguages.first();
    switch (storedOverride) {
    case 1:
        identifier = QStringLiteral("de");
        break;
    case 2:
        identifier = QStringLiteral("ru");
        break;
    case 3:
        identifier = QStringLiteral("en");
        break;
    default:
        break;
    }
    // Only the two-letter language part counts: de-AT is de, zh-Hans-CN is zh.
    const QStringView primary = QStringView(identifier).left(2);
    const Language language = primary.size() == 2
                                  ? languageFromCode(primary).value_or(Language::English)
                                  : Language::English;
    return {language, storedOverride};
}
