// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <ctime>

// Sets the process's time zone (TZ) for a scope and restores it afterwards.
class TimeZoneScope
{
public:
    explicit TimeZoneScope(const QByteArray &zone)
        : m_previous(qgetenv("TZ")), m_hadPrevious(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~TimeZoneScope()
    {
        if (m_hadPrevious)
            qputenv("TZ", m_previous);
        else
            qunsetenv("TZ");
        tzset();
    }
    TimeZoneScope(const TimeZoneScope &) = delete;
    TimeZoneScope &operator=(const TimeZoneScope &) = delete;

private:
    QByteArray m_previous;
    bool m_hadPrevious;
};
