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
    return timing;
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
