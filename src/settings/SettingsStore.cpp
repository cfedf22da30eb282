// SPDX-License-Identifier: MIT
#include "settings/SettingsStore.h"

namespace {

// Text stores (INI files) give back every scalar as a string, so a string of
// the right shape counts as that type.
std::optional<qint64> toInteger(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort: {
        return value.toLongLong();
    }
    case QMetaType::ULongLong: {
        bool ok = false;
        const qint64 result = value.toLongLong(&ok);
        return ok ? std::optional(result) : std::nullopt;
    }
    case QMetaType::QString: {
        bool ok = false;
        const qint64 result = value.toString().toLongLong(&ok);
        return ok ? std::optional(result) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

std::optional<bool> toBoolean(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        if (text == u"true")
            return true;
        if (text == u"false")
            return false;
    }
    return std::nullopt;
}

std::optional<QStringList> toStringList(const QVariant &value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    const QVariantList items = value.toList();
    QStringList result;
    result.reserve(items.size());
    for (const QVariant &item : items) {
        if (item.typeId() != QMetaType::QString)
            return std::nullopt;
        // A text already: shared, not converted.
        result.append(*static_cast<const QString *>(item.constData()));
    }
    return result;
}

} // namespace

// A lone write is a batch of its own: the store reads what other processes
// wrote before it changes anything.
WriteResult SettingsStore::store(const QString &key, const QVariant &value)
{
    beginBatch();
    write(key, value);
    return endBatch();
}

WriteResult SettingsStore::remove(const QString &key)
{
    beginBatch();
    erase(key);
    return endBatch();
}

WriteResult SettingsStore::endBatch()
{
    if (--m_batchDepth > 0)
        return {};
    const WriteResult result = flush();
    endExclusive();
    if (!result)
        reportFailure(result);
    return result;
}

qint64 SettingsStore::value(const IntegerKey &key) const
{
    return toInteger(read(key.name)).value_or(0);
}

bool SettingsStore::value(const BooleanKey &key) const
{
    return toBoolean(read(key.name)).value_or(false);
}

std::optional<QString> SettingsStore::value(const StringKey &key) const
{
    const QVariant stored = read(key.name);
    if (stored.typeId() != QMetaType::QString)
        return std::nullopt;
    return stored.toString();
}

std::optional<QStringList> SettingsStore::value(const StringListKey &key) const
{
    return toStringList(read(key.name));
}

std::optional<QList<QStringList>> SettingsStore::value(const StringTableKey &key) const
{
    return tableOf(read(key.name));
}

std::optional<QList<QStringList>> SettingsStore::tableOf(const QVariant &stored)
{
    if (stored.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    const QVariantList rows = stored.toList();
    QList<QStringList> result;
    result.reserve(rows.size());
    for (const QVariant &row : rows) {
        std::optional<QStringList> strings = toStringList(row);
        if (!strings)
            return std::nullopt;
        result.append(std::move(*strings));
    }
    return result;
}

WriteResult SettingsStore::set(const IntegerKey &key, qint64 value)
{
    return store(key.name, QVariant::fromValue(value));
}

WriteResult SettingsStore::set(const BooleanKey &key, bool value)
{
    return store(key.name, QVariant(value));
}

WriteResult SettingsStore::set(const StringKey &key, const QString &value)
{
    return store(key.name, QVariant(value));
}

WriteResult SettingsStore::set(const StringListKey &key, const QStringList &value)
{
    QVariantList list;
    list.reserve(value.size());
    for (const QString &item : value)
        list.append(item);
    return store(key.name, list);
}

WriteResult SettingsStore::set(const StringTableKey &key, const QList<QStringList> &value)
{
    return store(key.name, storedTable(value));
}

QVariant SettingsStore::storedTable(const QList<QStringList> &value)
{
    QVariantList rows;
    rows.reserve(value.size());
    for (const QStringList &row : value) {
        QVariantList strings;
        strings.reserve(row.size());
        for (const QString &item : row)
            strings.append(item);
        rows.append(QVariant(strings));
    }
    return rows;
}
