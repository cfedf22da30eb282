#pragma once

#include "SettingsStore.h"

#include <QDateTime>
#include <QSettings>
#include <optional>

// The settings store on disk, through QSettings. On Linux that is the INI
// file $XDG_CONFIG_HOME/tavlo/tavlo.conf. Lists are kept as numbered entries
// with a size, so the favorites stay readable in the file:
//
//   [person]
//   1\1=Anna
//   1\2=12 3 1985
//   1\size=2
//   size=1
//
// Every write is synced at once (a batch syncs once at its end); QSettings
// replaces the file atomically.
//
// The command line and the open app may write the file at the same time.
// QSettings merges their writes key by key, which keeps neither side's list
// whole, so every batch (and every lone write, a batch of its own) holds a
// lock on the file lockFileName() while it runs and starts by re-reading the
// settings: a read-modify-write inside a batch is one step across processes.
class QSettingsStore final : public SettingsStore
{
public:
    QSettingsStore();
    explicit QSettingsStore(const QString &iniFilePath);
    ~QSettingsStore() override;

    QString fileName() const { return m_settings.fileName(); }
    // Not QSettings' own "<file>.lock", which it takes inside sync() and
    // removes after.
    QString lockFileName() const { return fileName() + QStringLiteral(".update-lock"); }

    void refresh() override;

protected:
    QVariant read(const QString &key) const override;
    void write(const QString &key, const QVariant &value) override;
    void erase(const QString &key) override;
    void flush() override;
    void beginExclusive() override;
    void endExclusive() override;

private:
    // A write replaces the file (a new inode); a touch moves its time.
    struct FileVersion
    {
        quint64 device = 0;
        quint64 inode = 0;
        qint64 size = 0;
        qint64 modifiedNanoseconds = 0;
        friend bool operator==(const FileVersion &, const FileVersion &) = default;
    };
    static std::optional<FileVersion> versionOf(const QString &path);

    QVariant readList(const QString &key) const;
    void writeList(const QString &key, const QVariantList &list);

    mutable QSettings m_settings;
    // The open lock file while a batch holds it, else -1.
    int m_lockHandle = -1;
    // The file's modification time when the batch began; invalid without a file.
    QDateTime m_modifiedBefore;
    // The file as we left it when we last let go of the lock.
    std::optional<FileVersion> m_seen;
    bool m_dirty = false;
};
