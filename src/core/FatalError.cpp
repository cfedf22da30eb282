#include "FatalError.h"

#include <cstdio>
#include <cstdlib>

void fatalError(const QString &what)
{
    const QByteArray line = "tavlo: fatal: " + what.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fflush(stderr);
    std::abort();
}
