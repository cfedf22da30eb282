// SPDX-License-Identifier: MIT
#include "app/AppStartup.h"

#include "app/ScreenFactory.h"
#include "app/Screenshot.h"
#include "app/StartupTrace.h"
#include "contacts/ContactsFolder.h"
#include "contacts/ContactsFollower.h"
#include "core/Clock.h"
#include "core/DebugLog.h"
#include "platform/linux/EvolutionAddressBooks.h"
#include "platform/linux/LinkHandlers.h"
#include "platform/linux/LinuxReminders.h"
#include "platform/linux/PortalFileChooser.h"
#include "platform/linux/PowerWakeups.h"
#include "platform/linux/SecretServiceVault.h"
#include "reminders/ReminderScheduler.h"
#include "screenBase/AccessibleItems.h"
#include "screenBase/BundledFonts.h"
#include "screenBase/BundledPictures.h"
#include "screenBase/FallbackFileDialog.h"
#include "screenBase/TintedSymbols.h"
#include "session/Session.h"
#include "settings/FileSettingsStore.h"
#include "sync/SyncService.h"
#include "sync/SyncState.h"

#include <QDBusConnection>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScopeGuard>
#include <QTimer>
#include <utility>

Appearance AppStartup::appearance()
{
    const QByteArray forced = qgetenv("TAVLO_APPEARANCE");
    if (forced == "dark")
        return Appearance::Dark;
    if (forced == "light")
        return Appearance::Light;
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128 ? Appearance::Dark
                                                                                : Appearance::Light;
}

