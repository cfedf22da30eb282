// SPDX-License-Identifier: MIT
#include "favorites/FavoriteBrowsing.h"

#include <QTest>

using FavoriteBrowsing::Swipe;

class TestFavoriteBrowsing : public QObject
{
    Q_OBJECT

private slots:
    void afterSwipe_data()
    {
        // -1 stands for no favorite to show.
        QTest::addColumn<qint64>("current");
        QTest::addColumn<Swipe>("swipe");
        QTest::addColumn<int>("count");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("right from the middle") << 2LL << Swipe::Right << 5 << 1LL;
        QTest::newRow("left from the middle") << 2LL << Swipe::Left << 5 << 3LL;
        QTest::newRow("right from the second") << 1LL << Swipe::Right << 5 << 0LL;
        QTest::newRow("right at the first") << 0LL << Swipe::Right << 5 << 0LL;
        QTest::newRow("left from the first") << 0LL << Swipe::Left << 5 << 1LL;
        QTest::newRow("right from the last") << 4LL << Swipe::Right << 5 << 3LL;
        QTest::newRow("left at the last") << 4LL << Swipe::Left << 5 << 4LL;
        QTest::newRow("one favorite, right") << 0LL << Swipe::Right << 1 << 0LL;
        QTest::newRow("one favorite, left") << 0LL << Swipe::Left << 1 << 0LL;
        QTest::newRow("not browsing, right") << 5000LL << Swipe::Right << 5 << -1LL;
        QTest::newRow("not browsing, left") << 5000LL << Swipe::Left << 5 << -1LL;
        // 5000 means not browsing even when the list is that long.
        QTest::newRow("not browsing, long list") << 5000LL << Swipe::Right << 6000 << -1LL;
        QTest::newRow("no favorites, right") << 0LL << Swipe::Right << 0 << -1LL;
        QTest::newRow("no favorites, left") << 0LL << Swipe::Left << 0 << -1LL;
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
};

QTEST_GUILESS_MAIN(TestFavoriteBrowsing)
#include "tst_favoritebrowsing.moc"
