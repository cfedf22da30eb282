// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where a file the person names on the command line is written. The write
// replaces the file by renaming a new one over it, so whatever sits at the
// path would be replaced: only a regular file or a path where nothing is yet
// may be written. A symbolic link is followed to the file it names (the link
// stays), except where the kernel would not follow it either: a link in a
// sticky folder anyone may write to (/tmp), owned neither by the person nor
// by the folder's owner, may have been planted there by someone else.
class OutputTarget
{
public:
    // Looks at `path` as it is now.
    static OutputTarget of(const QString &path);

    bool refused() const { return !m_refusal.isEmpty(); }
    // The file to write: the path, or the file its links lead to.
    const QString &filePath() const { return m_filePath; }
    // Why nothing may be written, in plain words: "it is a folder, not a file".
    const QString &refusal() const { return m_refusal; }

private:
    QString m_filePath;
    QString m_refusal;
};
