// SPDX-License-Identifier: MIT
#include "platform/linux/NotificationIcon.h"

#include "platform/linux/PlatformFile.h"

#include <QDir>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

QString NotificationIcon::install(const QString &folder)
{
    QFile source(u":/tavlo/notification/tavlo.svg"_s);
    if (!source.open(QIODevice::ReadOnly))
        return {};
    const QString path = QDir(folder).absoluteFilePath(u"tavlo.svg"_s);
    bool changed = false;
    if (PlatformFile::update(path, source.readAll(), &changed))
        return {};
    return path;
}
