// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/NotificationCenter.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <functional>
#include <optional>

// A request waiting to be shown, with the moment its trigger comes round.
struct PendingReminder
{
    NotificationRequest request;
    QDateTime fire;

    friend bool operator==(const PendingReminder &, const PendingReminder &) = default;
};

// The reminders Tavlo has scheduled and not yet shown, kept in a file of its
// own so that they outlive the app:
//
//   {"reminders":[{"identifier":"birthdayReminder1","title":"Birthday Reminder",
//     "body":"Anna has a birthday today!","month":3,"day":7,"hour":7,"minute":30,
//     "timeZone":"Europe/Berlin","fire":"2026-03-07T07:30:00+01:00",
//     "favorite":"<the favorite's id>"}]}
//
// Each change reads the file, changes it and replaces it whole, under a lock
// file: the app and a timer's delivery may both reach for the same reminder,
// and only one may take it. A file that cannot be read is kept beside it as
// "<file>.unreadable" with a warning, and the list starts empty.
class ReminderStore
{
public:
    explicit ReminderStore(QString filePath = defaultPath());

    // $XDG_DATA_HOME/tavlo/reminders.json
    static QString defaultPath();
    QString filePath() const { return m_path; }
    // Held by a running app for as long as it runs.
    QString runningLockPath() const;

    QList<PendingReminder> pending() const;
    // Adds the reminder, replacing one with the same identifier. Returns an
    // error text when the file could not be written.
    std::optional<QString> put(const PendingReminder &reminder);
    // Removes and returns the reminder with this identifier when `take` says so.
    std::optional<PendingReminder> takeIf(const QString &identifier,
                                          const std::function<bool(const PendingReminder &)> &take);
    // Removes and returns every reminder whose moment has come by `now`.
    QList<PendingReminder> takeDue(const QDateTime &now);

private:
    using Change = std::function<void(QList<PendingReminder> &)>;
    // Runs `change` on the stored list under the lock and writes the result
    // back when it differs.
    std::optional<QString> modify(const Change &change);
    QList<PendingReminder> read() const;
    std::optional<QString> write(const QList<PendingReminder> &reminders) const;

    QString m_path;
};
