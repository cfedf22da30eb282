// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// `text` made safe for one line of a terminal or a message: line breaks and
// the other control characters (a stored name or an argument may hold any,
// and a terminal would act on an escape sequence) written as escapes, "\n",
// "\r", "\t" or "\u001B". Every name the command line prints goes through
// here.
QString oneLine(const QString &text);

// `text` as one line of the interface: each run of line breaks (line feed,
// carriage return, vertical tab, form feed, next line, line and paragraph
// separators) becomes one blank. A name typed or imported with a line break
// then stays inside its sentence and on its card's one line; tabs and every
// other character stay as they are.
QString shownOnOneLine(const QString &text);
