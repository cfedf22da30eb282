// SPDX-License-Identifier: MIT
#include "settings/AtomicFileWriter.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <cstring>
#include <mutex>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
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

#ifdef Q_OS_UNIX
// Makes a rename or removal in `folder` durable: without this a power cut
// can bring back the old entry even though we reported the change stored.
int syncFolder(const QString &folder)
{
    const int handle =
        ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return lastError();
    const int error = ::fsync(handle) == 0 ? 0 : lastError();
    ::close(handle);
    return error;
}
#endif

#ifdef Q_OS_UNIX
// QSaveFile creates the temporary file of a new file as the umask allows
// (often readable by everyone) and only then could it be narrowed: a reader
// that opened it in between would see what is written later. While an
// owner-only file is opened the umask lets nothing through to others. The
// umask belongs to the whole process, so writers take turns here; other
// threads can only find their files created narrower for that moment.
std::mutex umaskTurns;

bool openOwnerOnly(QSaveFile &file)
{
    const std::lock_guard turn(umaskTurns);
    const mode_t before = ::umask(077);
    const bool opened = file.open(QIODevice::WriteOnly);
    const int error = errno;
    ::umask(before);
    errno = error;
    return opened;
}
#endif

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
#ifdef Q_OS_UNIX
    const bool opened =
        m_access == Access::OwnerOnly ? openOwnerOnly(file) : file.open(QIODevice::WriteOnly);
#else
    const bool opened = file.open(QIODevice::WriteOnly);
#endif
    if (!opened)
        return errno != 0 ? failed(errno) : WriteResult::failed(path, file.errorString());
#ifdef Q_OS_UNIX
    // QSaveFile gave the new file the old one's permissions; ours are fixed.
    if (m_access == Access::OwnerOnly && ::fchmod(file.handle(), S_IRUSR | S_IWUSR) != 0)
        return failed(lastError());
#endif

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

    if (int fault = injectedFault(Step::SyncFolder))
        return failed(fault);
#ifdef Q_OS_UNIX
    if (const int error = syncFolder(folder))
        return failed(error);
#endif
    return {};
}

WriteResult AtomicFileWriter::remove(const QString &path)
{
#ifdef Q_OS_UNIX
    if (::unlink(QFile::encodeName(path).constData()) != 0) {
        if (errno == ENOENT)
            return {};
        return WriteResult::failed(path, systemReason(errno));
    }
    if (const int error = syncFolder(QFileInfo(path).absolutePath()))
        return WriteResult::failed(path, systemReason(error));
#else
    if (QFile::exists(path) && !QFile::remove(path))
        return WriteResult::failed(path, QStringLiteral("cannot remove"));
#endif
    return {};
}
