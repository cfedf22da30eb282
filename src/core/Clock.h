// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

// Where "now" comes from, so that tests and the command line can choose it.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class FixedClock final : public Clock
{
public:
    explicit FixedClock(QDateTime moment) : m_moment(std::move(moment)) {}
    QDateTime now() const override { return m_moment; }
    void set(const QDateTime &moment) { m_moment = moment; }

private:
    QDateTime m_moment;
};
