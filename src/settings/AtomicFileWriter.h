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

    // Who may read the file written.
    enum class Access {
        // Only its owner (0600), whatever the umask: Tavlo's own files hold
        // names and birth dates. An older file of other permissions gets
        // these too.
        OwnerOnly,
        // As the umask allows for a new file; an existing file keeps its
        // permissions. For files the person names, such as exports.
        FollowUmask,
    };

    AtomicFileWriter() = default;
    explicit AtomicFileWriter(Access access) : m_access(access) {}
    explicit AtomicFileWriter(FaultHook faults, Access access = Access::OwnerOnly)
        : m_faults(std::move(faults)), m_access(access)
    {}

    // Creates the file's folder when it is missing.
    WriteResult write(const QString &path, const QByteArray &contents) const;
    // Removes the file so that the removal survives a power cut (the folder
    // is synced); a file that is not there is removed already.
    static WriteResult remove(const QString &path);

private:
    int injectedFault(Step step) const { return m_faults ? m_faults(step) : 0; }

    FaultHook m_faults;
    Access m_access = Access::OwnerOnly;
};
