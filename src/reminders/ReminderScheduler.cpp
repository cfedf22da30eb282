// SPDX-License-Identifier: MIT
#include "reminders/ReminderScheduler.h"

#include "core/Clock.h"
#include "core/DatePattern.h"
#include "core/DayOfBirth.h"
#include "core/DebugLog.h"
#include "settings/SettingsStore.h"
#include "texts/UiStrings.h"

#include <QHash>
#include <QStringView>
#include <algorithm>
#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

// The record text without its year: "7 3 1985" gives "7 3 ". A text shorter
// than the cut gives nothing, which matches no day.
QStringView withoutYear(QStringView text)
{
    return text.size() >= 4 ? text.chopped(4) : QStringView();
}

// "+0100", or "+01:00" with a colon.
QString offsetText(const QDateTime &moment, bool colon)
{
    const int offset = moment.offsetFromUtc();
    const int minutes = std::abs(offset) / 60;
    QString text = offset < 0 ? u"-"_s : u"+"_s;
    text += u"%1"_s.arg(minutes / 60, 2, 10, QChar(u'0'));
    if (colon)
        text += u':';
    return text + u"%1"_s.arg(minutes % 60, 2, 10, QChar(u'0'));
}

struct Match
{
    int day;
    qsizetype favorite;
    int daysBefore;
};

} // namespace

NotificationRequest PlannedReminder::request() const
{
    return {identifier, title, body, CalendarTrigger::at(fire), favoriteId};
}

QList<PlannedReminder> Reminders::plan(const QDateTime &now, const QList<Favorite> &favorites,
                                       const UiStrings &strings, const Timing &timing)
{
    // For each reminder of a birthday (how many days before it comes), the
    // reminder days ahead by the year-less text of their birthday. Within 201
    // days no text comes twice, so one pass over the favorites finds each
    // one's days.
    const DatePattern &dayText = DatePattern::stored();
    const QDate today = now.date();
    const QList<int> leads = timing.leads();
    QList<QList<QString>> dayTexts(leads.size());
    QList<QHash<QStringView, int>> dayOfText(leads.size());
    for (qsizetype l = 0; l < leads.size(); ++l) {
        dayTexts[l].reserve(daysAhead);
        dayOfText[l].reserve(daysAhead);
        for (int day = 1; day <= daysAhead; ++day) {
            dayTexts[l].append(dayText.format(today.addDays(day + leads.at(l))).chopped(4));
            dayOfText[l].insert(dayTexts[l].constLast(), day);
        }
    }

    // The first five by day, then by list order. A favorite's two reminders
    // fall on different days, each counting as one of the five.
    QList<Match> chosen;
    for (qsizetype i = 0; i < favorites.size(); ++i) {
        const QString &birthday = favorites.at(i).birthday;
        // "7 3", a birthday without a year, has its day as "7 3 " too.
        QString dayAndMonth;
        if (birthday.count(u' ') == 1) {
            if (const std::optional<DayOfBirth> day = DayOfBirth::fromStored(birthday);
                day && !day->hasYear())
                dayAndMonth = day->stored() + u' ';
        }
        const QStringView key = dayAndMonth.isEmpty() ? withoutYear(birthday) : dayAndMonth;
        for (qsizetype l = 0; l < leads.size(); ++l) {
            const auto found = dayOfText.at(l).constFind(key);
            if (found == dayOfText.at(l).constEnd())
                continue;
            const int day = *found;
            if (chosen.size() == maxPerRun && day >= chosen.constLast().day)
                continue;
            const auto at = std::upper_bound(chosen.begin(), chosen.end(), day,
                                             [](int d, const Match &m) { return d < m.day; });
            chosen.insert(at, Match{day, i, leads.at(l)});
            if (chosen.size() > maxPerRun)
                chosen.removeLast();
        }
    }

    const QTimeZone zone = QTimeZone::systemTimeZone();
    QList<PlannedReminder> planned;
    for (const Match &match : chosen) {
        PlannedReminder reminder;
        reminder.number = int(planned.size()) + 1;
        reminder.identifier = u"birthdayReminder"_s + QString::number(reminder.number);
        reminder.favoriteId = favorites.at(match.favorite).id;
        reminder.daysBefore = match.daysBefore;
        QString name = favorites.at(match.favorite).name;
        while (name.endsWith(u' '))
            name.chop(1);
        if (name.isEmpty() || name == u" ") {
            reminder.blankName = name;
            name = u"Unknown"_s;
        }
        reminder.title = strings[UiText::BirthdayReminder];
        reminder.body = match.daysBefore == 0 ? strings.birthdayToday(name)
                                              : strings.birthdayInDays(name, match.daysBefore);
        reminder.fire = CalendarTrigger::momentIn(zone, today.addDays(match.day), timing.timeOfDay)
                            .toLocalTime();
        planned.append(reminder);
    }
    return planned;
}

