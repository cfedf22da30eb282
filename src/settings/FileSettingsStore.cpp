// SPDX-License-Identifier: MIT
#include "settings/FileSettingsStore.h"

#include <QDate>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaObject>
#include <QObject>
#include <QStandardPaths>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <future>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Another process's batch takes milliseconds; one that takes longer than
// this is stuck (stopped, say), and the person is told who is waited for.
constexpr std::chrono::seconds lockNoticeAfter{3};

} // namespace

FileSettingsStore::FileSettingsStore() : FileSettingsStore(defaultPath()) {}

FileSettingsStore::FileSettingsStore(QString filePath, AtomicFileWriter writer)
    : m_path(std::move(filePath)), m_writer(std::move(writer))
{
    reloadIfReplaced();
}

FileSettingsStore::~FileSettingsStore()
{
    if (m_thread.joinable()) {
        waitForWrites();
        {
            const std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_wake.notify_all();
        m_thread.join();
    }
    if (m_lockHandle >= 0)
        ::close(m_lockHandle);
}

QString FileSettingsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/tavlo/tavlo.conf");
}

void FileSettingsStore::writeInBackground()
{
    if (m_home)
        return;
    // The writer's thread starts with the first write.
    m_home = std::make_unique<QObject>();
}

void FileSettingsStore::holdWrites()
{
    const std::lock_guard lock(m_mutex);
    m_held = true;
}

void FileSettingsStore::releaseWrites()
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_held)
            return;
        m_held = false;
    }
    m_wake.notify_one();
}

void FileSettingsStore::waitForWrites()
{
    releaseWrites();
    {
        std::unique_lock lock(m_mutex);
        m_idle.wait(lock, [this] { return !m_pending && !m_writing; });
    }
    tellFailures();
}

SettingsStore::WrittenCheck FileSettingsStore::untilWritten()
{
    if (!m_home)
        return SettingsStore::untilWritten();
    return [this, change = m_handedOver] {
        releaseWrites();
        std::unique_lock lock(m_mutex);
        m_idle.wait(lock, [&] { return m_writtenChange >= change || (!m_pending && !m_writing); });
        return m_writtenChange >= change ? WriteResult() : m_lastFailure;
    };
}

void FileSettingsStore::tellFailures()
{
    QList<WriteResult> failures;
    {
        const std::lock_guard lock(m_mutex);
        failures.swap(m_failures);
    }
    for (const WriteResult &failure : std::as_const(failures))
        reportFailure(failure);
}

void FileSettingsStore::refresh()
{
    if (batching())
        return;
    {
        // While our own write is under way the lock keeps every other
        // process out: what we hold is the newest there is.
        const std::lock_guard lock(m_mutex);
        if (m_pending || m_writing)
            return;
    }
    reloadIfReplaced();
}

std::optional<FileSettingsStore::FileVersion> FileSettingsStore::versionOf(const QString &path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return FileVersion{quint64(status.st_dev), quint64(status.st_ino), qint64(status.st_size),
                       qint64(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec,
                       qint64(status.st_ctim.tv_sec) * 1000000000 + status.st_ctim.tv_nsec};
}

FileSettingsStore::Contents FileSettingsStore::readFile(const QString &path,
                                                        std::optional<FileVersion> version)
{
    Contents contents;
    contents.version = version;
    if (!version) {
        // No file: the first start. A folder we may not look into is
        // something else: the file may well be there.
        struct stat status;
        if (::stat(QFile::encodeName(path).constData(), &status) != 0 && errno != ENOENT &&
            errno != ENOTDIR) {
            contents.kind = StoredState::Kind::Unreadable;
            contents.problem = QString::fromLocal8Bit(std::strerror(errno));
        }
        return contents;
    }
    QFile file(path);
    QByteArray text;
    if (file.open(QIODevice::ReadOnly))
        text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        // Gone since we looked: the same as none.
        if (!QFileInfo::exists(path))
            return {};
        contents.kind = StoredState::Kind::Unreadable;
        contents.problem = file.errorString();
        return contents;
    }
    QStringList problems;
    contents.values = IniFormat::parse(text, &problems);
    if (!problems.isEmpty()) {
        contents.kind = StoredState::Kind::Damaged;
        contents.problem = problems.join(QStringLiteral("; "));
        contents.damagedText = std::move(text);
    }
    return contents;
}

