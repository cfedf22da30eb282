// SPDX-License-Identifier: MIT
#include "cli/CalendarCommand.h"

#include "cli/CommandArguments.h"
#include "contacts/BirthdayExport.h"
#include "core/Clock.h"
#include "favorites/FavoritesStore.h"
#include "texts/Language.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo calendar export FILE.ics [--lang en|de|ru]

Writes the favorites as an iCalendar file that calendar apps import or
subscribe to: one all-day event per favorite, repeating every year from the
day of birth, named "Anna's birthday" with "born 1985" in its description,
in the interface language (or the one --lang names). Someone born on
29 February has the birthday on 1 March in common years. Each event keeps
its UID from one export to the next, so a calendar updates it instead of
adding it twice. FILE "-" writes to standard output; a FILE that begins
with "-" comes after "--". Only a regular file is replaced: a folder, a named
pipe or a device is refused, and so is a link in a shared folder such as /tmp
that belongs to someone else.

Exit status: 0 on success, 1 when the file could not be saved, 2 for wrong
arguments. A favorite whose birthday cannot be read is left out, with a
line on standard error.
)";

} // namespace

int CalendarCommand::fail(const QString &message)
{
    return failCommand(m_context, "calendar", message);
}

int CalendarCommand::run(const QStringList &arguments)
{
    const QCommandLineOption langOption(u"lang"_s, QString(), u"LANG"_s);
    CommandArguments parsed({langOption});
    const bool readable = parsed.parse(arguments.mid(1));
    // Help comes first, whatever else is wrong.
    if (parsed.helpAsked() || arguments.value(1) == u"help") {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    const QStringList positional = parsed.positional();
    const QString action = positional.value(0);
    if (action != u"export") {
        return fail(action.isEmpty()
                        ? u"say export (try tavlo calendar --help)"_s
                        : u"unknown action \"%1\" (try tavlo calendar --help)"_s.arg(action));
    }
    if (!readable) {
        return fail(parsed.unknownOption().isEmpty()
                        ? parsed.errorText()
                        : u"unknown option \"%1\" (try tavlo calendar --help)"_s.arg(
                              parsed.unknownOption()));
    }
    std::optional<Language> language;
    if (parsed.isSet(langOption)) {
        if (parsed.values(langOption).size() > 1)
            return fail(u"--lang given more than once"_s);
        language = languageFromCode(parsed.value(langOption));
        if (!language)
            return fail(u"--lang \"%1\": expected en, de or ru"_s.arg(parsed.value(langOption)));
    }
    const QStringList files = positional.mid(1);
    if (files.size() != 1)
        return fail(u"export takes one FILE.ics (\"-\" for standard output)"_s);

    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    favorites.load();
    if (!language) {
        language = decideLanguage(m_context.preferredLanguages,
                                  m_context.settings.value(SettingsKeys::preferredLanguage))
                       .language;
    }
    UiStrings strings;
    strings.apply(*language);
    const BirthdayExport::Output output =
        BirthdayExport::calendar(favorites.all(), strings, m_context.clock.now());
    if (output.unreadable > 0) {
        m_context.err << "tavlo: " << output.unreadable
                      << " favorites left out: their birthday cannot be read\n";
        m_context.err.flush();
    }
    return writeOutputFile(m_context, files.at(0), output.text);
}
