// SPDX-License-Identifier: MIT
#include "report/ReportComposer.h"

#include "core/BirthDateResults.h"
#include "core/DatePattern.h"
#include "core/WesternZodiac.h"
#include "texts/UiStrings.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString number(qint64 value)
{
    return QString::number(value);
}

QString displayedPolarity(const QString &englishPolarity, const Translations &t)
{
    //: The polarity of a Chinese year, shown before its element
    return englishPolarity == u"Yang" ? t.translate("ReportComposer", "Yang")
                                      : t.translate("ReportComposer", "Yin");
}

QString zodiacSignLine(const Translations &t, const QString &sign)
{
    //: %1 the sign with its symbol ("Aries ♈︎"); the Chinese zodiac lines follow it
    return filled(t.translate("ReportComposer", "Zodiac sign: %1"), {sign});
}

QString nextBirthdayLine(const Translations &t, qint64 days)
{
    //: %n the days to the next birthday (1 or more)
    return t.translate("ReportComposer", "next birthday: in %n day(s)", nullptr, days);
}

} // namespace

QString spokenSummary(const QString &shownText)
{
    const QStringList paragraphs = shownText.split(u"\n\n"_s, Qt::SkipEmptyParts);
    QString summary = paragraphs.value(0);
    const auto hasNumber = [](const QString &text) {
        return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isDigit(); });
    };
    if (!hasNumber(summary) && paragraphs.size() > 1)
        summary += u'\n' + paragraphs.at(1);
    return summary.simplified();
}

ShownReport ShownReport::of(const AgeReport &report, bool moreDetails)
{
    if (moreDetails)
        return {report.detailed, report.weekday};
    return {report.shortText, QString()};
}

ReportComposer::ReportComposer(const UiStrings &strings, BirthDateResults &results)
    : m_strings(strings), m_results(results)
{}

AgeReport ReportComposer::compose(const QDateTime &birth, const QDateTime &now,
                                  const QString &personName, Language language)
{
    m_results.compute(birth, now);

    AgeReport report;
    report.age = m_results.age();
    report.zodiacSign = m_strings.translated(m_results.zodiacSign());
    report.signKey = WesternZodiac::signKey(m_results.signIndex());
    report.starImage = WesternZodiac::starImage(m_results.signIndex());
    report.animal = m_strings.translated(m_results.animal());
    report.element = m_strings.translated(m_results.element());
    report.yinYang = displayedPolarity(m_results.yinYang(), Translations::of(language));
    report.planet = m_strings.translated(m_results.planet());
    report.weekday =
        localeFor(language).dayName(birth.toLocalTime().date().dayOfWeek(), QLocale::LongFormat);
    report.detailed = detailedText(report, personName, language);
    report.shortText = shortText(report, personName);
    return report;
}

AgeReport ReportComposer::composeWithoutYear(const DayOfBirth &day, QDate today,
                                             const QString &personName, Language language) const
{
    AgeReport report;
    // Every day of birth has a sign: the table covers each day of a leap year.
    const int sign = WesternZodiac::signIndex(day.day(), day.month()).value_or(0);
    report.zodiacSign = m_strings[WesternZodiac::signText(sign)];
    report.signKey = WesternZodiac::signKey(sign);
    report.starImage = WesternZodiac::starImage(sign);
    report.age.birthDay = day.day();
    report.age.birthMonth = day.month();
    report.age.daysToBirthday = daysToNextBirthday(day.inLeapYear(), today);

    const Translations &t = Translations::of(language);
    //: A birthday without its year, as a QDate format: MMMM the month's name, dd the day
    const QString dayAndMonth =
        DatePattern(t.translate("Dates", "MMMM dd"), localeFor(language)).format(day.inLeapYear());
    const QString text = m_strings[UiText::BirthdayWithoutYear].arg(personName, dayAndMonth) +
                         u'\n' + m_strings[UiText::BirthYearUnknown] + u"\n\n"_s +
                         zodiacSignLine(t, report.zodiacSign) + u'\n' +
                         nextBirthdayLine(t, report.age.daysToBirthday);
    report.detailed = text;
    report.shortText = text;
    return report;
}

QString ReportComposer::detailedText(const AgeReport &r, const QString &person,
                                     Language language) const
{
    const AgeFacts &a = r.age;
    const UiStrings &s = m_strings;

    // Without a Chinese year there is nothing to say about animal and element.
    QString chineseLine;
    QString elementLine;
    if (m_results.animal() != BirthDateResults::unknownAnimal()) {
        chineseLine = s[UiText::ChineseZodiacLabel] + r.animal;
        elementLine = s[UiText::ElementLabel] + r.yinYang + u"  "_s + r.element;
    }

    const Translations &t = Translations::of(language);
    // The table's words for years, months and days fill these in English and
    // German; a language whose word follows the number writes its own forms.
    //: %n a number of years; %1 the word "Years" as the table has it. A language
    //: whose word changes with the number writes its forms here: %1 may be left out
    const QString years =
        filled(t.translate("ReportComposer", "%n %1", "years", a.ageYears), {s[UiText::Years]});
    //: %n a number of months; %1 the word "Months" as the table has it. A language
    //: whose word changes with the number writes its forms here: %1 may be left out
    const QString months =
        filled(t.translate("ReportComposer", "%n %1", "months", a.ageMonths), {s[UiText::Months]});
    //: %n a number of days; %1 the word "Days" as the table has it. A language
    //: whose word changes with the number writes its forms here: %1 may be left out
    const QString days =
        filled(t.translate("ReportComposer", "%n %1", "days", a.ageDays), {s[UiText::Days]});
    //: The age paragraph. %1 whose age ("Anna's", "Your"), %2 the years, %3 the
    //: months, %4 the days, each with its word ("41 Years")
    const QString age = filled(t.translate("ReportComposer", "%1 age is: %2,\n %3 & %4"),
                               {person, years, months, days});
    //: The age in one unit each: %1 months, %2 weeks, %3 days
    const QString totals =
        filled(t.translate("ReportComposer", "in months: %1\nin weeks: %2\nin days: %3"),
               {number(a.totalMonths), number(a.totalWeeks), number(a.totalDays)});
    //: %1 the ruling planet with its symbol ("Venus ♀")
    const QString planet = filled(t.translate("ReportComposer", "Planet: %1"), {r.planet});
    return age + u"\n\n"_s + totals + u"\n\n"_s + zodiacSignLine(t, r.zodiacSign) + chineseLine +
           elementLine + u'\n' + planet + u'\n' + nextBirthdayLine(t, a.daysToBirthday);
}

QString ReportComposer::shortText(const AgeReport &r, const QString &person) const
{
    const UiStrings &s = m_strings;
    return person + u' ' + s[UiText::Age] + u"\n\n"_s + s[UiText::InYears] +
           number(r.age.ageYears) + u'\n' + s[UiText::InMonthsShort] + number(r.age.totalMonths) +
           u'\n' + s[UiText::InDaysShort] + number(r.age.totalDays);
}
