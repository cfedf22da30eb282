// SPDX-License-Identifier: MIT
#include "cli/UnreadableBirthdays.h"

#include "cli/CommandContext.h"
#include "core/DayOfBirth.h"
#include "core/OneLine.h"

using namespace Qt::Literals::StringLiterals;

bool UnreadableBirthdays::check(qsizetype index, const Favorite &favorite)
{
    if (DayOfBirth::fromStored(favorite.birthday))
        return true;
    m_lines.append(
        u"tavlo: favorite %1 (\"%2\") has an unreadable birthday \"%3\""_s.arg(index).arg(
            oneLine(favorite.name), oneLine(favorite.birthday)));
    return false;
}

void UnreadableBirthdays::checkAll(const QList<Favorite> &favorites)
{
    for (qsizetype i = 0; i < favorites.size(); ++i)
        check(i, favorites.at(i));
}

int UnreadableBirthdays::report(QTextStream &err) const
{
    for (const QString &line : m_lines)
        err << line << '\n';
    err.flush();
    return any() ? ExitStatus::usage : ExitStatus::ok;
}
