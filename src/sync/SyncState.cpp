// SPDX-License-Identifier: MIT
#include "sync/SyncState.h"

#include "sync/SyncTokenFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QStringDecoder>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int formatVersion = 1;

QJsonObject objectOf(const SyncEntry &entry)
{
    QJsonObject object{{u"href"_s, entry.href},
                       {u"etag"_s, QString::fromUtf8(entry.etag)},
                       {u"id"_s, entry.id},
                       {u"name"_s, entry.name},
                       {u"birthday"_s, entry.birthday}};
    // Cards are text; one that is not valid UTF-8 keeps its bytes in base64.
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString card = utf8(entry.card);
    if (utf8.hasError())
        object.insert(u"cardBase64"_s, QString::fromLatin1(entry.card.toBase64()));
    else if (!entry.card.isEmpty())
        object.insert(u"card"_s, card);
    return object;
}

SyncEntry entryOf(const QJsonObject &object)
{
    SyncEntry entry;
    entry.href = object.value(u"href"_s).toString();
    entry.etag = object.value(u"etag"_s).toString().toUtf8();
    entry.id = object.value(u"id"_s).toString();
    entry.name = object.value(u"name"_s).toString();
    entry.birthday = object.value(u"birthday"_s).toString();
    if (object.contains(u"cardBase64"_s))
        entry.card = QByteArray::fromBase64(object.value(u"cardBase64"_s).toString().toLatin1());
    else
        entry.card = object.value(u"card"_s).toString().toUtf8();
    return entry;
}

QJsonArray arrayOf(const QList<SyncEntry> &entries)
{
    QJsonArray array;
    for (const SyncEntry &entry : entries)
        array.append(objectOf(entry));
    return array;
}

QList<SyncEntry> entriesOf(const QJsonArray &array)
{
    QList<SyncEntry> entries;
    entries.reserve(array.size());
    for (const QJsonValue &value : array)
        entries.append(entryOf(value.toObject()));
    return entries;
}

// The state of `path`'s file, or nothing (with why) for one that cannot be
// read; a missing file is an empty state.
std::optional<QJsonObject> rootAt(const QString &path, QString *problem)
{
    QFile file(path);
    if (!file.exists())
        return QJsonObject();
    if (!file.open(QIODevice::ReadOnly)) {
        if (problem)
            *problem = file.errorString();
        return std::nullopt;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    const QJsonObject root = document.object();
    if (error.error != QJsonParseError::NoError || !document.isObject() ||
        root.value(u"version"_s).toInt() != formatVersion) {
        if (problem)
            *problem = error.error != QJsonParseError::NoError ? error.errorString()
                                                               : u"not a sync state"_s;
        return std::nullopt;
    }
    return root;
}

SyncState stateOf(const QJsonObject &root)
{
    SyncState state;
    state.addressBook = root.value(u"addressBook"_s).toString();
    state.syncToken = root.value(u"syncToken"_s).toString();
    state.removalsReported = root.value(u"removalsReported"_s).toBool();
    state.fullyListed = root.value(u"fullyListed"_s).toString();
    state.entries = entriesOf(root.value(u"cards"_s).toArray());
    state.pendingDeletes = entriesOf(root.value(u"pendingDeletes"_s).toArray());
    state.sending = entriesOf(root.value(u"sending"_s).toArray());
    return state;
}

QJsonObject rootOf(const SyncState &state)
{
    return {{u"version"_s, formatVersion},
            {u"addressBook"_s, state.addressBook},
            {u"syncToken"_s, state.syncToken},
            {u"removalsReported"_s, state.removalsReported},
            {u"fullyListed"_s, state.fullyListed},
            {u"cards"_s, arrayOf(state.entries)},
            {u"pendingDeletes"_s, arrayOf(state.pendingDeletes)},
            {u"sending"_s, arrayOf(state.sending)}};
}

QString asidePathOf(const QString &path)
{
    return path + u".next"_s;
}

} // namespace

QString SyncState::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/tavlo/sync-state.json"_s;
}

SyncState SyncState::read(const QString &path, QString *problem)
{
    const std::optional<QJsonObject> root = rootAt(path, problem);
    return root ? stateOf(*root) : SyncState();
}

WriteResult SyncState::write(const QString &path, const AtomicFileWriter &writer) const
{
    if (const WriteResult written =
            writer.write(path, QJsonDocument(rootOf(*this)).toJson(QJsonDocument::Compact));
        !written)
        return written;
    // Older than the state just written, whatever its mark.
    return AtomicFileWriter::remove(asidePathOf(path));
}

WriteResult SyncState::writeAside(const QString &path, const QString &mark,
                                  const AtomicFileWriter &writer) const
{
    QJsonObject root = rootOf(*this);
    root.insert(u"storedMark"_s, mark);
    return writer.write(asidePathOf(path), QJsonDocument(root).toJson(QJsonDocument::Compact));
}

std::optional<SyncState> SyncState::readAside(const QString &path, const QString &mark)
{
    // A missing file reads as one without a mark.
    if (mark.isEmpty())
        return std::nullopt;
    const std::optional<QJsonObject> root = rootAt(asidePathOf(path), nullptr);
    if (!root || root->value(u"storedMark"_s).toString() != mark)
        return std::nullopt;
    return stateOf(*root);
}

void SyncState::remove(const QString &path)
{
    // The token file first: never one beside no state.
    QFile::remove(SyncTokenFile::pathBeside(path));
    QFile::remove(asidePathOf(path));
    QFile::remove(path);
}

qsizetype SyncState::indexOfHref(const QString &href) const
{
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (entries.at(i).href == href)
            return i;
    }
    return -1;
}

qsizetype SyncState::pendingIndexOfHref(const QString &href) const
{
    for (qsizetype i = 0; i < pendingDeletes.size(); ++i) {
        if (pendingDeletes.at(i).href == href)
            return i;
    }
    return -1;
}

qsizetype SyncState::sendingIndexOfHref(const QString &href) const
{
    for (qsizetype i = 0; i < sending.size(); ++i) {
        if (sending.at(i).href == href)
            return i;
    }
    return -1;
}
