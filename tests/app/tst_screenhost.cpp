// SPDX-License-Identifier: MIT
#include "ScreenHarness.h"

#include <QQmlContext>
#include <QQmlProperty>

namespace {

struct Control
{
    QString name;
    int role = 0;
};

QVariant attached(QObject *item, const char *property)
{
    return QQmlProperty(item, u"Accessible."_qs + QLatin1String(property), qmlContext(item)).read();
}

// Every control a screen reader can act on on each screen, by a stable key:
// buttons, switches, fields, and the steppers that stand for the date wheels.
QMap<QString, Control> controls(const QStringList &preferred)
{
    ScreenHarness h;
    h.settings.set(SettingsKeys::favorites, {{u"Anna"_qs, u"12 3 1985"_qs}});
    h.startApp(preferred);
    QMap<QString, Control> found;
    for (const auto &[button, screen] : {std::pair{QString(), u"mainView"_qs},
                                         {u"btnFav"_qs, u"favView"_qs},
                                         {u"btnBack"_qs, u"mainView"_qs},
                                         {u"btnSet"_qs, u"setView"_qs}}) {
        if (!button.isEmpty() && !h.go(button, screen))
            qFatal("%s never showed", qPrintable(screen));
        // The rows of the list fly in.
        QTest::qWait(screen == u"favView" ? 1500 : 0);
        for (QQuickItem *item : h.window->findChildren<QQuickItem *>()) {
            if (item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField") ||
                item->objectName().endsWith(u"Stepper"_qs)) {
                const QString name = item->objectName();
                found.insert(
                    screen + u'/' +
                        (name.isEmpty() ? QLatin1String(item->metaObject()->className()) : name),
                    {attached(item, "name").toString(), attached(item, "role").toInt()});
            }
        }
    }
    return found;
}

} // namespace

class TestScreenHost : public QObject
{
    Q_OBJECT

private slots:
    // The window and its screen host: screens by identifier, each asked for
    // under a dim and presented over the one before, and a new main screen
    // every time "Main" is shown.
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

    void everyControlIsNamedInTheLanguage()
    {
        const QMap<QString, Control> english = controls({u"en-US"_qs});
        const QMap<QString, Control> russian = controls({u"ru"_qs});
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

QTEST_MAIN(TestScreenHost)
#include "tst_screenhost.moc"
