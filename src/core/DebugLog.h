// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// Tavlo's short diagnostic lines ("NOT", "color = 3", ...). They go to standard
// output unless a sink has been set, as tests do to read them.
namespace DebugLog {

using Sink = std::function<void(const QString &line)>;

void line(const QString &text);
// Several lines written at once.
void lines(const QStringList &texts);

// Replaces the sink and returns the previous one; an empty sink means
// standard output.
Sink setSink(Sink sink);

} // namespace DebugLog
