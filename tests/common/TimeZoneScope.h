// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <ctime>
#include <optional>

// Sets the process's time zone (TZ) for a scope and restores it afterwards.
class TimeZoneScope
{
public:
    explicit TimeZoneScope(const QByteArray &zone)
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~TimeZoneScope()
    {
        m_previous ? qputenv("TZ", *m_previous) : qunsetenv("TZ");
        tzset();
    }
    Q_DISABLE_COPY(TimeZoneScope)

private:
    const std::optional<QByteArray> m_previous =
        qEnvironmentVariableIsSet("TZ") ? std::optional(qgetenv("TZ")) : std::nullopt;
};
