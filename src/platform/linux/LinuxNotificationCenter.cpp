// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxNotificationCenter.h"

#include "core/Clock.h"
#include "platform/linux/DeliveryCommand.h"
#include "reminders/DeliveryRules.h"

#include <QTimer>

using namespace Qt::Literals::StringLiterals;

LinuxNotificationCenter::LinuxNotificationCenter(ReminderStore &store, const Clock &clock,
                                                 Options options, QObject *parent)
    : QObject(parent), m_store(store), m_clock(clock), m_options(std::move(options)),
      m_notifier(m_options.bus, m_options.iconPath),
      m_delivery(store, clock, [this](const NotificationRequest &r) { present(r); })
{}

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
    m_answers.append(handler);
    // A run adds up to five in a row: their wake-ups change once.
    if (!m_applyQueued) {
        m_applyQueued = true;
        QTimer::singleShot(0, this, &LinuxNotificationCenter::applyWakeups);
    }
}

void LinuxNotificationCenter::applyWakeups()
{
    m_applyQueued = false;
    std::optional<QString> error;
    if (m_options.wakeups)
        error = m_options.wakeups->apply(DeliveryRules::waiting(m_store, m_clock.now()));
    for (const AddHandler &answer : std::exchange(m_answers, {})) {
        if (!answer)
            continue;
        if (error)
            answer(NotificationError{u"WakeUpNotWritten"_s, *error});
        else
            answer(std::nullopt);
    }
}

void LinuxNotificationCenter::start()
{
    m_delivery.start();
    applyWakeups();
}

void LinuxNotificationCenter::whenIdle(std::function<void()> done)
{
    const auto afterApply = [this, done] {
        if (m_options.wakeups)
            m_options.wakeups->whenIdle(done);
        else
            done();
    };
    if (m_applyQueued)
        QTimer::singleShot(0, this, afterApply);
    else
        afterApply();
}

void LinuxNotificationCenter::present(const NotificationRequest &request)
{
    PresentationOptions options = DeliveryCommand::backgroundPresentation;
    if (m_options.inFront && m_options.inFront())
        options = delegate() ? delegate()->willPresent(request) : PresentationOption::Banner;
    if (!options.testFlag(PresentationOption::Banner) &&
        !options.testFlag(PresentationOption::List))
        return;
    m_notifier.notify(request, options);
}
