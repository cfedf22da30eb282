// SPDX-License-Identifier: MIT
#include "platform/linux/PlatformFile.h"

#include "settings/AtomicFileWriter.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

std::optional<QString> PlatformFile::write(const QString &path, const QByteArray &bytes)
{
    const WriteResult written = AtomicFileWriter().write(path, bytes);
    if (!written)
        return written.message();
    return std::nullopt;
}

std::optional<QByteArray> PlatformFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

std::optional<QString> PlatformFile::update(const QString &path, const QByteArray &bytes,
                                            bool *changed)
{
    if (read(path) == bytes) {
        *changed = false;
        return std::nullopt;
    }
    *changed = true;
    return write(path, bytes);
}
