// SPDX-License-Identifier: MIT
#include "platform/linux/DeliveryCommand.h"

#include "core/Clock.h"
#include "platform/linux/DBusNotifier.h"
#include "platform/linux/ReminderWakeups.h"
#include "reminders/DeliveryRules.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLockFile>
#include <QTimer>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

// A timer may wake a moment before the reminder's second.
constexpr int earlyWakeSecs = 60;
// The longest the background Tavlo sleeps between looks at the clock and the
// file: a suspended phone does not count its sleep, and the app may have
// planned anew.
constexpr qint64 longestWaitMs = 60'000;
// A reminder that could not be shown yet (no notification service so soon
// after login) is tried again after this.
constexpr qint64 retryMs = 5'000;

} // namespace

QString DeliveryCommand::backgroundLockPath(const ReminderStore &store)
{
    return QFileInfo(store.filePath()).absolutePath() + u"/background.lock"_s;
}

int DeliveryCommand::deliver(const QString &identifier, ReminderStore &store, const Clock &clock,
                             DBusNotifier &notifier)
{
    // A running Tavlo shows it in its own manner when its time comes.
    QLockFile running(store.runningLockPath());
    if (QFileInfo::exists(store.runningLockPath()) && !running.tryLock(0))
        return 0;
    running.unlock();

    const QDateTime now = clock.now();
    const std::optional<PendingReminder> taken =
        store.takeIf(identifier, [&](const PendingReminder &reminder) {
            return reminder.fire <= now.addSecs(earlyWakeSecs);
        });
    // Not pending (shown already, or replaced by a later one), or missed on
    // an earlier day.
    if (!taken || !DeliveryRules::shownToday(*taken, now))
        return 0;

    const auto shown = notifier.notifyAndWait(taken->request, backgroundPresentation);
    if (const auto *error = std::get_if<QString>(&shown)) {
        // Back in the list, for a later try or the app to show today.
        store.put(*taken);
        std::fprintf(stderr, "tavlo deliver-reminder: %s could not be shown: %s\n",
                     qPrintable(identifier), qPrintable(*error));
        return 1;
    }
    return 0;
}

int DeliveryCommand::deliverInBackground(ReminderStore &store, const Clock &clock,
                                         DBusNotifier &notifier, ReminderWakeups &wakeups)
{
    QLockFile background(backgroundLockPath(store));
    QDir().mkpath(QFileInfo(store.filePath()).absolutePath());
    if (!background.tryLock(0))
        return 0;
    for (;;) {
        const QDateTime now = clock.now();
        const QList<PendingReminder> pending = DeliveryRules::waiting(store, now);
        if (pending.isEmpty())
            break;
        qint64 wait = longestWaitMs;
        for (const PendingReminder &reminder : pending) {
            if (reminder.fire <= now) {
                // Still pending after this when it could not be shown yet, or
                // when the running app shows it: look again soon.
                deliver(reminder.request.identifier, store, clock, notifier);
                wait = std::min(wait, retryMs);
            } else {
                wait = std::min(wait, now.msecsTo(reminder.fire));
            }
        }
        QEventLoop sleep;
        QTimer::singleShot(std::max<qint64>(wait, 1), &sleep, &QEventLoop::quit);
        sleep.exec();
    }
    // Nothing left, unless the app planned anew this very moment.
    wakeups.apply(DeliveryRules::waiting(store, clock.now()));
    notifier.waitForAnswers(DeliveryRules::restOfDayMs(clock.now()));
    return 0;
}
