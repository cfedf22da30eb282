// SPDX-License-Identifier: MIT
#pragma once

#include "core/AgeCalculator.h"

#include <QDateTime>
#include <QString>

// The outcome of the last birth-date computation. Each computation overwrites
// it, but a lookup that finds nothing leaves its text as it was: a birth in a
// gap of the New Year table keeps the polarity and planet of the date before.
// Texts are English; the report translates them.
class BirthDateResults
{
public:
    // Age, Chinese year, Western sign, then the planet of the Chinese element.
    void compute(const QDateTime &birth, const QDateTime &now);
    // Whether compute() finds every lookup for `birth`, so that nothing is
    // carried over from the computation before it.
    static bool findsEverything(const QDateTime &birth);

    const AgeFacts &age() const { return m_age; }
    const QString &zodiacSign() const { return m_zodiacSign; }
    // The sign of the last match: 0 (Aquarius) to 11 (Capricorn).
    int signIndex() const { return m_signIndex; }
    const QString &planet() const { return m_planet; }
    const QString &animal() const { return m_animal; }
    const QString &element() const { return m_element; }
    const QString &yinYang() const { return m_yinYang; }

    // What the animal and element read when no Chinese year matches. The
    // element's text lacks its last letter on purpose, and is shown so.
    static QString unknownAnimal() { return QStringLiteral("Unknown"); }
    static QString unknownElement() { return QStringLiteral("Unknow"); }

private:
    void lookUpChineseYear(const QDateTime &birth);
    void lookUpSign();
    void lookUpPlanet();

    AgeFacts m_age;
    QString m_zodiacSign = QStringLiteral("Aquarius");
    int m_signIndex = 0;
    QString m_planet = QStringLiteral("Venus");
    QString m_animal = QStringLiteral("Dragon");
    QString m_element = QStringLiteral("Fire");
    QString m_yinYang = QStringLiteral("Yin");
};
