#pragma once

#include <QStringList>
#include <QTextStream>
#include <functional>

class Clock;
class NotificationCenter;
class SettingsStore;

// What a command works with; the process entry passes the real ones, tests
// their own.
struct CommandContext
{
    SettingsStore &settings;
    // The device's preferred languages, most preferred first.
    QStringList preferredLanguages;
    const Clock &clock;
    QTextStream &out;
    QTextStream &err;
    // The platform's notification centre, for `reminders schedule`, made on
    // first use (the other commands leave the platform alone); none where
    // reminders cannot be scheduled.
    std::function<NotificationCenter *()> notifications;
    // Runs `done` once the centre's platform commands have ended.
    std::function<void(std::function<void()> done)> whenNotificationsIdle;
};

// Exit statuses of the command line.
namespace ExitStatus {
inline constexpr int ok = 0;
inline constexpr int usage = 2;
} // namespace ExitStatus

// Ends a command with one line on standard error ("tavlo <command>: <message>",
// control characters escaped) and the usage status.
int failCommand(CommandContext &context, const char *command, const QString &message);

// Runs `tavlo <command> ...`; arguments[0] is the program name. Returns the
// exit status.
int runCommandLine(const QStringList &arguments, CommandContext &context);
