// SPDX-License-Identifier: MIT
#include "CapturedLog.h"
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/AgeCalculator.h"
#include "core/BirthDateResults.h"
#include "core/CalendarDifference.h"
#include "core/ChineseZodiac.h"
#include "core/DatePattern.h"
#include "core/DateWheels.h"
#include "core/DayOfBirth.h"
#include "core/NumberText.h"
#include "core/WesternZodiac.h"

#include <QTest>

using DateWheels::Field;
using namespace Qt::Literals::StringLiterals;

namespace {
const QDateTime now = at(2026, 11, 22, 12);
} // namespace

class TestCore : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void age_data()
    {
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QDateTime>("now");
        // Years, months, days; then the totals in months, weeks and days.
        QTest::addColumn<QList<qint64>>("counts");

        // Hand-picked cases; tst_calendaroracle checks thousands more against ICU.
        QTest::newRow("seven days: one week")
            << at(2026, 11, 15, 9) << at(2026, 11, 22, 9) << QList<qint64>{0, 0, 7, 0, 1, 7};
        QTest::newRow("birth time later in the day than now")
            << at(2000, 3, 12, 15) << at(2026, 3, 12, 10)
            << QList<qint64>{25, 11, 27, 311, 1356, 9495};
        QTest::newRow("31 January plus a month is 29 February")
            << at(2000, 1, 31, 12) << at(2000, 3, 1, 12) << QList<qint64>{0, 1, 1, 1, 4, 30};
        QTest::newRow("leap day birth, a year later on 28 February")
            << at(2000, 2, 29) << at(2001, 2, 28) << QList<qint64>{1, 0, 0, 12, 52, 365};
        // The clocks skip an hour on 29 March 2026: 23 hours after noon it is noon again.
        QTest::newRow("a day across the spring clock change")
            << at(2026, 3, 28, 12) << at(2026, 3, 29, 12) << QList<qint64>{0, 0, 1, 0, 0, 1};
        QTest::newRow("century") << at(1900, 1, 1) << at(2026, 11, 22, 12)
                                 << QList<qint64>{126, 10, 21, 1522, 6620, 46346};
    }
    void age()
    {
        QFETCH(QDateTime, birth);
        QFETCH(QDateTime, now);
        const AgeFacts facts = computeAge(birth, now);
        QTEST((QList<qint64>{facts.ageYears, facts.ageMonths, facts.ageDays, facts.totalMonths,
                             facts.totalWeeks, facts.totalDays}),
              "counts");
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
        QTest::newRow("no digits") << "days" << 0LL;
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
        QTEST(::daysToNextBirthday(birth, today), "expected");
    }

    void birthTimeDoesNotMoveTheBirthday()
    {
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

    void failedLookupsKeepThePreviousTexts_data()
    {
        QTest::addColumn<QList<QDateTime>>("births");
        QTest::addColumn<QStringList>("texts"); // sign, animal, element, polarity, planet
        QTest::newRow("the initial texts")
            << QList<QDateTime>{} << QStringList{"Aquarius", "Dragon", "Fire", "Yin", "Venus"};
        QTest::newRow("one ordinary birth")
            << QList{at(1985, 3, 12)}
            << QStringList{"Pisces ♓︎", "Ox – 牛", "Wood - 木", "Yin", "Jupiter ♃"};
        QTest::newRow("first ever birth before the table keeps the initial polarity and planet")
            << QList{at(1900, 1, 30)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yin", "Venus"};
        QTest::newRow("before the table after a Water Yang year")
            << QList{at(1902, 2, 8, 10), at(1900, 1, 30)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yang", "Mercury ☿"};
        QTest::newRow("gap of 1958 after an Earth year")
            << QList{at(1969, 5, 1), at(1958, 2, 1)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yin", "Saturn ♄"};
        QTest::newRow("a known year after a gap overwrites everything")
            << QList{at(1958, 2, 1), at(1984, 2, 10)}
            << QStringList{"Aquarius ♒︎", "Rat – 鼠", "Wood - 木", "Yang", "Jupiter ♃"};
        QTest::newRow("two gaps in a row keep the year before both")
            << QList{at(1920, 6, 1), at(2037, 6, 1), at(2044, 2, 1)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yang", "Venus ♀"};
    }
    void failedLookupsKeepThePreviousTexts()
    {
        QFETCH(QList<QDateTime>, births);
        QFETCH(QStringList, texts);
        BirthDateResults results;
        for (const QDateTime &birth : births)
            results.compute(birth, now);
        QCOMPARE((QStringList{results.zodiacSign(), results.animal(), results.element(),
                              results.yinYang(), results.planet()}),
                 texts);
    }

    void unreadableBirthLogsNotAndKeepsTheSign()
    {
        const CapturedLog log;
        BirthDateResults results;
        results.compute(at(1990, 7, 30), now);
        QCOMPARE(results.signIndex(), 6);
        results.compute(QDateTime(), now);
        QCOMPARE(log.lines, QStringList{QStringLiteral("NOT")});
        QCOMPARE(results.zodiacSign(), "Leo ♌︎");
        QCOMPARE(results.signIndex(), 6);
        QCOMPARE(results.age().birthMonth, 0);
    }

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
        QTest::newRow("gap ends 17 Feb 1958") << at(1958, 2, 17, 23, 59) << 0;
        QTest::newRow("1958 starts") << at(1958, 2, 18) << 1958;
        QTest::newRow("1 Feb 1984 is still 1983") << at(1984, 2, 1, 12) << 1983;
        QTest::newRow("2 Feb 1984 despite the full stop") << at(1984, 2, 2) << 1984;
        QTest::newRow("2034 ends early") << at(2035, 2, 6, 23, 59) << 2034;
        QTest::newRow("gap 7 Feb 2035") << at(2035, 2, 7, 12) << 0;
        QTest::newRow("2035 starts") << at(2035, 2, 8) << 2035;
        QTest::newRow("2036 last minute") << at(2037, 2, 14, 23, 59) << 2036;
        QTest::newRow("empty 2037: 15 Feb") << at(2037, 2, 15) << 0;
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

    // Midnight in Berlin starting the year of the Tiger is still the
    // afternoon before in Los Angeles, the year of the Ox there; in every
    // zone the year starts at its own local midnight.
    void followsTheTimeZoneOfEachLookup()
    {
        const QDateTime berlinNewYear = at(1902, 2, 8).toUTC();
        for (const auto &[zone, year] : {std::pair{"Europe/Berlin", 1902},
                                         {"America/Los_Angeles", 1901},
                                         {"Australia/Sydney", 1902}}) {
            const TimeZoneScope scope(zone);
            QCOMPARE(ChineseZodiac::yearOf(berlinNewYear).value_or(0), year);
            QCOMPARE(ChineseZodiac::yearOf(at(1902, 2, 8)).value_or(0), 1902);
            QCOMPARE(ChineseZodiac::yearOf(at(1902, 2, 7, 23, 59)).value_or(0), 1901);
        }
    }

    void parse_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDate>("expected"); // invalid: must not parse
        const auto row = [](const char *name, const char *text, QDate expected = {},
                            const char *pattern = "dd MM yyyy") {
            QTest::newRow(name) << QString::fromUtf8(pattern) << QString::fromUtf8(text)
                                << expected;
        };
        row("record text", "12 3 1985", {1985, 3, 12});
        row("one-digit day and month", "1 1 2000", {2000, 1, 1});
        row("padded fields", "07 01 2001", {2001, 1, 7}, "d M yyyy");
        row("table date", "1901-02-19", {1901, 2, 19}, "yyyy-MM-dd");
        row("full stop for a hyphen", "1984-02.02", {1984, 2, 2}, "yyyy-MM-dd");
        row("no year: default year 2000, a leap year", "29 2", {2000, 2, 29}, "dd MM");
        row("leap day in a leap year", "29 2 2024", {2024, 2, 29});
        row("leap day in a common year", "29 2 2023");
        row("31 April", "31 4 2020");
        row("month 13", "1 13 2020");
        row("day 0", "0 1 2020");
        row("all zero", "0 0 0");
        row("three-digit day", "123 1 2020");
        row("trailing text", "1 1 2020x");
        row("missing year", "1 1 ");
        row("letters", "a b cccc");
        row("empty", "");
        row("letter for a separator", "1x1x2020");
        row("five-digit year", "1 1 20201");
    }
    void parse()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, text);
        QFETCH(QDate, expected);
        const std::optional<QDate> parsed = DatePattern(pattern).parse(text);
        QCOMPARE(parsed.value_or(QDate()), expected);
    }

    // Record texts as written read straight from their digits; every other
    // shape through the patterns. Both ways must agree on what each text is.
    void dayOfBirthFromRecordText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // as stored again; empty: unreadable
        const auto row = [](const char *name, const QString &text, const char *expected) {
            QTest::newRow(name) << text << QString::fromUtf8(expected);
        };
        row("as written", u"12 3 1985"_s, "12 3 1985");
        row("padded fields", u"06 02 1977"_s, "6 2 1977");
        row("last day there is", u"31 12 9999"_s, "31 12 9999");
        row("placeholder 1604", u"2 3 1604"_s, "2 3");
        row("leap day in 1604", u"29 2 1604"_s, "29 2");
        row("placeholder 0001", u"1 1 0001"_s, "1 1");
        row("leap day in the year 1, which has none", u"29 2 0001"_s, "");
        row("leap day in the year 0", u"29 2 0000"_s, "29 2");
        row("leap day in a common year", u"29 2 2023"_s, "");
        row("31 April", u"31 4 1990"_s, "");
        row("day 0", u"0 1 1985"_s, "");
        row("month 13", u"1 13 1985"_s, "");
        row("without a year", u"12 3"_s, "12 3");
        row("year left out, blank kept", u"12 3 "_s, "12 3");
        row("trailing blank", u"12 3 1985 "_s, "12 3 1985");
        row("hyphens", u"12-3-1985"_s, "12 3 1985");
        row("tabs", u"12\t3\t1985"_s, "12 3 1985");
        row("Arabic-Indic digits", u"\u0661\u0662 \u0663 \u0661\u0669\u0668\u0665"_s, "12 3 1985");
        row("two blanks", u"12  3 1985"_s, "");
        row("three-digit day", u"123 4 1985"_s, "");
        row("three-digit year", u"12 3 985"_s, "12 3 0985");
        row("five-digit year", u"12 3 19850"_s, "");
        row("letters", u"hello"_s, "");
        row("empty", QString(), "");
    }
    void dayOfBirthFromRecordText()
    {
        QFETCH(QString, text);
        const std::optional<DayOfBirth> day = DayOfBirth::fromStored(text);
        QTEST(day ? day->stored() : QString(), "expected");
    }

    void format_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *pattern, const char *locale, QDate date,
                            const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(pattern) << QString::fromUtf8(locale) << date
                                << QString::fromUtf8(expected);
        };
        const QDate birth(1985, 3, 12);
        row("record text has no leading zeros", "d M yyyy", "C", {2001, 1, 7}, "7 1 2001");
        row("padded", "dd MM yyyy", "C", {2001, 1, 7}, "07 01 2001");
        row("small year padded", "yyyy", "C", {87, 5, 1}, "0087");
        row("weekday en", "EEEE", "en", birth, "Tuesday");
        row("month name en", "MMMM dd, yyyy", "en", birth, "March 12, 1985");
        row("month name ru takes the genitive", "dd. MMMM yyyy", "ru", birth, "12. марта 1985");
    }
    void format()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, locale);
        QFETCH(QDate, date);
        QFETCH(QString, expected);
        QCOMPARE(DatePattern(pattern, QLocale(locale)).format(date), expected);
    }

    void monthAndWeekdayNamesDoNotParse()
    {
        QVERIFY(
            !DatePattern(u"MMMM dd, yyyy", QLocale(QStringLiteral("en"))).parse(u"March 12, 1985"));
    }

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

    // Every day of a leap year has a sign, each following the one before;
    // a day or month that is no date has none.
    void everyDayHasExactlyOneSign()
    {
        int changes = 0;
        int previous = WesternZodiac::signIndex(31, 12).value_or(-1);
        for (QDate d(2024, 1, 1); d.year() == 2024; d = d.addDays(1)) {
            const std::optional<int> found = WesternZodiac::signIndex(d.day(), d.month());
            QVERIFY2(found, qPrintable(d.toString()));
            const int index = *found;
            if (index != previous) {
                QCOMPARE(index, (previous + 1) % WesternZodiac::signCount);
                ++changes;
            }
            previous = index;
        }
        QCOMPARE(changes, 12);
        for (const auto &[day, month] : {std::pair{15, 0}, {15, 13}, {0, 0}})
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

    void order_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QList<Field>>("expected");
        const QList<Field> dayFirst = {Field::Day, Field::Month, Field::Year};
        const QList<Field> yearFirst = {Field::Year, Field::Month, Field::Day};
        QTest::newRow("en_US") << "en_US" << QList<Field>{Field::Month, Field::Day, Field::Year};
        QTest::newRow("en_GB") << "en_GB" << dayFirst;
        QTest::newRow("de_DE") << "de_DE" << dayFirst;
        QTest::newRow("ru_RU") << "ru_RU" << dayFirst;
        QTest::newRow("ja_JP") << "ja_JP" << yearFirst;
        QTest::newRow("sv_SE") << "sv_SE" << yearFirst;
    }
    void order()
    {
        QFETCH(QString, locale);
        QTEST(DateWheels::order(QLocale(locale)), "expected");
    }

    // The wheels' day, month and year as one date: a day past the month's
    // end is its last, "no year" (0) is the leap year.
    void wheelsDate_data()
    {
        QTest::addColumn<QList<int>>("turned"); // day, month, year
        QTest::addColumn<QDate>("expected");
        QTest::newRow("as turned") << QList<int>{12, 3, 1985} << QDate(1985, 3, 12);
        QTest::newRow("31 April") << QList<int>{31, 4, 2001} << QDate(2001, 4, 30);
        QTest::newRow("30 February, common year") << QList<int>{30, 2, 2023} << QDate(2023, 2, 28);
        QTest::newRow("30 February, leap year") << QList<int>{30, 2, 2024} << QDate(2024, 2, 29);
        QTest::newRow("29 February, no year") << QList<int>{29, 2, 0} << QDate(2000, 2, 29);
        QTest::newRow("31 June, no year") << QList<int>{31, 6, 0} << QDate(2000, 6, 30);
        QTest::newRow("day 0") << QList<int>{0, 5, 1990} << QDate(1990, 5, 1);
        QTest::newRow("month 13") << QList<int>{1, 13, 1990} << QDate();
    }
    void wheelsDate()
    {
        QFETCH(QList<int>, turned);
        QFETCH(QDate, expected);
        QCOMPARE(DateWheels::date(turned.at(0), turned.at(1), turned.at(2)).value_or(QDate()),
                 expected);
        if (expected.isValid()) {
            QCOMPARE(DateWheels::daysInMonth(turned.at(1), turned.at(2)), expected.daysInMonth());
        }
    }

    void monthNames_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QStringList>("expected"); // January, March, December
        QTest::newRow("en_US") << "en_US" << QStringList{"January", "March", "December"};
        QTest::newRow("de_DE") << "de_DE" << QStringList{"Januar", "März", "Dezember"};
        // Inside a date Russian months take the genitive: "12 марта", not "март".
        QTest::newRow("ru_RU") << "ru_RU" << QStringList{"января", "марта", "декабря"};
    }
    void monthNames()
    {
        QFETCH(QString, locale);
        const QStringList names = DateWheels::monthNames(QLocale(locale));
        QCOMPARE(names.size(), 12);
        QTEST((QStringList{names.at(0), names.at(2), names.at(11)}), "expected");
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "tst_core.moc"
