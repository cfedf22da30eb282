// SPDX-License-Identifier: MIT
#include "report/PersonName.h"

#include <QTest>

class TestPersonName : public QObject
{
    Q_OBJECT

private slots:
    void fromFavorite_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("russian");

        QTest::newRow("plain") << "Anna"
                               << "Anna's"
                               << "Anna";
        QTest::newRow("full stop and two blanks") << "Anna.  "
                                                  << "Anna's"
                                                  << "Anna";
        QTest::newRow("only full stops") << "..."
                                         << "Unknown's"
                                         << "Unknown";
        QTest::newRow("empty") << ""
                               << "Unknown's"
                               << "Unknown";
        QTest::newRow("only blanks") << "   "
                                     << "Unknown's"
                                     << "Unknown";
        QTest::newRow("leading blank kept") << " Anna"
                                            << " Anna's"
                                            << " Anna";
        QTest::newRow("inner full stops go") << "J. R. R."
                                             << "J R R's"
                                             << "J R R";
        QTest::newRow("blank before a full stop") << "Bob . "
                                                  << "Bob's"
                                                  << "Bob";
        QTest::newRow("a tab is not a blank") << "Bob\t"
                                              << "Bob\t's"
                                              << "Bob\t";
        QTest::newRow("Cyrillic") << "Ольга"
                                  << "Ольга's"
                                  << "Ольга";
    }
    void fromFavorite()
    {
        QFETCH(QString, name);
        QTEST(personNameFromFavorite(name, Language::English), "english");
        QTEST(personNameFromFavorite(name, Language::Russian), "russian");
        QTEST(personNameFromFavorite(name, Language::German), "english");
    }
};

QTEST_GUILESS_MAIN(TestPersonName)
#include "tst_personname.moc"
