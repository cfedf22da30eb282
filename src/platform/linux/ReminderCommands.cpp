// SPDX-License-Identifier: MIT
#include "platform/linux/ReminderCommands.h"

#include "core/Clock.h"
#include "favorites/FavoriteHandOver.h"
#include "favorites/FavoritesStore.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/LinuxReminders.h"
#include "platform/linux/PowerWakeups.h"
#include "reminders/DeliveryRules.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTextStream>
#include <QTimer>

namespace {

// Wrong arguments, as the command line reports them.
constexpr int usageStatus = 2;

} // namespace

int ReminderCommands::deliver(const QStringList &arguments)
{
    const bool one = arguments.value(1) == u"deliver-reminder";
    const bool wellFormed = one ? arguments.size() == 3 && !arguments.at(2).isEmpty() &&
                                      !arguments.at(2).startsWith(u'-')
                                : arguments.size() == 2;
    if (!wellFormed) {
        QTextStream(stderr) << (one ? "tavlo deliver-reminder: expected one IDENTIFIER, as a "
                                      "reminder's timer gives it\n"
                                    : "tavlo deliver-reminders: expected no arguments\n");
        return usageStatus;
    }
    SystemClock clock;
    LinuxReminders platform(clock);
    // The app opens on the reminder's favorite, as if chosen in the list.
    platform.notifier.onActivated = [&platform](const QString &favoriteId) {
        FileSettingsStore settings;
        FavoritesStore favorites(settings);
        favorites.load();
        if (const auto handed = FavoriteHandOver::handById(settings, favorites.all(), favoriteId);
            handed && !*handed) {
            QTextStream(stderr) << "tavlo deliver-reminder: " << handed->message() << '\n';
        }
        platform.processes.startDetached(QCoreApplication::applicationFilePath(), {});
    };
    if (!one) {
        return DeliveryCommand::deliverInBackground(platform.store, clock, platform.notifier,
                                                    *platform.wakeups);
    }
    const int status =
        DeliveryCommand::deliver(arguments.at(2), platform.store, clock, platform.notifier);
    platform.notifier.waitForAnswers(DeliveryRules::restOfDayMs(clock.now()));
    return status;
}

int ReminderCommands::registerWakeups()
{
    SystemClock clock;
    LinuxReminders platform(clock, false);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected() && !bus.interface()->isServiceRegistered(PowerWakeups::service)) {
        QEventLoop wait;
        QDBusServiceWatcher watcher(PowerWakeups::service, bus,
                                    QDBusServiceWatcher::WatchForRegistration);
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &wait,
                         &QEventLoop::quit);
        QTimer::singleShot(120'000, &wait, &QEventLoop::quit);
        wait.exec();
    }
    platform.power->apply(DeliveryRules::waiting(platform.store, clock.now()));
    QEventLoop idle;
    bool done = false;
    platform.power->whenIdle([&] {
        done = true;
        idle.quit();
    });
    if (!done)
        idle.exec();
    return 0;
}
