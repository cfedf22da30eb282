// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"
#include "app/EventLoopStalls.h"
#include "cli/CommandLine.h"
#include "contacts/BirthdayCalendar.h"
#include "core/Clock.h"
#include "core/FatalError.h"
#include "favorites/FavoriteHandOver.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/EvolutionAddressBooks.h"
#include "platform/linux/LinuxReminders.h"
#include "platform/linux/PowerWakeups.h"
#include "platform/linux/SecretServiceVault.h"
#include "platform/linux/TerminationSignals.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>
#include <cstring>
#include <optional>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

namespace {

// With TZ unset, glibc looks at /etc/localtime again (a stat, often a read)
// at every local-time conversion, and Tavlo converts thousands of dates when
// it starts with many favorites. Naming the file makes glibc read it once;
// a change of the system's time zone then takes effect at the next start.
void readSystemTimeZoneOnce()
{
    if (!qEnvironmentVariableIsSet("TZ") && QFileInfo::exists(QStringLiteral("/etc/localtime")))
        qputenv("TZ", ":/etc/localtime");
}

// "Tavlo process 1234 (stopped)", as far as it can be told.
QString describeProcess(qint64 pid)
{
    if (pid <= 0)
        return QStringLiteral("another Tavlo");
    QString text = QStringLiteral("Tavlo process %1").arg(pid);
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (stat.open(QIODevice::ReadOnly)) {
        // The state follows the command's name in parentheses.
        const QByteArray line = stat.readAll();
        const qsizetype close = line.lastIndexOf(')');
        if (close > 0 && close + 2 < line.size() &&
            (line.at(close + 2) == 'T' || line.at(close + 2) == 't'))
            text += QStringLiteral(" (stopped)");
    }
    return text;
}

void describeApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("tavlo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVLO_VERSION));
}

int runCommand()
{
    FileSettingsStore settings;
    SystemClock clock;
    QTextStream out(stdout);
    QTextStream err(stderr);
    std::optional<LinuxReminders> platform;
    CommandContext context{settings, QLocale::system().uiLanguages(), clock, out, err};
    // A change waits for one that another Tavlo is making, for as long as
    // that process lives; after a few seconds the person learns why.
    settings.setLockWaitNotice([&](qint64 holder) {
        err << "tavlo: waiting for " << describeProcess(holder) << " to finish changing "
            << oneLine(settings.fileName()) << " (Ctrl-C gives up, changing nothing)\n";
        err.flush();
    });
    context.notifications = [&]() -> NotificationCenter * {
        if (!platform)
            platform.emplace(clock);
        return &platform->center;
    };
    context.whenNotificationsIdle = [&platform](std::function<void()> done) {
        if (platform)
            platform->center.whenIdle(std::move(done));
        else
            done();
    };
    context.phoneContacts = EvolutionAddressBooks::readAll;
    std::optional<SecretServiceVault> vault;
    context.passwords = [&vault]() -> PasswordVault * {
        if (!vault)
            vault.emplace();
        return &*vault;
    };
    // A change made here updates the birthdays calendar as the app would.
    BirthdayCalendar calendar(settings, context.preferredLanguages, clock);
    FavoritesStore::setChangeListener([&](const QList<Favorite> &list) {
        if (const QString problem = calendar.update(list); !problem.isEmpty())
            err << "tavlo: " << problem << '\n';
    });
    return runCommandLine(QCoreApplication::arguments(), context);
}

// `tavlo deliver-reminder IDENTIFIER`: what a reminder's systemd timer runs.
// `tavlo deliver-reminders`: what the autostart entry runs where there is no
// systemd. Both stay to open Tavlo when the person taps what they showed.
int deliverReminders(bool one)
{
    const QStringList arguments = QCoreApplication::arguments();
    const bool wellFormed = one ? arguments.size() == 3 && !arguments.at(2).isEmpty() &&
                                      !arguments.at(2).startsWith(u'-')
                                : arguments.size() == 2;
    if (!wellFormed) {
        QTextStream(stderr) << (one ? "tavlo deliver-reminder: expected one IDENTIFIER, as a "
                                      "reminder's timer gives it\n"
                                    : "tavlo deliver-reminders: expected no arguments\n");
        return ExitStatus::usage;
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
    platform.notifier.waitForAnswers(DeliveryCommand::restOfDayMs(clock.now()));
    return status;
}

// `tavlo register-wakeups`: what Plasma starts at login, when its power
// management has forgotten the wake-ups of the session before. Waits a
// while for the service to come up.
int registerWakeups()
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
    platform.power->apply(DeliveryCommand::waiting(platform.store, clock.now()));
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

} // namespace

// `tavlo` alone opens the app; `tavlo COMMAND ...` is the command line, and
// `tavlo deliver-reminder IDENTIFIER` and `tavlo deliver-reminders` deliver
// reminders with the app closed; `tavlo register-wakeups` asks Plasma's power
// management to wake the phone for them.
int main(int argc, char *argv[])
{
    readSystemTimeZoneOnce();
    if (argc == 2 && std::strcmp(argv[1], "register-wakeups") == 0) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return registerWakeups();
    }
    if (argc > 1 && (std::strcmp(argv[1], "deliver-reminder") == 0 ||
                     std::strcmp(argv[1], "deliver-reminders") == 0)) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return deliverReminders(std::strcmp(argv[1], "deliver-reminder") == 0);
    }
    const bool screenshot = argc == 3 && std::strcmp(argv[1], "--screenshot") == 0;
    if (argc > 1 && !screenshot) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return runCommand();
    }

    // The birthdays are read while the window system comes up.
    FileSettingsStore::readAhead();
    QGuiApplication app(argc, argv);
    describeApplication();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavlo"));
    // Wayland shells match the window to its menu entry by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavlo.Tavlo"));
    AppDelegate::Options options;
    if (screenshot)
        options.screenshotPath = QString::fromLocal8Bit(argv[2]);
    options.traceStartup = qEnvironmentVariableIsSet("TAVLO_STARTUP_TRACE");
    const TerminationSignals termination;
    std::optional<EventLoopStalls> stalls;
    if (qEnvironmentVariableIsSet("TAVLO_STALL_TRACE"))
        stalls.emplace();
    return AppDelegate().run(app, options);
}
