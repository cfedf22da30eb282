// SPDX-License-Identifier: MIT
// With 10,000 favorites in a real settings file: the time from pressing the
// favorites button to the first frame with rows drawn (offscreen, software
// renderer), and each sort order on its own; and, with none, 1,000 and
// 10,000 favorites, the way back: the main screen of a running session
// loaded again (favorites read, greeting worked out) and drawn, the three
// lengths in turn. Prints the median of RUNS runs. Writes go to the disk in
// the background, as in the app. A third argument runs one part alone,
// for a profiler: sort, menu, open or back.
//   build/bench/favorites_open [RUNS] [PART]

#include "core/Clock.h"
#include "core/DebugLog.h"
#include "favorites/FavoritesSorting.h"
#include "favoritesScreen/FavoritesScreenController.h"
#include "mainScreen/MainScreenController.h"
#include "session/Session.h"
#include "settings/FileSettingsStore.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtQml/qqmlextensionplugin.h>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

namespace {

constexpr int favoriteCount = 10000;
// The date the main screen shows in every run: the last favorite's, and the
// one stored when there are none. Where a date stands on the wheels changes
// how many labels they make, which is not what is measured.
const QDate shownDate(1985, 6, 15);

QList<QStringList> manyFavorites(int count = favoriteCount)
{
    QRandomGenerator rng(20261122);
    QList<QStringList> rows;
    for (int i = 0; i < count; ++i) {
        const QDate birth =
            i == count - 1 ? shownDate : QDate(1930, 1, 1).addDays(rng.bounded(34000));
        rows.append(
            {QStringLiteral("Person %1").arg(rng.bounded(100000)),
             QStringLiteral("%1 %2 %3").arg(birth.day()).arg(birth.month()).arg(birth.year())});
    }
    return rows;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// The window and the QML engine live on from screen to screen, as the
// app's do, and with them what Qt Quick keeps: pictures, glyphs, types.
struct Stage
{
    Stage()
    {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        window.resize(390, 844);
        window.show();
        QCoreApplication::processEvents();
    }
    QQmlEngine engine;
    QQuickWindow window;
};

// From the press to the first frame: the screen's controller made and
// loaded, its QML built, its first frame rendered.
template <typename Controller>
double firstFrameMs(Stage &stage, Session &session, const char *qml)
{
    QQmlEngine &engine = stage.engine;
    QQuickWindow &window = stage.window;
    QElapsedTimer timer;
    timer.start();
    const std::unique_ptr<Controller> controller = std::make_unique<Controller>(session);
    controller->viewDidLoad();
    QQmlComponent component(&engine, QUrl(QLatin1String(qml)));
    auto *screen = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
        {{QStringLiteral("controller"), QVariant::fromValue(controller.get())},
         // Made at the window's size, as the app makes its screens.
         {QStringLiteral("width"), window.width()},
         {QStringLiteral("height"), window.height()}}));
    if (!screen)
        qFatal("%s", qPrintable(component.errorString()));
    screen->setParentItem(window.contentItem());
    bool drawn = false;
    const QMetaObject::Connection frame =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { drawn = true; });
    while (!drawn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    const double ms = timer.nsecsElapsed() / 1e6;
    QObject::disconnect(frame);
    delete screen;
    return ms;
}

// The favorites screen opened: the list read, sorted and written back.
double openOnce(Stage &stage, const QString &settingsFile, qint64 sort)
{
    FileSettingsStore settings(settingsFile);
    settings.set(SettingsKeys::sort, sort);
    SystemClock clock;
    Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
    session.favorites.load();
    return firstFrameMs<FavoritesScreenController>(
        stage, session, "qrc:/qt/qml/Tavlo/favoritesScreen/FavoritesScreen.qml");
}

