// SPDX-License-Identifier: MIT
#pragma once

#include "settings/AtomicFileWriter.h"
#include "settings/IniFormat.h"
#include "settings/SettingsStore.h"

#include <QMap>
#include <optional>

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
class FileSettingsStore final : public SettingsStore
{
public:
    FileSettingsStore();
    explicit FileSettingsStore(QString filePath, AtomicFileWriter writer = {});
    ~FileSettingsStore() override;

    // $XDG_CONFIG_HOME/tavlo/tavlo.conf
    static QString defaultPath();
    QString fileName() const { return m_path; }
    QString lockFileName() const { return m_path + QStringLiteral(".update-lock"); }

    void refresh() override;

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
    std::optional<FileVersion> currentVersion() const;
    // Reads the file again if it is not the one we read or wrote last.
    void reloadIfReplaced();
    void removeGroup(const QString &key);

    QString m_path;
    AtomicFileWriter m_writer;
    IniFormat::Values m_values;
    // Our changes since the last successful write: put back on top of what
    // another process wrote, and written with the next change.
    QMap<QString, std::optional<QVariant>> m_unsaved;
    std::optional<FileVersion> m_seen;
    bool m_loaded = false;
    // The open lock file while a batch holds it, else -1.
    int m_lockHandle = -1;
};
