// SPDX-License-Identifier: MIT
#pragma once

#include "settings/WriteResult.h"

#include <QByteArray>
#include <QString>
#include <functional>

// Replaces a file only with a complete new version: the new contents go to a
// temporary file beside it, every write and the flush are checked, the file is
// synced to disk, renamed over the old one, and the folder is synced so that
// the rename itself survives a power cut. If any step fails, the old file
// stays exactly as it was, the temporary file is removed, and the result says
// which file failed and why.
class AtomicFileWriter
{
public:
    // The steps a write goes through, in order.
    enum class Step { Open, Write, Flush, Sync, Rename, SyncFolder };

    // Lets tests make a step fail as the system would: return an errno value
    // (ENOSPC, EACCES, EIO, ...) to fail `step` with, or 0 to let it run.
    using FaultHook = std::function<int(Step step)>;

    AtomicFileWriter() = default;
    explicit AtomicFileWriter(FaultHook faults) : m_faults(std::move(faults)) {}

    // Creates the file's folder when it is missing.
    WriteResult write(const QString &path, const QByteArray &contents) const;

private:
    int injectedFault(Step step) const { return m_faults ? m_faults(step) : 0; }

    FaultHook m_faults;
};
