// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/BirthDateResults.h"
#include "report/BirthdayGreeting.h"
#include "report/PersonName.h"
#include "report/ReportComposer.h"
#include "report/TodaysBirthdays.h"
#include "texts/UiStrings.h"

#include <QTest>

namespace {
AgeFacts facts(qint64 daysToBirthday, qint64 totalDays, qint64 totalMonths, qint64 ageDays,
               qint64 totalWeeks)
{
    AgeFacts age;
    age.daysToBirthday = daysToBirthday;
    age.totalDays = totalDays;
    age.totalMonths = totalMonths;
    age.ageDays = ageDays;
    age.totalWeeks = totalWeeks;
    return age;
}

QString greeting(Language language, const QString &name, const AgeFacts &age)
{
    UiStrings strings;
    strings.apply(language);
    return birthdayGreetingLine(name, age, strings);
}

const QDateTime now = at(2026, 11, 22, 12);

// Favorites as name and stored birthday text, as the store hands them over.
using People = QList<std::pair<QString, QString>>;

TodaysBirthdays lookAt(const People &people, BirthDateResults &results)
{
    UiStrings strings;
    strings.apply(Language::English);
    const BirthdayList list{
        people.size(), [&](qsizetype i) { return people.at(i).first; },
        [&](qsizetype i) { return DayOfBirth::fromStored(people.at(i).second); }};
    return TodaysBirthdays::of(list, now, strings, results);
}

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

class TestReport : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void line_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<AgeFacts>("age");
        QTest::addColumn<QString>("expected");
        const Language en = Language::English;

