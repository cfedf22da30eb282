#pragma once

#include "CommandRunner.h"
#include "LinuxNotificationCenter.h"
#include "main/ReminderStore.h"

#include <memory>

class Clock;

// The reminders' services on this machine, set up in one place for the app
// and for the commands: the pending reminders file in $XDG_DATA_HOME, the
// session bus, Tavlo's icon beside the file, and the systemd user timers
// where a user manager runs.
class LinuxReminders
{
public:
    // `withIcon` puts the icon in place; a screenshot run leaves files alone.
    LinuxReminders(const Clock &clock, bool withIcon = true);

    ReminderStore store;
    ProcessRunner processes;
    QString iconPath;
    LinuxNotificationCenter center;
    DBusNotifier notifier;

private:
    static LinuxNotificationCenter::Options options(CommandRunner &processes,
                                                    const QString &iconPath);
};
