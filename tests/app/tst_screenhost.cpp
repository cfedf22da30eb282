// SPDX-License-Identifier: MIT
#include "ScreenHarness.h"

// The window and its screen host: screens by identifier, each asked for
// under a dim and presented over the one before, and a new main screen
// every time "Main" is shown.
class TestScreenHost : public QObject
{
    Q_OBJECT

private slots:
    void presentsScreensAndComesBackToANewMain_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("view");
        QTest::newRow("favorites") << "btnFav"
                                   << "favView";
        QTest::newRow("settings") << "btnSet"
                                  << "setView";
    }
    void presentsScreensAndComesBackToANewMain()
    {
        QFETCH(QString, button);
        QFETCH(QString, view);
        ScreenHarness h;
        h.startApp();
        QCOMPARE(h.window->title(), "Tavlo");
        QCOMPARE(h.window->size(), QSize(390, 844));
        QVERIFY(h.shows(u"mainView"_qs));
        QCOMPARE(h.settings.value(SettingsKeys::appStarts), 1);

        for (const auto &[tapped, next] :
             {std::pair{button, view}, {u"btnBack"_qs, u"mainView"_qs}}) {
            QVERIFY(!h.shows(u"dimOverlay"_qs));
            h.tap(tapped);
            // The screen asking stays dimmed until the next one covers it.
            QVERIFY(h.shows(u"dimOverlay"_qs));
            QTRY_VERIFY(h.showsOnly(next));
        }
        // A new main screen ran its load: the start counter counted it.
        QCOMPARE(h.settings.value(SettingsKeys::appStarts), 2);
        QVERIFY(!h.shows(u"dimOverlay"_qs));
    }
};

QTEST_MAIN(TestScreenHost)
#include "tst_screenhost.moc"
