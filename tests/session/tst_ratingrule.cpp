// SPDX-License-Identifier: MIT
#include "session/RatingRule.h"
#include "settings/MemorySettingsStore.h"

#include <QTest>

using namespace SettingsKeys;

class TestRatingRule : public QObject
{
    Q_OBJECT

private slots:
    void oneStart_data()
    {
        // A null stored version means the key is absent.
        QTest::addColumn<qint64>("starts");
        QTest::addColumn<QString>("storedVersion");
        QTest::addColumn<int>("favoriteCount");
        QTest::addColumn<QString>("current");
        QTest::addColumn<bool>("ask");
        QTest::addColumn<qint64>("startsAfter");
        QTest::addColumn<QString>("versionAfter");

        const QString none;
        QTest::newRow("13th start asks") << 12LL << none << 10 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("12th start counts") << 11LL << none << 10 << "2.1" << false << 12LL << none;
        QTest::newRow("four favorites suffice")
            << 12LL << none << 4 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("three favorites count on")
            << 12LL << none << 3 << "2.1" << false << 13LL << none;
        QTest::newRow("three favorites, 14th")
            << 13LL << none << 3 << "2.1" << false << 14LL << none;
        QTest::newRow("asked for this version")
            << 40LL << "2.1" << 10 << "2.1" << false << 40LL << "2.1";
        QTest::newRow("asked for an older version")
            << 12LL << "2.0" << 10 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("older version, first start")
            << 0LL << "2.0" << 10 << "2.1" << false << 1LL << "2.0";
    }
    void oneStart()
    {
        QFETCH(qint64, starts);
        QFETCH(QString, storedVersion);
        QFETCH(int, favoriteCount);
        QFETCH(QString, current);
        MemorySettingsStore store;
        store.set(appStarts, starts);
        if (!storedVersion.isNull())
            store.set(reviewedVersion, storedVersion);

        const RatingDecision decision = applyRatingRule(store, favoriteCount, current);
        QTEST(decision.askForRating, "ask");
        QCOMPARE(decision.askedVersion, storedVersion.isNull() ? "0.0" : storedVersion);
        QTEST(store.value(appStarts), "startsAfter");
        QTEST(store.value(reviewedVersion).value_or(QString()), "versionAfter");
    }

    void absentVersionReadsAsZeroZero()
    {
        MemorySettingsStore store;
        for (int start = 0; start < 20; ++start)
            QVERIFY(!applyRatingRule(store, 10, QStringLiteral("0.0")).askForRating);
        QCOMPARE(store.writeCount(), 0);
        QCOMPARE(store.value(appStarts), 0);
    }

    void oncePerVersion()
    {
        MemorySettingsStore store;
        const auto asksOnStart = [&](const QString &version) {
            for (int start = 1; start <= 40; ++start) {
                if (applyRatingRule(store, 10, version).askForRating)
                    return start;
            }
            return 0;
        };
        QCOMPARE(asksOnStart(QStringLiteral("2.1")), 13);
        QCOMPARE(asksOnStart(QStringLiteral("2.1")), 0);
        QCOMPARE(store.value(appStarts), 0);
        QCOMPARE(asksOnStart(QStringLiteral("2.2")), 13);
        QCOMPARE(store.value(reviewedVersion), QStringLiteral("2.2"));
    }
};

QTEST_GUILESS_MAIN(TestRatingRule)
#include "tst_ratingrule.moc"
