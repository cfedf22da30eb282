// SPDX-License-Identifier: MIT
#pragma once

#include "settings/AtomicFileWriter.h"
#include "settings/IniFormat.h"
#include "settings/SettingsStore.h"

#include <QHash>
#include <QMap>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

class QObject;

// The settings store on disk: the INI file $XDG_CONFIG_HOME/tavlo/tavlo.conf,
// in the dialect of Qt's QSettings (see IniFormat), with the favorites
// readable in it:
//
//   [person]
//   1\1=Anna
//   1\2=12 3 1985
//   1\size=2
//   size=1
//
// The whole file is held in memory. A change is written at once (a batch
// writes once, at its end) through AtomicFileWriter, so the file on disk is
// always a complete version. A change that could not be written stays in
// memory, is written again with the next change, and the failure is
// reported to the caller and to the failure handler.
//
// The command line and the open app may change the file at the same time.
// Every batch (a lone write is a batch of its own) holds a lock on the file
// lockFileName() while it runs and starts by reading the file again if
// another process replaced it, so a read-modify-write inside a batch is one
// step across processes.
//
// The app writes in the background (writeInBackground()): a change takes
// effect in memory at once and a thread of the store's own writes the file,
// with the same checks, while the screen goes on. The lock stays held from
// the batch that made the change until its write is done, so no other
// process comes between. Changes made while a write runs are written
// together after it: the newest state is what reaches the disk. A write that
// failed reaches the failure handler on the thread that chose to write in
// the background, and its changes are written again with the next change.
// The command line and the tests keep the plain way: a change returns only
// once it is on the disk.
class FileSettingsStore final : public SettingsStore
{
public:
    FileSettingsStore();
    explicit FileSettingsStore(QString filePath, AtomicFileWriter writer = {});
    ~FileSettingsStore() override;

    // $XDG_CONFIG_HOME/tavlo/tavlo.conf
    static QString defaultPath();
    // Starts reading the file on a thread of its own, for the next store
    // opened on it to take if the file is still the one read: the app starts
    // this before its window system is up, and the two overlap.
    static void readAhead(const QString &filePath = defaultPath());
    QString fileName() const { return m_path; }
    QString lockFileName() const { return m_path + QStringLiteral(".update-lock"); }

    // Called once a batch has waited a few seconds for the update lock,
    // with the process that holds it (0 when not known); the command line
    // says so. The wait goes on for as long as that process lives.
    void setLockWaitNotice(std::function<void(qint64 holder)> notice);
    void setMerge(const QString &key, Merge merge) override;

    void refresh() override;
    StoredState storedState() const override;

    // From now on, batches hand their writes to the store's own thread
    // (started by the first of them) and return at once (reporting success:
    // a failure comes later, through the failure handler, on this thread's
    // event loop).
    void writeInBackground();
    // The writer thread waits with what it was handed until released: the
    // app holds its writes while it makes its first frame, which a phone's
    // slow cores would otherwise share with writing the whole file (the
    // start count changes at every start). Waiting for writes releases them.
    void holdWrites();
    void releaseWrites();
    // Without a writer thread, as the plain store; with one, until the
    // write of the last change handed over so far has ended.
    WrittenCheck untilWritten() override;
    // Waits until every change handed over is on the disk or has failed,
    // and tells the failure handler of failures not yet told. The app calls
    // it before it quits; the destructor does too.
    void waitForWrites();

protected:
    QVariant read(const QString &key) const override;
    void write(const QString &key, const QVariant &value) override;
    void erase(const QString &key) override;
    WriteResult flush() override;
    void beginExclusive() override;
    void endExclusive() override;

private:
    // A write replaces the file (a new inode); a touch moves its times.
    struct FileVersion
    {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 size = 0;
        qint64 modifiedNanoseconds = 0;
        qint64 changedNanoseconds = 0;
        friend bool operator==(const FileVersion &, const FileVersion &) = default;
    };
    static std::optional<FileVersion> versionOf(const QString &path);
    std::optional<FileVersion> currentVersion() const { return versionOf(m_path); }
    struct Contents
    {
        std::optional<FileVersion> version;
        IniFormat::Values values;
        StoredState::Kind kind = StoredState::Kind::Sound;
        // What was damaged, or why the file could not be read.
        QString problem;
        // A damaged file as it was, to be kept before it is written.
        QByteArray damagedText;
    };
    // The file as it is, if `version` is still what it is.
    static Contents readFile(const QString &path, std::optional<FileVersion> version);
    // What readAhead() read of the file, taken once.
    static std::optional<Contents> takeReadAhead(const QString &path);
    struct ReadAhead;
    static ReadAhead &readAheadSlot();
    // Reads the file again if it is not the one we read or wrote last.
    void reloadIfReplaced();
    static void removeGroup(IniFormat::Values &values, const QString &key);
    // Notes a change of `key` from `before` to `value` (nothing: erased).
    // Under m_mutex.
    void remember(const QString &key, const QVariant &before, std::optional<QVariant> value);
    // Waits for the update lock and returns its handle (-1: none to be had).
    int takeLock(const std::function<void(qint64 holder)> &waiting) const;
    static qint64 lockHolder(int handle);
    // Why nothing may be written now, if so: a file we could not read.
    WriteResult refusal() const;
    // Keeps the damaged file as it was beside it, once, before the first
    // write replaces it. Under m_mutex.
    WriteResult keepDamagedCopy(const QByteArray &text);
    bool holdsValue(const QString &key, const QVariant &value) const;
    void runWriter();
    struct Write;
    IniFormat::Values mergedWithDisk(const Write &write);
    void tellFailures();

    struct Unsaved
    {
        std::optional<QVariant> value;
        // Which change made it: a write of a later state saves it.
        quint64 change = 0;
        // The value before our changes that are not written yet: what
        // another process's changes are merged against.
        QVariant base;
    };

    QString m_path;
    AtomicFileWriter m_writer;
    // Read and changed only by the thread that uses the store.
    IniFormat::Values m_values;
    bool m_loaded = false;
    quint64 m_changeCount = 0;
    quint64 m_handedOver = 0;

    // What the writer thread shares, under m_mutex.
    mutable std::mutex m_mutex;
    // Our changes since the last successful write: put back on top of what
    // another process wrote, and written with the next change.
    QMap<QString, Unsaved> m_unsaved;
    std::optional<FileVersion> m_seen;
    StoredState m_state;
    QByteArray m_damagedText;
    // The open lock file while a batch holds it, else -1.
    int m_lockHandle = -1;
    std::function<void(qint64 holder)> m_lockWaitNotice;
    QHash<QString, Merge> m_merges;
    // The file as the writer last read or wrote it.
    IniFormat::Values m_disk;
    std::optional<FileVersion> m_diskVersion;
    // Set when the writer merged another process's changes: our own values
    // lack them until they are read again.
    bool m_memoryStale = false;

    struct Write
    {
        IniFormat::Values values;
        quint64 change = 0;
        // The damaged file to keep first, if it is not kept yet.
        QByteArray damagedText;
    };
    // The newest change on the disk, and the last write that failed.
    quint64 m_writtenChange = 0;
    WriteResult m_lastFailure;
    std::optional<Write> m_pending;
    bool m_writing = false;
    bool m_stopping = false;
    bool m_held = false;
    QList<WriteResult> m_failures;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::thread m_thread;
    // Lives on the thread that chose the background, and says that it was
    // chosen; failures are told there.
    std::unique_ptr<QObject> m_home;
};
