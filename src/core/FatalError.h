// SPDX-License-Identifier: MIT
#pragma once

#include "core/OneLine.h"

#include <QString>

// Stops the program after one line on standard error that names what was
// malformed. Used only where going on would show or store wrong data.
[[noreturn]] void fatalError(const QString &what);

// How fatalError() stops: the app aborts, the command line ends with this
// exit status, as it does for any other bad input.
void setFatalExitStatus(int status);
