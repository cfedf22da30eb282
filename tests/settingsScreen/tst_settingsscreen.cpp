// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "core/DebugLog.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"
#include "settingsScreen/SetViewController.h"

#include <QDesktopServices>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <memory>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

// Stands in for the desktop's handler of a URL scheme.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }
};

using namespace SettingsKeys;

// The settings screen as a user meets it, offscreen, through its items.
class TestSettingsScreen : public QObject
{
    Q_OBJECT

    std::unique_ptr<MemorySettingsStore> m_settings;
    std::unique_ptr<FixedClock> m_clock;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    SetViewController *m_controller = nullptr;
    QQuickItem *m_screen = nullptr;
    QStringList m_log;
    DebugLog::Sink m_previousSink;

    void start(const QStringList &preferred = {"en-US"})
    {
        m_session = std::make_unique<Session>(*m_settings, *m_clock, preferred, Appearance::Dark);
        m_session->decideLanguage();
        m_controller = new SetViewController(*m_session, m_window.get());
        m_controller->viewDidLoad();
        QQmlComponent component(
            m_engine.get(),
            QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/settingsScreen/SettingsScreen.qml")));
        QObject *screen = component.createWithInitialProperties(
            {{QStringLiteral("controller"), QVariant::fromValue(m_controller)}});
        QVERIFY2(screen, qPrintable(component.errorString()));
        m_screen = qobject_cast<QQuickItem *>(screen);
        m_screen->setParent(m_window.get());
        m_screen->setParentItem(m_window->contentItem());
        m_screen->setSize(m_window->size());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    // Items made by a Repeater are found through the visual tree only.
    static QQuickItem *findIn(QQuickItem *item, const QString &name)
    {
        if (item->objectName() == name)
            return item;
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = findIn(child, name))
                return found;
        }
        return nullptr;
    }

    QQuickItem *find(const QString &name) const
    {
        if (QQuickItem *item = m_screen->findChild<QQuickItem *>(name))
            return item;
        return findIn(m_screen, name);
    }

    void tap(const QString &name)
    {
        QQuickItem *item = find(name);
        QVERIFY2(item, qPrintable(name));
        QTest::mouseClick(
            m_window.get(), Qt::LeftButton, {},
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    }

    bool checked(const char *name) const
    {
        return find(QLatin1String(name))->property("checked").toBool();
    }

    QList<bool> framedButtons() const
    {
        QList<bool> framed;
        for (int tag = 1; tag <= 10; ++tag)
            framed.append(
                find(u"colorButton"_qs + QString::number(tag))->property("chosen").toBool());
        return framed;
    }

private slots:
    void init()
    {
        m_settings = std::make_unique<MemorySettingsStore>();
        m_clock = std::make_unique<FixedClock>(at(2026, 11, 22, 12));
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(390, 844);
        m_log.clear();
        m_previousSink = DebugLog::setSink([this](const QString &line) { m_log << line; });
    }

    void cleanup()
    {
        DebugLog::setSink(m_previousSink);
        delete m_screen;
        m_screen = nullptr;
        m_window.reset();
        m_engine.reset();
        m_session.reset();
    }

    void afterTheFirstStart()
    {
        // What the first start leaves behind.
        m_settings->set(moreDetails, true);
        m_settings->set(star, true);
        start();
        QCOMPARE(checked("switchDetails"), true);
        QCOMPARE(checked("switchWeekday"), false);
        QCOMPARE(checked("switchStar"), true);
        QCOMPARE(framedButtons(), (QList<bool>{true, false, false, false, false, false, false,
                                               false, false, false}));
        QCOMPARE(find("titleLabel")->property("text").toString(), "Settings");
        QCOMPARE(find("btnVers")->property("text").toString(),
                 u"v"_qs + QStringLiteral(TAVLO_VERSION));
        QCOMPARE(find("secretLabel")->isVisible(), false);
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
        tap(name);
        QCOMPARE(m_settings->value(BooleanKey{key}), true);
        tap(name);
        QCOMPARE(m_settings->value(BooleanKey{key}), false);
    }

    // Stored at once, and read again by the next plan.
    void reminderTimeAndHowEarly()
    {
        start({"de-DE"});
        QCOMPARE(find("lblReminders")->property("text").toString(), "Erinnerungen");
        QCOMPARE(find("lblReminderTime")->property("text").toString(), "07:30");
        QCOMPARE(find("btnReminderLead")->property("text").toString(), "Am Tag selbst  ›");
        tap(u"btnReminderEarlier"_qs);
        tap(u"btnReminderEarlier"_qs);
        tap(u"btnReminderLater"_qs);
        QCOMPARE(m_settings->value(reminderTime), u"07:15"_qs);
        QCOMPARE(find("lblReminderTime")->property("text").toString(), "07:15");
        QStringList leads;
        for (int i = 0; i < 4; ++i) {
            tap(u"btnReminderLead"_qs);
            leads << find("btnReminderLead")->property("text").toString();
            leads << QString::number(m_settings->value(reminderDaysBefore));
        }
        QCOMPARE(leads, (QStringList{"1 Tag vorher  ›", "1", "3 Tage vorher  ›", "3",
                                     "1 Woche vorher  ›", "7", "Am Tag selbst  ›", "0"}));
    }

    void thirdColourButton()
    {
        start();
        tap(u"colorButton3"_qs);
        QCOMPARE(m_settings->value(color), 2);
        QCOMPARE(m_log, QStringList{u"color = 3"_qs});
        QTRY_COMPARE(framedButtons(), (QList<bool>{false, false, true, false, false, false, false,
                                                   false, false, false}));
        QCOMPARE(m_controller->theme()->accentColor(),
                 QColor::fromRgbF(0.9586653f, 0.30533227f, 0));
    }

    void picturesComeBackWithTheirBlur()
    {
        m_settings->set(color, 6);
        start();
        QCOMPARE(find("blurredEffectView")->isVisible(), false);
        tap(u"colorButton1"_qs);
        QTRY_COMPARE(find("blurredEffectView")->isVisible(), true);
    }

    void appColorsStaysEnglish_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("title");
        QTest::newRow("de") << "de-DE"
                            << "Einstellungen";
        QTest::newRow("ru") << "ru"
                            << "Настройки";
    }
    void appColorsStaysEnglish()
    {
        QFETCH(QString, language);
        QFETCH(QString, title);
        start({language});
        QCOMPARE(find("lblBackground")->property("text").toString(), "App colors");
        QCOMPARE(find("titleLabel")->property("text").toString(), title);
    }