QString Reminders::printedDate(const QDateTime &moment)
{
    return moment.toString(u"yyyy-MM-dd HH:mm:ss "_s) + offsetText(moment, false);
}

QString Reminders::isoDate(const QDateTime &moment)
{
    return moment.toString(u"yyyy-MM-ddTHH:mm:ss"_s) + offsetText(moment, true);
}

ReminderScheduler::ReminderScheduler(NotificationCenter &center, SettingsStore &settings,
                                     const Clock &clock, const FavoritesStore &favorites,
                                     const UiStrings &strings)
    : m_center(center), m_settings(settings), m_clock(clock), m_favorites(favorites),
      m_strings(strings)
{}

void ReminderScheduler::checkNotificationPermission(Done done)
{
    m_center.getAuthorizationStatus(
        [this, done](AuthorizationStatus status) { onStatus(status, done); });
}

void ReminderScheduler::onStatus(AuthorizationStatus status, const Done &done)
{
    const auto nothing = [&done] {
        if (done)
            done({}, std::nullopt);
    };
    switch (status) {
    case AuthorizationStatus::NotDetermined:
        m_center.requestAuthorization(
            AuthorizationOption::Alert | AuthorizationOption::Badge | AuthorizationOption::Sound,
            [this, done](bool granted, const std::optional<NotificationError> &error) {
                if (error) {
                    DebugLog::line(u"Request Authorization Failed ("_s + error->printed + u", "_s +
                                   error->description + u')');
                }
                if (granted)
                    scheduleReminders(done);
                else if (done)
                    done({}, std::nullopt);
            });
        return;
    case AuthorizationStatus::Denied:
        DebugLog::line(u"Application Not Allowed to Display Notifications"_s);
        nothing();
        return;
    case AuthorizationStatus::Authorized:
        scheduleReminders(done);
        return;
    case AuthorizationStatus::Provisional:
        DebugLog::line(u"provisional"_s);
        nothing();
        return;
    case AuthorizationStatus::Ephemeral:
        DebugLog::line(u"ephemeral"_s);
        nothing();
        return;
    }
    nothing();
}

void ReminderScheduler::scheduleReminders(Done done)
{
    const QList<PlannedReminder> planned = Reminders::plan(
        m_clock.now(), m_favorites.all(), m_strings, Reminders::Timing::from(m_settings));
    // The run is over once every add and the settings write have answered.
    struct Run
    {
        qsizetype unanswered = 0;
        std::optional<QString> failure;
    };
    auto run = std::make_shared<Run>(Run{planned.size() + 1, std::nullopt});
    const auto answered = [done, planned, run] {
        if (--run->unanswered == 0 && done)
            done(planned, run->failure);
    };
    // The run's lines reach the settings file in one write.
    SettingsBatch batch(m_settings);
    for (const PlannedReminder &reminder : planned) {
        if (reminder.blankName)
            DebugLog::line(u"nameSpace = "_s + *reminder.blankName);
        m_settings.set(SettingsKeys::scheduledReminder(reminder.number),
                       u"Selected notification: "_s + Reminders::printedDate(reminder.fire));
        m_center.add(reminder.request(),
                     [run, answered](const std::optional<NotificationError> &error) {
                         if (error) {
                             DebugLog::line(u"Unable to Add Notification Request ("_s +
                                            error->printed + u", "_s + error->description + u')');
                             run->failure = run->failure.value_or(error->description);
                         }
                         answered();
                     });
    }
    if (const WriteResult written = batch.finish(); !written)
        run->failure = run->failure.value_or(written.message());
    answered();
}
