// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Stops the program after one line on standard error that names what was
// malformed. Used only where going on would show or store wrong data.
[[noreturn]] void fatalError(const QString &what);

// How fatalError() stops: the app aborts, the command line ends with this
// exit status, as it does for any other bad input.
void setFatalExitStatus(int status);

// `text` made safe for a one-line message: line breaks and the other control
// characters (an argument or a stored name may hold any) written as escapes,
// "\n", "\r", "\t" or "\u001B".
QString oneLine(const QString &text);
