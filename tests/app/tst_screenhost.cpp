// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "app/ScreenFactory.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

// The window and its screen host: screens by identifier, each presented
// over the one before, and a new main screen every time "Main" is shown.
class TestScreenHost : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

    static QList<QQuickItem *> screens(QQuickWindow *window, const QString &name)
    {
        QList<QQuickItem *> found;
        for (QQuickItem *item : window->findChildren<QQuickItem *>(name)) {
            if (item->isVisible())
                found.append(item);
        }
        return found;
    }

    static void tap(QQuickWindow *window, QQuickItem *item)
    {
        QVERIFY(item);
        QTest::mouseClick(
            window, Qt::LeftButton, {},
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    }

private slots:
    void presentsScreensAndComesBackToANewMain_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("view");
        QTest::newRow("favorites") << QByteArray("btnFav") << "favView";
        QTest::newRow("settings") << QByteArray("btnSet") << "setView";
    }
    void presentsScreensAndComesBackToANewMain()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, view);
        MemorySettingsStore settings;
        FixedClock clock(at(2026, 11, 22, 12));
        Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
        ScreenFactory factory(session);
        QQmlApplicationEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine.setInitialProperties({{QStringLiteral("screens"), QVariant::fromValue(&factory)}});
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/app/Main.qml")));
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        QVERIFY(window);
        QCOMPARE(window->title(), "Tavlo");
        QCOMPARE(window->size(), QSize(390, 844));
        QVERIFY(QTest::qWaitForWindowExposed(window));

        QCOMPARE(screens(window, u"mainView"_qs).size(), 1);
        QCOMPARE(settings.value(SettingsKeys::appStarts), 1);
        QQuickItem *firstMain = screens(window, u"mainView"_qs).constFirst();

        tap(window, firstMain->findChild<QQuickItem *>(QString::fromLatin1(button)));
        QTRY_COMPARE(screens(window, view).size(), 1);
        QTRY_COMPARE(screens(window, u"mainView"_qs).size(), 0);

        QQuickItem *other = screens(window, view).constFirst();
        tap(window, other->findChild<QQuickItem *>(u"btnBack"_qs));
        QTRY_COMPARE(screens(window, u"mainView"_qs).size(), 1);
        QTRY_COMPARE(screens(window, view).size(), 0);
        // A new main screen ran its load: the start counter counted it.
        QCOMPARE(settings.value(SettingsKeys::appStarts), 2);
        QVERIFY(!screens(window, u"dimOverlay"_qs).size());
    }
};

QTEST_MAIN(TestScreenHost)
#include "tst_screenhost.moc"
