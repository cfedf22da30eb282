// SPDX-License-Identifier: MIT
#include "sync/SyncTokenFile.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int formatVersion = 1;
// A token file is a few hundred bytes; anything much larger is not one.
constexpr qint64 largestFile = 64 * 1024;

} // namespace

QString SyncTokenFile::pathBeside(const QString &statePath)
{
    return statePath + u".token"_s;
}

std::optional<SyncTokenFile> SyncTokenFile::readCurrent(const QString &statePath)
{
    QFile file(pathBeside(statePath));
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile)
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    const QJsonObject root = document.object();
    if (error.error != QJsonParseError::NoError ||
        root.value(u"version"_s).toInt() != formatVersion)
        return std::nullopt;
    SyncTokenFile token;
    token.addressBook = root.value(u"addressBook"_s).toString();
    token.syncToken = root.value(u"syncToken"_s).toString();
    token.favoritesDigest = root.value(u"favorites"_s).toString().toLatin1();
    token.stateIdentity = root.value(u"state"_s).toString().toLatin1();
    if (token.addressBook.isEmpty() || token.syncToken.isEmpty() ||
        token.favoritesDigest.isEmpty() || token.stateIdentity.isEmpty() ||
        token.stateIdentity != identityOf(statePath))
        return std::nullopt;
    return token;
}

WriteResult SyncTokenFile::write(const QString &statePath, const AtomicFileWriter &writer) const
{
    const QJsonObject root{{u"version"_s, formatVersion},
                           {u"addressBook"_s, addressBook},
                           {u"syncToken"_s, syncToken},
                           {u"favorites"_s, QString::fromLatin1(favoritesDigest)},
                           {u"state"_s, QString::fromLatin1(stateIdentity)}};
    return writer.write(pathBeside(statePath), QJsonDocument(root).toJson(QJsonDocument::Compact));
}

WriteResult SyncTokenFile::remove(const QString &statePath)
{
    // The removal reaches the disk before the state that follows it.
    return AtomicFileWriter::remove(pathBeside(statePath));
}

QByteArray SyncTokenFile::identityOf(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    // Every write of the state is a new file renamed into place: a new
    // inode, and new times. Together they tell that file from any later one.
    return QByteArray::number(qulonglong(status.st_dev)) + ':' +
           QByteArray::number(qulonglong(status.st_ino)) + ':' +
           QByteArray::number(qlonglong(status.st_size)) + ':' +
           QByteArray::number(qlonglong(status.st_mtim.tv_sec)) + '.' +
           QByteArray::number(qlonglong(status.st_mtim.tv_nsec)) + ':' +
           QByteArray::number(qlonglong(status.st_ctim.tv_sec)) + '.' +
           QByteArray::number(qlonglong(status.st_ctim.tv_nsec));
#else
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    return QByteArray::number(info.size()) + ':' +
           QByteArray::number(info.lastModified().toMSecsSinceEpoch());
#endif
}

QByteArray SyncTokenFile::digestOf(const QList<Favorite> &favorites)
{
    // The strings' own UTF-16, each with its length: no copies, and no two
    // lists alike but the same.
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&hash](const QString &text) {
        const qint64 length = text.size();
        hash.addData(QByteArrayView(reinterpret_cast<const char *>(&length), sizeof length));
        hash.addData(QByteArrayView(reinterpret_cast<const char *>(text.constData()),
                                    text.size() * qsizetype(sizeof(QChar))));
    };
    for (const Favorite &favorite : favorites) {
        add(favorite.id);
        add(favorite.name);
        add(favorite.birthday);
    }
    return hash.result().toHex();
}