int AppStartup::run(QGuiApplication &app, const Options &options)
{
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    // The window's QML types are read on the engine's own thread, from here,
    // while the fonts and the session are put together; the window is made
    // once they are (below).
    const QUrl mainQml(QStringLiteral("qrc:/qt/qml/Tavlo/app/Main.qml"));
    auto engine = std::make_unique<QQmlApplicationEngine>();
    engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    new QQmlComponent(engine.get(), mainQml, QQmlComponent::Asynchronous, engine.get());
    AccessibleItems::install();
    BundledFonts::install();

    FileSettingsStore settings;
    // A change shows at once; the checked write of the file follows on the
    // store's own thread, so a long favorites list never holds up a frame.
    settings.writeInBackground();
    // Held until the first frame is shown (below): nothing written at start
    // is anything the user did.
    settings.holdWrites();
    SystemClock clock;
    Session session(settings, clock, QLocale::system().uiLanguages(), appearance());
    // So is the birthdays calendar, which takes longer still.
    session.calendar.writeInBackground([](const QString &problem) { DebugLog::line(problem); });
    // The phone's address books: read for an import, followed while
    // "Birthdays from contacts" is on. Their answers come between frames.
    ContactsFolder contactsFolder(PhoneContacts::plasmaFolder());
    EvolutionAddressBooks evolution;
    session.phoneContacts = [&evolution] { return EvolutionAddressBooks::readNow(evolution); };
    ContactsFollower follower(settings, session.favorites, session.strings,
                              [&clock] { return clock.now().date(); });
    follower.addSource(&contactsFolder);
    follower.addSource(&evolution);
    session.contacts = &follower;
    // xdg-open starts whether or not anything can take the link.
    session.openLink = [](const QUrl &url) {
        return LinkHandlers::installed(url.scheme()) && QDesktopServices::openUrl(url);
    };

    // The reminders. The screens made by the engine become the centre's
    // delegate, so the centre outlives the engine. A screenshot leaves the
    // user's reminders alone.
    const bool remindersOn = options.screenshotPath.isEmpty();
    LinuxReminders platform(clock, remindersOn, [] {
        return QGuiApplication::applicationState() == Qt::ApplicationActive;
    });
    ReminderScheduler reminders(platform.center, settings, clock, session.favorites,
                                session.strings);
    if (remindersOn) {
        session.reminders = &reminders;
        // A wake-up of the phone that the power management service calls
        // back for: what is due is shown now.
        if (platform.power)
            platform.power->answerCallbacks([&platform] { platform.center.deliverDue(); });
    }
    // After a change from the address books, reminders are planned again,
    // as after any change (the birthdays calendar follows every change).
    QObject::connect(&follower, &ContactsFollower::favoritesChanged, &follower, [&session] {
        if (session.reminders)
            session.reminders->checkNotificationPermission();
    });
    // Files to import and export are chosen with the desktop portal's
    // chooser where one answers, else with the toolkit's dialog.
    PortalFileChooser fileChooser(QDBusConnection::sessionBus());
    session.fileChooser = &fileChooser;
    // The CardDAV account, synced by itself while the app runs. Favorites
    // it brings are read into the screens' store before the screens hear.
    SecretServiceVault vault;
    SyncService sync(settings, &vault, SyncState::defaultPath());
    sync.setConflictName([&session] { return session.strings[UiText::SyncConflictCopy]; });
    sync.setToday([&clock] { return clock.now().date(); });
    QObject::connect(&sync, &SyncService::favoritesReceived, &sync, [&session] {
        session.favorites.load();
        session.updateCalendar(session.favorites.all());
    });
    session.sync = &sync;
    session.favoritesStored = [&sync] { sync.favoritesChanged(); };
    ScreenFactory screens(session);

    // The window and its engine go before the session they show.
    const auto windowFirst = qScopeGuard([&engine] { engine.reset(); });
    FallbackFileDialog::install(*engine);
    TintedSymbols::install(*engine);
    BundledPictures::install(*engine);
    engine->setInitialProperties({{QStringLiteral("screens"), QVariant::fromValue(&screens)}});
    // Waits for the reading begun above, and for nothing else: no event is
    // handled before the window is there.
    engine->load(mainQml);
    if (engine->rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine->rootObjects().constFirst());
    // The portal puts its chooser over Tavlo's window where it can name it
    // (X11; Wayland needs a handle exported by the compositor).
    fileChooser.setParentWindow([window]() -> QString {
        if (!window || QGuiApplication::platformName() != u"xcb")
            return {};
        return QStringLiteral("x11:") + QString::number(window->winId(), 16);
    });
    // A tap on one of Tavlo's notifications brings the window to the front,
    // on the main screen showing the reminder's favorite.
    if (window) {
        platform.center.setOnActivated([window, &screens](const QString &favoriteId) {
            screens.showFavorite(favoriteId);
            window->show();
            window->raise();
            window->requestActivate();
        });
    }

    // Told before the held writes start, so that their thread's work is not
    // counted as the first frame's.
    if (window && options.traceStartup)
        StartupTrace::followFirstFrame(*window, options.screenshotPath.isEmpty());
    // What waits for the window to show, a second at most: the changes made
    // while starting (the start count, a list read from an older version)
    // and the reminders' own upkeep (the lock that tells a background
    // delivery the app runs, and what is due), as each writes to the disk;
    // following the address books (which loads evolution-data-server's
    // client library) and the CardDAV account, which the first frame does not
    // show. A screenshot leaves the user's reminders and favorites alone.
    bool shown = false;
    const auto afterFirstFrame = [&] {
        if (std::exchange(shown, true))
            return;
        settings.releaseWrites();
        if (remindersOn) {
            platform.center.start();
            follower.start();
            sync.start();
        }
    };
    if (window) {
        QObject::connect(window, &QQuickWindow::frameSwapped, window, afterFirstFrame,
                         Qt::SingleShotConnection);
    }
    QTimer release;
    release.setSingleShot(true);
    QObject::connect(&release, &QTimer::timeout, &release, afterFirstFrame);
    release.start(1000);

    if (window && !options.screenshotPath.isEmpty())
        Screenshot::takeAfterFirstFrame(*window, options.screenshotPath);

    const int status = app.exec();
    session.favoritesStored = {};
    // The last changes reach the disk before we go, and a failure among
    // them is still told (in the debug log, the window being gone).
    settings.waitForWrites();
    session.calendar.waitForWrites();
    if (options.traceStartup)
        StartupTrace::printPeakMemory();
    return status;
}
