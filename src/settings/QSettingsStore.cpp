#include "QSettingsStore.h"

namespace {

const QString sizeKey = QStringLiteral("size");

QString entryKey(const QString &list, qsizetype index)
{
    return list + u'/' + QString::number(index + 1);
}

} // namespace

QSettingsStore::QSettingsStore()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("tavlo"),
                 QStringLiteral("tavlo"))
{}

QSettingsStore::QSettingsStore(const QString &iniFilePath)
    : m_settings(iniFilePath, QSettings::IniFormat)
{}

QVariant QSettingsStore::read(const QString &key) const
{
    if (m_settings.contains(key))
        return m_settings.value(key);
    return readList(key);
}

// A list is a group holding "size" and the entries 1..size, each a string or
// a list of its own. Anything else under the group is not a list.
QVariant QSettingsStore::readList(const QString &key) const
{
    const QString sizePath = key + u'/' + sizeKey;
    if (!m_settings.contains(sizePath))
        return {};
    bool ok = false;
    const qint64 size = m_settings.value(sizePath).toString().toLongLong(&ok);
    if (!ok || size < 0)
        return {};
    m_settings.beginGroup(key);
    const qsizetype entries = m_settings.childKeys().size() + m_settings.childGroups().size() - 1;
    m_settings.endGroup();
    if (size > entries)
        return {};

    QVariantList list;
    list.reserve(size);
    for (qsizetype i = 0; i < size; ++i) {
        const QString entry = entryKey(key, i);
        QVariant item = m_settings.contains(entry) ? m_settings.value(entry) : readList(entry);
        if (!item.isValid())
            return {};
        list.append(item);
    }
    return list;
}

void QSettingsStore::write(const QString &key, const QVariant &value)
{
    m_settings.remove(key);
    if (value.typeId() == QMetaType::QVariantList)
        writeList(key, value.toList());
    else
        m_settings.setValue(key, value);
    if (!batching())
        m_settings.sync();
}

void QSettingsStore::writeList(const QString &key, const QVariantList &list)
{
    m_settings.setValue(key + u'/' + sizeKey, list.size());
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QVariant &item = list.at(i);
        if (item.typeId() == QMetaType::QVariantList)
            writeList(entryKey(key, i), item.toList());
        else
            m_settings.setValue(entryKey(key, i), item);
    }
}

void QSettingsStore::erase(const QString &key)
{
    m_settings.remove(key);
    if (!batching())
        m_settings.sync();
}
