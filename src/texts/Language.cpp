// SPDX-License-Identifier: MIT
#include "texts/Language.h"

#include "texts/Translations.h"

QString languageCode(Language language)
{
    return language.code();
}

std::optional<Language> languageFromCode(QStringView code)
{
    if (code == u"en")
        return Language::English;
    if (code.size() < 2 || code.size() > 7 || !Translations::codes().contains(code.toString()))
        return std::nullopt;
    Language language;
    language.m_code.fill('\0');
    for (qsizetype i = 0; i < code.size(); ++i)
        language.m_code[size_t(i)] = char(code.at(i).toLatin1());
    return language;
}

QLocale localeFor(Language language)
{
    return QLocale(language.code());
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
