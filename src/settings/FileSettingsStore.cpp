// SPDX-License-Identifier: MIT
#include "settings/FileSettingsStore.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Another process's batch takes milliseconds. Past this, one that is stuck
// (stopped in a debugger, say) must not freeze us: we go on without the lock.
constexpr std::chrono::seconds lockPatience{10};

} // namespace

FileSettingsStore::FileSettingsStore() : FileSettingsStore(defaultPath()) {}

FileSettingsStore::FileSettingsStore(QString filePath, AtomicFileWriter writer)
    : m_path(std::move(filePath)), m_writer(std::move(writer))
{
    reloadIfReplaced();
}

FileSettingsStore::~FileSettingsStore()
{
    if (m_lockHandle >= 0)
        ::close(m_lockHandle);
}

QString FileSettingsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tavlo/tavlo.conf");
}

void FileSettingsStore::refresh()
{
    if (!batching())
        reloadIfReplaced();
}

std::optional<FileSettingsStore::FileVersion> FileSettingsStore::currentVersion() const
{
    struct stat status;
    if (::stat(QFile::encodeName(m_path).constData(), &status) != 0)
        return std::nullopt;
    return FileVersion{quint64(status.st_dev), quint64(status.st_ino), qint64(status.st_size),
                       qint64(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec,
                       qint64(status.st_ctim.tv_sec) * 1000000000 + status.st_ctim.tv_nsec};
}

void FileSettingsStore::reloadIfReplaced()
{
    const std::optional<FileVersion> version = currentVersion();
    if (m_loaded && version == m_seen)
        return;
    QByteArray text;
    QFile file(m_path);
    if (version && file.open(QIODevice::ReadOnly))
        text = file.readAll();
    m_values = IniFormat::parse(text);
    for (auto it = m_unsaved.cbegin(); it != m_unsaved.cend(); ++it) {
        removeGroup(it.key());
        if (it.value())
            m_values.insert(it.key(), *it.value());
    }
    m_seen = version;
    if (m_loaded)
        noteChange();
    m_loaded = true;
}

// The lock is flock() on a file that stays: the kernel lets go of it when its
// holder ends, however it ends, so a process killed with it held leaves
// nothing to wait out or to clean up.
void FileSettingsStore::beginExclusive()
{
    const QString lockPath = lockFileName();
    QDir().mkpath(QFileInfo(lockPath).absolutePath());
    m_lockHandle =
        ::open(QFile::encodeName(lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    // A folder we cannot create files in cannot take the settings file
    // either; the write will say so.
    if (m_lockHandle >= 0) {
        const QDeadlineTimer deadline(lockPatience);
        unsigned long pause = 1;
        while (::flock(m_lockHandle, LOCK_EX | LOCK_NB) != 0) {
            if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired()) {
                qWarning("tavlo: %s is still locked; going on without it", qPrintable(lockPath));
                ::close(m_lockHandle);
                m_lockHandle = -1;
                break;
            }
            QThread::msleep(pause);
            pause = std::min(pause * 2, 4ul);
        }
    }
    reloadIfReplaced();
}

void FileSettingsStore::endExclusive()
{
    if (m_lockHandle >= 0) {
        ::close(m_lockHandle);
        m_lockHandle = -1;
    }
}

WriteResult FileSettingsStore::flush()
{
    if (m_unsaved.isEmpty())
        return {};
    const WriteResult result = m_writer.write(m_path, IniFormat::serialize(m_values));
    if (result) {
        m_unsaved.clear();
        m_seen = currentVersion();
    }
    return result;
}

QVariant FileSettingsStore::read(const QString &key) const
{
    return m_values.value(key);
}

// A key's value and the group of the same name: a list written by an
// earlier version as separate entries goes with it.
void FileSettingsStore::removeGroup(const QString &key)
{
    m_values.remove(key);
    const QString prefix = key + u'/';
    auto it = m_values.lowerBound(prefix);
    while (it != m_values.end() && it.key().startsWith(prefix))
        it = m_values.erase(it);
}

void FileSettingsStore::write(const QString &key, const QVariant &value)
{
    removeGroup(key);
    m_values.insert(key, value);
    m_unsaved.insert(key, value);
}

void FileSettingsStore::erase(const QString &key)
{
    removeGroup(key);
    m_unsaved.insert(key, std::nullopt);
}
