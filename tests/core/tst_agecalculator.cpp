// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/AgeCalculator.h"
#include "core/CalendarDifference.h"
#include "core/NumberText.h"

#include <QTest>

class TestAgeCalculator : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void age_data()
    {
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<qint64>("years");
        QTest::addColumn<qint64>("months");
        QTest::addColumn<qint64>("days");
        QTest::addColumn<qint64>("totalMonths");
        QTest::addColumn<qint64>("totalWeeks");
        QTest::addColumn<qint64>("totalDays");

        // Hand-picked cases; tst_calendaroracle checks thousands more against ICU.
        QTest::newRow("seven days: one week")
            << at(2026, 11, 15, 9) << at(2026, 11, 22, 9) << 0LL << 0LL << 7LL << 0LL << 1LL << 7LL;
        QTest::newRow("birth time later in the day than now")
            << at(2000, 3, 12, 15) << at(2026, 3, 12, 10) << 25LL << 11LL << 27LL << 311LL << 1356LL
            << 9495LL;
        QTest::newRow("31 January plus a month is 29 February")
            << at(2000, 1, 31, 12) << at(2000, 3, 1, 12) << 0LL << 1LL << 1LL << 1LL << 4LL << 30LL;
        QTest::newRow("leap day birth, a year later on 28 February")
            << at(2000, 2, 29) << at(2001, 2, 28) << 1LL << 0LL << 0LL << 12LL << 52LL << 365LL;
        // The clocks skip an hour on 29 March 2026: 23 hours after noon it is noon again.
        QTest::newRow("a day across the spring clock change")
            << at(2026, 3, 28, 12) << at(2026, 3, 29, 12) << 0LL << 0LL << 1LL << 0LL << 0LL << 1LL;
        QTest::newRow("century") << at(1900, 1, 1) << at(2026, 11, 22, 12) << 126LL << 10LL << 21LL
                                 << 1522LL << 6620LL << 46346LL;
    }
    void age()
    {
        QFETCH(QDateTime, birth);
        QFETCH(QDateTime, now);
        const AgeFacts facts = computeAge(birth, now);
        QFETCH(qint64, years);
        QFETCH(qint64, months);
        QFETCH(qint64, days);
        QFETCH(qint64, totalMonths);
        QFETCH(qint64, totalWeeks);
        QFETCH(qint64, totalDays);
        QCOMPARE(facts.ageYears, years);
        QCOMPARE(facts.ageMonths, months);
        QCOMPARE(facts.ageDays, days);
        QCOMPARE(facts.totalMonths, totalMonths);
        QCOMPARE(facts.totalWeeks, totalWeeks);
        QCOMPARE(facts.totalDays, totalDays);
        QCOMPARE(facts.birthDay, birth.date().day());
        QCOMPARE(facts.birthMonth, birth.date().month());
    }

    void totalsAreReadFromTheirSpelledOutText()
    {
        const AgeFacts facts = computeAge(at(1990, 1, 1), at(2026, 11, 22));
        QVERIFY2(facts.totalDaysText.endsWith(QStringLiteral(" days")),
                 qPrintable(facts.totalDaysText));
        QCOMPARE(::readDigitsOnly(facts.totalDaysText), facts.totalDays);
        QCOMPARE(::readDigitsOnly(facts.totalMonthsText), facts.totalMonths);
        QCOMPARE(::readDigitsOnly(facts.totalYearsText), facts.ageYears);
    }

    void readDigitsOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("grouped English") << "12,345 days" << 12345LL;
        QTest::newRow("grouped German") << "12.345 Tage" << 12345LL;
        QTest::newRow("Russian with a no-break space")
            << QString::fromUtf8("12\u00a0345 дней") << 12345LL;
        QTest::newRow("one") << "1 day" << 1LL;
        QTest::newRow("no digits") << "days" << 0LL;
        QTest::newRow("empty") << "" << 0LL;
        QTest::newRow("a minus sign is dropped") << "-5 days" << 5LL;
        QTest::newRow("Arabic-Indic digits") << QString::fromUtf8("١٢ يوم") << 12LL;
        QTest::newRow("too many digits") << "123456789012345678901234567890" << 0LL;
    }
    void readDigitsOnly()
    {
        QFETCH(QString, text);
        QFETCH(qint64, expected);
        QCOMPARE(::readDigitsOnly(text), expected);
    }

    void daysToNextBirthday_data()
    {
        QTest::addColumn<QDate>("birth");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("tomorrow") << QDate(1990, 3, 13) << QDate(2026, 3, 12) << 1LL;
        QTest::newRow("today: a year away") << QDate(1990, 3, 12) << QDate(2026, 3, 12) << 365LL;
        QTest::newRow("yesterday") << QDate(1990, 3, 11) << QDate(2026, 3, 12) << 364LL;
        QTest::newRow("today, leap year ahead")
            << QDate(1990, 3, 12) << QDate(2027, 3, 12) << 366LL;
        QTest::newRow("New Year's Eve to New Year")
            << QDate(1990, 1, 1) << QDate(2026, 12, 31) << 1LL;
        QTest::newRow("new year just began") << QDate(1990, 12, 31) << QDate(2026, 1, 1) << 364LL;
        QTest::newRow("leap day seen from 28 February of a common year")
            << QDate(2000, 2, 29) << QDate(2027, 2, 28) << 1LL;
        QTest::newRow("leap day seen from 1 March of a common year")
            << QDate(2000, 2, 29) << QDate(2027, 3, 1) << 365LL;
        QTest::newRow("leap day seen from 28 February of a leap year")
            << QDate(2000, 2, 29) << QDate(2028, 2, 28) << 1LL;
        QTest::newRow("leap day on its day") << QDate(2000, 2, 29) << QDate(2028, 2, 29) << 366LL;
    }
    void daysToNextBirthday()
    {
        QFETCH(QDate, birth);
        QFETCH(QDate, today);
        QFETCH(qint64, expected);
        QCOMPARE(::daysToNextBirthday(birth, today), expected);
    }

    void nextBirthdayIsNeverToday()
    {
        for (const QDate birth : {QDate(1990, 1, 1), QDate(2000, 2, 29), QDate(1985, 12, 31)}) {
            for (QDate today(2027, 1, 1); today <= QDate(2028, 12, 31); today = today.addDays(1)) {
                const qint64 days = ::daysToNextBirthday(birth, today);
                QVERIFY2(days >= 1 && days <= 366,
                         qPrintable(today.toString(Qt::ISODate) + QString::number(days)));
            }
        }
    }

    void birthTimeDoesNotMoveTheBirthday()
    {
        // Born late in the day, "now" earlier that day: it is still the birthday.
        const AgeFacts facts = computeAge(at(1990, 3, 12, 23, 59), at(2026, 3, 12, 0, 1));
        QCOMPARE(facts.daysToBirthday, 365);
    }

    void differenceIsSignedAndStopsWhereItReached()
    {
        QDateTime reached;
        QCOMPARE(CalendarDifference::count(at(2026, 3, 31), at(2026, 1, 15), CalendarUnit::Months,
                                           &reached),
                 -2);
        QCOMPARE(reached, at(2026, 1, 31));
        QCOMPARE(CalendarDifference::count(at(2026, 1, 1), at(2026, 1, 1), CalendarUnit::Days), 0);
        QCOMPARE(CalendarDifference::count(QDateTime(), at(2026, 1, 1), CalendarUnit::Days), 0);
    }
};

QTEST_GUILESS_MAIN(TestAgeCalculator)
#include "tst_agecalculator.moc"
