// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CalendarCommand.h"
#include "cli/FavoritesCommand.h"
#include "cli/RemindersCommand.h"
#include "cli/ReportCommand.h"
#include "cli/SyncCommand.h"
#include "core/FatalError.h"
#include "core/OneLine.h"
#include "settings/SettingsStore.h"

namespace {

const char *const usage = R"(Usage: tavlo [COMMAND] [OPTIONS]

Tavlo tells you about a birth date: age in years, months and days, the age in
months, weeks and days, Western and Chinese zodiac, planet, weekday of birth
and the days to the next birthday.

Commands:
  report    Print the age report for one or more birth dates.
  favorites List, add or remove the saved birthdays; import them from
            vCard files or the phone's contacts, export them as vCards.
  reminders Print the birthday reminders that would be scheduled now.
  calendar  Export the birthdays as an iCalendar file for calendar apps.
  sync      Keep the favorites the same as a CardDAV address book
            (Nextcloud, Radicale): set up, sync, remove.

Run "tavlo COMMAND --help" for a command's options.
)";

} // namespace

// Says in one line what was wrong with the settings file. A damaged one is
// read as far as it goes; one that cannot be read stops every command, as
// nothing it says could be trusted and nothing may be written over it.
bool settingsCanBeUsed(CommandContext &context)
{
    const StoredState state = context.settings.storedState();
    if (state.kind == StoredState::Kind::Unreadable) {
        context.err << "tavlo: cannot read " << oneLine(state.path) << ": "
                    << oneLine(state.problem) << "; nothing was changed\n";
    } else if (state.kind == StoredState::Kind::Damaged) {
        context.err << "tavlo: " << oneLine(state.path) << " is damaged (" << oneLine(state.problem)
                    << "); going on with what could be read, and keeping the file as it was "
                       "beside it before it is changed\n";
    }
    context.err.flush();
    return state.kind != StoredState::Kind::Unreadable;
}

int runCommandLine(const QStringList &arguments, CommandContext &context)
{
    // Stored data that cannot be read (a favorite's birthday) is bad input
    // too: its one line, then status 2.
    setFatalExitStatus(ExitStatus::usage);
    const QString command = arguments.value(1);
    const bool usesSettings = command == u"report" || command == u"favorites" ||
                              command == u"reminders" || command == u"calendar" ||
                              command == u"sync";
    if (usesSettings && !settingsCanBeUsed(context))
        return ExitStatus::notSaved;
    if (command == u"report")
        return ReportCommand(context).run(arguments.mid(1));
    if (command == u"favorites")
        return FavoritesCommand(context).run(arguments.mid(1));
    if (command == u"reminders")
        return RemindersCommand(context).run(arguments.mid(1));
    if (command == u"calendar")
        return CalendarCommand(context).run(arguments.mid(1));
    if (command == u"sync")
        return SyncCommand(context).run(arguments.mid(1));
    if (command.isEmpty() || command == u"--help" || command == u"-h" || command == u"help") {
        context.out << usage;
        context.out.flush();
        return ExitStatus::ok;
    }
    context.err << "tavlo: unknown command \"" << oneLine(command) << "\" (try tavlo --help)\n";
    context.err.flush();
    return ExitStatus::usage;
}
