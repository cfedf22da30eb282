// SPDX-License-Identifier: MIT
#include "report/BirthdayGreeting.h"

#include "texts/UiStrings.h"

#include <algorithm>
#include <array>
#include <bitset>

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

// Whether a count of days is a round count of days or of weeks; looked up,
// as every favorite is asked on every start.
bool isDayOrWeekMilestone(qint64 days)
{
    constexpr qint64 last = weekMilestones.back() * 7;
    static const std::bitset<last + 1> table = [] {
        std::bitset<last + 1> milestones;
        for (const qint64 d : dayMilestones)
            milestones.set(size_t(d));
        for (const qint64 w : weekMilestones)
            milestones.set(size_t(w * 7));
        return milestones;
    }();
    return days >= 0 && days <= last && table.test(size_t(days));
}

// Whether a count of months is a round one; looked up as the days are.
bool isMonthMilestone(qint64 months)
{
    constexpr qint64 last = monthMilestones.back();
    static const std::bitset<last + 1> table = [] {
        std::bitset<last + 1> milestones;
        for (const qint64 m : monthMilestones)
            milestones.set(size_t(m));
        return milestones;
    }();
    return months >= 0 && months <= last && table.test(size_t(months));
}

} // namespace

bool birthdayGreetingMayApply(QDate birthDate, QDate today)
{
    // No birthday line: the facts count the days to the next birthday,
    // which on the day itself is a year away. The counts are read back from
    // their text without a sign, so a date to come counts as well.
    //
    // The facts count from the birth instant in local time: midnight in UTC
    // of the record date, so here the record date or the day before, at some
    // time of day. That and a change of the clocks move a count of days by at
    // most two.
    constexpr qint64 margin = 2;
    const qint64 days = birthDate.daysTo(today);
    for (qint64 d = days - margin; d <= days + margin; ++d) {
        if (isDayOrWeekMilestone(d < 0 ? -d : d))
            return true;
    }
    // A round count of months is greeted only on the day of the month it
    // turns over on (the birth's day, pinned to the end of a shorter month)
    // or the day after, until the time of day of the birth; a day either way
    // also covers whole years from 29 February that end on 28 February.
    // Months are counted to that day, give or take one.
    int year = 0;
    int month = 0;
    int birthYear = 0;
    int birthMonth = 0;
    today.getDate(&year, &month, nullptr);
    birthDate.getDate(&birthYear, &birthMonth, nullptr);
    const qint64 months = (qint64(year) - birthYear) * 12 + month - birthMonth;
    bool nearRoundMonths = false;
    for (qint64 m = months - 3; m <= months + 3 && !nearRoundMonths; ++m)
        nearRoundMonths = isMonthMilestone(m < 0 ? -m : m);
    if (!nearRoundMonths)
        return false;
    for (qint64 shift = -1; shift <= 1; ++shift) {
        const QDate turn = today.addDays(shift);
        for (const QDate birth : {birthDate.addDays(-1), birthDate}) {
            if (turn.day() != std::min(birth.day(), turn.daysInMonth()))
                continue;
            const qint64 toTurn =
                (qint64(turn.year()) - birth.year()) * 12 + turn.month() - birth.month();
            for (qint64 m = toTurn - 1; m <= toTurn + 1; ++m) {
                if (isMilestone(monthMilestones, m < 0 ? -m : m))
                    return true;
            }
        }
    }
    return false;
}

QString birthdayGreetingLine(const QString &name, const AgeFacts &age, const UiStrings &strings)
{
    const Translations &t = strings.translations();
    const QString paragraphEnd = QStringLiteral("\n\n");
    if (age.daysToBirthday == 0)
        return strings.birthdayToday(name) + paragraphEnd;

    if (isMilestone(dayMilestones, age.totalDays)) {
        //: A greeting on a round age: %1 the name, %n the days (100, 1000, ...)
        return filled(t.translate("BirthdayGreeting", "%1 is now %n days old!", nullptr,
                                  age.totalDays),
                      {name}) +
               paragraphEnd;
    }
    // A month count only turns over on the day of the month of the birth.
    if (isMilestone(monthMilestones, age.totalMonths) && age.ageDays == 0) {
        //: A greeting on a round age: %1 the name, %n the months (10, 50, 100, ...)
        return filled(t.translate("BirthdayGreeting", "%1 is now %n months old!", nullptr,
                                  age.totalMonths),
                      {name}) +
               paragraphEnd;
    }
    // A week count only turns over on the weekday of the birth.
    if (isMilestone(weekMilestones, age.totalWeeks) && age.totalDays % 7 == 0) {
        //: A greeting on a round age: %1 the name, %n the weeks (10, 50, 100, ...)
        return filled(t.translate("BirthdayGreeting", "%1 is now %n weeks old!", nullptr,
                                  age.totalWeeks),
                      {name}) +
               paragraphEnd;
    }
    return {};
}

QString birthdayWithoutYearGreetingLine(const QString &name, const DayOfBirth &day, QDate today,
                                        const UiStrings &strings)
{
    const QDate birthday = QDate(today.year(), day.month(), 1).addDays(day.day() - 1);
    if (birthday != today)
        return {};
    return strings.birthdayToday(name) + QStringLiteral("\n\n");
}
