// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "report/BirthdayGreeting.h"
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
} // namespace

class TestBirthdayGreeting : public QObject
{
    Q_OBJECT

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
        QTest::newRow("de birthday")
            << Language::German << facts(0, 9000, 295, 0, 1285) << "Anna hat heute Geburtstag!\n\n";
        QTest::newRow("de months")
            << Language::German << facts(61, 304, 10, 0, 43) << "Anna ist jetzt 10 Monate alt!\n\n";
        QTest::newRow("de weeks") << Language::German << facts(15, 350, 11, 15, 50)
                                  << "Anna ist jetzt 50 Wochen alt!\n\n";
        QTest::newRow("ru birthday") << Language::Russian << facts(0, 9000, 295, 0, 1285)
                                     << "Анна отмечает сегодня день рождения!\n\n";
        QTest::newRow("ru days") << Language::Russian << facts(230, 10000, 328, 18, 1428)
                                 << "Анна теперь 10000 дней!\n\n";
        QTest::newRow("ru weeks") << Language::Russian << facts(300, 14000, 459, 27, 2000)
                                  << "Анна теперь 2000 недель!\n\n";
    }
    void line()
    {
        QFETCH(Language, language);
        QFETCH(AgeFacts, age);
        const QString name = language == Language::Russian ? QStringLiteral("Анна") : "Anna";
        QTEST(greeting(language, name, age), "expected");
    }

    void fromRealDates_data()
    {
        QTest::addColumn<QDateTime>("birth");
        QTest::addColumn<QString>("expected");
        // 1000 days before 22 Nov 2026 is 26 Feb 2024, across 29 Feb 2024.
        QTest::newRow("1000 days") << at(2024, 2, 26, 9) << "Ben is now 1000 days old!\n\n";
        // 500 months before 22 Nov 2026, 15220 days: no day or week milestone.
        QTest::newRow("500 months") << at(1985, 3, 22, 9) << "Ben is now 500 months old!\n\n";
        QTest::newRow("1001 days") << at(2024, 2, 25, 9) << "";
    }
    void fromRealDates()
    {
        TimeZoneScope zone("Europe/Berlin");
        QFETCH(QDateTime, birth);
        QTEST(greeting(Language::English, "Ben", computeAge(birth, at(2026, 11, 22, 12))),
              "expected");
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
};

QTEST_GUILESS_MAIN(TestBirthdayGreeting)
#include "tst_birthdaygreeting.moc"
