// SPDX-License-Identifier: MIT
#include "core/BirthDateResults.h"

#include "core/ChineseZodiac.h"
#include "core/DebugLog.h"
#include "core/WesternZodiac.h"

void BirthDateResults::compute(const QDateTime &birth, const QDateTime &now)
{
    m_age = computeAge(birth, now);
    lookUpChineseYear(birth);
    lookUpSign();
    lookUpPlanet();
}

bool BirthDateResults::findsEverything(const QDateTime &birth)
{
    const std::optional<int> year = ChineseZodiac::yearOf(birth);
    if (!year)
        return false;
    const QDate date = birth.toLocalTime().date();
    return WesternZodiac::signIndex(date.day(), date.month()).has_value() &&
           WesternZodiac::planetForElement(UiStrings::english(ChineseZodiac::element(*year)))
               .has_value();
}

void BirthDateResults::lookUpChineseYear(const QDateTime &birth)
{
    const std::optional<int> year = ChineseZodiac::yearOf(birth);
    if (!year) {
        m_animal = unknownAnimal();
        m_element = unknownElement();
        return;
    }
    m_animal = UiStrings::english(ChineseZodiac::animal(*year));
    m_element = UiStrings::english(ChineseZodiac::element(*year));
    m_yinYang = ChineseZodiac::polarity(*year);
}

void BirthDateResults::lookUpSign()
{
    const std::optional<int> index = WesternZodiac::signIndex(m_age.birthDay, m_age.birthMonth);
    if (!index) {
        DebugLog::line(QStringLiteral("NOT"));
        return;
    }
    m_signIndex = *index;
    m_zodiacSign = UiStrings::english(WesternZodiac::signText(*index));
}

void BirthDateResults::lookUpPlanet()
{
    if (const std::optional<UiText> planet = WesternZodiac::planetForElement(m_element))
        m_planet = UiStrings::english(*planet);
}
