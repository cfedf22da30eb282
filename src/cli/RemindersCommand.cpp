// SPDX-License-Identifier: MIT
#include "cli/RemindersCommand.h"

#include "cli/CommandArguments.h"
#include "cli/DateTimeArgument.h"
#include "cli/JsonLine.h"
#include "cli/UnreadableBirthdays.h"
#include "core/Clock.h"
#include "core/FatalError.h"
#include "favorites/FavoritesStore.h"
#include "reminders/ReminderScheduler.h"
#include "settings/SettingsStore.h"
#include "texts/UiStrings.h"

#include <QEventLoop>

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo reminders [OPTIONS]
       tavlo reminders schedule

Prints the birthday reminders that Tavlo would schedule now for the saved
favorites: those whose reminder day falls from tomorrow to 201 days ahead, at
most five, in order of the day and then of the favorites list, each at the
reminder time chosen in the settings (7:30 in the morning local time unless
chosen otherwise). With a second reminder chosen in the settings, a birthday
has two reminders, each one of the five. Nothing is scheduled and nothing is
written.

"schedule" schedules them as the app does when it starts: they are kept for
delivery with the app closed (by systemd user timers, or by Tavlo started at
login where there is no systemd) and printed as they were scheduled.

Each line shows the identifier, the moment it fires (ISO 8601 with the offset
from UTC), the title and the text.

Options:
  --now DATETIME   The moment to plan at (default: now): YYYY-MM-DD (the start
                   of that day), YYYY-MM-DDTHH:MM or YYYY-MM-DDTHH:MM:SS, in
                   local time (the TZ environment variable decides the time
                   zone).
  --json           One JSON object per line with the keys identifier, fire,
                   title and body.
  -h, --help       Show this help.

Exit status: 0 on success, 2 for a malformed date, option or argument or a
favorites list that cannot be read (one line on standard error says which;
nothing else is printed). A favorite whose stored birthday cannot be read is
named in one line on standard error after the reminders of the others, and
the status is 2.
)";

void printReminder(QTextStream &out, const PlannedReminder &reminder, bool json)
{
    const QString fire = Reminders::isoDate(reminder.fire);
    if (json) {
        out << JsonLine()
                   .add(u"identifier"_s, reminder.identifier)
                   .add(u"fire"_s, fire)
                   .add(u"title"_s, reminder.title)
                   .add(u"body"_s, reminder.body)
                   .text()
            << '\n';
    } else {
        // A name may hold a terminal's escape sequences: they stay text.
        out << reminder.identifier << ' ' << fire << ' ' << oneLine(reminder.title) << ": "
            << oneLine(reminder.body) << '\n';
    }
}

} // namespace

int RemindersCommand::fail(const QString &message)
{
    return failCommand(m_context, "reminders", message);
}

int RemindersCommand::run(const QStringList &arguments)
{
    const QCommandLineOption nowOption(u"now"_s, QString(), u"DATETIME"_s);
    const QCommandLineOption jsonOption(u"json"_s);
    CommandArguments parser({nowOption, jsonOption});
    if (!parser.parse(arguments.mid(1)))
        return fail(parser.errorText());
    if (parser.helpAsked()) {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    const QStringList positional = parser.positional();
    const bool schedule = positional.value(0) == u"schedule";
    if (positional.size() > (schedule ? 1 : 0))
        return fail(u"unexpected argument \"%1\""_s.arg(positional.value(schedule ? 1 : 0)));
    if (schedule && (parser.isSet(nowOption) || parser.isSet(jsonOption)))
        return fail(u"schedule takes no options: it schedules from now"_s);
    if (parser.values(nowOption).size() > 1)
        return fail(u"--now given more than once"_s);

    QDateTime now = m_context.clock.now();
    if (parser.isSet(nowOption)) {
        const auto parsed = DateTimeArgument::parseOption(u"--now"_s, parser.value(nowOption));
        if (const auto *message = std::get_if<QString>(&parsed))
            return fail(*message);
        now = std::get<QDateTime>(parsed);
    }

    SettingsStore &settings = m_context.settings;
    UiStrings strings;
    strings.apply(decideLanguage(m_context.preferredLanguages,
                                 settings.value(SettingsKeys::preferredLanguage))
                      .language);
    FavoritesStore favorites(settings, m_context.favoritesChanged);
    favorites.load();

    if (schedule)
        return scheduleNow(favorites, strings);
    const QList<PlannedReminder> planned =
        Reminders::plan(now, favorites.all(), strings, Reminders::Timing::from(settings));
    const bool json = parser.isSet(jsonOption);
    if (planned.isEmpty() && !json)
        m_context.out << "No saved birthdays from tomorrow to 201 days ahead.\n";
    for (const PlannedReminder &reminder : planned)
        printReminder(m_context.out, reminder, json);
    m_context.out.flush();
    UnreadableBirthdays unreadable;
    unreadable.checkAll(favorites.all());
    return unreadable.report(m_context.err);
}

int RemindersCommand::scheduleNow(const FavoritesStore &favorites, const UiStrings &strings)
{
    // A list that cannot be read stops the command here, whatever the
    // notification service would answer.
    (void)favorites.all();
    NotificationCenter *center = m_context.notifications ? m_context.notifications() : nullptr;
    if (!center)
        return fail(u"reminders cannot be scheduled on this system"_s);
    ReminderScheduler scheduler(*center, m_context.settings, m_context.clock, favorites, strings);
    QEventLoop loop;
    bool finished = false;
    const auto finish = [&] {
        finished = true;
        loop.quit();
    };
    QList<PlannedReminder> scheduled;
    std::optional<QString> failure;
    scheduler.checkNotificationPermission(
        [&](const QList<PlannedReminder> &done, const std::optional<QString> &failed) {
            scheduled = done;
            failure = failed;
            // The platform's own commands end before the program does.
            if (m_context.whenNotificationsIdle)
                m_context.whenNotificationsIdle(finish);
            else
                finish();
        });
    if (!finished)
        loop.exec();
    if (failure) {
        m_context.err << "tavlo: " << oneLine(*failure) << '\n';
        m_context.err.flush();
        return ExitStatus::notSaved;
    }
    if (scheduled.isEmpty())
        m_context.out << "No reminders scheduled.\n";
    for (const PlannedReminder &reminder : scheduled)
        printReminder(m_context.out, reminder, false);
    m_context.out.flush();
    UnreadableBirthdays unreadable;
    unreadable.checkAll(favorites.all());
    return unreadable.report(m_context.err);
}
