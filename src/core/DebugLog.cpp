// SPDX-License-Identifier: MIT
#include "core/DebugLog.h"

#include <cstdio>

namespace {
DebugLog::Sink &currentSink()
{
    static DebugLog::Sink sink;
    return sink;
}
} // namespace

void DebugLog::line(const QString &text)
{
    if (const Sink &sink = currentSink()) {
        sink(text);
        return;
    }
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

void DebugLog::lines(const QStringList &texts)
{
    if (texts.isEmpty())
        return;
    if (const Sink &sink = currentSink()) {
        for (const QString &text : texts)
            sink(text);
        return;
    }
    const QByteArray bytes = texts.join(u'\n').toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

DebugLog::Sink DebugLog::setSink(Sink sink)
{
    return std::exchange(currentSink(), std::move(sink));
}
