// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Whether a change reached the disk, and if not, which file failed and why.
// A default-made result means "stored".
class WriteResult
{
public:
    WriteResult() = default;
    static WriteResult failed(QString path, QString reason)
    {
        WriteResult result;
        result.m_path = std::move(path);
        result.m_reason = std::move(reason);
        return result;
    }

    bool ok() const { return m_reason.isEmpty(); }
    explicit operator bool() const { return ok(); }
    const QString &path() const { return m_path; }
    // In plain words, as the system puts it: "No space left on device".
    const QString &reason() const { return m_reason; }
    // "could not save /home/u/.config/tavlo/tavlo.conf: No space left on device"
    QString message() const
    {
        return ok() ? QString() : QStringLiteral("could not save %1: %2").arg(m_path, m_reason);
    }

private:
    QString m_path;
    QString m_reason;
};
