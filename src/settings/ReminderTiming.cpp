// SPDX-License-Identifier: MIT
#include "settings/ReminderTiming.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "texts/UiStrings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString timeFormat = u"HH:mm"_s;

} // namespace

ReminderTiming ReminderTiming::from(const SettingsStore &settings)
{
    ReminderTiming timing;
    if (const std::optional<QString> time = settings.value(SettingsKeys::reminderTime)) {
        const QTime chosen = QTime::fromString(*time, timeFormat);
        if (chosen.isValid())
            timing.timeOfDay = chosen;
    }
    const qint64 days = settings.value(SettingsKeys::reminderDaysBefore);
    if (leadDayChoices.contains(days))
        timing.daysBefore = int(days);
    const qint64 second = settings.value(SettingsKeys::secondReminderDaysBefore);
    if (settings.value(SettingsKeys::secondReminder) && leadDayChoices.contains(second))
        timing.secondDaysBefore = int(second);
    return timing;
}

QList<int> ReminderTiming::leads() const
{
    if (secondDaysBefore && *secondDaysBefore != daysBefore)
        return {daysBefore, *secondDaysBefore};
    return {daysBefore};
}

void ReminderTiming::setTimeOfDay(SettingsStore &settings, QTime time)
{
    settings.set(SettingsKeys::reminderTime, time.toString(timeFormat));
}

void ReminderTiming::setDaysBefore(SettingsStore &settings, int days)
{
    if (leadDayChoices.contains(days))
        settings.set(SettingsKeys::reminderDaysBefore, days);
}

void ReminderTiming::setSecondDaysBefore(SettingsStore &settings, std::optional<int> days)
{
    if (days && !leadDayChoices.contains(*days))
        return;
    SettingsBatch batch(settings);
    settings.set(SettingsKeys::secondReminder, days.has_value());
    if (days)
        settings.set(SettingsKeys::secondReminderDaysBefore, *days);
    batch.finish();
}

std::optional<int> ReminderTiming::nextSecondChoice() const
{
    // Off, then each choice in turn, then off again.
    QList<std::optional<int>> cycle{std::nullopt};
    for (const int days : leadDayChoices) {
        if (days != daysBefore)
            cycle.append(days);
    }
    // One the same as the first counts as off, as in the plan.
    const qsizetype at = cycle.indexOf(leads().size() > 1 ? secondDaysBefore : std::nullopt);
    return cycle.value((at + 1) % cycle.size());
}

QTime ReminderTiming::steppedTime(int steps) const
{
    constexpr int minutesPerDay = 24 * 60;
    const int minutes = timeOfDay.hour() * 60 + timeOfDay.minute() + steps * minuteStep;
    const int wrapped = ((minutes % minutesPerDay) + minutesPerDay) % minutesPerDay;
    return QTime(wrapped / 60, wrapped % 60);
}

QStringList ReminderTiming::leadChoiceTexts(const UiStrings &strings)
{
    return {strings[UiText::OnTheDay], strings[UiText::OneDayBefore],
            strings[UiText::ThreeDaysBefore], strings[UiText::OneWeekBefore]};
}
