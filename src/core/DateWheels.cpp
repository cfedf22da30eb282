// SPDX-License-Identifier: MIT
#include "core/DateWheels.h"

#include "core/DayOfBirth.h"

#include <algorithm>

QList<DateWheels::Field> DateWheels::order(const QLocale &locale)
{
    const QString format = locale.dateFormat(QLocale::ShortFormat);
    const auto position = [&](QChar c) {
        const qsizetype at = format.indexOf(c);
        return at < 0 ? format.size() : at;
    };
    QList<Field> fields = {Field::Day, Field::Month, Field::Year};
    const auto letter = [](Field f) {
        return f == Field::Day ? u'd' : (f == Field::Month ? u'M' : u'y');
    };
    std::stable_sort(fields.begin(), fields.end(),
                     [&](Field a, Field b) { return position(letter(a)) < position(letter(b)); });
    return fields;
}

QStringList DateWheels::monthNames(const QLocale &locale)
{
    QStringList names;
    for (int month = 1; month <= 12; ++month)
        names.append(locale.monthName(month, QLocale::LongFormat));
    return names;
}

QStringList DateWheels::orderNames(const QLocale &locale)
{
    QStringList names;
    for (const Field field : order(locale)) {
        names.append(field == Field::Day     ? QStringLiteral("day")
                     : field == Field::Month ? QStringLiteral("month")
                                             : QStringLiteral("year"));
    }
    return names;
}

QStringList DateWheels::yearLabels()
{
    QStringList labels;
    for (int year = firstYear; year <= lastYear; ++year)
        labels.append(QString::number(year));
    return labels;
}

int DateWheels::daysInMonth(int month, int year)
{
    return QDate(year == 0 ? DayOfBirth::leapYear : year, month, 1).daysInMonth();
}

std::optional<QDate> DateWheels::date(int day, int month, int year)
{
    const QDate first(year == 0 ? DayOfBirth::leapYear : year, month, 1);
    if (!first.isValid())
        return std::nullopt;
    return QDate(first.year(), month, std::clamp(day, 1, first.daysInMonth()));
}
