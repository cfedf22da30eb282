#include "LinuxNotificationCenter.h"

#include "DeliveryCommand.h"
#include "SystemdRunTimers.h"
#include "core/Clock.h"

#include <QFileInfo>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

LinuxNotificationCenter::LinuxNotificationCenter(ReminderStore &store, const Clock &clock,
                                                 Options options, QObject *parent)
    : QObject(parent), m_store(store), m_clock(clock), m_notifier(options.bus, options.iconPath),
      m_delivery(store, clock, [this](const NotificationRequest &r) { present(r); })
{
    if (options.timers) {
        m_timers = std::make_unique<SystemdRunTimers>(*options.timers, options.program,
                                                      options.timerEnvironment);
    }
}

LinuxNotificationCenter::~LinuxNotificationCenter() = default;

void LinuxNotificationCenter::getAuthorizationStatus(StatusHandler handler)
{
    m_notifier.probe([handler](bool answered) {
        handler(answered ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied);
    });
}

void LinuxNotificationCenter::requestAuthorization(AuthorizationOptions,
                                                   AuthorizationHandler handler)
{
    // There is nobody to ask: a notification service that answers is the
    // permission.
    m_notifier.probe([handler](bool answered) { handler(answered, std::nullopt); });
}

void LinuxNotificationCenter::add(const NotificationRequest &request, AddHandler handler)
{
    const auto finish = [this, handler](std::optional<NotificationError> error) {
        QTimer::singleShot(0, this, [handler, error] {
            if (handler)
                handler(error);
        });
    };
    const std::optional<QDateTime> fire = request.trigger.nextFireAfter(m_clock.now());
    if (!fire) {
        finish(NotificationError{u"InvalidTrigger"_s,
                                 u"the trigger's month, day, hour and minute name no moment"_s});
        return;
    }
    if (const std::optional<QString> error = m_store.put({request, *fire})) {
        finish(NotificationError{u"StoreNotWritten"_s, *error});
        return;
    }
    m_delivery.scheduleTick();
    if (!m_timers) {
        finish(std::nullopt);
        return;
    }
    m_timers->arm(request.identifier, *fire, handler);
}

void LinuxNotificationCenter::start()
{
    m_delivery.start();
    if (m_timers) {
        const QDateTime now = m_clock.now();
        QList<PendingReminder> waiting;
        for (const PendingReminder &reminder : m_store.pending()) {
            if (reminder.fire > now)
                waiting.append(reminder);
        }
        m_timers->rearmLost(waiting);
    }
}

void LinuxNotificationCenter::present(const NotificationRequest &request)
{
    const PresentationOptions options =
        delegate() ? delegate()->willPresent(request) : DeliveryCommand::backgroundPresentation;
    if (!options.testFlag(PresentationOption::Banner) &&
        !options.testFlag(PresentationOption::List))
        return;
    m_notifier.notify(request, options);
}

bool LinuxNotificationCenter::hasSystemdUserSession()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QFileInfo(u"/run/systemd/system"_s).isDir() && !runtime.isEmpty() &&
           QFileInfo::exists(runtime + u"/systemd/private"_s);
}
