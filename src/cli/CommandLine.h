// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandContext.h"

#include <QStringList>

// Runs `tavlo <command> ...`; arguments[0] is the program name. Returns the
// exit status.
int runCommandLine(const QStringList &arguments, CommandContext &context);
