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

        QTest::newRow("record text") << "dd MM yyyy"
                                     << "12 3 1985" << QDate(1985, 3, 12);
        QTest::newRow("one-digit day and month") << "dd MM yyyy"
                                                 << "1 1 2000" << QDate(2000, 1, 1);
        QTest::newRow("padded fields") << "d M yyyy"
                                       << "07 01 2001" << QDate(2001, 1, 7);
        QTest::newRow("table date") << "yyyy-MM-dd"
                                    << "1901-02-19" << QDate(1901, 2, 19);
        QTest::newRow("full stop for a hyphen") << "yyyy-MM-dd"
                                                << "1984-02.02" << QDate(1984, 2, 2);
        QTest::newRow("no year: default year")
            << "dd MM"
            << "29 2" << QDate(2000, 2, 29); // 2000 is a leap year
        QTest::newRow("leap day in a leap year") << "dd MM yyyy"
                                                 << "29 2 2024" << QDate(2024, 2, 29);
        QTest::newRow("leap day in a common year") << "dd MM yyyy"
                                                   << "29 2 2023" << QDate();
        QTest::newRow("31 April") << "dd MM yyyy"
                                  << "31 4 2020" << QDate();
        QTest::newRow("month 13") << "dd MM yyyy"
                                  << "1 13 2020" << QDate();
        QTest::newRow("day 0") << "dd MM yyyy"
                               << "0 1 2020" << QDate();
        QTest::newRow("all zero") << "dd MM yyyy"
                                  << "0 0 0" << QDate();
        QTest::newRow("three-digit day") << "dd MM yyyy"
                                         << "123 1 2020" << QDate();
        QTest::newRow("trailing text") << "dd MM yyyy"
                                       << "1 1 2020x" << QDate();
        QTest::newRow("missing year") << "dd MM yyyy"
                                      << "1 1 " << QDate();
        QTest::newRow("letters") << "dd MM yyyy"
                                 << "a b cccc" << QDate();
        QTest::newRow("empty") << "dd MM yyyy"
                               << "" << QDate();
        QTest::newRow("letter for a separator") << "dd MM yyyy"
                                                << "1x1x2020" << QDate();
        QTest::newRow("five-digit year") << "dd MM yyyy"
                                         << "1 1 20201" << QDate();
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

        QTest::newRow("record text has no leading zeros") << "d M yyyy"
                                                          << "C" << QDate(2001, 1, 7) << "7 1 2001";
        QTest::newRow("padded") << "dd MM yyyy"
                                << "C" << QDate(2001, 1, 7) << "07 01 2001";
        QTest::newRow("small year padded") << "yyyy"
                                           << "C" << QDate(87, 5, 1) << "0087";
        QTest::newRow("weekday en") << "EEEE"
                                    << "en" << QDate(1985, 3, 12) << "Tuesday";
        QTest::newRow("weekday de") << "EEEE"
                                    << "de" << QDate(1985, 3, 12) << "Dienstag";
        QTest::newRow("weekday ru") << "EEEE"
                                    << "ru" << QDate(1985, 3, 12) << "вторник";
        QTest::newRow("month name en") << "MMMM dd, yyyy"
                                       << "en" << QDate(1985, 3, 12) << "March 12, 1985";
        QTest::newRow("month name ru takes the genitive")
            << "dd. MMMM yyyy"
            << "ru" << QDate(1985, 3, 12) << "12. марта 1985";
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
