// SPDX-License-Identifier: MIT
#include "settings/AtomicFileWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstring>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

QString systemReason(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

// The errno of the step that just failed, or a general one where the system
// left none behind (Qt reports some failures without setting it).
int lastError(int fallback = EIO)
{
    return errno != 0 ? errno : fallback;
}

} // namespace

WriteResult AtomicFileWriter::write(const QString &path, const QByteArray &contents) const
{
    const auto failed = [&](int error) { return WriteResult::failed(path, systemReason(error)); };

    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder))
        return failed(lastError(EACCES));

    // QSaveFile writes to a temporary file in the same folder and renames it
    // over the old one on commit(); it removes the temporary file when it is
    // destroyed without a commit. Its own commit() does not notice a flush
    // that fails on a full disk, so every step is checked here first.
    QSaveFile file(path);
    errno = 0;
    if (int fault = injectedFault(Step::Open))
        return failed(fault);
    // QSaveFile refuses to replace a file we may not write, without an errno.
    const QFileInfo existing(path);
    if (existing.exists() && !existing.isWritable())
        return failed(EACCES);
    if (!file.open(QIODevice::WriteOnly))
        return errno != 0 ? failed(errno) : WriteResult::failed(path, file.errorString());

    errno = 0;
    if (int fault = injectedFault(Step::Write)) {
        // As a full disk leaves it: part of the contents written.
        file.write(contents.first(contents.size() / 2));
        return failed(fault);
    }
    if (file.write(contents) != contents.size())
        return failed(lastError(ENOSPC));

    errno = 0;
    if (int fault = injectedFault(Step::Flush))
        return failed(fault);
    if (!file.flush())
        return failed(lastError(ENOSPC));

    errno = 0;
    if (int fault = injectedFault(Step::Sync))
        return failed(fault);
#ifdef Q_OS_UNIX
    if (::fsync(file.handle()) != 0)
        return failed(lastError());
#endif

    errno = 0;
    if (int fault = injectedFault(Step::Rename)) {
        file.cancelWriting();
        file.commit();
        return failed(fault);
    }
    if (!file.commit())
        return WriteResult::failed(path, file.errorString());

    // The rename is in the folder's entries; without this a power cut can
    // bring back the old file even though we reported the new one stored.
    if (int fault = injectedFault(Step::SyncFolder))
        return failed(fault);
#ifdef Q_OS_UNIX
    const int folderHandle =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folderHandle < 0)
        return failed(lastError());
    const bool synced = ::fsync(folderHandle) == 0;
    const int syncError = errno;
    ::close(folderHandle);
    if (!synced)
        return failed(syncError);
#endif
    return {};
}
