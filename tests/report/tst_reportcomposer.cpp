// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/BirthDateResults.h"
#include "report/ReportComposer.h"
#include "texts/UiStrings.h"

#include <QTest>

namespace {
const QDateTime now = at(2026, 11, 22, 12);

// Composes one report the way the main screen does after deciding the language.
AgeReport compose(const QDateTime &birth, Language language, const QString &person = {})
{
    UiStrings strings;
    strings.apply(language);
    BirthDateResults results;
    ReportComposer composer(strings, results);
    return composer.compose(birth, now, person.isNull() ? strings[UiText::ReportYour] : person,
                            language);
}
} // namespace

class TestReportComposer : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void texts_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QString>("detailed");
        QTest::addColumn<QString>("shortText");
        QTest::addColumn<QString>("weekday");

        const QDateTime birth = at(1985, 3, 12, 8, 30);
        QTest::newRow("en") << Language::English << birth
                            << "Your age is: 41 Years,\n 8 Months & 10 Days\n\n"
                               "in months: 500\nin weeks: 2175\nin days: 15230\n\n"
                               "Zodiac sign: Pisces ♓︎\nChinese zodiac: Ox – 牛\n"
                               "Element: Yin  Wood - 木\nPlanet: Jupiter ♃\n"
                               "next birthday: in 110 days"
                            << "Your age\n\nIn years: 41\nIn months: 500\nIn days: 15230"
                            << "Tuesday";
        QTest::newRow("de") << Language::German << birth
                            << "Dein Alter ist: 41 Jahre,\n 8 Monate & 10 Tage\n\n"
                               "in Monaten: 500\nin Wochen: 2175\nin Tagen: 15230\n\n"
                               "Sternzeichen: Fische ♓︎\nTierkreiszeichen: Büffel – 牛\n"
                               "Element: Yin  Holz - 木\nPlanet: Jupiter ♃\n"
                               "nächster Geburtstag: in 110 Tagen"
                            << "Dein Alter\n\nIn Jahren: 41\nIn Monaten: 500\nIn Tagen: 15230"
                            << "Dienstag";
        QTest::newRow("ru")
            << Language::Russian << birth
            << "Твой\n Возраст: 41 год,\n 8 месяцев & 10 дней\n\n"
               "в месяцах: 500\nв неделях: 2175\nв днях: 15230\n\n"
               "Знак зодиака: Рыбы ♓︎\nВосточный зодиак: Бык – 牛\n"
               "Стихия: Инь  Дерево - 木\nОбитель: Юпитер ♃\n"
               "день рождения через 110 дней"
            << "Твой \nВозраст:\n\nВ годах: 41\nВ месяцах: 500\nВ днях: 15230"
            << "вторник";
        QTest::newRow("ru: few forms and Yang")
            << Language::Russian << at(2004, 9, 19, 12)
            << "Твой\n Возраст: 22 года,\n 2 месяца & 3 дня\n\n"
               "в месяцах: 266\nв неделях: 1157\nв днях: 8099\n\n"
               "Знак зодиака: Дева ♍︎\nВосточный зодиак: Обезьяна – 猴\n"
               "Стихия: Ян  Дерево - 木\nОбитель: Юпитер ♃\n"
               "день рождения через 301 день"
            << "Твой \nВозраст:\n\nВ годах: 22\nВ месяцах: 266\nВ днях: 8099"
            << "воскресенье";
        QTest::newRow("en: no Chinese year, no Chinese lines")
            << Language::English << at(1958, 2, 1)
            << "Your age is: 68 Years,\n 9 Months & 21 Days\n\n"
               "in months: 825\nin weeks: 3590\nin days: 25131\n\n"
               "Zodiac sign: Aquarius ♒︎\nPlanet: Venus\nnext birthday: in 71 days"
            << "Your age\n\nIn years: 68\nIn months: 825\nIn days: 25131"
            << "Saturday";
    }
    void texts()
    {
        QFETCH(Language, language);
        QFETCH(QDateTime, birth);
        const AgeReport report = compose(birth, language);
        QTEST(report.detailed, "detailed");
        QTEST(report.shortText, "shortText");
        QTEST(report.weekday, "weekday");
    }

    void nextBirthdayUnit_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QString>("ending");
        QTest::newRow("en 1") << Language::English << at(1990, 11, 23) << "in 1 day";
        QTest::newRow("en 2") << Language::English << at(1990, 11, 24) << "in 2 days";
        QTest::newRow("de 1") << Language::German << at(1990, 11, 23) << "in 1 Tag";
        QTest::newRow("de 2") << Language::German << at(1990, 11, 24) << "in 2 Tagen";
        QTest::newRow("ru 1") << Language::Russian << at(1990, 11, 23) << "через 1 день";
        QTest::newRow("ru 2") << Language::Russian << at(1990, 11, 24) << "через 2 дня";
        QTest::newRow("ru 5") << Language::Russian << at(1990, 11, 27) << "через 5 дней";
        QTest::newRow("ru 21") << Language::Russian << at(1990, 12, 13) << "через 21 день";
    }
    void nextBirthdayUnit()
    {
        QFETCH(Language, language);
        QFETCH(QDateTime, birth);
        QFETCH(QString, ending);
        const QString detailed = compose(birth, language).detailed;
        QVERIFY2(detailed.endsWith(ending), qPrintable(detailed));
    }

    void displayFollowsTheDetailsSetting()
    {
        const AgeReport report = compose(at(1985, 3, 12), Language::English);
        const ShownReport plain = ShownReport::of(report, false);
        QCOMPARE(plain.display, report.shortText);
        QCOMPARE(plain.weekday, QString());
        const ShownReport detailed = ShownReport::of(report, true);
        QCOMPARE(detailed.display, report.detailed);
        QCOMPARE(detailed.weekday, "Tuesday");
    }

    void aGapKeepsTheDateBeforesPlanetAndPolarity()
    {
        UiStrings strings;
        strings.apply(Language::Russian);
        BirthDateResults results;
        ReportComposer composer(strings, results);
        composer.compose(at(1902, 2, 8, 10), now, QStringLiteral("Анна"), Language::Russian);
        const AgeReport gap = composer.compose(at(2037, 6, 1), now.addYears(20),
                                               QStringLiteral("Анна"), Language::Russian);
        QCOMPARE(gap.animal, "Unknown");
        QCOMPARE(gap.element, "Unknow");
        QCOMPARE(gap.yinYang, "Ян");
        QCOMPARE(gap.planet, "Меркурий ☿");
        QVERIFY(!gap.detailed.contains(u"Восточный"));
        QVERIFY(!gap.detailed.contains(u"Стихия"));
        QVERIFY(gap.detailed.contains(u"\nОбитель: Меркурий ☿\n"));
        QCOMPARE(gap.signKey, "gemini");
        QCOMPARE(gap.starImage, "geminiStars");
    }

    void personLeadsBothTexts()
    {
        const AgeReport report = compose(at(1985, 3, 12), Language::English, "Anna's");
        QVERIFY(report.detailed.startsWith(u"Anna's age is: 41 Years,"));
        QVERIFY(report.shortText.startsWith(u"Anna's age\n\n"));
    }
};

QTEST_GUILESS_MAIN(TestReportComposer)
#include "tst_reportcomposer.moc"
