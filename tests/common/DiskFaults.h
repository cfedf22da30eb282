// SPDX-License-Identifier: MIT
#pragma once

#include "settings/AtomicFileWriter.h"

#include <QDir>
#include <QProcess>
#include <QString>
#include <memory>

// Real disk faults: a tiny filesystem that fills up, and a folder mounted
// read-only. Without root ok() is false and why() says why, to skip with.
class ScratchMount
{
public:
    // A tmpfs of `bytes` at `folder`.
    static std::unique_ptr<ScratchMount> tinyFilesystem(const QString &folder, qint64 bytes)
    {
        return std::unique_ptr<ScratchMount>(new ScratchMount(
            folder, {"-t", "tmpfs", "-o", QStringLiteral("size=%1").arg(bytes), "tmpfs", folder}));
    }
    // `folder` as it is, but read-only.
    static std::unique_ptr<ScratchMount> readOnly(const QString &folder)
    {
        return std::unique_ptr<ScratchMount>(
            new ScratchMount(folder, {"--bind", "-o", "ro", folder, folder}));
    }

    ~ScratchMount()
    {
        if (m_mounted)
            QProcess::execute("umount", {"-l", m_folder});
    }

    bool ok() const { return m_mounted; }
    QString why() const { return m_why; }

private:
    ScratchMount(const QString &folder, const QStringList &arguments) : m_folder(folder)
    {
        QDir().mkpath(folder);
        QProcess mount;
        mount.start("mount", arguments);
        m_mounted = mount.waitForFinished(10000) && mount.exitStatus() == QProcess::NormalExit &&
                    mount.exitCode() == 0;
        if (!m_mounted)
            m_why = QStringLiteral("cannot mount here (needs root): %1")
                        .arg(QString::fromLocal8Bit(mount.readAllStandardError()).trimmed());
    }

    QString m_folder;
    bool m_mounted = false;
    QString m_why;
};

// A writer that fails `step` with `error` while `*armed` is true.
inline AtomicFileWriter failingWriter(AtomicFileWriter::Step step, int error,
                                      std::shared_ptr<bool> armed = std::make_shared<bool>(true))
{
    return AtomicFileWriter(
        [=](AtomicFileWriter::Step at) { return *armed && at == step ? error : 0; });
}
