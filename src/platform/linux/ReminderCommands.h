// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// What runs with the app closed, each a process of its own.
namespace ReminderCommands {

// `tavlo deliver-reminder IDENTIFIER`: what a reminder's systemd timer runs.
// `tavlo deliver-reminders`: what the autostart entry runs where there is no
// systemd. Both stay to open Tavlo when the person taps what they showed.
// `arguments` are the process's; returns the exit status.
int deliver(const QStringList &arguments);

// `tavlo register-wakeups`: what Plasma starts at login, when its power
// management has forgotten the wake-ups of the session before. Waits a
// while for the service to come up.
int registerWakeups();

} // namespace ReminderCommands
