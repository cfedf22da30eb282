// SPDX-License-Identifier: MIT
#include "texts/RussianPlural.h"

using namespace Qt::Literals::StringLiterals;

RussianPluralForm russianPluralForm(qint64 number)
{
    const qint64 n = number < 0 ? -(number % 100) : number % 100;
    const qint64 lastDigit = n % 10;
    if (n >= 11 && n <= 14)
        return RussianPluralForm::Many;
    if (lastDigit == 1)
        return RussianPluralForm::One;
    if (lastDigit >= 2 && lastDigit <= 4)
        return RussianPluralForm::Few;
    return RussianPluralForm::Many;
}

namespace {

QString pick(qint64 number, const QString &one, const QString &few, const QString &many)
{
    switch (russianPluralForm(number)) {
    case RussianPluralForm::One:
        return one;
    case RussianPluralForm::Few:
        return few;
    case RussianPluralForm::Many:
        break;
    }
    return many;
}

} // namespace

QString russianYears(qint64 number)
{
    return pick(number, u"год"_s, u"года"_s, u"лет"_s);
}

QString russianMonths(qint64 number)
{
    return pick(number, u"месяц"_s, u"месяца"_s, u"месяцев"_s);
}

QString russianDays(qint64 number)
{
    return pick(number, u"день"_s, u"дня"_s, u"дней"_s);
}
