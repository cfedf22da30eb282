// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

class FavoritesStore;
class UiStrings;

// `tavlo reminders [--now DATETIME] [--json]`
//
// Prints the reminders that the app would schedule at that moment for the
// saved favorites. Reads the settings store, never writes it, and schedules
// nothing.
//
// `tavlo reminders schedule` schedules them now through the platform's
// notification centre, as the app does at its start, and prints them.
class RemindersCommand
{
public:
    explicit RemindersCommand(CommandContext &context) : m_context(context) {}

    // arguments[0] is "reminders".
    int run(const QStringList &arguments);

private:
    int fail(const QString &message);
    int scheduleNow(const FavoritesStore &favorites, const UiStrings &strings);

    CommandContext &m_context;
};
