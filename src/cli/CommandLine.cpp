// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CalendarCommand.h"
#include "cli/FavoritesCommand.h"
#include "cli/OutputTarget.h"
#include "cli/RemindersCommand.h"
#include "cli/ReportCommand.h"
#include "cli/SyncCommand.h"
#include "core/FatalError.h"
#include "settings/AtomicFileWriter.h"
#include "settings/SettingsStore.h"
#include "settings/WriteResult.h"

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

int failCommand(CommandContext &context, const char *command, const QString &message)
{
    context.err << "tavlo " << command << ": " << oneLine(message) << '\n';
    context.err.flush();
    return ExitStatus::usage;
}

int finishChange(CommandContext &context, const WriteResult &result)
{
    if (result)
        return ExitStatus::ok;
    context.err << "tavlo: " << oneLine(result.message()) << '\n';
    context.err.flush();
    return ExitStatus::notSaved;
}

int writeOutputFile(CommandContext &context, const QString &path, const QByteArray &contents)
{
    if (path == u"-") {
        context.out << QString::fromUtf8(contents);
        context.out.flush();
        return ExitStatus::ok;
    }
    const OutputTarget target = OutputTarget::of(path);
    if (target.refused()) {
        context.err << "tavlo: " << oneLine(WriteResult::failed(path, target.refusal()).message())
                    << '\n';
        context.err.flush();
        return ExitStatus::notSaved;
    }
    // The person's own file: as their umask says, like any file they make.
    return finishChange(
        context,
        AtomicFileWriter(AtomicFileWriter::Access::FollowUmask).write(target.filePath(), contents));
}

bool asksForHelp(const QStringList &arguments)
{
    for (const QString &argument : arguments) {
        if (argument == u"--")
            return false;
        if (argument == u"--help" || argument == u"-h")
            return true;
    }
    return false;
}

QStringList fileArguments(const QStringList &arguments, QString *unknown)
{
    QStringList files;
    bool optionsEnded = false;
    for (const QString &argument : arguments) {
        if (!optionsEnded && argument == u"--") {
            optionsEnded = true;
        } else if (!optionsEnded && argument.startsWith(u'-') && argument != u"-") {
            *unknown = argument;
            return {};
        } else {
            files.append(argument);
        }
    }
    return files;
}

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