StoredState FileSettingsStore::storedState() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

WriteResult FileSettingsStore::refusal() const
{
    if (m_state.kind != StoredState::Kind::Unreadable)
        return {};
    return WriteResult::failed(
        m_path,
        QStringLiteral("it could not be read (%1), so it was left as it is").arg(m_state.problem));
}

WriteResult FileSettingsStore::keepDamagedCopy(const QByteArray &text)
{
    if (text.isEmpty() || !m_state.keptCopy.isEmpty())
        return {};
    const QString base =
        m_path + QStringLiteral(".damaged-") + QDate::currentDate().toString(Qt::ISODate);
    QString copy = base;
    for (int n = 2; QFileInfo::exists(copy); ++n)
        copy = base + u'-' + QString::number(n);
    const WriteResult kept = m_writer.write(copy, text);
    if (kept)
        m_state.keptCopy = copy;
    return kept;
}

struct FileSettingsStore::ReadAhead
{
    std::mutex mutex;
    QString path;
    std::future<Contents> contents;
};

FileSettingsStore::ReadAhead &FileSettingsStore::readAheadSlot()
{
    static ReadAhead slot;
    return slot;
}

void FileSettingsStore::readAhead(const QString &filePath)
{
    // Qt takes the first thread that asks for its thread data for the main
    // thread; the reading thread must not be first.
    QThread::currentThread();
    ReadAhead &slot = readAheadSlot();
    const std::lock_guard lock(slot.mutex);
    slot.path = filePath;
    slot.contents = std::async(std::launch::async,
                               [filePath] { return readFile(filePath, versionOf(filePath)); });
}

std::optional<FileSettingsStore::Contents> FileSettingsStore::takeReadAhead(const QString &path)
{
    ReadAhead &slot = readAheadSlot();
    const std::lock_guard lock(slot.mutex);
    if (!slot.contents.valid() || slot.path != path)
        return std::nullopt;
    return slot.contents.get();
}

void FileSettingsStore::reloadIfReplaced()
{
    const std::lock_guard lock(m_mutex);
    const std::optional<FileVersion> version = currentVersion();
    if (m_loaded && version == m_seen && !m_memoryStale)
        return;
    // Our changes not yet written are put back on top below, as they are:
    // until they are written (and merged), our values may still lack what
    // another process added.
    m_memoryStale = !m_unsaved.isEmpty();
    std::optional<Contents> ahead = m_loaded ? std::nullopt : takeReadAhead(m_path);
    Contents contents =
        ahead && ahead->version == version ? std::move(*ahead) : readFile(m_path, version);
    m_values = std::move(contents.values);
    // The same damage read again (our write after the copy failed) is kept
    // once only.
    const QString keptCopy = contents.damagedText == m_damagedText ? m_state.keptCopy : QString();
    m_state = {contents.kind, m_path, contents.problem, keptCopy};
    m_damagedText = std::move(contents.damagedText);
    for (auto it = m_unsaved.cbegin(); it != m_unsaved.cend(); ++it) {
        removeGroup(m_values, it.key());
        if (it->value)
            m_values.insert(it.key(), *it->value);
    }
    m_seen = version;
    m_loaded = true;
}

// Who holds the lock on the open file `handle`, from the kernel's list of
// locks (/proc/locks: "1: FLOCK  ADVISORY  WRITE 1234 00:2d:5678 0 EOF");
// 0 when it cannot be told.
qint64 FileSettingsStore::lockHolder(int handle)
{
    struct stat status;
    QFile locks(QStringLiteral("/proc/locks"));
    if (::fstat(handle, &status) != 0 || !locks.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray inode = ':' + QByteArray::number(quint64(status.st_ino));
    for (const QByteArray &line : locks.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() >= 6 && fields.at(1) == "FLOCK" && fields.at(5).endsWith(inode))
            return fields.at(4).toLongLong();
    }
    return 0;
}

