#include "RemindersCommand.h"

#include "DateTimeArgument.h"
#include "JsonLine.h"
#include "core/Clock.h"
#include "core/FatalError.h"
#include "favorites/FavoritesStore.h"
#include "main/ReminderScheduler.h"
#include "settings/SettingsStore.h"
#include "settings/UiStrings.h"

#include <QCommandLineParser>

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo reminders [OPTIONS]

Prints the birthday reminders that Tavlo would schedule now for the saved
favorites: those whose birthday falls from tomorrow to 201 days ahead, at most
five, in order of the day and then of the favorites list, each at 7:30 in the
morning local time. Nothing is scheduled and nothing is written.

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

Exit status: 0 on success, 2 for a malformed date, option or argument (one
line on standard error says which; nothing else is printed).
)";

} // namespace

int RemindersCommand::fail(const QString &message)
{
    return failCommand(m_context, "reminders", message);
}

int RemindersCommand::run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption nowOption(u"now"_s, QString(), u"DATETIME"_s);
    const QCommandLineOption jsonOption(u"json"_s);
    const QCommandLineOption helpOption(QStringList{u"h"_s, u"help"_s});
    parser.addOptions({nowOption, jsonOption, helpOption});

    // QCommandLineParser expects the program name first.
    if (!parser.parse(QStringList{u"tavlo reminders"_s} + arguments.mid(1)))
        return fail(parser.errorText());
    if (parser.isSet(helpOption)) {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(u"unexpected argument \"%1\""_s.arg(parser.positionalArguments().first()));
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
    FavoritesStore favorites(settings);
    favorites.load();

    const QList<PlannedReminder> planned = Reminders::plan(now, favorites.all(), strings);
    const bool json = parser.isSet(jsonOption);
    if (planned.isEmpty() && !json)
        m_context.out << "No saved birthdays from tomorrow to 201 days ahead.\n";
    for (const PlannedReminder &reminder : planned) {
        const QString fire = Reminders::isoDate(reminder.fire);
        if (json) {
            m_context.out << JsonLine()
                                 .add(u"identifier"_s, reminder.identifier)
                                 .add(u"fire"_s, fire)
                                 .add(u"title"_s, reminder.title)
                                 .add(u"body"_s, reminder.body)
                                 .text()
                          << '\n';
        } else {
            m_context.out << reminder.identifier << ' ' << fire << ' ' << reminder.title << ": "
                          << reminder.body << '\n';
        }
    }
    m_context.out.flush();
    return ExitStatus::ok;
}
