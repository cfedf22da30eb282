// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QList>
#include <QLocale>
#include <QString>
#include <optional>

// Formats and reads dates by the small patterns Tavlo uses: "dd MM yyyy",
// "d M yyyy", "yyyy-MM-dd", "dd MM", "EEEE", "MMMM dd, yyyy" and the like.
//
//   d, dd     day of month; dd pads to two digits
//   M, MM     month number; MM pads to two digits
//   MMMM      month name, EEEE weekday name (from the locale; formatting only)
//   yyyy      year, padded to four digits
//
// Reading is forgiving in the ways the stored texts need: a day or month has
// one or two digits whatever the pattern says, a year one to four, and any
// punctuation or blank between fields matches any other ("1984-02.02" reads
// as 2 February 1984 with "yyyy-MM-dd"). The whole text must be used, but
// for trailing blanks ("12 3 " is the record text "12 3 1985" without its
// year), and the date must exist. A pattern without a year reads into
// defaultYear.
class DatePattern
{
public:
    explicit DatePattern(QStringView pattern, const QLocale &locale = QLocale::c());

    // How a birthday and the picked date are stored: "12 3 1985", the year
    // always of four digits ("d M yyyy"; it reads "06 02 1977" as well).
    static const DatePattern &stored();

    QString format(QDate date) const;
    std::optional<QDate> parse(QStringView text, int defaultYear = 2000) const;

private:
    enum class Field { Literal, Day, Month, MonthName, Year, Weekday };
    struct Token
    {
        Field field = Field::Literal;
        int width = 0;
        QString literal;
    };

    QList<Token> m_tokens;
    QLocale m_locale;
};
