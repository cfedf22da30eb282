// SPDX-License-Identifier: MIT
#include "texts/RussianPlural.h"

#include <QTest>

class TestRussianPlural : public QObject
{
    Q_OBJECT

private slots:
    void words_data()
    {
        QTest::addColumn<qint64>("number");
        QTest::addColumn<QString>("years");
        QTest::addColumn<QString>("months");
        QTest::addColumn<QString>("days");

        const auto one = [](qint64 n) {
            QTest::addRow("%lld", n) << n << "год"
                                     << "месяц"
                                     << "день";
        };
        const auto few = [](qint64 n) {
            QTest::addRow("%lld", n) << n << "года"
                                     << "месяца"
                                     << "дня";
        };
        const auto many = [](qint64 n) {
            QTest::addRow("%lld", n) << n << "лет"
                                     << "месяцев"
                                     << "дней";
        };
        for (qint64 n : {1, 21, 31, 101, 121, 1001})
            one(n);
        for (qint64 n : {2, 3, 4, 22, 23, 24, 102, 1004})
            few(n);
        for (qint64 n :
             {0, 5, 9, 10, 11, 12, 13, 14, 15, 19, 20, 25, 30, 100, 111, 112, 113, 114, 211, 1000})
            many(n);
    }
    void words()
    {
        QFETCH(qint64, number);
        QTEST(russianYears(number), "years");
        QTEST(russianMonths(number), "months");
        QTEST(russianDays(number), "days");
    }
};

QTEST_GUILESS_MAIN(TestRussianPlural)
#include "tst_russianplural.moc"