// The lock is flock() on a file that stays: the kernel lets go of it when its
// holder ends, however it ends, so a lock left by a process that died is
// simply free. One held is held by a live process (a stopped one too), and
// is waited for as long as that takes: going on without it could let that
// process write over an acknowledged change. Who holds it is told to the
// person after a few seconds.
int FileSettingsStore::takeLock(const std::function<void(qint64 holder)> &waiting) const
{
    const QString lockPath = lockFileName();
    QDir().mkpath(QFileInfo(lockPath).absolutePath());
    const int handle =
        ::open(QFile::encodeName(lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    // A folder we cannot create files in cannot take the settings file
    // either; the write will say so.
    if (handle < 0)
        return -1;
    const QDeadlineTimer tell(lockNoticeAfter);
    bool told = false;
    unsigned long pause = 1;
    while (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR) {
            // A lock the file system cannot give (some network mounts): the
            // write itself is still whole or nothing.
            return handle;
        }
        if (!told && tell.hasExpired() && waiting) {
            told = true;
            waiting(lockHolder(handle));
        }
        QThread::msleep(pause);
        pause = std::min(pause * 2, 50ul);
    }
    return handle;
}

void FileSettingsStore::setLockWaitNotice(std::function<void(qint64 holder)> notice)
{
    m_lockWaitNotice = std::move(notice);
}

void FileSettingsStore::setMerge(const QString &key, Merge merge)
{
    const std::lock_guard lock(m_mutex);
    m_merges.insert(key, merge);
}

// The command line holds the lock for the whole batch, so that what it read
// is what it writes over. The app never waits for it on its interface
// thread: its batches are steps in memory, and its writer takes the lock
// and puts them on top of whatever another process wrote meanwhile.
void FileSettingsStore::beginExclusive()
{
    if (m_home)
        return;
    const int handle = takeLock(m_lockWaitNotice);
    {
        const std::lock_guard lock(m_mutex);
        m_lockHandle = handle;
    }
    reloadIfReplaced();
}

void FileSettingsStore::endExclusive()
{
    const std::lock_guard lock(m_mutex);
    if (m_lockHandle >= 0)
        ::close(m_lockHandle);
    m_lockHandle = -1;
}

WriteResult FileSettingsStore::flush()
{
    std::unique_lock lock(m_mutex);
    if (m_unsaved.isEmpty())
        return {};
    if (const WriteResult refused = refusal(); !refused)
        return refused;
    if (m_home) {
        // Already on its way, or about to be: nothing new to hand over.
        if (m_handedOver == m_changeCount && (m_pending || m_writing))
            return {};
        // The values are shared, not copied: the writer reads its own
        // snapshot while we go on changing ours.
        m_pending = Write{m_values, m_changeCount, m_damagedText};
        m_handedOver = m_changeCount;
        // It waits for the lock we hold.
        if (!m_thread.joinable())
            m_thread = std::thread([this] { runWriter(); });
        lock.unlock();
        m_wake.notify_one();
        return {};
    }
    if (const WriteResult kept = keepDamagedCopy(m_damagedText); !kept)
        return kept;
    const WriteResult result = m_writer.write(m_path, IniFormat::serialize(m_values));
    if (result) {
        m_unsaved.clear();
        m_seen = currentVersion();
    }
    return result;
}

// What the file is to hold: what is on the disk now, with our changes up to
// `write.change` on top. A change of a key that has a merge is merged with
// what other processes did to it since we read it; any other change is
// simply ours. Under m_mutex; the lock on the file is held.
IniFormat::Values FileSettingsStore::mergedWithDisk(const Write &write)
{
    const std::optional<FileVersion> version = currentVersion();
    if (version == m_seen && !m_memoryStale)
        return write.values;
    if (version != m_diskVersion) {
        Contents disk = readFile(m_path, version);
        // Nothing read is nothing to merge with: our own values stand.
        if (disk.kind == StoredState::Kind::Unreadable)
            return write.values;
        m_disk = std::move(disk.values);
        m_diskVersion = version;
    }
    IniFormat::Values values = m_disk;
    for (auto it = m_unsaved.cbegin(); it != m_unsaved.cend(); ++it) {
        if (it->change > write.change)
            continue;
        const QVariant theirs = values.value(it.key());
        removeGroup(values, it.key());
        if (!it->value)
            continue;
        const QVariant &ours = write.values.value(it.key());
        const Merge merge = m_merges.value(it.key());
        if (merge && theirs.isValid() && theirs != it->base) {
            values.insert(it.key(), merge(it->base, ours, theirs));
        } else {
            values.insert(it.key(), ours);
        }
    }
    // What another process wrote since we read goes to disk with ours, but
    // our own values lack it: read them again at the next look.
    m_memoryStale = true;
    return values;
}

void FileSettingsStore::runWriter()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || (m_pending && !m_held); });
        if (!m_pending)
            return;
        Write write = std::move(*m_pending);
        m_pending.reset();
        m_writing = true;
        lock.unlock();
        // On this thread, for as long as a live process holds it.
        const int handle = takeLock({});
        lock.lock();
        WriteResult result = keepDamagedCopy(write.damagedText);
        IniFormat::Values values = mergedWithDisk(write);
        lock.unlock();
        if (result)
            result = m_writer.write(m_path, IniFormat::serialize(values));
        lock.lock();
        if (result) {
            m_disk = std::move(values);
            m_diskVersion = currentVersion();
        }
        if (handle >= 0)
            ::close(handle);
        m_writing = false;
        if (result) {
            m_writtenChange = std::max(m_writtenChange, write.change);
            // What changed after this state stays to be written, and is
            // merged from where this write left it.
            for (auto it = m_unsaved.begin(); it != m_unsaved.end();) {
                if (it->change <= write.change) {
                    it = m_unsaved.erase(it);
                } else {
                    it->base = write.values.value(it.key());
                    ++it;
                }
            }
            m_seen = m_diskVersion;
        } else {
            m_lastFailure = result;
            m_failures.append(result);
            QMetaObject::invokeMethod(
                m_home.get(), [this] { tellFailures(); }, Qt::QueuedConnection);
        }
        write.values = {};
        // Those waiting for this write, and those waiting for all of them.
        m_idle.notify_all();
    }
}

