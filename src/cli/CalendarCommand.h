// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

// `tavlo calendar export FILE.ics [--lang en|de|ru]`: the favorites as an
// iCalendar of yearly all-day birthdays, for calendar apps.
class CalendarCommand
{
public:
    explicit CalendarCommand(CommandContext &context) : m_context(context) {}

    // arguments[0] is "calendar".
    int run(const QStringList &arguments);

private:
    int fail(const QString &message);

    CommandContext &m_context;
};
