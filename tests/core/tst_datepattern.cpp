// SPDX-License-Identifier: MIT
#include "core/DatePattern.h"

#include <QTest>

class TestDatePattern : public QObject
{
    Q_OBJECT

private slots:
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
        row("weekday de", "EEEE", "de", birth, "Dienstag");
        row("weekday ru", "EEEE", "ru", birth, "вторник");
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

    void formatThenParseRoundTrips()
    {
        const DatePattern record(u"d M yyyy");
        const DatePattern reader(u"dd MM yyyy");
        for (QDate d(1899, 12, 25); d <= QDate(1901, 1, 5); d = d.addDays(1))
            QCOMPARE(reader.parse(record.format(d)).value_or(QDate()), d);
    }

    void monthAndWeekdayNamesDoNotParse()
    {
        QVERIFY(
            !DatePattern(u"MMMM dd, yyyy", QLocale(QStringLiteral("en"))).parse(u"March 12, 1985"));
    }
};

QTEST_GUILESS_MAIN(TestDatePattern)
#include "tst_datepattern.moc"
