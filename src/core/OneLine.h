// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// `text` made safe for one line of a terminal or a message: line breaks and
// the other control characters (a stored name or an argument may hold any,
// and a terminal would act on an escape sequence) written as escapes, "\n",
// "\r", "\t" or "\u001B". Every name the command line prints goes through
// here.
QString oneLine(const QString &text);
