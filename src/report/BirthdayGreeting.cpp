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
