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
        QTest::addColumn<QString>("january");
        QTest::addColumn<QString>("march");
        QTest::addColumn<QString>("december");
        QTest::newRow("en_US") << "en_US"
                               << "January"
                               << "March"
                               << "December";
        QTest::newRow("de_DE") << "de_DE"
                               << "Januar"
                               << "März"
                               << "Dezember";
        // Inside a date Russian months take the genitive: "12 марта", not "март".
        QTest::newRow("ru_RU") << "ru_RU"
                               << "января"
                               << "марта"
                               << "декабря";
    }
    void monthNames()
    {
        QFETCH(QString, locale);
        const QStringList names = DateWheels::monthNames(QLocale(locale));
        QCOMPARE(names.size(), 12);
        QTEST(names.at(0), "january");
        QTEST(names.at(2), "march");
        QTEST(names.at(11), "december");
    }
};

QTEST_GUILESS_MAIN(TestDateWheels)
#include "tst_datewheels.moc"
