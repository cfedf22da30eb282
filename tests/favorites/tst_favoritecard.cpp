// SPDX-License-Identifier: MIT
#include "favorites/FavoriteCard.h"

#include "LocalTime.h"
#include "core/WesternZodiac.h"
#include "texts/AccessibleNames.h"

#include <QTest>

using namespace FavoriteCards;

namespace {

#define COMPARE_RGB(actual, expected)                                                              \
    do {                                                                                           \
        const Rgb a = (actual), e = (expected);                                                    \
        QCOMPARE(a.red, e.red);                                                                    \
        QCOMPARE(a.green, e.green);                                                                \
        QCOMPARE(a.blue, e.blue);                                                                  \
    } while (false)

Rgb shifted(Rgb c, double by)
{
    return {std::min(c.red + by, 1.0), std::min(c.green + by, 1.0), std::min(c.blue + by, 1.0)};
}

// The slot card() hides the function inside the test class.
FavoriteCard cardOf(const QString &name, const QString &birthday, const QDateTime &now,
                    Language language, const QString &device, bool weekday, bool markComing)
{
    return card({name, birthday}, 0, now, language, QLocale(device), weekday, markComing);
}

} // namespace

class TestFavoriteCard : public QObject
{
    Q_OBJECT

private slots:
    void signBoundaries_data()
    {
        QTest::addColumn<int>("day");
        QTest::addColumn<int>("month");
        QTest::addColumn<QString>("picture");
        QTest::newRow("20 Jan") << 20 << 1 << "capricorn";
        QTest::newRow("21 Jan") << 21 << 1 << "aquarius";
        QTest::newRow("19 Feb") << 19 << 2 << "aquarius";
        QTest::newRow("20 Feb") << 20 << 2 << "pisces";
        QTest::newRow("23 Oct") << 23 << 10 << "libra";
        QTest::newRow("24 Oct") << 24 << 10 << "scorpio";
        QTest::newRow("21 Dec") << 21 << 12 << "sagittauris";
        QTest::newRow("22 Dec") << 22 << 12 << "capricorn";
        QTest::newRow("month 0") << 1 << 0 << "nothing";
        QTest::newRow("month 13") << 1 << 13 << "nothing";
    }
    void signBoundaries()
    {
        QFETCH(int, day);
        QFETCH(int, month);
        QFETCH(QString, picture);
        QCOMPARE(signPicture(day, month).value_or("nothing"), picture);
    }

    // The list's table is written apart from the main screen's; they must not drift.
    void signAgreesWithMainScreenAllYear()
    {
        for (QDate d(2000, 1, 1); d.year() == 2000; d = d.addDays(1)) {
            const std::optional<int> index = WesternZodiac::signIndex(d.day(), d.month());
            QVERIFY(index);
            const QString mine = signPicture(d.day(), d.month()).value_or("nothing");
            QVERIFY2(mine == WesternZodiac::signKey(*index),
                     qPrintable(d.toString(Qt::ISODate) + ": " + mine));
        }
    }

    void birthdayStillToCome_data()
    {
        QTest::addColumn<QString>("birthday");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<std::optional<bool>>("expected");
        const QDate nov22(2026, 11, 22);
        QTest::newRow("today") << "22 11 1990" << nov22 << std::optional(true);
        QTest::newRow("yesterday") << "21 11 1990" << nov22 << std::optional(false);
        QTest::newRow("tomorrow") << "23 11 1990" << nov22 << std::optional(true);
        QTest::newRow("29 Feb, common year")
            << "29 2 1996" << QDate(2026, 1, 10) << std::optional<bool>();
        QTest::newRow("29 Feb, leap year ahead")
            << "29 2 1996" << QDate(2028, 1, 10) << std::optional(true);
        QTest::newRow("text") << "hello" << nov22 << std::optional<bool>();
    }
    void birthdayStillToCome()
    {
        QFETCH(QString, birthday);
        QFETCH(QDate, today);
        QFETCH(std::optional<bool>, expected);
        QCOMPARE(FavoriteCards::birthdayStillToCome(birthday, today), expected);
    }

    void birthdayText_data()
    {
        QTest::addColumn<QString>("birthday");
        QTest::addColumn<Language>("language");
        QTest::addColumn<QString>("device");
        QTest::addColumn<bool>("weekday");
        QTest::addColumn<QString>("text");
        // 12 March 1985 was a Tuesday, 5 January 2000 a Wednesday.
        QTest::newRow("German, English device, weekday")
            << "12 3 1985" << Language::German << "en_US" << true << "Tuesday, 12. March 1985";
        QTest::newRow("Russian, German device, weekday")
            << "12 3 1985" << Language::Russian << "de_DE" << true << "Dienstag, 12. März 1985";
        QTest::newRow("German, padded")
            << "5 1 2000" << Language::German << "en_US" << false << "05. January 2000";
        QTest::newRow("English, German device")
            << "12 3 1985" << Language::English << "de_DE" << false << "März 12, 1985";
        QTest::newRow("English, padded, weekday")
            << "5 1 2000" << Language::English << "en_US" << true << "Wednesday, January 05, 2000";
        // Russian's format-context month name, as QLocale gives it.
        QTest::newRow("English, Russian device")
            << "12 3 1985" << Language::English << "ru_RU" << false << "марта 12, 1985";
    }
    void birthdayText()
    {
        QFETCH(QString, birthday);
        QFETCH(Language, language);
        QFETCH(QString, device);
        QFETCH(bool, weekday);
        QFETCH(QString, text);
        QCOMPARE(
            cardOf("Ann", birthday, at(2026, 1, 1), language, device, weekday, true).birthdayText,
            text);
    }

