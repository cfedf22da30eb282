// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTime>
#include <optional>

class SettingsStore;
class UiStrings;

// When the birthday reminders come, as the person chose on the settings
// screen: the time of day and how many days before the birthday, and how
// many days before it a second reminder comes, if one does.
struct ReminderTiming
{
    static inline const QTime defaultTimeOfDay{7, 30};
    // The choices of how early, in days before the birthday.
    static inline const QList<int> leadDayChoices{0, 1, 3, 7};
    // The time moves in steps of this many minutes.
    static constexpr int minuteStep = 15;

    QTime timeOfDay = defaultTimeOfDay;
    int daysBefore = 0;
    std::optional<int> secondDaysBefore;

    // How many days before the birthday each reminder comes: the first, and
    // the second unless it is off or the same as the first.
    QList<int> leads() const;

    // Read from the settings store; a missing or unknown value gives the
    // default.
    static ReminderTiming from(const SettingsStore &settings);
    static void setTimeOfDay(SettingsStore &settings, QTime time);
    static void setDaysBefore(SettingsStore &settings, int days);
    // Turns the second reminder off (none) or on at `days` before, in one
    // write.
    static void setSecondDaysBefore(SettingsStore &settings, std::optional<int> days);
    // The second reminder's choice after the present one, round the list
    // that goes off, on the day, 1, 3 and 7 days before, and back to off;
    // the first reminder's own choice is passed over.
    std::optional<int> nextSecondChoice() const;
    // The time `steps` steps later (earlier when negative), round the clock.
    QTime steppedTime(int steps) const;
    // The choices of how early in the interface language, as leadDayChoices.
    static QStringList leadChoiceTexts(const UiStrings &strings);

    friend bool operator==(const ReminderTiming &, const ReminderTiming &) = default;
};
