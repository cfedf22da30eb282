// SPDX-License-Identifier: MIT
#include "favorites/RowSwipe.h"
#include "themes/WindowLayout.h"

#include <QTest>

// The layout rules: where a window stops being a phone, which screens stand
// side by side, how wide a column of text and a bar of buttons are, and how
// far a swipe on a favorite goes on screens of different density.
class TestWindowLayout : public QObject
{
    Q_OBJECT

private slots:
    void panes_data()
    {
        QTest::addColumn<Screen>("asked");
        QTest::addColumn<double>("width");
        QTest::addColumn<QList<Screen>>("panes");
        QTest::addColumn<double>("side");
        using enum Screen;
        const QList<Screen> both{Favorites, Main};
        QTest::newRow("phone, main") << Main << 390.0 << QList{Main} << 195.0;
        QTest::newRow("phone, favorites") << Favorites << 360.0 << QList{Favorites} << 180.0;
        QTest::newRow("just under the breakpoint") << Main << 599.0 << QList{Main} << 299.5;
        QTest::newRow("at the breakpoint: half each") << Main << 600.0 << both << 300.0;
        QTest::newRow("tablet, favorites asked for") << Favorites << 720.0 << both << 360.0;
        QTest::newRow("desktop: the list as on a phone") << Main << 1400.0 << both << 400.0;
        QTest::newRow("settings stay alone") << Settings << 1400.0 << QList{Settings} << 400.0;
    }
    void panes()
    {
        QFETCH(Screen, asked);
        QFETCH(double, width);
        QFETCH(QList<Screen>, panes);
        QFETCH(double, side);
        QCOMPARE(WindowLayout::panes(asked, width), panes);
        QCOMPARE(WindowLayout::sidePaneWidth(width), side);
    }

    // Four buttons spread over a phone, together in the middle wider; never
    // wider than the room there is.
    void barWidth_data()
    {
        QTest::addColumn<double>("available");
        QTest::addColumn<int>("buttons");
        QTest::addColumn<double>("width");
        QTest::newRow("phone") << 390.0 << 4 << 390.0;
        QTest::newRow("narrow pane beside the list") << 320.0 << 3 << 320.0;
        QTest::newRow("wide pane, four") << 1000.0 << 4 << 312.0;
        QTest::newRow("wide pane, three") << 624.0 << 3 << 232.0;
        QTest::newRow("no buttons") << 1000.0 << 0 << 1000.0;
    }
    void barWidth()
    {
        QFETCH(double, available);
        QFETCH(int, buttons);
        QFETCH(double, width);
        QCOMPARE(WindowLayout::barWidth(available, buttons), width);
    }

    void readableWidth_data()
    {
        QTest::addColumn<double>("available");
        QTest::addColumn<double>("character");
        QTest::addColumn<double>("width");
        QTest::newRow("phone: all the room") << 342.0 << 8.0 << 342.0;
        QTest::newRow("desktop: 80 characters") << 1352.0 << 8.0 << 640.0;
        QTest::newRow("no metrics yet") << 500.0 << 0.0 << 500.0;
        QTest::newRow("no room") << -10.0 << 8.0 << 0.0;
    }
    void readableWidth()
    {
        QFETCH(double, available);
        QFETCH(double, character);
        QFETCH(double, width);
        QCOMPARE(WindowLayout::readableWidth(available, character), width);
    }

    // A swipe deletes from 45 mm, or two thirds of a row narrower than that
    // allows; a screen that does not say its size counts as 96 dpi.
    void swipe_data()
    {
        QTest::addColumn<double>("travel");
        QTest::addColumn<double>("row");
        QTest::addColumn<double>("density");
        QTest::addColumn<RowSwipe::Outcome>("outcome");
        using enum RowSwipe::Outcome;
        // 45 mm at 96 dpi: 170.1 px.
        QTest::newRow("desktop, 1400 px row: 175 px deletes") << 175.0 << 1400.0 << 3.78 << Delete;
        QTest::newRow("desktop, 1400 px row: 160 px opens") << 160.0 << 1400.0 << 3.78 << Open;
        QTest::newRow("unknown size counts as 96 dpi") << 175.0 << 1400.0 << 0.0 << Delete;
        QTest::newRow("absurd size counts as 96 dpi") << 160.0 << 1400.0 << 400.0 << Open;
        // A phone at 5.5 px/mm: 45 mm is 247.5 px, two thirds of 360 px 240.
        QTest::newRow("phone: two thirds of the row") << 241.0 << 360.0 << 5.5 << Delete;
        QTest::newRow("phone: short of two thirds") << 235.0 << 360.0 << 5.5 << Open;
        // The same finger on a denser screen needs more pixels.
        QTest::newRow("dense tablet: 45 mm is 450 px") << 400.0 << 1000.0 << 10.0 << Open;
        QTest::newRow("dense tablet: past 45 mm") << 451.0 << 1000.0 << 10.0 << Delete;
        QTest::newRow("half the button opens") << 40.0 << 1400.0 << 3.78 << Open;
        QTest::newRow("less closes") << 39.0 << 1400.0 << 3.78 << Closed;
    }
    void swipe()
    {
        QFETCH(double, travel);
        QFETCH(double, row);
        QFETCH(double, density);
        QFETCH(RowSwipe::Outcome, outcome);
        QCOMPARE(RowSwipe::settle(travel, row, 80, density), outcome);
    }
};

QTEST_GUILESS_MAIN(TestWindowLayout)
#include "tst_windowlayout.moc"
