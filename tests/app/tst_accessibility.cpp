// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "app/ScreenFactory.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"

#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

namespace {

// Every control a screen reader can act on: buttons, switches, fields, and
// the steppers that stand for the date wheels.
bool isControl(const QObject *object)
{
    return object->inherits("QQuickAbstractButton") || object->inherits("QQuickTextField") ||
           object->objectName().endsWith(u"Stepper"_qs);
}

QVariant attached(QObject *item, const char *property)
{
    return QQmlProperty(item, QLatin1String("Accessible.") + QLatin1String(property),
                        qmlContext(item))
        .read();
}

struct Control
{
    QString name;
    int role = 0;
};

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};

    // The controls of each screen by a stable key, in one language.
    static QMap<QString, Control> controls(const QStringList &preferred)
    {
        MemorySettingsStore settings;
        settings.set(SettingsKeys::favorites,
                     {{QStringLiteral("Anna"), QStringLiteral("12 3 1985")}});
        FixedClock clock(at(2026, 11, 22, 12));
        Session session(settings, clock, preferred, Appearance::Dark);
        ScreenFactory factory(session);
        QQmlApplicationEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine.setInitialProperties({{QStringLiteral("screens"), QVariant::fromValue(&factory)}});
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/app/Main.qml")));
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        if (!window || !QTest::qWaitForWindowExposed(window))
            qFatal("no window");

        QMap<QString, Control> found;
        const auto collect = [&](const QString &screen) {
            for (QObject *object : window->findChildren<QObject *>()) {
                auto *item = qobject_cast<QQuickItem *>(object);
                if (!item || !isControl(item))
                    continue;
                const QString key = screen + u'/' +
                                    (item->objectName().isEmpty()
                                         ? QString::fromLatin1(item->metaObject()->className())
                                         : item->objectName());
                found.insert(key,
                             {attached(item, "name").toString(), attached(item, "role").toInt()});
            }
        };
        const auto open = [&](const char *button, const char *view, const char *gone) {
            QQuickItem *tapped = nullptr;
            for (QQuickItem *item : window->findChildren<QQuickItem *>(QLatin1String(button))) {
                if (item->isVisible())
                    tapped = item;
            }
            QTest::mouseClick(
                window, Qt::LeftButton, {},
                tapped->mapToScene(QPointF(tapped->width() / 2, tapped->height() / 2)).toPoint());
            QTRY_VERIFY(!window->findChildren<QQuickItem *>(QLatin1String(view)).isEmpty() &&
                        window->findChildren<QQuickItem *>(QLatin1String(gone)).isEmpty());
        };
        collect(u"main"_qs);
        open("btnFav", "favView", "mainView");
        QTest::qWait(1500);
        collect(u"favorites"_qs);
        open("btnBack", "mainView", "favView");
        open("btnSet", "setView", "mainView");
        collect(u"settings"_qs);
        return found;
    }

private slots:
    void everyControlIsNamedInTheLanguage()
    {
        const QMap<QString, Control> english = controls({QStringLiteral("en-US")});
        const QMap<QString, Control> russian = controls({QStringLiteral("ru")});
        QVERIFY(english.size() > 25);
        QCOMPARE(russian.keys(), english.keys());
        // Words that are the same in every language.
        const QStringList universal = {u"OK"_qs, u"v"_qs + QStringLiteral(TAVLO_VERSION)};
        for (auto it = russian.cbegin(); it != russian.cend(); ++it) {
            QVERIFY2(!it->name.trimmed().isEmpty(), qPrintable(it.key() + u" has no name"_qs));
            QVERIFY2(it->role != 0, qPrintable(it.key() + u" has no role"_qs));
            const QString inEnglish = english.value(it.key()).name;
            QVERIFY2(it->name != inEnglish || universal.contains(inEnglish),
                     qPrintable(it.key() + u" is not translated: "_qs + inEnglish));
        }
    }
};

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
