#include "PlatformFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

std::optional<QString> PlatformFile::write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return u"could not save %1: %2"_s.arg(path, file.errorString());
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
