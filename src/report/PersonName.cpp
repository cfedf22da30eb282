// SPDX-License-Identifier: MIT
#include "report/PersonName.h"

#include "core/OneLine.h"
#include "texts/Translations.h"

namespace {

QString cleaned(const QString &name)
{
    QString result = shownOnOneLine(name);
    result.remove(u'.');
    while (result.endsWith(u' '))
        result.chop(1);
    return result;
}

QString possessive(const QString &person, Language language)
{
    //: Whose report it is: %1 a person's name ("Anna's age is: ..."). Where the
    //: language marks it in the sentence, as Russian does, this is %1 alone
    return filled(Translations::of(language).translate("PersonName", "%1's"), {person});
}

} // namespace

QString personNameFromFavorite(const QString &name, Language language)
{
    const QString person = cleaned(name);
    return possessive(person.isEmpty() ? QStringLiteral("Unknown") : person, language);
}
