#include "AppDelegate.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/QSettingsStore.h"

#include <QCoreApplication>
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
    CommandContext context{settings, QLocale::system().uiLanguages(), clock, out, err};
    return runCommandLine(QCoreApplication::arguments(), context);
}

} // namespace

// `tavlo` alone opens the app; `tavlo COMMAND ...` is the command line.
int main(int argc, char *argv[])
{
    const bool screenshot = argc == 3 && std::strcmp(argv[1], "--screenshot") == 0;
    if (argc > 1 && !screenshot) {
        QCoreApplication app(argc, argv);
        describeApplication();
        return runCommand();
    }

    QGuiApplication app(argc, argv);
    describeApplication();
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tavlo"));
    AppDelegate::Options options;
    if (screenshot)
        options.screenshotPath = QString::fromLocal8Bit(argv[2]);
    options.traceStartup = qEnvironmentVariableIsSet("TAVLO_STARTUP_TRACE");
    return AppDelegate().run(app, options);
}
