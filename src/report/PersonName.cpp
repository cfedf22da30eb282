// SPDX-License-Identifier: MIT
#include "report/PersonName.h"

#include "core/OneLine.h"

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
    return language == Language::Russian ? person : person + QStringLiteral("'s");
}

} // namespace

QString personNameFromFavorite(const QString &name, Language language)
{
    const QString person = cleaned(name);
    return possessive(person.isEmpty() ? QStringLiteral("Unknown") : person, language);
}
