// SPDX-License-Identifier: MIT
#include "sync/SyncLock.h"

#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

std::unique_ptr<SyncLock> SyncLock::tryTake(const QString &path, Outcome *outcome)
{
    const int handle =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (handle < 0) {
        *outcome = Outcome::Failed;
        return nullptr;
    }
    int taken = 0;
    do {
        taken = ::flock(handle, LOCK_EX | LOCK_NB);
    } while (taken != 0 && errno == EINTR);
    if (taken != 0) {
        *outcome = errno == EWOULDBLOCK ? Outcome::Held : Outcome::Failed;
        ::close(handle);
        return nullptr;
    }
    *outcome = Outcome::Taken;
    return std::unique_ptr<SyncLock>(new SyncLock(handle));
}

SyncLock::~SyncLock()
{
    ::close(m_handle);
}
