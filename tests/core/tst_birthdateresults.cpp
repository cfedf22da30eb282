// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/BirthDateResults.h"
#include "core/DebugLog.h"

#include <QTest>

namespace {
const QDateTime now = at(2026, 11, 22, 12);
} // namespace

class TestBirthDateResults : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

private slots:
    void startsFromTheInitialTexts()
    {
        const BirthDateResults results;
        QCOMPARE(results.zodiacSign(), "Aquarius");
        QCOMPARE(results.planet(), "Venus");
        QCOMPARE(results.animal(), "Dragon");
        QCOMPARE(results.element(), "Fire");
        QCOMPARE(results.yinYang(), "Yin");
    }

    void failedLookupsKeepThePreviousTexts_data()
    {
        QTest::addColumn<QList<QDateTime>>("births");
        QTest::addColumn<QStringList>("texts"); // sign, animal, element, polarity, planet
        QTest::newRow("one ordinary birth")
            << QList{at(1985, 3, 12)}
            << QStringList{"Pisces ♓︎", "Ox – 牛", "Wood - 木", "Yin", "Jupiter ♃"};
        QTest::newRow("first ever birth before the table keeps the initial polarity and planet")
            << QList{at(1900, 1, 30)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yin", "Venus"};
        QTest::newRow("before the table after a Water Yang year")
            << QList{at(1902, 2, 8, 10), at(1900, 1, 30)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yang", "Mercury ☿"};
        QTest::newRow("gap of 1958 after an Earth year")
            << QList{at(1969, 5, 1), at(1958, 2, 1)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yin", "Saturn ♄"};
        QTest::newRow("a known year after a gap overwrites everything")
            << QList{at(1958, 2, 1), at(1984, 2, 10)}
            << QStringList{"Aquarius ♒︎", "Rat – 鼠", "Wood - 木", "Yang", "Jupiter ♃"};
        QTest::newRow("two gaps in a row keep the year before both")
            << QList{at(1920, 6, 1), at(2037, 6, 1), at(2044, 2, 1)}
            << QStringList{"Aquarius ♒︎", "Unknown", "Unknow", "Yang", "Venus ♀"};
    }
    void failedLookupsKeepThePreviousTexts()
    {
        QFETCH(QList<QDateTime>, births);
        QFETCH(QStringList, texts);
        BirthDateResults results;
        for (const QDateTime &birth : births)
            results.compute(birth, now);
        QCOMPARE((QStringList{results.zodiacSign(), results.animal(), results.element(),
                              results.yinYang(), results.planet()}),
                 texts);
    }

    void unreadableBirthLogsNotAndKeepsTheSign()
    {
        QStringList lines;
        const DebugLog::Sink previous =
            DebugLog::setSink([&](const QString &line) { lines.append(line); });
        BirthDateResults results;
        results.compute(at(1990, 7, 30), now);
        QCOMPARE(results.signIndex(), 6);
        results.compute(QDateTime(), now);
        DebugLog::setSink(previous);

        QCOMPARE(lines, QStringList{QStringLiteral("NOT")});
        QCOMPARE(results.zodiacSign(), "Leo ♌︎");
        QCOMPARE(results.signIndex(), 6);
        QCOMPARE(results.age().birthMonth, 0);
    }
};

QTEST_GUILESS_MAIN(TestBirthDateResults)
#include "tst_birthdateresults.moc"
