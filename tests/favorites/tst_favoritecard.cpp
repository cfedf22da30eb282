// SPDX-License-Identifier: MIT
#include "favorites/FavoriteCard.h"

#include "LocalTime.h"
#include "core/WesternZodiac.h"
#include "texts/AccessibleNames.h"

#include <QTest>

using namespace FavoriteCards;

namespace {

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
        QVERIFY(!signPicture(1, 0) && !signPicture(1, 13));
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
        const auto row = [](const char *birthday, Language language, const char *device,
                            bool weekday, const QString &text) {
            QTest::newRow(qPrintable(text)) << birthday << language << device << weekday << text;
        };
        // 12 March 1985 was a Tuesday, 5 January 2000 a Wednesday.
        row("12 3 1985", Language::German, "en_US", true, "Tuesday, 12. March 1985");
        row("12 3 1985", Language::Russian, "de_DE", true, "Dienstag, 12. März 1985");
        row("5 1 2000", Language::German, "en_US", false, "05. January 2000");
        row("12 3 1985", Language::English, "de_DE", false, "März 12, 1985");
        row("5 1 2000", Language::English, "en_US", true, "Wednesday, January 05, 2000");
        // Russian's format-context month name, as QLocale gives it.
        row("12 3 1985", Language::English, "ru_RU", false, "марта 12, 1985");
    }
    void birthdayText()
    {
        QFETCH(QString, birthday);
        QFETCH(Language, language);
        QFETCH(QString, device);
        QFETCH(bool, weekday);
        QTEST(cardOf("Ann", birthday, at(2026, 1, 1), language, device, weekday, true).birthdayText,
              "text");
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
        QTest::addColumn<QString>("star");
        const auto row = [](const char *tag, const char *birthday, const QDateTime &now,
                            const char *name, bool mark, const char *shown, qint64 age,
                            const char *sign, bool star) {
            QTest::newRow(tag) << birthday << now << name << mark << shown << age << sign
                               << (star ? u"★"_qs : QString());
        };
        const QDateTime mar12 = at(2026, 3, 12), jan10 = at(2026, 1, 10);
        row("today, blanks both sides", "12 3 1985", mar12, "  Ann  ", true, "  Ann", 41, "pisces",
            true);
        row("tomorrow, only blanks", "13 3 1985", at(2026, 3, 12, 23, 59), "   ", true, "Unknown",
            40, "pisces", true);
        row("yesterday, empty name", "11 3 1985", mar12, "", true, "Unknown", 41, "pisces", false);
        row("to come, not marked", "13 3 1985", mar12, "Ann Lee ", false, "Ann Lee", 40, "pisces",
            false);
        row("21 Mar", "21 3 2000", mar12, "Bo", true, "Bo", 25, "aries", true);
        row("29 Feb, common year", "29 2 1996", jan10, "Bo", true, "Bo", 29, "pisces", true);
        row("29 Feb, leap year past", "29 2 1996", at(2028, 3, 1), "Bo", true, "Bo", 32, "pisces",
            false);
    }
    void card()
    {
        QFETCH(QString, birthday);
        QFETCH(QDateTime, now);
        QFETCH(QString, name);
        QFETCH(bool, markComing);
        const FavoriteCard c =
            cardOf(name, birthday, now, Language::English, "en", false, markComing);
        QTEST(c.name, "shown");
        QTEST(c.age, "age");
        QTEST(c.signKey, "sign");
        QTEST(c.star, "star");
    }

    // What a screen reader says for a row: the sign as a word, the star
    // with its meaning, all in the interface language.
    void spokenRow_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<QString>("sign");
        QTest::addColumn<QString>("star");
        QTest::addColumn<QString>("spoken");
        const auto row = [](Language language, const char *sign, const QString &star,
                            const QString &spoken) {
            QTest::newRow(qPrintable(spoken)) << language << sign << star << spoken;
        };
        row(Language::English, "pisces", u"★"_qs,
            "Ann, 12 March, age 41, Pisces, ★ birthday still to come");
        row(Language::Russian, "sagittauris", "", "Ann, 12 March, возраст 41, Стрелец");
        row(Language::German, "capricorn", u"★"_qs,
            "Ann, 12 March, Alter 41, Steinbock, ★ Geburtstag steht bevor");
        row(Language::English, "", "", "Ann, 12 March, age 41");
    }
    void spokenRow()
    {
        QFETCH(Language, language);
        QFETCH(QString, sign);
        QFETCH(QString, star);
        UiStrings strings;
        strings.apply(language);
        const FavoriteCard card{u"Ann"_qs, u"12 March"_qs, 41, sign, star, {}};
        QTEST(FavoriteCards::spokenRow(card, strings, accessibleNames(strings, language)),
              "spoken");
    }
};

QTEST_GUILESS_MAIN(TestFavoriteCard)

#include "tst_favoritecard.moc"
