// SPDX-License-Identifier: MIT
#include "favorites/FavoritesSorting.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

using FavoritesSorting::Order;
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

// Run as a child with "--by-age" and birthdays, the binary sorts them by age.
const char byAgeArgument[] = "--by-age";

} // namespace

class TestFavoritesSorting : public QObject
{
    Q_OBJECT

private slots:
    // In the C locale, collation is code-point order too; under a language's
    // locale a locale-aware sort would show.
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void orderFor_data()
    {
        QTest::addColumn<qint64>("setting");
        QTest::addColumn<int>("order");
        QTest::newRow("0") << 0LL << int(Order::ByName);
        QTest::newRow("1") << 1LL << int(Order::ByAge);
        QTest::newRow("2") << 2LL << int(Order::ByBirthday);
        QTest::newRow("7") << 7LL << int(Order::ByBirthday);
        QTest::newRow("-1") << -1LL << int(Order::ByBirthday);
    }
    void orderFor()
    {
        QFETCH(qint64, setting);
        QFETCH(int, order);
        QCOMPARE(int(FavoritesSorting::orderFor(setting)), order);
    }

    void sorted_data()
    {
        QTest::addColumn<int>("order");
        QTest::addColumn<Favorites>("input");
        QTest::addColumn<QList<int>>("expected");
        const int name = int(Order::ByName), age = int(Order::ByAge),
                  birthday = int(Order::ByBirthday);

        for (const int order : {name, age, birthday})
            QTest::addRow("empty %d", order) << order << Favorites() << QList<int>();

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
        QFETCH(int, order);
        QFETCH(Favorites, input);
        QFETCH(QList<int>, expected);
        Favorites wanted;
        for (const int i : expected)
            wanted.append(input.at(i));
        QCOMPARE(FavoritesSorting::sorted(input, Order(order)), wanted);
    }

    void unreadableAgeStops_data()
    {
        QTest::addColumn<QStringList>("birthdays");
        QTest::addColumn<QString>("named");
        QTest::newRow("text") << QStringList{"1 1 2000", "12 3 1985", "hello"} << "favorite 2 ";
        QTest::newRow("31 February") << QStringList{"31 2 1999", "1 1 2000"} << "favorite 0 ";
        QTest::newRow("no year") << QStringList{"1 1 2000", "12 3"} << "favorite 1 ";
    }
    void unreadableAgeStops()
    {
        QFETCH(QStringList, birthdays);
        QFETCH(QString, named);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    QStringList{byAgeArgument} + birthdays);
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        const QString err = QString::fromUtf8(child.readAllStandardError());
        QCOMPARE(err.count(u'\n'), 1);
        QVERIFY2(err.endsWith(u'\n') && err.contains(named), qPrintable(err));
    }
};

int main(int argc, char *argv[])
{
    if (argc >= 2 && qstrcmp(argv[1], byAgeArgument) == 0) {
        QStringList birthdays;
        for (int i = 2; i < argc; ++i)
            birthdays.append(QString::fromLocal8Bit(argv[i]));
        FavoritesSorting::sorted(withBirthdays(birthdays), Order::ByAge);
        return 0;
    }
    QCoreApplication app(argc, argv);
    TestFavoritesSorting test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_favoritessorting.moc"
