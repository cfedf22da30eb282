#include "AppDelegate.h"
#include "LinuxNotificationCenter.h"
#include "cli/CommandLine.h"
#include "contacts/BirthdayCalendar.h"
#include "contacts/EvolutionAddressBooks.h"
#include "core/Clock.h"
#include "settings/QSettingsStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QtQml/qqmlextensionplugin.h>
#include <cstring>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

namespace {

void describeApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("tavlo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVLO_VERSION));
}

int runCommand()
{
    QSettingsStore settings;
    SystemClock clock;
    QTextStream out(stdout);
    QTextStream err(stderr);
    CommandContext context{settings, QLocale::system().uiLanguages(), clock, out,
                           err,      EvolutionAddressBooks::readAll};
    // A change made here updates the birthdays calendar as the app would.
    BirthdayCalendar calendar(settings, context.preferredLanguages, clock);
    FavoritesStore::setChangeListener([&](const QList<Favorite> &list) {
        if (const QString problem = calendar.update(list); !problem.isEmpty())
            err << "tavlo: " << problem << '\n';
    });
    return runCommandLine(QCoreApplication::arguments(), context);
}

// `tavlo deliver-reminder IDENTIFIER`: what a reminder's systemd timer runs.
int deliverReminder()
{
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3 || arguments.at(2).isEmpty() || arguments.at(2).startsWith(u'-')) {
        QTextStream(stderr) << "tavlo deliver-reminder: expected one IDENTIFIER, as a reminder's "
                               "timer gives it\n";
        return ExitStatus::usage;
    }
    ReminderStore store;
    SystemClock clock;
    const QString icon =
        LinuxNotificationCenter::installIcon(QFileInfo(store.filePath()).absolutePath());
    return LinuxNotificationCenter::deliverFromTimer(arguments.at(2), store, clock,
                                                     QDBusConnection::sessionBus(), icon);
}

} // namespace

// `tavlo` alone opens the app; `tavlo COMMAND ...` is the command line, and
// `tavlo deliver-reminder IDENTIFIER` is what a reminder's timer runs.
int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], "deliver-reminder") == 0) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return deliverReminder();
    }
    const bool screenshot = argc == 3 && std::strcmp(argv[1], "--screenshot") == 0;
    if (argc > 1 && !screenshot) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return runCommand();
    }

    QGuiApplication app(argc, argv);
    describeApplication();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavlo"));
    // Wayland shells match the window to its menu entry by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.tavlo.Tavlo"));
    AppDelegate::Options options;
    if (screenshot)
        options.screenshotPath = QString::fromLocal8Bit(argv[2]);
    options.traceStartup = qEnvironmentVariableIsSet("TAVLO_STARTUP_TRACE");
    return AppDelegate().run(app, options);
}
