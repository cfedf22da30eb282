#include "QSettingsStore.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString sizeKey = QStringLiteral("size");

// Another process's batch takes milliseconds. Past this, one that is stuck
// (stopped in a debugger, say) must not freeze us: we go on without the lock.
constexpr std::chrono::seconds lockPatience{10};

QDateTime modificationTime(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? info.lastModified().toUTC() : QDateTime();
}

// Gives the file a modification time later than `earlier` if it has none,
// to the millisecond, the resolution QSettings compares at.
void keepModifiedAfter(const QString &path, const QDateTime &earlier)
{
    const QDateTime modified = modificationTime(path);
    if (!modified.isValid() || modified > earlier)
        return;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        file.setFileTime(earlier.addMSecs(1), QFileDevice::FileModificationTime);
}

QString entryKey(const QString &list, qsizetype index)
{
    return list + u'/' + QString::number(index + 1);
}

} // namespace

QSettingsStore::QSettingsStore()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("tavlo"),
                 QStringLiteral("tavlo"))
{}

QSettingsStore::QSettingsStore(const QString &iniFilePath)
    : m_settings(iniFilePath, QSettings::IniFormat)
{}

QSettingsStore::~QSettingsStore() = default;

void QSettingsStore::refresh()
{
    if (!batching())
        m_settings.sync();
}

// The lock is flock() on a file that stays: the kernel lets go of it when its
// holder ends, however it ends, so a process killed with it held leaves
// nothing to wait out or to clean up.
void QSettingsStore::beginExclusive()
{
    const QString lockPath = lockFileName();
    QDir().mkpath(QFileInfo(lockPath).absolutePath());
    m_lockHandle =
        ::open(QFile::encodeName(lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    // A folder we cannot create files in cannot take the settings file either.
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
    if (m_lockHandle >= 0) {
        // QSettings takes a lock file of its own while it writes, and waits
        // 30 seconds before it counts one as stale. A writer killed inside
        // QSettings' sync() leaves it behind; no writer of ours is inside
        // sync() while we hold our lock, so one found now is left over.
        QFile::remove(fileName() + QStringLiteral(".lock"));
    }
    // QSettings reads a file again only when its size or modification time
    // (to the millisecond) differs from what it noted at its last read. That
    // note can be wrong: a read while another process replaced the file can
    // note the new file's size and time beside the old contents, and two
    // writes of the same size within one step of the file clock (a few
    // milliseconds) look alike. So unless the file is exactly the one we left
    // when we last held the lock, its time is moved on, and QSettings reads
    // it again.
    const std::optional<FileVersion> version = versionOf(fileName());
    if (version != m_seen)
        noteChange();
    if (version && version != m_seen)
        keepModifiedAfter(fileName(), modificationTime(fileName()));
    m_settings.sync();
    m_modifiedBefore = modificationTime(fileName());
}

void QSettingsStore::endExclusive()
{
    if (m_lockHandle < 0) {
        m_seen.reset();
        return;
    }
    m_seen = versionOf(fileName());
    ::close(m_lockHandle);
    m_lockHandle = -1;
}

void QSettingsStore::flush()
{
    if (!m_dirty)
        return;
    m_dirty = false;
    m_settings.sync();
    // Readers outside a batch go by QSettings' note alone: every write
    // leaves the file a later time than it found it, so that one of the
    // same size within the same step of the file clock is told apart too.
    if (m_modifiedBefore.isValid())
        keepModifiedAfter(fileName(), m_modifiedBefore);
}

std::optional<QSettingsStore::FileVersion> QSettingsStore::versionOf(const QString &path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return FileVersion{quint64(status.st_dev), quint64(status.st_ino), qint64(status.st_size),
                       qint64(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec};
}

QVariant QSettingsStore::read(const QString &key) const
{
    if (m_settings.contains(key))
        return m_settings.value(key);
    return readList(key);
}

// A list is a group holding "size" and the entries 1..size, each a string or
// a list of its own. Anything else under the group is not a list.
QVariant QSettingsStore::readList(const QString &key) const
{
    const QString sizePath = key + u'/' + sizeKey;
    if (!m_settings.contains(sizePath))
        return {};
    bool ok = false;
    const qint64 size = m_settings.value(sizePath).toString().toLongLong(&ok);
    if (!ok || size < 0)
        return {};
    m_settings.beginGroup(key);
    const qsizetype entries = m_settings.childKeys().size() + m_settings.childGroups().size() - 1;
    m_settings.endGroup();
    if (size > entries)
        return {};

    QVariantList list;
    list.reserve(size);
    for (qsizetype i = 0; i < size; ++i) {
        const QString entry = entryKey(key, i);
        QVariant item = m_settings.contains(entry) ? m_settings.value(entry) : readList(entry);
        if (!item.isValid())
            return {};
        list.append(item);
    }
    return list;
}

void QSettingsStore::write(const QString &key, const QVariant &value)
{
    if (!batching()) {
        // A lone write is a batch of its own: removing a list must see every
        // entry that is on disk now, or another process's rows would stay
        // behind it.
        const SettingsBatch batch(*this);
        write(key, value);
        return;
    }
    m_settings.remove(key);
    if (value.typeId() == QMetaType::QVariantList)
        writeList(key, value.toList());
    else
        m_settings.setValue(key, value);
    m_dirty = true;
}

void QSettingsStore::writeList(const QString &key, const QVariantList &list)
{
    m_settings.setValue(key + u'/' + sizeKey, list.size());
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QVariant &item = list.at(i);
        if (item.typeId() == QMetaType::QVariantList)
            writeList(entryKey(key, i), item.toList());
        else
            m_settings.setValue(entryKey(key, i), item);
    }
}

void QSettingsStore::erase(const QString &key)
{
    if (!batching()) {
        const SettingsBatch batch(*this);
        erase(key);
        return;
    }
    m_settings.remove(key);
    m_dirty = true;
}