// Back from another screen: the session, with its stores and what they
// keep, lives on from the start; the main screen is made again, loaded
// (favorites read, greeting worked out) and drawn.
struct Run
{
    explicit Run(const QString &settingsFile) : settings(settingsFile)
    {
        settings.writeInBackground();
    }
    double mainScreenOnce(Stage &stage)
    {
        return firstFrameMs<MainScreenController>(stage, session,
                                                  "qrc:/qt/qml/Tavlo/mainScreen/MainScreen.qml");
    }
    FileSettingsStore settings;
    SystemClock clock;
    Session session{settings, clock, {QStringLiteral("en-US")}, Appearance::Dark};
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 7;
    const QString only = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    const auto runsPart = [&](const char *part) {
        return only.isEmpty() || only == QLatin1String(part);
    };
    DebugLog::setSink([](const QString &) {});

    Stage stage;
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("tavlo.conf"));
    {
        FileSettingsStore settings(file);
        settings.set(SettingsKeys::favorites, manyFavorites());
    }

    QList<Favorite> favorites;
    for (const QStringList &row : manyFavorites())
        favorites.append({row.at(0), row.at(1)});
    const std::pair<const char *, FavoritesSorting::Order> orders[] = {
        {"by name", FavoritesSorting::Order::ByName},
        {"by age", FavoritesSorting::Order::ByAge},
        {"by birthday", FavoritesSorting::Order::ByBirthday}};
    for (const auto &[name, order] : orders) {
        if (!runsPart("sort"))
            break;
        QList<double> times;
        for (int i = 0; i < runs; ++i) {
            QElapsedTimer timer;
            timer.start();
            const QList<qsizetype> ordering = FavoritesSorting::ordering(favorites, order);
            times.append(timer.nsecsElapsed() / 1e6);
            Q_UNUSED(ordering);
        }
        std::printf("sort %-12s median %6.2f ms over %d runs\n", name, median(times), runs);
    }
    if (runsPart("menu")) {
        // A choice in the sort menu: sorted, written back whole, rows reset.
        FileSettingsStore settings(file);
        SystemClock clock;
        Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
        session.favorites.load();
        settings.writeInBackground();
        FavoritesScreenController controller(session);
        controller.viewDidLoad();
        for (const int order : {0, 1, 2}) {
            QList<double> times;
            for (int i = 0; i < runs; ++i) {
                controller.chooseSort((order + 1) % 3);
                settings.waitForWrites();
                QElapsedTimer timer;
                timer.start();
                controller.chooseSort(order);
                times.append(timer.nsecsElapsed() / 1e6);
            }
            std::printf("menu choice %d: sorted and handed to the writer, median %6.1f ms over %d "
                        "runs\n",
                        order, median(times), runs);
        }
    }
    for (const qint64 sort : {0, 1, 2}) {
        if (!runsPart("open"))
            break;
        QList<double> times;
        for (int i = 0; i < runs; ++i)
            times.append(openOnce(stage, file, sort));
        std::printf("open, sort %lld: first rows drawn after median %6.1f ms over %d runs\n",
                    static_cast<long long>(sort), median(times), runs);
    }
    if (!runsPart("back"))
        return 0;
    // The three lengths take turns, so that a machine busy for a while
    // slows them alike.
    const int counts[] = {0, 1000, favoriteCount};
    std::vector<std::unique_ptr<Run>> sessions;
    for (const int count : counts) {
        const QString mainFile = dir.filePath(QStringLiteral("main-%1.conf").arg(count));
        {
            FileSettingsStore settings(mainFile);
            settings.set(SettingsKeys::favorites, manyFavorites(count));
            settings.set(SettingsKeys::day, shownDate.day());
            settings.set(SettingsKeys::month, shownDate.month());
            settings.set(SettingsKeys::year, shownDate.year());
        }
        sessions.push_back(std::make_unique<Run>(mainFile));
        // The start.
        sessions.back()->mainScreenOnce(stage);
    }
    QList<double> times[std::size(counts)];
    for (int i = 0; i < runs; ++i) {
        for (size_t c = 0; c < std::size(counts); ++c)
            times[c].append(sessions[c]->mainScreenOnce(stage));
    }
    for (size_t c = 0; c < std::size(counts); ++c) {
        std::printf("back to the main screen, %5d favorites: first frame after median %6.1f ms "
                    "(%.2fx) over %d runs\n",
                    counts[c], median(times[c]), median(times[c]) / median(times[0]), runs);
    }
    return 0;
}
