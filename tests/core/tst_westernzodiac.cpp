// SPDX-License-Identifier: MIT
#include "core/WesternZodiac.h"

#include <QTest>

class TestWesternZodiac : public QObject
{
    Q_OBJECT

private slots:
    // The first day of each sign; the day before is the sign before.
    void boundaries_data()
    {
        QTest::addColumn<QDate>("first");
        const std::pair<const char *, QDate> firsts[] = {
            {"aquarius", {2024, 1, 21}},     {"pisces", {2024, 2, 20}},
            {"aries", {2024, 3, 21}},        {"taurus", {2024, 4, 21}},
            {"gemini", {2024, 5, 21}},       {"cancer", {2024, 6, 22}},
            {"leo", {2024, 7, 23}},          {"virgo", {2024, 8, 24}},
            {"libra", {2024, 9, 24}},        {"scorpio", {2024, 10, 24}},
            {"sagittauris", {2024, 11, 23}}, {"capricorn", {2024, 12, 22}}};
        for (const auto &[key, first] : firsts)
            QTest::newRow(key) << first;
    }
    void boundaries()
    {
        QFETCH(QDate, first);
        const QString key = QString::fromLatin1(QTest::currentDataTag());
        const std::optional<int> index = WesternZodiac::signIndex(first.day(), first.month());
        QVERIFY(index);
        QCOMPARE(WesternZodiac::signKey(*index), key);
        QCOMPARE(WesternZodiac::starImage(*index), key + QStringLiteral("Stars"));
        const QDate before = first.addDays(-1);
        QCOMPARE(WesternZodiac::signIndex(before.day(), before.month()),
                 (*index + WesternZodiac::signCount - 1) % WesternZodiac::signCount);
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

    void signTextsNameTheirSigns()
    {
        for (int i = 0; i < WesternZodiac::signCount; ++i) {
            const QString text = UiStrings::english(WesternZodiac::signText(i));
            QVERIFY2(text.startsWith(WesternZodiac::signKey(i).left(3), Qt::CaseInsensitive),
                     qPrintable(text));
        }
    }

    void planetFollowsTheElement_data()
    {
        QTest::addColumn<QString>("element");
        QTest::addColumn<QString>("planet"); // empty: none
        const QStringList pairs = {"Metal - 金", "Venus ♀",   "Water - 水",  "Mercury ☿",
                                   "Wood - 木",  "Jupiter ♃", "Fire - 火",   "Mars ♂",
                                   "Earth - 土", "Saturn ♄",  "Unknow",      "",
                                   "Fire",       "",          "Wasser - 水", ""};
        for (qsizetype i = 0; i < pairs.size(); i += 2)
            QTest::newRow(qPrintable(pairs[i])) << pairs[i] << pairs[i + 1];
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
