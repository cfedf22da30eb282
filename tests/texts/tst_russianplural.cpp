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
        QTest::addColumn<QStringList>("words"); // years, months, days
        const QList<std::pair<QList<qint64>, QStringList>> forms = {
            {{1, 21, 31, 101, 121, 1001}, {"год", "месяц", "день"}},
            {{2, 3, 4, 22, 23, 24, 102, 1004}, {"года", "месяца", "дня"}},
            {{0, 5, 9, 10, 11, 12, 13, 14, 15, 19, 20, 25, 30, 100, 111, 112, 113, 114, 211, 1000},
             {"лет", "месяцев", "дней"}}};
        for (const auto &[numbers, words] : forms) {
            for (const qint64 n : numbers)
                QTest::addRow("%lld", n) << n << words;
        }
    }
    void words()
    {
        QFETCH(qint64, number);
        QFETCH(QStringList, words);
        QCOMPARE(russianYears(number), words[0]);
        QCOMPARE(russianMonths(number), words[1]);
        QCOMPARE(russianDays(number), words[2]);
    }
};

QTEST_GUILESS_MAIN(TestRussianPlural)
#include "tst_russianplural.moc"
