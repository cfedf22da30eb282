#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/QSettingsStore.h"

#include <QCoreApplication>
#include <QLocale>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tavlo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVLO_VERSION));

    QSettingsStore settings;
    SystemClock clock;
    QTextStream out(stdout);
    QTextStream err(stderr);
    CommandContext context{settings, QLocale::system().uiLanguages(), clock, out, err};
    return runCommandLine(QCoreApplication::arguments(), context);
}