void FileSettingsStore::remember(const QString &key, const QVariant &before,
                                 std::optional<QVariant> value)
{
    const auto found = m_unsaved.constFind(key);
    // The first change since the key was last written is the one merged from.
    const QVariant base = found == m_unsaved.cend() ? before : found->base;
    m_unsaved.insert(key, {std::move(value), ++m_changeCount, base});
}

QVariant FileSettingsStore::read(const QString &key) const
{
    return m_values.value(key);
}

// A key's value and the group of the same name: a list written by an
// earlier version as separate entries goes with it.
void FileSettingsStore::removeGroup(IniFormat::Values &values, const QString &key)
{
    values.remove(key);
    const QString prefix = key + u'/';
    auto it = values.lowerBound(prefix);
    while (it != values.end() && it.key().startsWith(prefix))
        it = values.erase(it);
}

// Whether the file would say the same after writing `value` under `key`:
// then there is nothing to write. Numbers and truth values read back as
// their text.
bool FileSettingsStore::holdsValue(const QString &key, const QVariant &value) const
{
    const auto found = m_values.constFind(key);
    if (found == m_values.cend())
        return false;
    const auto next = std::next(found);
    if (next != m_values.cend() && next.key().startsWith(key + u'/'))
        return false;
    const QVariant &held = *found;
    if (held.typeId() == value.typeId())
        return held == value;
    const auto isText = [](const QVariant &v) { return v.typeId() == QMetaType::QString; };
    const auto isScalar = [](const QVariant &v) {
        switch (v.typeId()) {
        case QMetaType::Bool:
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::UInt:
        case QMetaType::ULongLong:
            return true;
        default:
            return false;
        }
    };
    if ((isText(held) && isScalar(value)) || (isScalar(held) && isText(value)))
        return held.toString() == value.toString();
    return false;
}

void FileSettingsStore::write(const QString &key, const QVariant &value)
{
    if (holdsValue(key, value))
        return;
    const QVariant before = m_values.value(key);
    removeGroup(m_values, key);
    m_values.insert(key, value);
    const std::lock_guard lock(m_mutex);
    remember(key, before, value);
}

void FileSettingsStore::erase(const QString &key)
{
    const QVariant before = m_values.value(key);
    removeGroup(m_values, key);
    const std::lock_guard lock(m_mutex);
    remember(key, before, std::nullopt);
}
