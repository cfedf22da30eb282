#pragma once

#include "NotificationCenter.h"
#include "favorites/FavoritesStore.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTime>
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
    // Set when the favorite's name was empty and "Unknown" stands in for it:
    // the name as it was, for the "nameSpace = " line.
    std::optional<QString> blankName;

    NotificationRequest request() const;
};

namespace Reminders {

// Birthdays are looked for from tomorrow to this many days ahead.
inline constexpr int daysAhead = 201;
inline constexpr int maxPerRun = 5;
inline const QTime timeOfDay{7, 30};

// The reminders for `favorites` at `now`: a favorite matches a day when its
// birthday text and the day's "d M yyyy" text agree once the last four
// characters (the year) are cut off; at most five, by day and then by list
// order, each at 7:30 local time on its day.
QList<PlannedReminder> plan(const QDateTime &now, const QList<Favorite> &favorites,
                            const UiStrings &strings);

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

    void checkNotificationPermission();
    // Adds this run's reminders and writes their "selectetDate" lines.
    void scheduleReminders();

private:
    void onStatus(AuthorizationStatus status);

    NotificationCenter &m_center;
    SettingsStore &m_settings;
    const Clock &m_clock;
    const FavoritesStore &m_favorites;
    const UiStrings &m_strings;
};
