#pragma once

#include "CommandLine.h"

// `tavlo reminders [--now DATETIME] [--json]`
//
// Prints the reminders that the app would schedule at that moment for the
// saved favorites. Reads the settings store, never writes it, and schedules
// nothing.
class RemindersCommand
{
public:
    explicit RemindersCommand(CommandContext &context) : m_context(context) {}

    // arguments[0] is "reminders".
    int run(const QStringList &arguments);

private:
    int fail(const QString &message);

    CommandContext &m_context;
};
