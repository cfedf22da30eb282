// SPDX-License-Identifier: MIT
#include "cli/OutputTarget.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// As many links in a row as the kernel follows.
constexpr int mostLinks = 40;

QString kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return u"it is a folder, not a file"_s;
    if (S_ISFIFO(mode))
        return u"it is a named pipe (FIFO), not a regular file"_s;
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return u"it is a device, not a regular file"_s;
    if (S_ISSOCK(mode))
        return u"it is a socket, not a regular file"_s;
    return u"it is not a regular file"_s;
}

// The kernel's rule for links in shared folders (fs.protected_symlinks).
bool followable(const struct stat &link, const QString &folder)
{
    struct stat shared
    {};
    if (::stat(QFile::encodeName(folder).constData(), &shared) != 0)
        return true;
    const bool stickyAndOpen = (shared.st_mode & S_ISVTX) && (shared.st_mode & S_IWOTH);
    return !stickyAndOpen || link.st_uid == ::geteuid() || link.st_uid == shared.st_uid;
}

} // namespace

OutputTarget OutputTarget::of(const QString &path)
{
    OutputTarget target;
    QString current = path;
    for (int links = 0; links <= mostLinks; ++links) {
        struct stat entry
        {};
        // Nothing there yet, or a path the writer will fail on with its own
        // words (a missing folder is made, a file as folder is refused).
        if (::lstat(QFile::encodeName(current).constData(), &entry) != 0 ||
            S_ISREG(entry.st_mode)) {
            target.m_filePath = current;
            return target;
        }
        if (!S_ISLNK(entry.st_mode)) {
            target.m_refusal = kindOf(entry.st_mode);
            return target;
        }
        const QString folder = QFileInfo(current).absolutePath();
        if (!followable(entry, folder)) {
            target.m_refusal = u"it is a link in a shared folder that belongs to someone "
                               "else; it is not followed"_s;
            return target;
        }
        // The link as written: relative to its own folder, not resolved further.
        const QByteArray link = [&] {
            QByteArray buffer(4096, '\0');
            const ssize_t length = ::readlink(QFile::encodeName(current).constData(), buffer.data(),
                                              size_t(buffer.size()));
            return length < 0 ? QByteArray() : buffer.first(length);
        }();
        if (link.isEmpty()) {
            target.m_filePath = current;
            return target;
        }
        const QString written = QFile::decodeName(link);
        current = written.startsWith(u'/') ? written : folder + u'/' + written;
    }
    target.m_refusal = u"too many symbolic links"_s;
    return target;
}