    void hiddenSwitchThroughTheVersionButton()
    {
        m_settings->set(color, 6);
        start();
        for (int i = 0; i < 40; ++i)
            tap(u"btnVers"_qs);
        QTRY_VERIFY(find("secretLabel")->isVisible());
        QCOMPARE(find("secretLabel")->property("text").toString(),
                 "language = en\nno events next time\n\nsaved birthdays: 0\n");
        for (int i = 0; i < 3; ++i)
            tap(u"btnVers"_qs);
        QCOMPARE(m_settings->value(preferredLanguage), 1);
        QCOMPARE(m_log.last(), "43");
        // The details switch on: every tap starts over.
        tap(u"switchDetails"_qs);
        tap(u"btnVers"_qs);
        QCOMPARE(m_log.last(), "0");
        QCOMPARE(find("secretLabel")->property("text").toString(), QString());
    }

    void pressFeedbackTwiceEndsAtFullSize()
    {
        start();
        tap(u"btnRate"_qs);
        QTest::qWait(100);
        tap(u"btnRate"_qs);
        QTRY_VERIFY(find("btnRate")->scale() < 0.95);
        QTRY_COMPARE(find("btnRate")->scale(), 1.0);
        QCOMPARE(m_log.count(u"CANCEL"_qs), 2);
    }

    void infoPanelOpenedTwiceStaysOpen()
    {
        start();
        tap(u"btnInfo"_qs);
        tap(u"btnInfo"_qs);
        QCOMPARE(m_log.count(u" Gestures "_qs), 2);
        QTRY_VERIFY(find("scrollViewInfo")->isVisible());
        QVERIFY(find("labelInfo")->property("text").toString().contains(u"swipe left or right"));
        tap(u"btnBackInfo"_qs);
        QTRY_VERIFY(!find("scrollViewInfo")->isVisible());
    }

    // The links go through the desktop's URL handler; a handler registered
    // for a scheme stands in for the software centre and the browser.
    void linksOpenThroughTheDesktop_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<StoreLinks::Platform>("platform");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QStringList>("log");
        const auto centre = StoreLinks::Platform::SoftwareCentre;
        QTest::newRow("rate: software centre")
            << "btnRate" << centre << "appstream://io.github.tavlo.Tavlo" << QStringList{"CANCEL"};
        QTest::newRow("more apps: project page")
            << "btnMoreApps" << centre << "https://github.com/tavlo/tavlo"
            << QStringList{"RateApp true"};
        QTest::newRow("more apps: app store")
            << "btnMoreApps" << StoreLinks::Platform::AppStore
            << "itms-apps://apps.apple.com/at/developer/tavlo/id1600000000?mt=8"
            << QStringList{"RateApp true"};
        QTest::newRow("rate: app store asks the platform, opens nothing")
            << "btnRate" << StoreLinks::Platform::AppStore << "" << QStringList{"CANCEL"};
    }
    void linksOpenThroughTheDesktop()
    {
        QFETCH(QString, button);
        QFETCH(StoreLinks::Platform, platform);
        QFETCH(QString, opened);
        QFETCH(QStringList, log);
        UrlCatcher catcher;
        for (const char *scheme : {"appstream", "https", "itms-apps"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), &catcher, "open");
        start();
        m_controller->setStorePlatform(platform);
        tap(button);
        for (const char *scheme : {"appstream", "https", "itms-apps"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        QCOMPARE(catcher.urls, opened.isEmpty() ? QList<QUrl>{} : QList<QUrl>{QUrl(opened)});
        QCOMPARE(m_log, log);
    }

    void aLinkNothingOpensLogsFalse()
    {
        start();
        QList<QUrl> asked;
        m_controller->setUrlOpener([&](const QUrl &url) {
            asked.append(url);
            return false;
        });
        tap(u"btnMoreApps"_qs);
        QCOMPARE(asked, QList<QUrl>{StoreLinks::projectPage()});
        QCOMPARE(m_log, QStringList{u"RateApp false"_qs});
    }

    void backMakesANewMainScreen()
    {
        start();
        QSignalSpy requested(m_controller, &SetViewController::screenRequested);
        tap(u"btnBack"_qs);
        QTRY_COMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).toString(), "Main");
        QVERIFY(find("dimOverlay")->isVisible());
    }
};

QTEST_MAIN(TestSettingsScreen)
#include "tst_settingsscreen.moc"
