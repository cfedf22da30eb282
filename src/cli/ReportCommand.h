// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

// `tavlo report [--now DATETIME] [--lang en|de|ru] [--details | --short]
//               [--name NAME] [--json] BIRTH...`
//
// Prints the age report of each birth date, computed in order in one run, so
// that a lookup that finds nothing carries the value of the date before, as
// on the main screen. Reads the settings store, never writes it.
class ReportCommand
{
public:
    explicit ReportCommand(CommandContext &context) : m_context(context) {}

    // arguments[0] is "report".
    int run(const QStringList &arguments);

private:
    int fail(const QString &message);

    CommandContext &m_context;
};
