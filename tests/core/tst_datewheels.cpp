// SPDX-License-Identifier: MIT
#include "core/DateWheels.h"

#include <QTest>

using DateWheels::Field;

class TestDateWheels : public QObject
{
    Q_OBJECT

private slots:
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

QTEST_GUILESS_MAIN(TestDateWheels)
#include "tst_datewheels.moc"
