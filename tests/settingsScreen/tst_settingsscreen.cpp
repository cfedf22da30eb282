// SPDX-License-Identifier: MIT
#include "ScreenHarness.h"
#include "settingsScreen/SettingsScreenController.h"

#include <QDesktopServices>
#include <optional>

class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }
};

using namespace SettingsKeys;

class TestSettingsScreen : public QObject
{
    Q_OBJECT

    std::optional<ScreenHarness> h;
    SettingsScreenController *c = nullptr;

    void start(const QString &language = u"en-US"_qs)
    {
        c = h->show<SettingsScreenController>("settingsScreen/SettingsScreen.qml", {language});
    }

    bool checked(const QString &name) const { return h->find(name)->property("checked").toBool(); }

    QList<int> framed() const
    {
        QList<int> tags;
        for (int tag = 1; tag <= 10; ++tag) {
            if (h->find(u"colorButton%1"_qs.arg(tag))->property("chosen").toBool())
                tags.append(tag);
        }
        return tags;
    }

private slots:
    void init() { h.emplace(); }
    void cleanup() { h.reset(); }

    // What the first start leaves behind, in Russian.
    void afterTheFirstStart()
    {
        h->settings.set(moreDetails, true);
        h->settings.set(star, true);
        start(u"ru"_qs);
        QCOMPARE(checked("switchDetails"), true);
        QCOMPARE(checked("switchWeekday"), false);
        QCOMPARE(checked("switchStar"), true);
        QCOMPARE(framed(), QList<int>{1});
        QCOMPARE(h->text("titleLabel"), "Настройки");
        QCOMPARE(h->text("lblBackground"), "Цвета приложения");
        QCOMPARE(h->text("btnVers"), u"v"_qs + QStringLiteral(TAVLO_VERSION));
        QCOMPARE(h->shows("secretLabel"), false);
    }

