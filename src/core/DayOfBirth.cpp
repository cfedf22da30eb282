// SPDX-License-Identifier: MIT
#include "core/DayOfBirth.h"

#include "core/DatePattern.h"

DayOfBirth DayOfBirth::of(QDate date)
{
    if (isPlaceholderYear(date.year()))
        return DayOfBirth(date.day(), date.month(), 0);
    return DayOfBirth(date.day(), date.month(), date.year());
}

std::optional<DayOfBirth> DayOfBirth::withoutYear(int day, int month)
{
    if (!QDate(leapYear, month, day).isValid())
        return std::nullopt;
    return DayOfBirth(day, month, 0);
}

std::optional<DayOfBirth> DayOfBirth::fromStored(QStringView text)
{
    if (const std::optional<QDate> date = DatePattern::stored().parse(text))
        return of(*date);
    // "29 2 0000": the year 0 is no date, but the day and month are.
    static const DatePattern dayAndMonth(u"d M");
    static const DatePattern withYearZero(u"d M 0000");
    if (std::optional<QDate> date = withYearZero.parse(text, leapYear))
        return DayOfBirth(date->day(), date->month(), 0);
    if (const std::optional<QDate> date = dayAndMonth.parse(text, leapYear))
        return DayOfBirth(date->day(), date->month(), 0);
    return std::nullopt;
}

bool DayOfBirth::isPlaceholderYear(int year)
{
    return year == 1604 || year == 1 || year == 0;
}

QString DayOfBirth::stored() const
{
    if (const std::optional<QDate> birth = date())
        return DatePattern::stored().format(*birth);
    return QString::number(m_day) + u' ' + QString::number(m_month);
}

std::optional<QDate> DayOfBirth::date() const
{
    if (!hasYear())
        return std::nullopt;
    return QDate(m_year, m_month, m_day);
}

std::optional<QDate> DayOfBirth::in(int year) const
{
    const QDate birthday(year, m_month, m_day);
    return birthday.isValid() ? std::optional(birthday) : std::nullopt;
}
