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

QString oneLine(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\n')
            result += QStringLiteral("\\n");
        else if (u == u'\r')
            result += QStringLiteral("\\r");
        else if (u == u'\t')
            result += QStringLiteral("\\t");
        else if (u < 0x20 || (u >= 0x7F && u < 0xA0) || u == 0x2028 || u == 0x2029)
            result +=
                QStringLiteral("\\u") + QString::number(u, 16).toUpper().rightJustified(4, u'0');
        else
            result += c;
    }
    return result;
}

void fatalError(const QString &what)
{
    const QByteArray line = "tavlo: fatal: " + oneLine(what).toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
    std::fflush(stderr);
    // Nothing else runs on the way out: no destructor that might write.
    if (g_exitStatus >= 0)
        std::_Exit(g_exitStatus);
    std::abort();
}
