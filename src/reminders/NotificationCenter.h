// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QFlags>
#include <QString>
#include <QTimeZone>
#include <functional>
#include <optional>

// What the birthday reminders need of a local notification service. Every
// answer arrives through its callback, later and on whatever thread the
// service answers on; a caller never waits for one.

enum class AuthorizationStatus { NotDetermined, Denied, Authorized, Provisional, Ephemeral };

enum class AuthorizationOption { Alert = 0x1, Badge = 0x2, Sound = 0x4 };
Q_DECLARE_FLAGS(AuthorizationOptions, AuthorizationOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(AuthorizationOptions)

// How a notification that arrives while Tavlo is in the foreground is shown.
enum class PresentationOption { Banner = 0x1, List = 0x2, Sound = 0x4, Badge = 0x8 };
Q_DECLARE_FLAGS(PresentationOptions, PresentationOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(PresentationOptions)

// A failure as the log lines print it: "(<printed>, <description>)".
struct NotificationError
{
    QString printed;
    QString description;
};

// Fires at the next moment whose Gregorian month, day, hour and minute in
// the time zone match; no year, no second.
struct CalendarTrigger
{
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    QTimeZone timeZone = QTimeZone::systemTimeZone();
    bool repeats = false;

    // The trigger's components of a local moment, in the device's time zone.
    static CalendarTrigger at(const QDateTime &moment);

    // The first matching moment after `after`; none when the components name
    // no date (31 April).
    std::optional<QDateTime> nextFireAfter(const QDateTime &after) const;

    // `time` on `date` in `zone`. A time that the clocks skip gives the
    // moment they jump to; a time that happens twice gives the first.
    static QDateTime momentIn(const QTimeZone &zone, QDate date, QTime time);

    friend bool operator==(const CalendarTrigger &, const CalendarTrigger &) = default;
};

struct NotificationRequest
{
    QString identifier;
    QString title;
    QString body;
    CalendarTrigger trigger;
    // The favorite the reminder is about, by its stable id: a tap on the
    // notification opens Tavlo on it. Empty: no favorite in particular.
    QString favoriteId;

    friend bool operator==(const NotificationRequest &, const NotificationRequest &) = default;
};

// Answers for notifications that arrive while Tavlo is in the foreground.
class NotificationCenterDelegate
{
public:
    virtual ~NotificationCenterDelegate() = default;
    virtual PresentationOptions willPresent(const NotificationRequest &request) = 0;
};

class NotificationCenter
{
public:
    using StatusHandler = std::function<void(AuthorizationStatus)>;
    using AuthorizationHandler =
        std::function<void(bool granted, const std::optional<NotificationError> &error)>;
    using AddHandler = std::function<void(const std::optional<NotificationError> &error)>;

    virtual ~NotificationCenter() = default;

    virtual void getAuthorizationStatus(StatusHandler handler) = 0;
    virtual void requestAuthorization(AuthorizationOptions options,
                                      AuthorizationHandler handler) = 0;
    // A one-shot request; a pending request with the same identifier is
    // replaced.
    virtual void add(const NotificationRequest &request, AddHandler handler) = 0;

    // Not owned; clear it before the delegate goes.
    void setDelegate(NotificationCenterDelegate *delegate) { m_delegate = delegate; }
    NotificationCenterDelegate *delegate() const { return m_delegate; }

private:
    NotificationCenterDelegate *m_delegate = nullptr;
};
