// SPDX-License-Identifier: MIT
#include "core/WesternZodiac.h"

#include <QTest>

class TestWesternZodiac : public QObject
{
    Q_OBJECT

private slots:
    void boundaries_data()
    {
        QTest::addColumn<int>("day");
        QTest::addColumn<int>("month");
        QTest::addColumn<QString>("key");

        QTest::newRow("20 Jan") << 20 << 1 << "capricorn";
        QTest::newRow("21 Jan") << 21 << 1 << "aquarius";
        QTest::newRow("19 Feb") << 19 << 2 << "aquarius";
        QTest::newRow("20 Feb") << 20 << 2 << "pisces";
        QTest::newRow("29 Feb") << 29 << 2 << "pisces";
        QTest::newRow("20 Mar") << 20 << 3 << "pisces";
        QTest::newRow("21 Mar") << 21 << 3 << "aries";
        QTest::newRow("20 Apr") << 20 << 4 << "aries";
        QTest::newRow("21 Apr") << 21 << 4 << "taurus";
        QTest::newRow("20 May") << 20 << 5 << "taurus";
        QTest::newRow("21 May") << 21 << 5 << "gemini";
        QTest::newRow("21 Jun") << 21 << 6 << "gemini";
        QTest::newRow("22 Jun") << 22 << 6 << "cancer";
        QTest::newRow("22 Jul") << 22 << 7 << "cancer";
        QTest::newRow("23 Jul") << 23 << 7 << "leo";
        QTest::newRow("23 Aug") << 23 << 8 << "leo";
        QTest::newRow("24 Aug") << 24 << 8 << "virgo";
        QTest::newRow("23 Sep") << 23 << 9 << "virgo";
        QTest::newRow("24 Sep") << 24 << 9 << "libra";
        QTest::newRow("23 Oct") << 23 << 10 << "libra";
        QTest::newRow("24 Oct") << 24 << 10 << "scorpio";
        QTest::newRow("22 Nov") << 22 << 11 << "scorpio";
        QTest::newRow("23 Nov") << 23 << 11 << "sagittauris";
        QTest::newRow("21 Dec") << 21 << 12 << "sagittauris";
        QTest::newRow("22 Dec") << 22 << 12 << "capricorn";
        QTest::newRow("31 Dec") << 31 << 12 << "capricorn";
        QTest::newRow("1 Jan") << 1 << 1 << "capricorn";
    }
    void boundaries()
    {
        QFETCH(int, day);
        QFETCH(int, month);
        QFETCH(QString, key);
        const std::optional<int> index = WesternZodiac::signIndex(day, month);
        QVERIFY(index);
        QCOMPARE(WesternZodiac::signKey(*index), key);
        QCOMPARE(WesternZodiac::starImage(*index), key + QStringLiteral("Stars"));
    }

    void everyDayHasExactlyOneSign()
    {
        // The sign's own test must hold for the day, and no earlier sign's.
        for (QDate d(2024, 1, 1); d.year() == 2024; d = d.addDays(1)) {
            const std::optional<int> index = WesternZodiac::signIndex(d.day(), d.month());
            QVERIFY2(index, qPrintable(d.toString()));
        }
        int changes = 0;
        int previous = *WesternZodiac::signIndex(31, 12);
        for (QDate d(2024, 1, 1); d.year() == 2024; d = d.addDays(1)) {
            const int index = *WesternZodiac::signIndex(d.day(), d.month());
            if (index != previous) {
                QCOMPARE(index, (previous + 1) % WesternZodiac::signCount);
                ++changes;
            }
            previous = index;
        }
        QCOMPARE(changes, 12);
    }

    void unreadableDayOrMonthMatchesNoSign_data()
    {
        QTest::addColumn<int>("day");
        QTest::addColumn<int>("month");
        QTest::newRow("month 0") << 15 << 0;
        QTest::newRow("month 13") << 15 << 13;
        QTest::newRow("day and month 0") << 0 << 0;
    }
    void unreadableDayOrMonthMatchesNoSign()
    {
        QFETCH(int, day);
        QFETCH(int, month);
        QVERIFY(!WesternZodiac::signIndex(day, month));
    }

    void signTexts()
    {
        QCOMPARE(UiStrings::english(WesternZodiac::signText(0)),
                 QString::fromUtf8("Aquarius \u2652\uFE0E"));
        QCOMPARE(UiStrings::english(WesternZodiac::signText(10)),
                 QString::fromUtf8("Sagittarius \u2650\uFE0E"));
        QCOMPARE(UiStrings::english(WesternZodiac::signText(11)),
                 QString::fromUtf8("Capricorn \u2651\uFE0E"));
    }

    void planetFollowsTheElement_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("planet"); // empty: none
        QTest::newRow("Metal") << "Metal - 金"
                               << "Venus ♀";
        QTest::newRow("Water") << "Water - 水"
                               << "Mercury ☿";
        QTest::newRow("Wood") << "Wood - 木"
                              << "Jupiter ♃";
        QTest::newRow("Fire") << "Fire - 火"
                              << "Mars ♂";
        QTest::newRow("Earth") << "Earth - 土"
                               << "Saturn ♄";
        QTest::newRow("unknown element") << "Unknow"
                                         << "";
        QTest::newRow("initial element word") << "Fire"
                                              << "";
        QTest::newRow("translated element") << "Wasser - 水"
                                            << "";
    }
    void planetFollowsTheElement()
    {
        QFETCH(QString, element);
        QFETCH(QString, planet);
        const std::optional<UiText> found = WesternZodiac::planetForElement(element);
        QCOMPARE(found ? UiStrings::english(*found) : QString(), planet);
    }
};

QTEST_GUILESS_MAIN(TestWesternZodiac)
#include "tst_westernzodiac.moc"
