// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "reminders/NotificationCenter.h"
#include "settings/ReminderTiming.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTime>
#include <functional>
#include <optional>

class Clock;
class SettingsStore;
class UiStrings;

// One reminder a scheduling run would add.
struct PlannedReminder
{
    int number = 0;
    QString identifier;
    QString title;
    QString body;
    QDateTime fire;
    // The favorite it is about (its stable id), and how many days before
    // the birthday it comes.
    QString favoriteId;
    int daysBefore = 0;
    // Set when the favorite's name was empty and "Unknown" stands in for it:
    // the name as it was, for the "nameSpace = " line.
    std::optional<QString> blankName;

    NotificationRequest request() const;
};

namespace Reminders {

// Reminders are looked for from tomorrow to this many days ahead.
inline constexpr int daysAhead = 201;
inline constexpr int maxPerRun = 5;
// When the reminders come, as chosen on the settings screen.
using Timing = ReminderTiming;

// The reminders for `favorites` at `now`: a reminder day matches a favorite
// when the favorite's birthday text and the "d M yyyy" text of the day
// `timing.daysBefore` after it agree once the last four characters (the year)
// are cut off; likewise for the second reminder, when it is on, with its own
// days before. Reminder days run from tomorrow to 201 days ahead; at most
// five reminders in all, by day and then by list order, each at the chosen
// time (7:30 local time unless chosen otherwise).
QList<PlannedReminder> plan(const QDateTime &now, const QList<Favorite> &favorites,
                            const UiStrings &strings, const Timing &timing = {});

// A fire date as the settings and diagnostics show it: "2026-03-07 07:30:00 +0100".
QString printedDate(const QDateTime &moment);
// ISO 8601 with the offset from UTC: "2026-03-07T07:30:00+01:00".
QString isoDate(const QDateTime &moment);

} // namespace Reminders

// Checks the notification permission and, when allowed, schedules the
// reminders of the saved favorites. Everything after the first question runs
// in the notification centre's callbacks.
class ReminderScheduler
{
public:
    ReminderScheduler(NotificationCenter &center, SettingsStore &settings, const Clock &clock,
                      const FavoritesStore &favorites, const UiStrings &strings);

    NotificationCenter &center() { return m_center; }

    // `done` learns what was scheduled, once every add has been answered
    // (nothing when notifications are not allowed), and the first thing that
    // could not be stored ("could not save PATH: REASON"), if any.
    using Done = std::function<void(const QList<PlannedReminder> &scheduled,
                                    const std::optional<QString> &failure)>;

    void checkNotificationPermission(Done done = {});
    // Adds this run's reminders and writes their "selectetDate" lines.
    void scheduleReminders(Done done = {});

private:
    void onStatus(AuthorizationStatus status, const Done &done);

    NotificationCenter &m_center;
    SettingsStore &m_settings;
    const Clock &m_clock;
    const FavoritesStore &m_favorites;
    const UiStrings &m_strings;
};
