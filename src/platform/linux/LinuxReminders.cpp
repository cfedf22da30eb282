#include "LinuxReminders.h"

#include "DeliveryCommand.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

LinuxReminders::LinuxReminders(const Clock &clock, bool withIcon)
    : iconPath(withIcon ? DeliveryCommand::installIcon(QFileInfo(store.filePath()).absolutePath())
                        : QString()),
      center(store, clock, options(processes, iconPath)),
      notifier(QDBusConnection::sessionBus(), iconPath)
{}

LinuxNotificationCenter::Options LinuxReminders::options(CommandRunner &processes,
                                                         const QString &iconPath)
{
    LinuxNotificationCenter::Options options;
    if (LinuxNotificationCenter::hasSystemdUserSession())
        options.timers = &processes;
    options.program = QCoreApplication::applicationFilePath();
    if (qEnvironmentVariableIsSet("XDG_DATA_HOME"))
        options.timerEnvironment = {u"XDG_DATA_HOME="_s + qEnvironmentVariable("XDG_DATA_HOME")};
    options.iconPath = iconPath;
    return options;
}
