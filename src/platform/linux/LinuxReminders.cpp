// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxReminders.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/SystemdTimers.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

// What the delivery needs to find the same files as the app.
QStringList inheritedEnvironment()
{
    QStringList environment;
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
        if (qEnvironmentVariableIsSet(name))
            environment.append(QString::fromLatin1(name) + u'=' + qEnvironmentVariable(name));
    }
    return environment;
}

std::unique_ptr<ReminderWakeups> makeWakeups(const ReminderStore &store, CommandRunner &processes)
{
    const QString program = QCoreApplication::applicationFilePath();
    if (LinuxReminders::bootedWithSystemd()) {
        return std::make_unique<SystemdTimers>(
            SystemdTimers::defaultUnitFolder(), program, inheritedEnvironment(),
            LinuxReminders::hasSystemdUserManager() ? &processes : nullptr);
    }
    return std::make_unique<AutostartEntry>(AutostartEntry::defaultFolder(), program,
                                            inheritedEnvironment(),
                                            DeliveryCommand::backgroundLockPath(store), &processes);
}

} // namespace

LinuxReminders::LinuxReminders(const Clock &clock, bool withIcon, std::function<bool()> inFront)
    : clock(clock),
      iconPath(withIcon ? DeliveryCommand::installIcon(QFileInfo(store.filePath()).absolutePath())
                        : QString()),
      wakeups(makeWakeups(store, processes)), center(store, clock, options(std::move(inFront))),
      notifier(QDBusConnection::sessionBus(), iconPath)
{}

LinuxReminders::~LinuxReminders() = default;

bool LinuxReminders::bootedWithSystemd()
{
    return QFileInfo(u"/run/systemd/system"_s).isDir();
}

bool LinuxReminders::hasSystemdUserManager()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return bootedWithSystemd() && !runtime.isEmpty() &&
           QFileInfo::exists(runtime + u"/systemd/private"_s);
}

LinuxNotificationCenter::Options LinuxReminders::options(std::function<bool()> inFront)
{
    LinuxNotificationCenter::Options options;
    options.iconPath = iconPath;
    options.wakeups = wakeups.get();
    options.inFront = std::move(inFront);
    return options;
}
