// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

// What keeps two syncs of the same favorites apart, the app's and the
// command line's: flock() on a file beside the sync state, which stays.
// The kernel lets go of it when its holder ends, however it ends, so a
// sync killed at any moment leaves nothing behind that holds the next one
// up (a lock file that names its process can be left empty, or name a
// process number that another process has since).
class SyncLock
{
public:
    enum class Outcome { Taken, Held, Failed };

    // The lock on `path`, or nothing, and why.
    static std::unique_ptr<SyncLock> tryTake(const QString &path, Outcome *outcome);

    ~SyncLock();
    SyncLock(const SyncLock &) = delete;
    SyncLock &operator=(const SyncLock &) = delete;

private:
    explicit SyncLock(int handle) : m_handle(handle) {}

    int m_handle;
};