    void card_data()
    {
        QTest::addColumn<QString>("birthday");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("markComing");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<qint64>("age");
        QTest::addColumn<QString>("sign");
        QTest::addColumn<bool>("star");
        const QDateTime mar12 = at(2026, 3, 12), jan10 = at(2026, 1, 10);
        QTest::newRow("today, blanks both sides")
            << "12 3 1985" << mar12 << "  Ann  " << true << "  Ann" << 41LL << "pisces" << true;
        QTest::newRow("tomorrow, only blanks") << "13 3 1985" << at(2026, 3, 12, 23, 59) << "   "
                                               << true << "Unknown" << 40LL << "pisces" << true;
        QTest::newRow("yesterday, empty name")
            << "11 3 1985" << mar12 << "" << true << "Unknown" << 41LL << "pisces" << false;
        QTest::newRow("to come, not marked") << "13 3 1985" << mar12 << "Ann Lee " << false
                                             << "Ann Lee" << 40LL << "pisces" << false;
        QTest::newRow("21 Mar") << "21 3 2000" << mar12 << "Bo" << true << "Bo" << 25LL << "aries"
                                << true;
        QTest::newRow("29 Feb, common year")
            << "29 2 1996" << jan10 << "Bo" << true << "Bo" << 29LL << "pisces" << true;
        QTest::newRow("29 Feb, leap year past")
            << "29 2 1996" << at(2028, 3, 1) << "Bo" << true << "Bo" << 32LL << "pisces" << false;
    }
    void card()
    {
        QFETCH(QString, birthday);
        QFETCH(QDateTime, now);
        QFETCH(QString, name);
        QFETCH(bool, markComing);
        QFETCH(QString, shown);
        QFETCH(qint64, age);
        QFETCH(QString, sign);
        QFETCH(bool, star);
        const FavoriteCard c =
            cardOf(name, birthday, now, Language::English, "en", false, markComing);
        QCOMPARE(c.name, shown);
        QCOMPARE(c.age, age);
        QCOMPARE(c.signKey, sign);
        QCOMPARE(c.star, star ? QStringLiteral("★") : QString());
    }

    // What a screen reader says for a row: the sign as a word, the star
    // with its meaning, all in the interface language.
    void spokenRow_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<QString>("sign");
        QTest::addColumn<QString>("star");
        QTest::addColumn<QString>("spoken");
        QTest::newRow("English, star") << Language::English << "pisces"
                                       << "★"
                                       << "Ann, 12 March, age 41, Pisces, ★ birthday still to come";
        QTest::newRow("Russian, no star") << Language::Russian << "sagittauris"
                                          << ""
                                          << "Ann, 12 March, возраст 41, Стрелец";
        QTest::newRow("German, star")
            << Language::German << "capricorn"
            << "★"
            << "Ann, 12 March, Alter 41, Steinbock, ★ Geburtstag steht bevor";
        QTest::newRow("no sign") << Language::English << ""
                                 << ""
                                 << "Ann, 12 March, age 41";
    }
    void spokenRow()
    {
        QFETCH(Language, language);
        QFETCH(QString, sign);
        QFETCH(QString, star);
        QFETCH(QString, spoken);
        UiStrings strings;
        strings.apply(language);
        const FavoriteCard card{u"Ann"_qs, u"12 March"_qs, 41, sign, star, {}};
        QCOMPARE(FavoriteCards::spokenRow(card, strings, accessibleNames(strings, language)),
                 spoken);
    }

    void colors_data()
    {
        QTest::addColumn<Appearance>("appearance");
        QTest::addColumn<int>("theme");
        QTest::addColumn<double>("circleBy");
        QTest::addColumn<double>("starBy");
        QTest::addColumn<Rgb>("birthday");
        const Rgb grey{0.56, 0.56, 0.58}, darkerGrey{0.20, 0.20, 0.22};
        const Appearance dark = Appearance::Dark, light = Appearance::Light;
        QTest::newRow("dark 3") << dark << 3 << 0.0 << 0.0 << grey;
        QTest::newRow("dark 7") << dark << 7 << 0.10 << 0.20 << grey;
        QTest::newRow("dark 8 as it is") << dark << 8 << 0.0 << 0.0 << grey;
        QTest::newRow("dark 9") << dark << 9 << 0.0 << 0.0 << grey;
        QTest::newRow("light 3") << light << 3 << 0.0 << 0.0 << darkerGrey;
        // Theme 4's green goes below 0: nothing clamps it.
        QTest::newRow("light 4") << light << 4 << -0.10 << -0.10 << darkerGrey;
        QTest::newRow("light 8 darkened") << light << 8 << -0.10 << -0.10 << darkerGrey;
        QTest::newRow("light 9") << light << 9 << 0.0 << 0.0 << darkerGrey;
    }
    void colors()
    {
        QFETCH(Appearance, appearance);
        QFETCH(int, theme);
        QFETCH(double, circleBy);
        QFETCH(double, starBy);
        QFETCH(Rgb, birthday);
        ThemeTable table(appearance);
        if (appearance == Appearance::Light)
            table.useLightColors();
        const Rgb themeColor = theme == 9 ? Rgb{0.33, 0.33, 0.35} : table.color(theme);
        const FavoriteCardColors c = FavoriteCards::colors(table, theme, appearance);
        COMPARE_RGB(c.signCircle, shifted(themeColor, circleBy));
        COMPARE_RGB(c.star, shifted(themeColor, starBy));
        COMPARE_RGB(c.birthday, birthday);
    }
};

QTEST_GUILESS_MAIN(TestFavoriteCard)

#include "tst_favoritecard.moc"