    void switchesAreWrittenAtOnce_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::newRow("details") << "switchDetails" << moreDetails.name;
        QTest::newRow("weekday") << "switchWeekday" << weekday.name;
        QTest::newRow("star") << "switchStar" << star.name;
    }
    void switchesAreWrittenAtOnce()
    {
        QFETCH(QString, name);
        QFETCH(QString, key);
        start();
        h->tap(name);
        QCOMPARE(h->settings.value(BooleanKey{key}), true);
        h->tap(name);
        QCOMPARE(h->settings.value(BooleanKey{key}), false);
    }

    // Stored at once, and read again by the next plan.
    void reminderTimeAndHowEarly()
    {
        start(u"de-DE"_qs);
        QCOMPARE(h->text("lblReminders"), "Erinnerungen");
        QCOMPARE(h->text("lblReminderTime"), "7:30 AM"); // in the device's format
        QCOMPARE(h->text("btnReminderLead"), "Am Tag selbst  ›");
        for (const char *button : {"btnReminderEarlier", "btnReminderEarlier", "btnReminderLater"})
            h->tap(button);
        QCOMPARE(h->settings.value(reminderTime), u"07:15"_qs);
        QCOMPARE(h->text("lblReminderTime"), "7:15 AM");
        QStringList leads;
        for (int i = 0; i < 4; ++i) {
            h->tap("btnReminderLead");
            leads << h->text("btnReminderLead")
                  << QString::number(h->settings.value(reminderDaysBefore));
        }
        QCOMPARE(leads, (QStringList{"1 Tag vorher  ›", "1", "3 Tage vorher  ›", "3",
                                     "1 Woche vorher  ›", "7", "Am Tag selbst  ›", "0"}));

        // The second reminder: off at first, then each choice but the first's.
        QStringList seconds{h->text("btnSecondReminder")};
        for (int i = 0; i < 4; ++i) {
            h->tap("btnSecondReminder");
            seconds << h->text("btnSecondReminder");
        }
        QCOMPARE(
            seconds,
            (QStringList{"Zweite Erinnerung: Aus  ›", "Zweite Erinnerung: 1 Tag vorher  ›",
                         "Zweite Erinnerung: 3 Tage vorher  ›",
                         "Zweite Erinnerung: 1 Woche vorher  ›", "Zweite Erinnerung: Aus  ›"}));
        QCOMPARE(h->settings.value(secondReminder), false);
        h->tap("btnSecondReminder");
        QCOMPARE(h->settings.value(secondReminder), true);
        QCOMPARE(h->settings.value(secondReminderDaysBefore), 1);
    }

    // From a plain colour to a picture, which comes back with its blur.
    void thirdColourButton()
    {
        h->settings.set(color, 6);
        start();
        const QColor before = c->theme()->accentColor();
        QCOMPARE(h->shows("blurredEffectView"), false);
        h->tap("colorButton3");
        QCOMPARE(h->settings.value(color), 2);
        QCOMPARE(h->log, QStringList{u"color = 3"_qs});
        QTRY_COMPARE(framed(), QList<int>{3});
        QVERIFY(c->theme()->accentColor() != before);
        QTRY_COMPARE(h->shows("blurredEffectView"), true);
    }

    void hiddenSwitchThroughTheVersionButton()
    {
        h->settings.set(color, 6);
        start();
        for (int i = 0; i < 40; ++i)
            h->tap("btnVers");
        QTRY_VERIFY(h->shows("secretLabel"));
        QCOMPARE(h->text("secretLabel"),
                 "language = en\nno events next time\n\nsaved birthdays: 0\n");
        for (int i = 0; i < 3; ++i)
            h->tap("btnVers");
        QCOMPARE(h->settings.value(preferredLanguage), 1);
        QCOMPARE(h->log.last(), "43");
        h->tap("switchDetails");
        h->tap("btnVers");
        QCOMPARE(h->log.last(), "0");
    }

    void pressFeedbackTwiceEndsAtFullSize()
    {
        start();
        h->tap("btnRate");
        QTest::qWait(100);
        h->tap("btnRate");
        QTRY_VERIFY(h->find("btnRate")->scale() < 0.95);
        QTRY_COMPARE(h->find("btnRate")->scale(), 1.0);
        QCOMPARE(h->log.count(u"CANCEL"_qs), 2);
    }

    void infoPanelOpenedTwiceStaysOpen()
    {
        start();
        h->tap("btnInfo");
        h->tap("btnInfo");
        QCOMPARE(h->log.count(u" Gestures "_qs), 2);
        QTRY_VERIFY(h->shows("scrollViewInfo"));
        QVERIFY(h->text("labelInfo").contains(u"swipe left or right"));
        h->tap("btnBackInfo");
        QTRY_VERIFY(!h->shows("scrollViewInfo"));
    }

    // The links go through the desktop's URL handler; a handler registered
    // for a scheme stands in for the software centre and the browser. What
    // is handed over is compared as text: a URL compares equal to one whose
    // host differs in case, and the component id is not all lower case.
    void linksOpenThroughTheDesktop_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<StoreLinks::Platform>("platform");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("log");
        const auto centre = StoreLinks::Platform::SoftwareCentre;
        const auto appStore = StoreLinks::Platform::AppStore;
        QTest::newRow("rate: software centre")
            << "btnRate" << centre << "appstream:io.github.tavlo.Tavlo"
            << "CANCEL";
        QTest::newRow("more apps: project page")
            << "btnMoreApps" << centre << "https://github.com/tavlo/tavlo"
            << "RateApp true";
        QTest::newRow("more apps: app store")
            << "btnMoreApps" << appStore
            << "itms-apps://apps.apple.com/at/developer/tavlo/id1600000000?mt=8"
            << "RateApp true";
        QTest::newRow("rate: app store asks the platform, opens nothing")
            << "btnRate" << appStore << ""
            << "CANCEL";
    }
    void linksOpenThroughTheDesktop()
    {
        QFETCH(QString, button);
        QFETCH(StoreLinks::Platform, platform);
        QFETCH(QString, opened);
        QFETCH(QString, log);
        UrlCatcher catcher;
        for (const char *scheme : {"appstream", "https", "itms-apps"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), &catcher, "open");
        start();
        c->setStorePlatform(platform);
        h->tap(button);
        for (const char *scheme : {"appstream", "https", "itms-apps"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        QStringList handed;
        for (const QUrl &url : catcher.urls)
            handed.append(QString::fromUtf8(url.toEncoded()));
        QCOMPARE(handed, opened.isEmpty() ? QStringList{} : QStringList{opened});
        QCOMPARE(h->log, QStringList{log});
    }

    // Where nothing takes the link, "More Apps" only logs it; "Rate App"
    // tells the person, in the interface language, that no software centre
    // is there to rate in.
    void aLinkNothingOpens_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("notice");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("more apps") << "btnMoreApps"
                                   << "en-US" << QString() << QStringList{"RateApp false"};
        QTest::newRow("rate, English")
            << "btnRate"
            << "en-US"
            << "No software centre is installed to open Tavlo's page. Install one, such as GNOME "
               "Software or KDE Discover, to rate Tavlo."
            << QStringList{"CANCEL", "no handler for appstream:io.github.tavlo.Tavlo"};
        QTest::newRow("rate, German")
            << "btnRate"
            << "de-DE"
            << "Es ist kein Softwarecenter installiert, das die Seite von Tavlo öffnen kann. "
               "Installieren Sie eines, etwa GNOME Software oder KDE Discover, um Tavlo zu "
               "bewerten."
            << QStringList{"CANCEL", "no handler for appstream:io.github.tavlo.Tavlo"};
    }
    void aLinkNothingOpens()
    {
        QFETCH(QString, button);
        QFETCH(QString, language);
        QFETCH(QString, notice);
        QFETCH(QStringList, log);
        start(language);
        QList<QUrl> asked;
        c->setUrlOpener([&](const QUrl &url) {
            asked.append(url);
            return false;
        });
        h->tap(button);
        QCOMPARE(asked.size(), 1);
        QCOMPARE(h->log, log);
        QCOMPARE(h->session->saveNotice.shown(), !notice.isEmpty());
        QCOMPARE(h->session->saveNotice.text(), notice);
    }
};

QTEST_MAIN(TestSettingsScreen)
#include "tst_settingsscreen.moc"
