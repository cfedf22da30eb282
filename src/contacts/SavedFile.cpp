#include "SavedFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

QString saveWholeFile(const QString &path, const QByteArray &contents)
{
    const auto failure = [&](const QString &reason) {
        return u"could not save %1: %2"_s.arg(path, reason);
    };
    const QFileInfo info(path);
    if (!QDir().mkpath(info.absolutePath()))
        return failure(u"cannot make the folder %1"_s.arg(info.absolutePath()));
    // QSaveFile syncs the data before it renames the file into place.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failure(file.errorString());
    if (file.write(contents) != contents.size())
        return failure(file.errorString());
    if (!file.commit())
        return failure(file.errorString());
    return {};
}
