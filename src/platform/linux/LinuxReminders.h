// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/CommandRunner.h"
#include "platform/linux/DBusNotifier.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/ReminderWakeups.h"
#include "reminders/ReminderStore.h"

#include <functional>
#include <memory>

class Clock;
class PowerWakeups;

// The reminders' services on this machine, set up in one place for the app
// and for the commands: the pending reminders file in $XDG_DATA_HOME, the
// session bus, Tavlo's icon beside the file, and the wake-ups: persistent
// systemd user timers where systemd runs the machine, otherwise the
// autostart entry; and with either, Plasma's power management to wake a
// suspended phone for them.
class LinuxReminders
{
public:
    // `withIcon` puts the icon in place; a screenshot run leaves files alone.
    // `inFront` tells whether Tavlo's window is active; none for a command.
    explicit LinuxReminders(const Clock &clock, bool withIcon = true,
                            std::function<bool()> inFront = {});
    ~LinuxReminders();

    // Whether this login has a systemd user manager to tell of new timers.
    static bool hasSystemdUserManager();
    // Whether systemd runs the machine, and so starts user timers at login.
    static bool bootedWithSystemd();

    const Clock &clock;
    ReminderStore store;
    ProcessRunner processes;
    QString iconPath;
    // Part of `wakeups`.
    PowerWakeups *power = nullptr;
    std::unique_ptr<ReminderWakeups> wakeups;
    LinuxNotificationCenter center;
    // For the commands, which show reminders without the centre.
    DBusNotifier notifier;

private:
    LinuxNotificationCenter::Options options(std::function<bool()> inFront);
};
