// SPDX-License-Identifier: MIT
#include "core/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace {

// Below 0: abort.
int g_exitStatus = -1;

} // namespace

void setFatalExitStatus(int status)
{
    g_exitStatus = status;
}

void fatalError(const QString &what)
{
    // On the command line stored data that cannot be read is bad input like
    // any other: said in plain words, without a word of alarm.
    const QByteArray prefix = g_exitStatus >= 0 ? "tavlo: " : "tavlo: fatal: ";
    const QByteArray line = prefix + oneLine(what).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fflush(stderr);
    // Nothing else runs on the way out: no destructor that might write.
    if (g_exitStatus >= 0)
        std::_Exit(g_exitStatus);
    std::abort();
}
