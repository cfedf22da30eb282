// SPDX-License-Identifier: MIT
#include "cli/JsonLine.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

// A JSON string literal, escaped by Qt's own writer.
QString quoted(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

} // namespace

void JsonLine::addKey(const QString &key)
{
    if (!m_members.isEmpty())
        m_members += u',';
    m_members += quoted(key) + u':';
}

JsonLine &JsonLine::add(const QString &key, const QString &value)
{
    addKey(key);
    m_members += quoted(value);
    return *this;
}

JsonLine &JsonLine::add(const QString &key, qint64 value)
{
    addKey(key);
    m_members += QString::number(value);
    return *this;
}

JsonLine &JsonLine::addBoolean(const QString &key, bool value)
{
    addKey(key);
    m_members += value ? QStringLiteral("true") : QStringLiteral("false");
    return *this;
}

JsonLine &JsonLine::add(const QString &key, std::optional<qint64> value)
{
    if (value)
        return add(key, *value);
    addKey(key);
    m_members += QStringLiteral("null");
    return *this;
}
