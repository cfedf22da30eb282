// SPDX-License-Identifier: MIT
#include "report/BirthdayGreeting.h"

#include "texts/UiStrings.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<qint64, 6> dayMilestones = {100, 1000, 5000, 10000, 25000, 30000};
constexpr std::array<qint64, 12> monthMilestones = {10,  50,  100, 200, 300, 400,
                                                    500, 600, 700, 800, 900, 1000};
constexpr std::array<qint64, 16> weekMilestones = {10,  50,  100, 200,  300,  400,  500,  600,
                                                   700, 800, 900, 1000, 2000, 3000, 4000, 5000};

template <size_t N>
bool isMilestone(const std::array<qint64, N> &milestones, qint64 value)
{
    return std::find(milestones.begin(), milestones.end(), value) != milestones.end();
}

} // namespace

bool birthdayGreetingMayApply(QDate birthDate, QDate today)
{
    // The facts count from the birth instant in local time, up to a day away
    // from the record date, and to the time of day now; three days and
    // three months either side cover both. The counts are read back from
    // their text without a sign, so a date to come counts as well.
    constexpr qint64 margin = 3;
    const qint64 toBirthday = daysToNextBirthday(birthDate, today);
    if (toBirthday <= margin || toBirthday >= 365 - margin)
        return true;
    const qint64 days = birthDate.daysTo(today);
    for (qint64 d = days - margin; d <= days + margin; ++d) {
        const qint64 count = d < 0 ? -d : d;
        if (isMilestone(dayMilestones, count) ||
            (count % 7 == 0 && isMilestone(weekMilestones, count / 7)))
            return true;
    }
    const qint64 months =
        (qint64(today.year()) - birthDate.year()) * 12 + today.month() - birthDate.month();
    for (qint64 m = months - margin; m <= months + margin; ++m) {
        if (isMilestone(monthMilestones, m < 0 ? -m : m))
            return true;
    }
    return false;
}

QString birthdayGreetingLine(const QString &name, const AgeFacts &age, const UiStrings &strings)
{
    const QString paragraphEnd = QStringLiteral("\n\n");
    if (age.daysToBirthday == 0)
        return name + u' ' + strings[UiText::HasABirthdayToday] + paragraphEnd;

    const auto announce = [&](qint64 count, UiText unit) {
        return name + u' ' + strings[UiText::IsNow] + u' ' + QString::number(count) + u' ' +
               strings[unit] + paragraphEnd;
    };
    if (isMilestone(dayMilestones, age.totalDays))
        return announce(age.totalDays, UiText::DaysOld);
    // A month count only turns over on the day of the month of the birth.
    if (isMilestone(monthMilestones, age.totalMonths) && age.ageDays == 0)
        return announce(age.totalMonths, UiText::MonthsOld);
    // A week count only turns over on the weekday of the birth.
    if (isMilestone(weekMilestones, age.totalWeeks) && age.totalDays % 7 == 0)
        return announce(age.totalWeeks, UiText::WeeksOld);
    return {};
}
