#include "DeliveryCommand.h"

#include "DBusNotifier.h"
#include "core/Clock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

// A timer may wake a moment before the reminder's second.
constexpr int earlyWakeSecs = 60;

} // namespace

bool DeliveryCommand::shownToday(const PendingReminder &reminder, const QDateTime &now)
{
    return reminder.fire.toLocalTime().date() == now.toLocalTime().date();
}

int DeliveryCommand::deliver(const QString &identifier, ReminderStore &store, const Clock &clock,
                             DBusNotifier &notifier)
{
    // A running Tavlo shows it in the foreground manner when its time comes.
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
    if (!taken || !shownToday(*taken, now))
        return 0;

    if (const std::optional<QString> error =
            notifier.notifyAndWait(taken->request, backgroundPresentation)) {
        // Back in the list, for the app to show when it starts today.
        store.put(*taken);
        std::fprintf(stderr, "tavlo deliver-reminder: %s could not be shown: %s\n",
                     qPrintable(identifier), qPrintable(*error));
        return 1;
    }
    return 0;
}

QString DeliveryCommand::installIcon(const QString &folder)
{
    QFile source(u":/tavlo/notification/tavlo.svg"_s);
    if (!source.open(QIODevice::ReadOnly))
        return {};
    const QByteArray picture = source.readAll();
    const QString path = QDir(folder).absoluteFilePath(u"tavlo.svg"_s);
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == picture)
        return path;
    QDir().mkpath(folder);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(picture) != picture.size() || !file.commit())
        return {};
    return path;
}
