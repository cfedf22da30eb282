// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxReminders.h"

#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DeliveryCommand.h"
#include "platform/linux/NotificationIcon.h"
#include "platform/linux/PowerWakeups.h"
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

std::unique_ptr<ReminderWakeups> makeDelivery(const ReminderStore &store, CommandRunner &processes)
{
    const QString program = QCoreApplication::applicationFilePath();
    if (LinuxReminders::bootedWithSystemd()) {
        auto timers = std::make_unique<SystemdTimers>(
            SystemdTimers::defaultUnitFolder(), program, inheritedEnvironment(),
            LinuxReminders::hasSystemdUserManager() ? &processes : nullptr);
        timers->setWakeSystem(SystemdTimers::wakeSystemAllowed(SystemdTimers::installedVersion()));
        return timers;
    }
    return std::make_unique<AutostartEntry>(AutostartEntry::defaultFolder(), program,
                                            inheritedEnvironment(),
                                            DeliveryCommand::backgroundLockPath(store), &processes);
}

// The delivery, and Plasma's power management to wake the phone for it.
std::unique_ptr<ReminderWakeups> makeWakeups(const ReminderStore &store, CommandRunner &processes,
                                             const Clock &clock, PowerWakeups *&power)
{
    auto all = std::make_unique<AllWakeups>();
    all->add(makeDelivery(store, processes));
    auto wakeups = std::make_unique<PowerWakeups>(QDBusConnection::sessionBus(), clock,
                                                  PowerWakeups::statePathBeside(store.filePath()));
    // Plasma's session starts its power management afresh at each login.
    const QString program = QCoreApplication::applicationFilePath();
    if (AutostartEntry::carries(inheritedEnvironment() + QStringList{program})) {
        wakeups->setLoginEntry(AutostartEntry::defaultFolder() +
                                   u"/io.github.tavlo.Tavlo-wakeups.desktop"_s,
                               AutostartEntry::entryFor(program, inheritedEnvironment(),
                                                        {u"register-wakeups"_s}, u"KDE"_s));
    }
    power = wakeups.get();
    all->add(std::move(wakeups));
    return all;
}

} // namespace

LinuxReminders::LinuxReminders(const Clock &clock, bool withIcon, std::function<bool()> inFront)
    : clock(clock),
      iconPath(withIcon ? NotificationIcon::install(QFileInfo(store.filePath()).absolutePath())
                        : QString()),
      wakeups(makeWakeups(store, processes, clock, power)),
      center(store, clock, options(std::move(inFront))),
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
