// SPDX-License-Identifier: MIT
#pragma once

#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "app/ScreenFactory.h"
#include "core/DebugLog.h"
#include "screenBase/BundledFonts.h"
#include "screenBase/BundledPictures.h"
#include "screenBase/FallbackFileDialog.h"
#include "screenBase/TintedSymbols.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"

#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <algorithm>
#include <functional>
#include <memory>
#include <type_traits>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

// One screen over its controller, or the whole app, offscreen as a user
// meets it: an in-memory settings store, a clock fixed at noon on
// 22 November 2026 in Berlin, and the debug log caught in `log`.
class ScreenHarness
{
    TimeZoneScope m_zone{"Europe/Berlin"};

public:
    QStringList log;
    MemorySettingsStore settings;
    FixedClock clock{at(2026, 11, 22, 12)};
    std::unique_ptr<Session> session;
    QQuickWindow *window = nullptr;
    QQuickItem *screen = nullptr;
    // Fills in the session before the screens are made (a sync service).
    std::function<void(Session &)> prepare;

    ~ScreenHarness()
    {
        // The screen goes before the controller it binds to.
        if (m_window)
            delete screen;
        m_window.reset();
        m_engine.reset();
        DebugLog::setSink(m_previousSink);
    }

    // The screen in `qml` (under qrc:/qt/qml/Tavlo/) over a new, loaded
    // controller. The favorites and settings screens find the language
    // decided and the list read, as the main screen before them leaves it.
    template <typename Controller>
    Controller *show(const char *qml, const QStringList &preferred = {u"en-US"_qs},
                     Appearance appearance = Appearance::Dark)
    {
        BundledFonts::install();
        session = std::make_unique<Session>(settings, clock, preferred, appearance);
        if (prepare)
            prepare(*session);
        if constexpr (!std::is_same_v<Controller, MainScreenController>) {
            session->formatLocale = QLocale(u"en_US"_qs);
            session->decideLanguage();
            session->favorites.load();
        }
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(u"qrc:/qt/qml"_qs);
        FallbackFileDialog::install(*m_engine);
        TintedSymbols::install(*m_engine);
        BundledPictures::install(*m_engine);
        m_window = std::make_unique<QQuickWindow>();
        window = m_window.get();
        window->resize(390, 844);
        auto *controller = new Controller(*session, window);
        controller->viewDidLoad();
        QQmlComponent component(m_engine.get(),
                                QUrl(u"qrc:/qt/qml/Tavlo/"_qs + QLatin1String(qml)));
        screen = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{u"controller"_qs, QVariant::fromValue(controller)}}));
        if (!screen)
            qFatal("%s", qPrintable(component.errorString()));
        screen->setParent(window);
        screen->setParentItem(window->contentItem());
        screen->setSize(window->size());
        QObject::connect(window, &QQuickWindow::widthChanged, screen, &QQuickItem::setWidth);
        // As the screen host does: the keyboard goes to the new screen.
        QMetaObject::invokeMethod(screen, "focusFirst");
        window->show();
        if (!QTest::qWaitForWindowExposed(window))
            qFatal("the window never showed");
        return controller;
    }

    // The app in a window of `size`; by default the window's own, a phone's.
    void startApp(const QStringList &preferred = {u"en-US"_qs},
                  Appearance appearance = Appearance::Dark, QSize size = {})
    {
        BundledFonts::install();
        session = std::make_unique<Session>(settings, clock, preferred, appearance);
        m_factory = std::make_unique<ScreenFactory>(*session);
        auto *engine = new QQmlApplicationEngine;
        m_engine.reset(engine);
        engine->addImportPath(u"qrc:/qt/qml"_qs);
        FallbackFileDialog::install(*engine);
        TintedSymbols::install(*engine);
        BundledPictures::install(*engine);
        QVariantMap initial{{u"screens"_qs, QVariant::fromValue(m_factory.get())}};
        if (size.isValid()) {
            initial.insert(u"width"_qs, size.width());
            initial.insert(u"height"_qs, size.height());
        }
        engine->setInitialProperties(initial);
        engine->load(QUrl(u"qrc:/qt/qml/Tavlo/app/Main.qml"_qs));
        window = qobject_cast<QQuickWindow *>(engine->rootObjects().value(0));
        if (!window || !QTest::qWaitForWindowExposed(window))
            qFatal("the window never showed");
    }

    // The app's factory of screens, once startApp() has run.
    ScreenFactory &screens() const { return *m_factory; }

    // An item by its name, in the object tree or in the scene (where the
    // items of a list or a Repeater are), a shown one before a hidden one.
    QQuickItem *find(const QString &name, QQuickItem *in = nullptr) const
    {
        QList<QQuickItem *> all =
            (in ? static_cast<QObject *>(in) : window)->findChildren<QQuickItem *>(name);
        for (QList<QQuickItem *> scene{in ? in : window->contentItem()}; !scene.isEmpty();) {
            QQuickItem *item = scene.takeLast();
            if (item->objectName() == name)
                all.append(item);
            scene.append(item->childItems());
        }
        const auto shown =
            std::find_if(all.cbegin(), all.cend(), std::mem_fn(&QQuickItem::isVisible));
        return shown != all.cend() ? *shown : all.value(0);
    }

    bool shows(const QString &name) const { return find(name) && find(name)->isVisible(); }

    QString text(const QString &name, QQuickItem *in = nullptr) const
    {
        const QQuickItem *item = find(name, in);
        return item ? item->property("text").toString() : u"(no "_qs + name + u')';
    }

    bool opened(const QString &popup) const
    {
        const QObject *object = window->findChild<QObject *>(popup);
        return object && object->property("opened").toBool();
    }

    QPoint centre(const QQuickItem *item) const
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    void tap(const QQuickItem *item) const
    {
        QVERIFY(item);
        QTest::mouseClick(window, Qt::LeftButton, {}, centre(item));
    }
    void tap(const QString &name) const { tap(find(name)); }

    void drag(QPoint from, QPoint by, int steps = 10, int ms = 10) const
    {
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(window, from + by * step / steps, ms);
        QTest::mouseRelease(window, Qt::LeftButton, {}, from + by, ms);
    }

    // Whether `screen` is the one screen shown, the one before it gone.
    bool showsOnly(const QString &screen) const
    {
        int shown = 0;
        for (const QString &name : {u"mainView"_qs, u"favView"_qs, u"setView"_qs})
            shown += shows(name);
        return shown == 1 && shows(screen);
    }

    bool go(const QString &button, const QString &screen) const
    {
        tap(button);
        return QTest::qWaitFor([&] { return showsOnly(screen); });
    }

private:
    DebugLog::Sink m_previousSink = DebugLog::setSink([this](const QString &l) { log << l; });
    std::unique_ptr<ScreenFactory> m_factory;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

// What a run of this test program with `arguments` said as it was stopped:
// nothing unless it was stopped, with one line.
inline QByteArray fatalLine(const QStringList &arguments)
{
    QTemporaryDir runtime;
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"XDG_RUNTIME_DIR"_qs, runtime.path());
    child.setProcessEnvironment(env);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    child.waitForFinished(30000);
    const QByteArray err = child.readAllStandardError();
    return child.exitStatus() == QProcess::CrashExit && err.count('\n') == 1 ? err : QByteArray();
}
