// SPDX-License-Identifier: MIT
#include "app/EventLoopStalls.h"

#include <cstdio>

namespace {
constexpr int tickMs = 5;
constexpr qint64 reportedMs = 50;
} // namespace

EventLoopStalls::EventLoopStalls(QObject *parent) : QObject(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(tickMs);
    connect(&m_timer, &QTimer::timeout, this, &EventLoopStalls::tick);
    m_clock.start();
    m_timer.start();
}

EventLoopStalls::~EventLoopStalls()
{
    std::fprintf(stderr, "stalls: longest %lld ms, %d over %lld ms\n",
                 static_cast<long long>(m_longest), m_over, static_cast<long long>(reportedMs));
}

void EventLoopStalls::tick()
{
    const qint64 now = m_clock.elapsed();
    const qint64 late = now - m_last - tickMs;
    m_last = now;
    if (late > m_longest)
        m_longest = late;
    if (late > reportedMs) {
        ++m_over;
        std::fprintf(stderr, "stall: %lld ms at %lld ms\n", static_cast<long long>(late),
                     static_cast<long long>(now));
    }
}
