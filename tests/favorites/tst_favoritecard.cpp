// SPDX-License-Identifier: MIT
#include "favorites/FavoriteBrowsing.h"
#include "favorites/FavoriteCard.h"
#include "favorites/FavoritesSorting.h"

#include "LocalTime.h"
#include "SortedFavorites.h"
#include "core/WesternZodiac.h"
#include "texts/AccessibleNames.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

// What the favorites list shows of each row, in which order, and where a swipe goes.

using namespace FavoriteCards;
using namespace Qt::Literals::StringLiterals;
using FavoriteBrowsing::Swipe;
using Favorites = QList<Favorite>;

// Readable failures: QCOMPARE prints favorites through this.
char *toString(const Favorite &f)
{
    return QTest::toString(f.name + " / " + f.birthday);
}

namespace {

// Favorites named by position, so a row's expectation is a list of indexes.
Favorites withBirthdays(const QStringList &birthdays)
{
    Favorites list;
    for (qsizetype i = 0; i < birthdays.size(); ++i)
        list.append({QStringLiteral("p%1").arg(i), birthdays[i]});
    return list;
}

// The slot card() hides the function inside the test class.
FavoriteCard cardOf(const QString &name, const QString &birthday, const QDateTime &now,
                    Language language, const QString &device, bool weekday, bool markComing)
{
    return card({name, birthday}, now, language, QLocale(device), weekday, markComing);
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
        // Today, yesterday and tomorrow show in card()'s star.
        QTest::newRow("29 Feb, common year")
            << "29 2 1996" << QDate(2026, 1, 10) << std::optional<bool>();
        QTest::newRow("29 Feb, leap year ahead")
            << "29 2 1996" << QDate(2028, 1, 10) << std::optional(true);
        QTest::newRow("text") << "hello" << QDate(2026, 11, 22) << std::optional<bool>();
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
        // Without a year there is no weekday either.
        row("12 3", Language::English, "en_US", true, "March 12");
        row("29 2", Language::German, "de_DE", false, "29. Februar");
        row("5 1", Language::Russian, "ru_RU", true, "05. января");
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
        // -1 for no age.
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
        row("no year, today", "12 3", mar12, "Ann", true, "Ann", -1, "pisces", true);
        row("no year, past", "11 3", mar12, "Ann", true, "Ann", -1, "pisces", false);
        row("no year, placeholder 1604", "11 3 1604", jan10, "Ann", true, "Ann", -1, "pisces",
            true);
        row("no year, 29 Feb, common year", "29 2", jan10, "Bo", true, "Bo", -1, "pisces", true);
        row("no year, 29 Feb, past", "29 2", at(2028, 3, 1), "Bo", true, "Bo", -1, "pisces", false);
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
        QTEST(c.age.value_or(-1), "age");
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
            "Ann, 12 March, age 41, Pisces, birthday still to come");
        row(Language::Russian, "sagittauris", "", "Ann, 12 March, возраст 41, Стрелец");
        row(Language::German, "capricorn", u"★"_qs,
            "Ann, 12 March, Alter 41, Steinbock, Geburtstag steht bevor");
        row(Language::English, "", "", "Ann, 12 March, age 41");
        row(Language::English, "aries", "", "Ann, 12 March, Aries");
    }
    void spokenRow()
    {
        QFETCH(Language, language);
        QFETCH(QString, sign);
        QFETCH(QString, star);
        UiStrings strings;
        strings.apply(language);
        // The row without an age is one whose year is not known.
        const std::optional<qint64> age =
            sign == u"aries" ? std::nullopt : std::optional<qint64>(41);
        const FavoriteCard card{u"Ann"_qs, u"12 March"_qs, age, sign, star, {}};
        QTEST(FavoriteCards::spokenRow(card, strings, accessibleNames(strings, language)),
              "spoken");
    }

    void afterSwipe_data()
    {
        // -1 stands for no favorite to show.
        QTest::addColumn<qint64>("current");
        QTest::addColumn<Swipe>("swipe");
        QTest::addColumn<int>("count");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("right from the middle") << 2LL << Swipe::Right << 5 << 1LL;
        QTest::newRow("left from the middle") << 2LL << Swipe::Left << 5 << 3LL;
        QTest::newRow("right at the first") << 0LL << Swipe::Right << 5 << 0LL;
        QTest::newRow("left from the first") << 0LL << Swipe::Left << 5 << 1LL;
        QTest::newRow("right from the last") << 4LL << Swipe::Right << 5 << 3LL;
        QTest::newRow("left at the last") << 4LL << Swipe::Left << 5 << 4LL;
        QTest::newRow("one favorite, right") << 0LL << Swipe::Right << 1 << 0LL;
        QTest::newRow("not browsing, right") << 5000LL << Swipe::Right << 5 << -1LL;
        // 5000 means not browsing even when the list is that long.
        QTest::newRow("not browsing, long list") << 5000LL << Swipe::Right << 6000 << -1LL;
        QTest::newRow("no favorites, right") << 0LL << Swipe::Right << 0 << -1LL;
        // Beyond the list a left swipe hands the index back; the caller stops there.
        QTest::newRow("beyond the list, left") << 7LL << Swipe::Left << 5 << 7LL;
        QTest::newRow("beyond the list, right") << 7LL << Swipe::Right << 5 << 6LL;
    }
    void afterSwipe()
    {
        QFETCH(qint64, current);
        QFETCH(Swipe, swipe);
        QFETCH(int, count);
        QFETCH(qint64, expected);
        const std::optional<qint64> next = FavoriteBrowsing::afterSwipe(current, swipe, count);
        QCOMPARE(next.value_or(-1), expected);
    }

    // In the C locale, collation is code-point order too; under a language's
    // locale a locale-aware sort would show.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void sorted_data()
    {
        // The stored "sort" setting: 0 by name, 1 by age, anything else by birthday.
        QTest::addColumn<qint64>("setting");
        QTest::addColumn<Favorites>("input");
        QTest::addColumn<QList<int>>("expected");
        const qint64 name = 0, age = 1, birthday = 2;

        for (const qint64 setting : {name, age, birthday})
            QTest::addRow("empty %lld", setting) << setting << Favorites() << QList<int>();
        for (const qint64 setting : {7LL, -1LL})
            QTest::addRow("birthday, setting %lld", setting)
                << setting << withBirthdays({"1 2 2000", "10 1 2000"}) << QList<int>{1, 0};

        QTest::newRow("name: case-sensitive")
            << name << Favorites{{"bob", "1 1 2000"}, {"Anna", "1 1 2000"}, {"Zoe", "1 1 2000"}}
            << QList<int>{1, 2, 0};
        QTest::newRow("name: accents after ASCII, not by locale")
            << name << Favorites{{"Émile", "1 1 2000"}, {"zed", "1 1 2000"}, {"Zoe", "1 1 2000"}}
            << QList<int>{2, 1, 0};
        QTest::newRow("name: leading blank first")
            << name << Favorites{{"Ann", "1 1 2000"}, {" Zed", "1 1 2000"}} << QList<int>{1, 0};
        // U+FF21 is below U+1F600, though its UTF-16 unit is above a surrogate.
        QTest::newRow("name: code points beyond U+FFFF last")
            << name
            << Favorites{{QStringLiteral("😀"), "1 1 2000"},
                         {QStringLiteral("\uFF21"), "1 1 2000"},
                         {"Z", "1 1 2000"}}
            << QList<int>{2, 1, 0};
        // "é" written as one letter or as "e" and an accent is one name.
        QTest::newRow("name: composed and decomposed alike")
            << name
            << Favorites{{QStringLiteral("Ren\u00e9"), "1 1 2000"},
                         {QStringLiteral("Rene\u0301"), "2 2 2002"},
                         {"Renf", "3 3 1970"},
                         {QStringLiteral("Ren\u00e9"), "4 4 1990"}}
            << QList<int>{2, 0, 1, 3};
        QTest::newRow("name: same name keeps order") << name
                                                     << Favorites{{"Ann", "1 1 2000"},
                                                                  {"Bob", "2 2 2002"},
                                                                  {"Ann", "3 3 1970"},
                                                                  {"Ann", "4 4 1990"}}
                                                     << QList<int>{0, 2, 3, 1};

        QTest::newRow("age: youngest first")
            << age << withBirthdays({"12 3 1985", "1 1 2000", "31 12 1999", "5 3 1985"})
            << QList<int>{1, 2, 0, 3};
        QTest::newRow("age: same date keeps order, padded or not")
            << age << withBirthdays({"7 7 1990", "1 1 2000", "07 07 1990", "7 7 1990"})
            << QList<int>{1, 0, 2, 3};

        // Without a year there is no age: after everyone with one, by name,
        // and before those that cannot be read.
        QTest::newRow("age: no year after the ages, by name")
            << age << Favorites{{"Zed", "1 1"},  {"Old", "1 1 1950"},   {"Bad", "hello"},
                                {"Amy", "29 2"}, {"Young", "1 1 2020"}, {"Eve", "5 5 1604"}}
            << QList<int>{4, 1, 3, 5, 0, 2};
        QTest::newRow("birthday: with and without a year alike")
            << birthday << withBirthdays({"1 3", "29 2 1996", "28 2", "1 1 2010", "29 2"})
            << QList<int>{3, 2, 1, 4, 0};
        QTest::newRow("birthday: year ignored, 29 February in its place")
            << birthday
            << withBirthdays({"31 12 1990", "1 3 1980", "29 2 1996", "1 1 2010", "28 2 2001"})
            << QList<int>{3, 4, 2, 1, 0};
        QTest::newRow("birthday: by date, not by text")
            << birthday << withBirthdays({"1 2 2000", "10 1 2000", "2 1 2000", "9 1 2000"})
            << QList<int>{2, 3, 1, 0};
        QTest::newRow("birthday: unreadable first, in order")
            << birthday << withBirthdays({"5 5 2000", "hello", "31 2 1999", "", "1 1 1990"})
            << QList<int>{1, 2, 3, 4, 0};
        QTest::newRow("birthday: same day keeps order")
            << birthday << withBirthdays({"3 4 1990", "3 4 1970", "1 4 2000", "03 04 2001"})
            << QList<int>{2, 0, 1, 3};
        // A value the sort menu never writes reads as by birthday.
        QTest::newRow("3: by birthday")
            << qint64(3) << withBirthdays({"31 12 1990", "1 3 1980", "1 1 2010"})
            << QList<int>{2, 1, 0};

        // Long enough that an unstable sort reorders equal keys: two keys
        // alternate, the odd positions holding the one that comes first.
        QStringList byDay, byYear;
        Favorites names;
        QList<int> oddThenEven;
        for (int i = 0; i < 24; ++i) {
            byDay.append(QStringLiteral("%1 1 %2").arg(i % 2 ? 1 : 2).arg(1950 + i));
            byYear.append(i % 2 ? "1 1 2001" : "1 1 2000");
            names.append({i % 2 ? "A" : "B", byDay.last()});
            oddThenEven.append(i < 12 ? 2 * i + 1 : 2 * (i - 12));
        }
        QTest::newRow("name: stable in a long list") << name << names << oddThenEven;
        QTest::newRow("age: stable in a long list") << age << withBirthdays(byYear) << oddThenEven;
        QTest::newRow("birthday: stable in a long list")
            << birthday << withBirthdays(byDay) << oddThenEven;
    }
    void sorted()
    {
        QFETCH(qint64, setting);
        QFETCH(Favorites, input);
        QFETCH(QList<int>, expected);
        Favorites wanted;
        for (const int i : expected)
            wanted.append(input.at(i));
        QCOMPARE(sortedFavorites(input, FavoritesSorting::orderFor(setting)), wanted);
    }

    // A birthday that cannot be read has no age: its card says so with the
    // stored text, and sorting by age puts it last instead of stopping.
    void unreadableBirthdays_data()
    {
        QTest::addColumn<QStringList>("birthdays");
        QTest::addColumn<QList<int>>("byAge");
        QTest::newRow("text") << QStringList{"1 1 2000", "12 3 1985", "hello"}
                              << QList<int>{0, 1, 2};
        QTest::newRow("31 February") << QStringList{"31 2 1999", "1 1 2000"} << QList<int>{1, 0};
        QTest::newRow("month 13") << QStringList{"1 1 2000", "12 13"} << QList<int>{0, 1};
        QTest::newRow("empty") << QStringList{"", "12 3 1985"} << QList<int>{1, 0};
    }
    void unreadableBirthdays()
    {
        QFETCH(QStringList, birthdays);
        QFETCH(QList<int>, byAge);
        const Favorites list = withBirthdays(birthdays);
        Favorites wanted;
        for (const int i : byAge)
            wanted.append(list.at(i));
        QCOMPARE(sortedFavorites(list, FavoritesSorting::Order::ByAge), wanted);

        const Favorite &unreadable = wanted.constLast();
        const FavoriteCard card = cardOf(unreadable.name, unreadable.birthday,
                                         QDateTime(QDate(2026, 11, 22), QTime(12, 0)),
                                         Language::English, "en_US", false, true);
        QVERIFY(!card.readable);
        QCOMPARE(card.birthdayText, unreadable.birthday);
        QCOMPARE(card.signKey, QString());
        QCOMPARE(card.star, QString());
        UiStrings strings;
        QCOMPARE(FavoriteCards::spokenRow(card, strings, {}),
                 unreadable.name + u", "_s + unreadable.birthday);
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    TestFavoriteCard test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_favoritecard.moc"
