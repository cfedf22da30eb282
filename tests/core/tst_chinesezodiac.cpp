// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/ChineseZodiac.h"

#include <QTest>

class TestChineseZodiac : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void yearOf_data()
    {
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<int>("year"); // 0: no Chinese year

        QTest::newRow("before the table") << at(1900, 1, 30, 23, 59) << 0;
        QTest::newRow("table starts") << at(1900, 1, 31) << 1900;
        QTest::newRow("1900 takes its end's midnight") << at(1901, 2, 19) << 1900;
        QTest::newRow("one minute into 1901") << at(1901, 2, 19, 0, 1) << 1901;
        QTest::newRow("New Year's day at 10:00") << at(1902, 2, 8, 10) << 1902;
        QTest::newRow("eve of New Year") << at(1902, 2, 7, 23, 59) << 1901;
        QTest::newRow("1904 ends early") << at(1905, 2, 2, 23, 59) << 1904;
        QTest::newRow("gap 3 Feb 1905") << at(1905, 2, 3, 12) << 0;
        QTest::newRow("1905 starts") << at(1905, 2, 4) << 1905;
        QTest::newRow("gap 9 Feb 1910") << at(1910, 2, 9, 12) << 0;
        QTest::newRow("1910 starts") << at(1910, 2, 10) << 1910;
        QTest::newRow("1957 ends early") << at(1958, 1, 17, 23, 59) << 1957;
        QTest::newRow("gap starts 18 Jan 1958") << at(1958, 1, 18) << 0;
        QTest::newRow("gap 1 Feb 1958") << at(1958, 2, 1, 12) << 0;
        QTest::newRow("gap ends 17 Feb 1958") << at(1958, 2, 17, 23, 59) << 0;
        QTest::newRow("1958 starts") << at(1958, 2, 18) << 1958;
        QTest::newRow("1 Feb 1984 is still 1983") << at(1984, 2, 1, 12) << 1983;
        QTest::newRow("2 Feb 1984 despite the full stop") << at(1984, 2, 2) << 1984;
        QTest::newRow("10 Feb 1984") << at(1984, 2, 10) << 1984;
        QTest::newRow("2034 ends early") << at(2035, 2, 6, 23, 59) << 2034;
        QTest::newRow("gap 7 Feb 2035") << at(2035, 2, 7, 12) << 0;
        QTest::newRow("2035 starts") << at(2035, 2, 8) << 2035;
        QTest::newRow("2036 last minute") << at(2037, 2, 14, 23, 59) << 2036;
        QTest::newRow("empty 2037: 15 Feb") << at(2037, 2, 15) << 0;
        QTest::newRow("empty 2037: summer") << at(2037, 7, 1) << 0;
        QTest::newRow("empty 2037: 3 Feb 2038") << at(2038, 2, 3, 23, 59) << 0;
        QTest::newRow("2038 starts") << at(2038, 2, 4) << 2038;
        QTest::newRow("last interval") << at(2044, 1, 29, 23, 59) << 2043;
        QTest::newRow("table ends") << at(2044, 1, 30) << 0;
        QTest::newRow("far future") << at(2100, 6, 1) << 0;
        QTest::newRow("far past") << at(1850, 6, 1) << 0;
    }
    void yearOf()
    {
        QFETCH(QDateTime, birth);
        QFETCH(int, year);
        QCOMPARE(ChineseZodiac::yearOf(birth).value_or(0), year);
    }

    void everyNewYearStartsItsYear()
    {
        // Every year but the empty 2037 begins at local midnight of its New Year's
        // day, and the moment before belongs to another year or to none.
        const QList<QDate> newYears = {QDate(1901, 2, 19), QDate(1950, 2, 17), QDate(1985, 2, 20),
                                       QDate(1996, 1, 19), QDate(2000, 2, 5),  QDate(2026, 2, 17),
                                       QDate(2043, 2, 10)};
        for (const QDate day : newYears) {
            const QDateTime midnight = day.startOfDay();
            QCOMPARE(ChineseZodiac::yearOf(midnight.addSecs(1)).value_or(0), day.year());
            QVERIFY(ChineseZodiac::yearOf(midnight.addSecs(-1)).value_or(0) != day.year());
        }
    }

    void animalElementPolarity_data()
    {
        QTest::addColumn<int>("year");
        QTest::addColumn<QStringList>("texts"); // animal, element, polarity
        QTest::newRow("1900") << 1900 << QStringList{"Rat – 鼠", "Metal - 金", "Yang"};
        QTest::newRow("1901") << 1901 << QStringList{"Ox – 牛", "Metal - 金", "Yin"};
        QTest::newRow("1902") << 1902 << QStringList{"Tiger – 虎", "Water - 水", "Yang"};
        QTest::newRow("1908") << 1908 << QStringList{"Monkey – 猴", "Earth - 土", "Yang"};
        QTest::newRow("1909") << 1909 << QStringList{"Rooster – 雞", "Earth - 土", "Yin"};
        QTest::newRow("1983") << 1983 << QStringList{"Pig – 豬", "Water - 水", "Yin"};
        QTest::newRow("1984") << 1984 << QStringList{"Rat – 鼠", "Wood - 木", "Yang"};
        QTest::newRow("2008") << 2008 << QStringList{"Rat – 鼠", "Earth - 土", "Yang"};
        QTest::newRow("2034") << 2034 << QStringList{"Tiger – 虎", "Wood - 木", "Yang"};
        QTest::newRow("2035") << 2035 << QStringList{"Rabbit – 兔", "Wood - 木", "Yin"};
        QTest::newRow("2042") << 2042 << QStringList{"Dog – 狗", "Water - 水", "Yang"};
        QTest::newRow("2043") << 2043 << QStringList{"Pig – 豬", "Water - 水", "Yin"};
    }
    void animalElementPolarity()
    {
        QFETCH(int, year);
        QFETCH(QStringList, texts);
        QCOMPARE(UiStrings::english(ChineseZodiac::animal(year)), texts[0]);
        QCOMPARE(UiStrings::english(ChineseZodiac::element(year)), texts[1]);
        QCOMPARE(ChineseZodiac::polarity(year), texts[2]);
    }

    void followsTheTimeZoneOfEachLookup()
    {
        // Midnight in Berlin starting the year of the Tiger is still the
        // afternoon before in Los Angeles: the year of the Ox there.
        const QDateTime berlinNewYear = at(1902, 2, 8).toUTC();
        QCOMPARE(ChineseZodiac::yearOf(berlinNewYear).value_or(0), 1902);
        {
            TimeZoneScope losAngeles("America/Los_Angeles");
            QCOMPARE(ChineseZodiac::yearOf(berlinNewYear).value_or(0), 1901);
            QCOMPARE(ChineseZodiac::yearOf(at(1902, 2, 8)).value_or(0), 1902);
            QCOMPARE(ChineseZodiac::yearOf(at(1901, 2, 19)).value_or(0), 1900);
        }
        {
            TimeZoneScope sydney("Australia/Sydney");
            QCOMPARE(ChineseZodiac::yearOf(at(1902, 2, 7, 23, 59)).value_or(0), 1901);
            QCOMPARE(ChineseZodiac::yearOf(berlinNewYear).value_or(0), 1902);
        }
    }
};

QTEST_GUILESS_MAIN(TestChineseZodiac)
#include "tst_chinesezodiac.moc"
