// SPDX-License-Identifier: MIT
#pragma once

#include "core/DebugLog.h"

#include <QStringList>

// The diagnostic lines written while it lives; the sink before it comes back
// after.
class CapturedLog
{
public:
    CapturedLog()
        : m_previous(DebugLog::setSink([this](const QString &line) { lines.append(line); }))
    {}
    ~CapturedLog() { DebugLog::setSink(m_previous); }
    CapturedLog(const CapturedLog &) = delete;
    CapturedLog &operator=(const CapturedLog &) = delete;
    QStringList lines;

private:
    DebugLog::Sink m_previous;
};
