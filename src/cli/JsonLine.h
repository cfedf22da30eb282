// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

// One JSON object on one line, its keys in the order they were added.
class JsonLine
{
public:
    JsonLine &add(const QString &key, const QString &value);
    JsonLine &add(const QString &key, qint64 value);
    // null for nothing.
    JsonLine &add(const QString &key, std::optional<qint64> value);
    // Named apart, so that a string literal never turns into a boolean.
    JsonLine &addBoolean(const QString &key, bool value);

    QString text() const { return u'{' + m_members + u'}'; }

private:
    void addKey(const QString &key);

    QString m_members;
};
