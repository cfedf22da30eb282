// SPDX-License-Identifier: MIT
#include "core/DayOfBirth.h"

#include "core/DatePattern.h"

namespace {

// The fields of a record text in the one shape every write gives it: a day
// and a month of one or two ASCII digits and a year of four, single blanks
// between ("12 3 1985", "06 02 1977"). Nothing for any other shape.
struct PlainRecord
{
    int day = 0;
    int month = 0;
    int year = 0;
};

std::optional<PlainRecord> plainRecord(QStringView text)
{
    qsizetype pos = 0;
    const auto number = [&](int minDigits, int maxDigits) -> std::optional<int> {
        int value = 0;
        int digits = 0;
        while (pos < text.size() && digits < maxDigits && text[pos] >= u'0' && text[pos] <= u'9') {
            value = value * 10 + (text[pos].unicode() - u'0');
            ++pos;
            ++digits;
        }
        return digits >= minDigits ? std::optional(value) : std::nullopt;
    };
    const auto blank = [&] { return pos < text.size() && text[pos++] == u' '; };
    const std::optional<int> day = number(1, 2);
    if (!day || !blank())
        return std::nullopt;
    const std::optional<int> month = number(1, 2);
    if (!month || !blank())
        return std::nullopt;
    const std::optional<int> year = number(4, 4);
    if (!year || pos != text.size())
        return std::nullopt;
    return PlainRecord{*day, *month, *year};
}

} // namespace

DayOfBirth DayOfBirth::of(QDate date)
{
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    return DayOfBirth(day, month, isPlaceholderYear(year) ? 0 : year);
}

std::optional<DayOfBirth> DayOfBirth::withoutYear(int day, int month)
{
    if (!QDate(leapYear, month, day).isValid())
        return std::nullopt;
    return DayOfBirth(day, month, 0);
}

std::optional<DayOfBirth> DayOfBirth::fromStored(QStringView text)
{
    // Every start reads each favorite's text, and nearly all are as written
    // here: those are read from their digits. Any other shape, and a day that
    // does not exist or the year 0, go through the patterns.
    if (const std::optional<PlainRecord> plain = plainRecord(text);
        plain && QDate::isValid(plain->year, plain->month, plain->day))
        return DayOfBirth(plain->day, plain->month,
                          isPlaceholderYear(plain->year) ? 0 : plain->year);
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
