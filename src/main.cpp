// SPDX-License-Identifier: MIT
#include "CommandLineProcess.h"
#include "app/AppStartup.h"
#include "app/EventLoopStalls.h"
#include "platform/linux/ReminderCommands.h"
#include "platform/linux/TerminationSignals.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
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

void describeApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("tavlo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVLO_VERSION));
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
        return ReminderCommands::registerWakeups();
    }
    if (argc > 1 && (std::strcmp(argv[1], "deliver-reminder") == 0 ||
                     std::strcmp(argv[1], "deliver-reminders") == 0)) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return ReminderCommands::deliver(QCoreApplication::arguments());
    }
    const bool screenshot = argc == 3 && std::strcmp(argv[1], "--screenshot") == 0;
    if (argc > 1 && !screenshot) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return runCommandLineProcess();
    }

    // The birthdays are read while the window system comes up.
    FileSettingsStore::readAhead();
    QGuiApplication app(argc, argv);
    describeApplication();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavlo"));
    // Wayland shells match the window to its menu entry by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavlo.Tavlo"));
    AppStartup::Options options;
    if (screenshot)
        options.screenshotPath = QString::fromLocal8Bit(argv[2]);
    options.traceStartup = qEnvironmentVariableIsSet("TAVLO_STARTUP_TRACE");
    const TerminationSignals termination;
    std::optional<EventLoopStalls> stalls;
    if (qEnvironmentVariableIsSet("TAVLO_STALL_TRACE"))
        stalls.emplace();
    return AppStartup().run(app, options);
}
