// SPDX-License-Identifier: MIT
#include "platform/linux/LinkHandlers.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

// The value of `key` in the [Desktop Entry] group, or nothing.
QString entryValue(const QByteArray &text, const QByteArray &key)
{
    bool inEntry = false;
    for (const QByteArray &raw : text.split('\n')) {
        const QByteArray line = raw.trimmed();
        if (line.startsWith('['))
            inEntry = line == "[Desktop Entry]";
        else if (inEntry && line.startsWith(key + '='))
            return QString::fromUtf8(line.mid(key.size() + 1));
    }
    return {};
}

bool declares(const QString &path, const QString &mimeType)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = file.read(256 * 1024);
    // A hidden entry is a deleted one.
    if (entryValue(text, "Hidden") == u"true")
        return false;
    return entryValue(text, "MimeType").split(u';', Qt::SkipEmptyParts).contains(mimeType);
}

bool associated(const QString &path, const QString &mimeType)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool counts = false;
    for (const QByteArray &raw : file.readAll().split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.startsWith(u'['))
            counts = line == u"[Default Applications]" || line == u"[Added Associations]";
        else if (counts && line.startsWith(mimeType + u'=') &&
                 !line.mid(mimeType.size() + 1).trimmed().isEmpty())
            return true;
    }
    return false;
}

} // namespace

namespace LinkHandlers {

bool installed(const QString &scheme)
{
    if (QFile::exists(u"/.flatpak-info"_s))
        return true;
    return installed(scheme, QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation),
                     QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation));
}

bool installed(const QString &scheme, const QStringList &dataFolders,
               const QStringList &configFolders)
{
    const QString mimeType = u"x-scheme-handler/"_s + scheme.toLower();
    for (const QString &folder : configFolders) {
        if (associated(folder + u"/mimeapps.list"_s, mimeType))
            return true;
    }
    for (const QString &folder : dataFolders) {
        const QDir applications(folder + u"/applications"_s);
        if (associated(applications.filePath(u"mimeapps.list"_s), mimeType))
            return true;
        QStringList dirs{applications.path()};
        for (const QString &sub : applications.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            dirs.append(applications.filePath(sub));
        for (const QString &dir : dirs) {
            for (const QString &name :
                 QDir(dir).entryList({u"*.desktop"_s}, QDir::Files | QDir::Readable)) {
                if (declares(dir + u'/' + name, mimeType))
                    return true;
            }
        }
    }
    return false;
}

} // namespace LinkHandlers
