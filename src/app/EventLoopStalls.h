// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

// Measures how late the interface thread's event loop comes back to a
// ticking timer: a frame waits as long as the loop is held up. Switched on
// with TAVLO_STALL_TRACE=1 to see whether work such as following the address
// books ever holds a frame back; each hold-up over 50 ms is written to
// standard error as it happens, and the longest when the app ends.
class EventLoopStalls : public QObject
{
    Q_OBJECT

public:
    explicit EventLoopStalls(QObject *parent = nullptr);
    ~EventLoopStalls() override;

private:
    void tick();

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    qint64 m_longest = 0;
    int m_over = 0;
};
