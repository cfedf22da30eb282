// SPDX-License-Identifier: MIT
#include "texts/Language.h"

#include <QTest>

class TestLanguage : public QObject
{
    Q_OBJECT

private slots:
    void decide_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<qint64>("override");
        QTest::addColumn<QString>("language");

        QTest::newRow("de-CH") << QStringList{"de-CH", "en"} << 0LL << "de";
        QTest::newRow("fr-FR") << QStringList{"fr-FR", "de"} << 0LL << "en";
        QTest::newRow("ru") << QStringList{"ru"} << 0LL << "ru";
        QTest::newRow("ru-RU") << QStringList{"ru-RU"} << 0LL << "ru";
        QTest::newRow("only the first entry counts") << QStringList{"en-US", "de"} << 0LL << "en";
        QTest::newRow("ru, override 1") << QStringList{"ru"} << 1LL << "de";
        QTest::newRow("en-US, override 2") << QStringList{"en-US"} << 2LL << "ru";
        QTest::newRow("de-AT, override 3") << QStringList{"de-AT"} << 3LL << "en";
        QTest::newRow("ru, override 4") << QStringList{"ru"} << 4LL << "ru";
        QTest::newRow("de, override -1") << QStringList{"de"} << -1LL << "de";
        QTest::newRow("script and region") << QStringList{"zh-Hans-CN"} << 0LL << "en";
        QTest::newRow("underscore form") << QStringList{"de_DE"} << 0LL << "de";
        QTest::newRow("nothing preferred") << QStringList{} << 0LL << "en";
        QTest::newRow("nothing preferred, override 2") << QStringList{} << 2LL << "ru";
        QTest::newRow("one letter") << QStringList{"d"} << 0LL << "en";
    }
    void decide()
    {
        QFETCH(QStringList, preferred);
        QFETCH(qint64, override);
        QFETCH(QString, language);
        const LanguageDecision decision = decideLanguage(preferred, override);
        QCOMPARE(languageCode(decision.language), language);
        QCOMPARE(decision.override, override);
    }

    void localesFollowTheLanguage()
    {
        QCOMPARE(localeFor(Language::German).monthName(3), "März");
        QCOMPARE(localeFor(Language::Russian).dayName(1), "понедельник");
        QCOMPARE(localeFor(Language::English).dayName(7), "Sunday");
    }

    void codes()
    {
        for (const Language l : {Language::English, Language::German, Language::Russian})
            QCOMPARE(languageFromCode(languageCode(l)), l);
        QVERIFY(!languageFromCode(u"fr"));
        QVERIFY(!languageFromCode(u"EN"));
    }
};

QTEST_GUILESS_MAIN(TestLanguage)
#include "tst_language.moc"
