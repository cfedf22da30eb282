// SPDX-License-Identifier: MIT
#include "platform/linux/InAppDelivery.h"

#include "core/Clock.h"
#include "reminders/DeliveryRules.h"

#include <QDir>
#include <QFileInfo>

namespace {

// The longest the running app sleeps between looks at the clock: a
// suspended machine does not count its sleep in timer intervals.
constexpr int longestWaitMs = 60'000;

} // namespace

InAppDelivery::InAppDelivery(ReminderStore &store, const Clock &clock, Presenter present,
                             QObject *parent)
    : QObject(parent), m_store(store), m_clock(clock), m_present(std::move(present))
{
    m_tick.setSingleShot(true);
    QObject::connect(&m_tick, &QTimer::timeout, this, &InAppDelivery::deliverDue);
}

void InAppDelivery::start()
{
    m_running = std::make_unique<QLockFile>(m_store.runningLockPath());
    QDir().mkpath(QFileInfo(m_store.runningLockPath()).absolutePath());
    m_running->tryLock(0);
    // After the first screen has loaded and become the delegate.
    m_tick.start(0);
}

void InAppDelivery::deliverDue()
{
    // Another Tavlo may have been running when this one started.
    if (m_running && !m_running->isLocked())
        m_running->tryLock(0);
    const QDateTime now = m_clock.now();
    for (const PendingReminder &reminder : m_store.takeDue(now)) {
        if (DeliveryRules::shownToday(reminder, now))
            m_present(reminder.request);
    }
    scheduleTick();
}

void InAppDelivery::scheduleTick()
{
    const QDateTime now = m_clock.now();
    std::optional<qint64> wait;
    for (const PendingReminder &reminder : m_store.pending()) {
        const qint64 until = std::max<qint64>(0, now.msecsTo(reminder.fire));
        wait = std::min(wait.value_or(until), until);
    }
    if (!wait) {
        m_tick.stop();
        return;
    }
    m_tick.start(int(std::min<qint64>(*wait, longestWaitMs)));
}
