#pragma once

#include <QString>

// Stops the program after one line on standard error that names what was
// malformed. Used only where going on would show or store wrong data.
[[noreturn]] void fatalError(const QString &what);
