// SPDX-License-Identifier: MIT
#include "report/PersonName.h"

#include <QTest>

class TestPersonName : public QObject
{
    Q_OBJECT

private slots:
    void fromFavorite_data()
    {
        QTest::addColumn<QStringList>("texts"); // the favorite's name, English, Russian
        QTest::newRow("plain") << QStringList{"Anna", "Anna's", "Anna"};
        QTest::newRow("full stop and two blanks") << QStringList{"Anna.  ", "Anna's", "Anna"};
        QTest::newRow("only full stops") << QStringList{"...", "Unknown's", "Unknown"};
        QTest::newRow("empty") << QStringList{"", "Unknown's", "Unknown"};
        QTest::newRow("only blanks") << QStringList{"   ", "Unknown's", "Unknown"};
        QTest::newRow("leading blank kept") << QStringList{" Anna", " Anna's", " Anna"};
        QTest::newRow("inner full stops go") << QStringList{"J. R. R.", "J R R's", "J R R"};
        QTest::newRow("blank before a full stop") << QStringList{"Bob . ", "Bob's", "Bob"};
        QTest::newRow("a tab is not a blank") << QStringList{"Bob\t", "Bob\t's", "Bob\t"};
        QTest::newRow("Cyrillic") << QStringList{"Ольга", "Ольга's", "Ольга"};
    }
    void fromFavorite()
    {
        QFETCH(QStringList, texts);
        QCOMPARE(personNameFromFavorite(texts[0], Language::English), texts[1]);
        QCOMPARE(personNameFromFavorite(texts[0], Language::Russian), texts[2]);
        QCOMPARE(personNameFromFavorite(texts[0], Language::German), texts[1]);
    }
};

QTEST_GUILESS_MAIN(TestPersonName)
#include "tst_personname.moc"
