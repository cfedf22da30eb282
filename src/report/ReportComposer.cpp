// SPDX-License-Identifier: MIT
#include "report/ReportComposer.h"

#include "core/BirthDateResults.h"
#include "core/DatePattern.h"
#include "core/WesternZodiac.h"
#include "texts/RussianPlural.h"
#include "texts/UiStrings.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString number(qint64 value)
{
    return QString::number(value);
}

QString displayedPolarity(const QString &englishPolarity, Language language)
{
    if (language != Language::Russian)
        return englishPolarity;
    return englishPolarity == u"Yang" ? u"Ян"_s : u"Инь"_s;
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
    report.yinYang = displayedPolarity(m_results.yinYang(), language);
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

    const bool dayFirst = language != Language::English;
    const QString dayAndMonth =
        DatePattern(dayFirst ? u"dd. MMMM" : u"MMMM dd", localeFor(language))
            .format(day.inLeapYear());
    const qint64 days = report.age.daysToBirthday;
    QString text = m_strings[UiText::BirthdayWithoutYear].arg(personName, dayAndMonth) + u'\n' +
                   m_strings[UiText::BirthYearUnknown];
    switch (language) {
    case Language::Russian:
        text += u"\n\nЗнак зодиака: "_s + report.zodiacSign + u"\nдень рождения через "_s +
                number(days) + u' ' + russianDays(days);
        break;
    case Language::German:
        text += u"\n\nSternzeichen: "_s + report.zodiacSign + u"\nnächster Geburtstag: in "_s +
                number(days) + u' ' + (days == 1 ? u"Tag"_s : u"Tagen"_s);
        break;
    case Language::English:
        text += u"\n\nZodiac sign: "_s + report.zodiacSign + u"\nnext birthday: in "_s +
                number(days) + u' ' + (days == 1 ? u"day"_s : u"days"_s);
        break;
    }
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

    switch (language) {
    case Language::Russian:
        return person + u"\n Возраст: "_s + number(a.ageYears) + u' ' + russianYears(a.ageYears) +
               u",\n "_s + number(a.ageMonths) + u' ' + russianMonths(a.ageMonths) + u" & "_s +
               number(a.ageDays) + u' ' + russianDays(a.ageDays) + u"\n\nв месяцах: "_s +
               number(a.totalMonths) + u"\nв неделях: "_s + number(a.totalWeeks) + u"\nв днях: "_s +
               number(a.totalDays) + u"\n\nЗнак зодиака: "_s + r.zodiacSign + chineseLine +
               elementLine + u"\nОбитель: "_s + r.planet + u"\nдень рождения через "_s +
               number(a.daysToBirthday) + u' ' + russianDays(a.daysToBirthday);
    case Language::German:
        return person + u" Alter ist: "_s + number(a.ageYears) + u' ' + s[UiText::Years] +
               u",\n "_s + number(a.ageMonths) + u' ' + s[UiText::Months] + u" & "_s +
               number(a.ageDays) + u' ' + s[UiText::Days] + u"\n\nin Monaten: "_s +
               number(a.totalMonths) + u"\nin Wochen: "_s + number(a.totalWeeks) +
               u"\nin Tagen: "_s + number(a.totalDays) + u"\n\nSternzeichen: "_s + r.zodiacSign +
               chineseLine + elementLine + u"\nPlanet: "_s + r.planet +
               u"\nnächster Geburtstag: in "_s + number(a.daysToBirthday) + u' ' +
               (a.daysToBirthday == 1 ? u"Tag"_s : u"Tagen"_s);
    case Language::English:
        break;
    }
    return person + u" age is: "_s + number(a.ageYears) + u' ' + s[UiText::Years] + u",\n "_s +
           number(a.ageMonths) + u' ' + s[UiText::Months] + u" & "_s + number(a.ageDays) + u' ' +
           s[UiText::Days] + u"\n\nin months: "_s + number(a.totalMonths) + u"\nin weeks: "_s +
           number(a.totalWeeks) + u"\nin days: "_s + number(a.totalDays) + u"\n\nZodiac sign: "_s +
           r.zodiacSign + chineseLine + elementLine + u"\nPlanet: "_s + r.planet +
           u"\nnext birthday: in "_s + number(a.daysToBirthday) + u' ' +
           (a.daysToBirthday == 1 ? u"day"_s : u"days"_s);
}

QString ReportComposer::shortText(const AgeReport &r, const QString &person) const
{
    const UiStrings &s = m_strings;
    return person + u' ' + s[UiText::Age] + u"\n\n"_s + s[UiText::InYears] +
           number(r.age.ageYears) + u'\n' + s[UiText::InMonthsShort] + number(r.age.totalMonths) +
           u'\n' + s[UiText::InDaysShort] + number(r.age.totalDays);
}
