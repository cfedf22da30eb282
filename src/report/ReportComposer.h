// SPDX-License-Identifier: MIT
#pragma once

#include "core/AgeCalculator.h"
#include "core/DayOfBirth.h"
#include "texts/Language.h"

#include <QDateTime>
#include <QString>

class BirthDateResults;
class UiStrings;

// One composed age report, with everything in it as the language shows it.
struct AgeReport
{
    QString detailed;
    QString shortText;
    // The full weekday name of the birth date.
    QString weekday;
    QString zodiacSign;
    QString signKey;
    QString starImage;
    QString animal;
    QString element;
    QString yinYang;
    QString planet;
    AgeFacts age;
};

// What the report's two labels show.
struct ShownReport
{
    QString display;
    QString weekday;

    // The detailed text and the weekday when details are on, else the short text alone.
    static ShownReport of(const AgeReport &report, bool moreDetails);
};

// What a screen reader says when the shown report changes: its first
// paragraph on one line ("Anna's age is: 41 Years, 3 Months & 10 Days"),
// with the next one when the first holds no number (the short report's
// "Anna's age").
QString spokenSummary(const QString &shownText);

// Builds the age report texts in the current language from a fresh
// birth-date computation. The computation's results are kept in `results`,
// so a lookup that finds nothing shows what the report before it showed.
class ReportComposer
{
public:
    ReportComposer(const UiStrings &strings, BirthDateResults &results);

    AgeReport compose(const QDateTime &birth, const QDateTime &now, const QString &personName,
                      Language language);
    // The report on a birthday whose year is not known: the day and month,
    // that the year is not known, the Western sign and the days to the next
    // birthday. Nothing that needs the year (the age, the totals, the Chinese
    // year and its planet, the weekday), and `results` stay as they were.
    AgeReport composeWithoutYear(const DayOfBirth &day, QDate today, const QString &personName,
                                 Language language) const;

private:
    QString detailedText(const AgeReport &report, const QString &personName,
                         Language language) const;
    QString shortText(const AgeReport &report, const QString &personName) const;

    const UiStrings &m_strings;
    BirthDateResults &m_results;
};
