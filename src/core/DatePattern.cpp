// SPDX-License-Identifier: MIT
#include "core/DatePattern.h"

namespace {

bool isSeparator(QChar c)
{
    return c.isSpace() || c.isPunct();
}

// Reads minDigits..maxDigits decimal digits at pos, as many as there are.
std::optional<int> readNumber(QStringView text, qsizetype &pos, int maxDigits)
{
    int value = 0;
    int digits = 0;
    while (pos < text.size() && digits < maxDigits && text[pos].isDigit()) {
        value = value * 10 + text[pos].digitValue();
        ++pos;
        ++digits;
    }
    return digits > 0 ? std::optional(value) : std::nullopt;
}

} // namespace

DatePattern::DatePattern(QStringView pattern, const QLocale &locale) : m_locale(locale)
{
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern[i];
        qsizetype run = 1;
        while (i + run < pattern.size() && pattern[i + run] == c)
            ++run;
        Token token;
        token.width = int(run);
        if (c == u'd') {
            token.field = Field::Day;
        } else if (c == u'M') {
            token.field = run >= 3 ? Field::MonthName : Field::Month;
        } else if (c == u'y') {
            token.field = Field::Year;
        } else if (c == u'E') {
            token.field = Field::Weekday;
        } else {
            token.literal = pattern.mid(i, run).toString();
        }
        m_tokens.append(token);
        i += run;
    }
}

QString DatePattern::format(QDate date) const
{
    QString out;
    for (const Token &token : m_tokens) {
        switch (token.field) {
        case Field::Literal:
            out += token.literal;
            break;
        case Field::Day:
            out += QString::number(date.day()).rightJustified(token.width, u'0');
            break;
        case Field::Month:
            out += QString::number(date.month()).rightJustified(token.width, u'0');
            break;
        case Field::MonthName:
            out += m_locale.monthName(date.month(), token.width == 3 ? QLocale::ShortFormat
                                                                     : QLocale::LongFormat);
            break;
        case Field::Year:
            out += QString::number(date.year()).rightJustified(token.width, u'0');
            break;
        case Field::Weekday:
            out += m_locale.dayName(date.dayOfWeek(),
                                    token.width >= 4 ? QLocale::LongFormat : QLocale::ShortFormat);
            break;
        }
    }
    return out;
}

std::optional<QDate> DatePattern::parse(QStringView text, int defaultYear) const
{
    int day = 1;
    int month = 1;
    int year = defaultYear;
    qsizetype pos = 0;
    for (const Token &token : m_tokens) {
        std::optional<int> number;
        switch (token.field) {
        case Field::Literal:
            for (const QChar expected : token.literal) {
                if (pos >= text.size())
                    return std::nullopt;
                const QChar actual = text[pos++];
                const bool same = isSeparator(expected) ? isSeparator(actual) : actual == expected;
                if (!same)
                    return std::nullopt;
            }
            continue;
        case Field::Day:
            number = readNumber(text, pos, 2);
            day = number.value_or(0);
            break;
        case Field::Month:
            number = readNumber(text, pos, 2);
            month = number.value_or(0);
            break;
        case Field::Year:
            number = readNumber(text, pos, 4);
            year = number.value_or(0);
            break;
        case Field::MonthName:
        case Field::Weekday:
            return std::nullopt;
        }
        if (!number)
            return std::nullopt;
    }
    while (pos < text.size() && text[pos].isSpace())
        ++pos;
    if (pos != text.size() || year < 1)
        return std::nullopt;
    const QDate date(year, month, day);
    return date.isValid() ? std::optional(date) : std::nullopt;
}
