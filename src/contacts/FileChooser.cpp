// SPDX-License-Identifier: MIT
#include "contacts/FileChooser.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

QString FileChooser::personalFolder(Mode mode)
{
    const QString downloads = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return firstExisting(mode == Mode::Open ? QStringList{downloads, documents, QDir::homePath()}
                                            : QStringList{documents, downloads, QDir::homePath()});
}

QString FileChooser::firstExisting(const QStringList &folders)
{
    for (const QString &folder : folders) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    }
    return {};
}

QString FileChooser::nameFilter(const Filter &filter)
{
    return filter.name + u" ("_s + filter.globs.join(u' ') + u')';
}