        // Facts are (days to birthday, total days, total months, age days, total weeks).
        QTest::newRow("nothing round") << en << facts(40, 1234, 40, 16, 176) << "";
        QTest::newRow("birthday beats a milestone")
            << en << facts(0, 1000, 32, 0, 142) << "Anna has a birthday today!\n\n";
        QTest::newRow("100 days") << en << facts(265, 100, 3, 9, 14)
                                  << "Anna is now 100 days old!\n\n";
        QTest::newRow("30000 days")
            << en << facts(3, 30000, 985, 20, 4285) << "Anna is now 30000 days old!\n\n";
        QTest::newRow("999 days") << en << facts(3, 999, 32, 25, 142) << "";
        QTest::newRow("days beat months")
            << en << facts(3, 1000, 10, 0, 142) << "Anna is now 1000 days old!\n\n";
        QTest::newRow("500 months on the day")
            << en << facts(110, 15219, 500, 0, 2174) << "Anna is now 500 months old!\n\n";
        QTest::newRow("500 months and a day") << en << facts(109, 15220, 500, 1, 2174) << "";
        QTest::newRow("150 months") << en << facts(50, 4566, 150, 0, 652) << "";
        QTest::newRow("months beat weeks")
            << en << facts(50, 2800, 100, 0, 400) << "Anna is now 100 months old!\n\n";
        QTest::newRow("1000 weeks")
            << en << facts(200, 7000, 229, 29, 1000) << "Anna is now 1000 weeks old!\n\n";
        QTest::newRow("5000 weeks")
            << en << facts(200, 35000, 1149, 12, 5000) << "Anna is now 5000 weeks old!\n\n";
        QTest::newRow("1000 weeks and a day") << en << facts(199, 7001, 230, 0, 1000) << "";
        QTest::newRow("1500 weeks") << en << facts(100, 10500, 344, 28, 1500) << "";
        QTest::newRow("de months")
            << Language::German << facts(61, 304, 10, 0, 43) << "Anna ist jetzt 10 Monate alt!\n\n";
        QTest::newRow("ru days") << Language::Russian << facts(230, 10000, 328, 18, 1428)
                                 << "Анна теперь 10000 дней!\n\n";
    }
    void line()
    {
        QFETCH(Language, language);
        QFETCH(AgeFacts, age);
        const QString name = language == Language::Russian ? QStringLiteral("Анна") : "Anna";
        QTEST(greeting(language, name, age), "expected");
    }

    // The quick test at start must say yes wherever the full facts give a
    // line, in zones far from UTC and around a change of the clocks, for
    // dates past and to come; and no for nearly all the rest.
    void mayApplyCoversEveryGreeting_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QDateTime>("now");
        const QDateTime noon = at(2026, 11, 22, 12);
        const QDateTime clocksForward(QDate(2026, 3, 29), QTime(0, 30));
        const QDateTime lateOnLeapDay(QDate(2024, 2, 29), QTime(23, 30));
        QTest::newRow("Berlin, noon") << QByteArray("Europe/Berlin") << noon;
        QTest::newRow("Berlin, clocks go forward") << QByteArray("Europe/Berlin") << clocksForward;
        QTest::newRow("UTC+14, noon") << QByteArray("Pacific/Kiritimati") << noon;
        QTest::newRow("UTC-11, late on 29 Feb") << QByteArray("Pacific/Pago_Pago") << lateOnLeapDay;
        QTest::newRow("UTC-11, late on 30 Apr")
            << QByteArray("Pacific/Pago_Pago") << QDateTime(QDate(2026, 4, 30), QTime(23, 30));
        QTest::newRow("UTC+14, early on 28 Feb")
            << QByteArray("Pacific/Kiritimati") << QDateTime(QDate(2027, 2, 28), QTime(0, 30));
    }
    void mayApplyCoversEveryGreeting()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QDateTime, now);
        TimeZoneScope scope(zone);
        // The same wall-clock moment in this zone.
        const QDateTime local(now.date(), now.time());
        const QDate today = local.date();
        UiStrings strings;
        strings.apply(Language::English);
        int checked = 0;
        int passed = 0;
        for (QDate date = today.addDays(-36600); date <= today.addDays(1100);
             date = date.addDays(1)) {
            const bool may = birthdayGreetingMayApply(date, today);
            passed += may ? 1 : 0;
            ++checked;
            const QDateTime birth = QDateTime(date, QTime(0, 0), Qt::UTC).toLocalTime();
            const QString line = birthdayGreetingLine("Ben", computeAge(birth, local), strings);
            if (!line.isEmpty() && !may)
                QFAIL(
                    qPrintable(date.toString(Qt::ISODate) + QStringLiteral(": ") + line.trimmed()));
        }
        QVERIFY2(passed * 50 < checked, qPrintable(QString::number(passed)));
    }

    // Opening on the favorites: a line for each one whose day it is, in
    // list order; the screen stands on the last one with a year, and the
    // ones that cannot be read are counted, not greeted.
    void todaysBirthdays_data()
    {
        QTest::addColumn<People>("people");
        QTest::addColumn<QString>("greeting");
        QTest::addColumn<QDate>("standsOn");
        QTest::addColumn<qsizetype>("unreadable");
        QTest::newRow("none") << People{} << QString() << QDate() << qsizetype(0);
        QTest::newRow("nothing today, on the last one")
            << People{{"Ann", "2 1 1990"}, {"Bob", "5 5 1970"}} << QString() << QDate(1970, 5, 5)
            << qsizetype(0);
        // With a year, the day itself counts its next birthday a year away:
        // only round ages are greeted.
        QTest::newRow("round ages in order, not the birthday with a year")
            << People{{"Kim", QDate(2026, 11, 22).addDays(-1000).toString(u"d M yyyy")},
                      {"Eve", "22 11 1990"},
                      {"Lev", QDate(2026, 11, 22).addDays(-100).toString(u"d M yyyy")},
                      {"Ann", "2 1 1990"}}
            << u"Kim is now 1000 days old!\n\nLev is now 100 days old!\n\n"_qs << QDate(1990, 1, 2)
            << qsizetype(0);
        QTest::newRow("without a year: greeted, not stood on")
            << People{{"Ann", "2 1 1990"}, {"Dan", "22 11"}, {"Zed", "1 1"}}
            << u"Dan has a birthday today!\n\n"_qs << QDate(1990, 1, 2) << qsizetype(0);
        QTest::newRow("only without a year: stays put")
            << People{{"Dan", "22 11"}} << u"Dan has a birthday today!\n\n"_qs << QDate()
            << qsizetype(0);
        QTest::newRow("unreadable ones counted and passed over")
            << People{{"Ann", "2 1 1990"}, {"Bad", "hello"}, {"Odd", "31 2 1999"}} << QString()
            << QDate(1990, 1, 2) << qsizetype(2);
    }
    void todaysBirthdays()
    {
        QFETCH(People, people);
        QFETCH(QDate, standsOn);
        BirthDateResults results;
        const TodaysBirthdays found = lookAt(people, results);
        QTEST(found.greeting, "greeting");
        QTEST(found.unreadable, "unreadable");
        QCOMPARE(found.lastBirth.has_value(), standsOn.isValid());
        if (found.lastBirth) {
            QCOMPARE(*found.lastBirth, QDateTime(standsOn, QTime(0, 0), Qt::UTC));
            QCOMPARE(results.age().ageYears, computeAge(*found.lastBirth, now).ageYears);
        }
    }

    // Working out only the last favorites leaves the results as working out
    // every one in turn does, also where a birth outside the New Year table
    // carries the one before's polarity and planet.
    void todaysResultsAsEachInTurn_data()
    {
        QTest::addColumn<QStringList>("births");
        QTest::newRow("all in the table") << QStringList{"12 3 1985", "1 1 2000"};
        QTest::newRow("last before 1900") << QStringList{"12 3 1985", "5 5 1899"};
        QTest::newRow("two before 1900")
            << QStringList{"12 3 1985", "1 1 1990", "5 5 1899", "1 1 1850"};
        QTest::newRow("after 2044") << QStringList{"1 1 1991", "3 3 2045"};
    }
    void todaysResultsAsEachInTurn()
    {
        QFETCH(QStringList, births);
        People people;
        BirthDateResults eachInTurn;
        for (const QString &birth : births) {
            people.append({u"P"_qs, birth});
            const QDate date = *DayOfBirth::fromStored(birth)->date();
            eachInTurn.compute(QDateTime(date, QTime(0, 0), Qt::UTC).toLocalTime(), now);
        }
        BirthDateResults results;
        lookAt(people, results);
        QCOMPARE(results.yinYang(), eachInTurn.yinYang());
        QCOMPARE(results.planet(), eachInTurn.planet());
        QCOMPARE(results.element(), eachInTurn.element());
        QCOMPARE(results.animal(), eachInTurn.animal());
        QCOMPARE(results.zodiacSign(), eachInTurn.zodiacSign());
    }

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
        // A line break would split the report's sentence; tabs stay.
        QTest::newRow("line break") << QStringList{"Anna\nMaria", "Anna Maria's", "Anna Maria"};
        QTest::newRow("line breaks at the end") << QStringList{"Anna\r\n\n", "Anna's", "Anna"};
        QTest::newRow("paragraph separator") << QStringList{
            QString::fromUtf16(u"Anna\u2029\u2028Maria"), "Anna Maria's", "Anna Maria"};
    }
    void fromFavorite()
    {
        QFETCH(QStringList, texts);
        QCOMPARE(personNameFromFavorite(texts[0], Language::English), texts[1]);
        QCOMPARE(personNameFromFavorite(texts[0], Language::Russian), texts[2]);
        QCOMPARE(personNameFromFavorite(texts[0], Language::German), texts[1]);
    }

    void texts_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QString>("detailed");
        QTest::addColumn<QString>("shortText");
        QTest::addColumn<QString>("weekday");

        const QDateTime birth = at(1985, 3, 12, 8, 30);
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
        QTest::newRow("ru 2") << Language::Russian << at(1990, 11, 24) << "через 2 дня";
    }
    void nextBirthdayUnit()
    {
        QFETCH(Language, language);
        QFETCH(QDateTime, birth);
        QFETCH(QString, ending);
        const QString detailed = compose(birth, language).detailed;
        QVERIFY2(detailed.endsWith(ending), qPrintable(detailed));
    }

    void personLeadsBothTexts()
    {
        const AgeReport report = compose(at(1985, 3, 12), Language::English, "Anna's");
        QVERIFY(report.detailed.startsWith(u"Anna's age is: 41 Years,"));
        QVERIFY(report.shortText.startsWith(u"Anna's age\n\n"));
        QCOMPARE(report.starImage, "piscesStars");
    }
};

QTEST_GUILESS_MAIN(TestReport)
#include "tst_report.moc"
