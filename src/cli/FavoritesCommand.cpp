// SPDX-License-Identifier: MIT
#include "cli/FavoritesCommand.h"

#include "cli/CommandArguments.h"
#include "cli/JsonLine.h"
#include "cli/UnreadableBirthdays.h"
#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "contacts/PhoneContacts.h"
#include "contacts/VCardFile.h"
#include "core/Clock.h"
#include "core/DayOfBirth.h"
#include "core/FatalError.h"
#include "favorites/FavoriteCard.h"
#include "favorites/FavoritesStore.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo favorites list [--json]
       tavlo favorites add NAME YYYY-MM-DD
       tavlo favorites add NAME --MM-DD
       tavlo favorites remove INDEX
       tavlo favorites import FILE...
       tavlo favorites import --contacts
       tavlo favorites export FILE.vcf

The saved birthdays, as the app keeps them.

  list     One line per favorite in stored order, fields separated by tabs:
           index, name as stored, birthday text ("12 3 1985", or "12 3"
           when the year is not known), age in whole years (empty without
           a year), sign key, and a star when the birthday is still to come
           this year; line breaks, tabs and other control characters in a
           name show as \n, \t, \u001B. --json prints one object per line
           with the keys index, name, birthday, age (null without a year),
           signKey, star (true or false), the name exactly as stored. A favorite whose stored
           birthday cannot be read is named in one line on standard error
           after the others are listed, and the status is 2.
  add      Adds a favorite at the end of the list, as the app's add dialog
           does: a name of only blanks is stored as "Unknown". --MM-DD
           (--04-15) adds a birthday whose year is not known.
  remove   Removes the favorite at INDEX (counted from 0, as list shows).
  import   Adds the birthdays of vCard files (2.1, 3.0 or 4.0; "-" reads
           standard input), or with --contacts those of the phone's address
           books: Plasma Mobile's folder ~/.local/share/kpeoplevcard and
           evolution-data-server's address books (Phosh, GNOME). The name is
           FN, or the given and family names of N; the birthday is BDAY.
           A birthday without a year (--0415, a year marked with
           X-APPLE-OMIT-YEAR, or the placeholder years 1604, 0000 and 0001)
           is kept as a day and month. A card whose UID is a favorite's
           (one Tavlo exported), or whose name and birthday a favorite has
           already, is not added again, so importing the same file twice
           adds nothing. Cards without a birthday, with an impossible or
           unreadable date, or with a date in the future are skipped. One
           line says what happened, for example
             tavlo: 8 added, 1 already there, 4 skipped (1 no birthday, 2
             impossible date, 1 date in the future)
           A file that is no vCard, is cut off inside a card, or cannot be
           read changes nothing: one line on standard error names it.
  export   Writes every favorite as a vCard 4.0 card (FN, BDAY, --0415
           without a year, and the favorite's identity as UID, the same
           from one export to the next and through renames); "-" writes to
           standard output. Import reads it back unchanged. Only a regular
           file is replaced: a folder, a named pipe or a device is refused,
           and so is a link in a shared folder such as /tmp that belongs to
           someone else.

A FILE that begins with "-" comes after "--"; --help anywhere before it
shows this help and writes nothing.

Exit status: 0 on success; 1 when the list or a file could not be saved (a
full disk, a folder Tavlo may not write; one line on standard error names
the file and the reason, and the saved favorites stay as they were); 2 for
wrong arguments, an index outside the list or a file that cannot be
imported (one line on standard error says which; nothing is changed).
)";

} // namespace

int FavoritesCommand::fail(const QString &message)
{
    return failCommand(m_context, "favorites", message);
}

int FavoritesCommand::run(const QStringList &arguments)
{
    const QString action = arguments.value(1);
    // --help anywhere before a "--" shows the help, whatever else is wrong.
    CommandArguments anyAction;
    anyAction.parse(arguments.mid(1));
    if (action == u"help" || anyAction.helpAsked()) {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    const QStringList rest = arguments.mid(2);
    if (action == u"list")
        return list(rest);
    if (action == u"add")
        return add(rest);
    if (action == u"remove")
        return remove(rest);
    if (action == u"import")
        return importCards(rest);
    if (action == u"export")
        return exportCards(rest);
    if (action.isEmpty())
        return fail(u"say list, add, remove, import or export (try tavlo favorites --help)"_s);
    return fail(u"unknown action \"%1\" (try tavlo favorites --help)"_s.arg(action));
}

int FavoritesCommand::unknownOption(const CommandArguments &parsed)
{
    if (parsed.unknownOption().isEmpty())
        return fail(parsed.errorText());
    return fail(
        u"unknown option \"%1\" (try tavlo favorites --help)"_s.arg(parsed.unknownOption()));
}

int FavoritesCommand::list(const QStringList &arguments)
{
    const QCommandLineOption jsonOption(u"json"_s);
    CommandArguments parsed({jsonOption});
    if (!parsed.parse(arguments) || !parsed.positional().isEmpty() || parsed.count(jsonOption) > 1)
        return fail(u"list takes only --json, not \"%1\""_s.arg(arguments.join(u' ')));
    const bool json = parsed.isSet(jsonOption);

    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    favorites.load();
    const QDateTime now = m_context.clock.now();
    UnreadableBirthdays unreadable;
    for (qsizetype i = 0; i < favorites.count(); ++i) {
        const Favorite favorite = favorites.at(i);
        if (!unreadable.check(i, favorite))
            continue;
        const FavoriteCard card =
            FavoriteCards::card(favorite, now, Language::English, QLocale::c(), false, false);
        const bool star =
            FavoriteCards::birthdayStillToCome(favorite.birthday, now.date()).value_or(false);
        if (json) {
            m_context.out << JsonLine()
                                 .add(u"index"_s, qint64(i))
                                 .add(u"name"_s, favorite.name)
                                 .add(u"birthday"_s, favorite.birthday)
                                 .add(u"age"_s, card.age)
                                 .add(u"signKey"_s, card.signKey)
                                 .addBoolean(u"star"_s, star)
                                 .text()
                          << '\n';
        } else {
            // Escaped, so that a name with a tab or a line break keeps its
            // favorite on one line of fields (and a terminal's escape
            // sequences in it stay text).
            m_context.out << i << '\t' << oneLine(favorite.name) << '\t'
                          << oneLine(favorite.birthday) << '\t'
                          << (card.age ? QString::number(*card.age) : QString()) << '\t'
                          << card.signKey << '\t' << (star ? u"★"_s : QString()) << '\n';
        }
    }
    m_context.out.flush();
    return unreadable.report(m_context.err);
}

// A birthday without a year is written "--04-15", which any option parser
// takes for an option, and so is an index below 0 ("-1"): add and remove
// read their arguments as they are given.
int FavoritesCommand::add(const QStringList &given)
{
    // "--" first lets a name begin with "-".
    const QStringList arguments = given.value(0) == u"--" ? given.mid(1) : given;
    if (arguments.size() != 2)
        return fail(u"add takes a NAME and a date YYYY-MM-DD or --MM-DD"_s);
    static const QRegularExpression withoutYear(
        QRegularExpression::anchoredPattern(u"--(\\d{2})-(\\d{2})"_s));
    if (const QRegularExpressionMatch match = withoutYear.match(arguments.at(1));
        match.hasMatch()) {
        const std::optional<DayOfBirth> day =
            DayOfBirth::withoutYear(match.captured(2).toInt(), match.captured(1).toInt());
        if (!day)
            return fail(u"\"%1\" is no day of any year"_s.arg(arguments.at(1)));
        FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
        favorites.load();
        return finishChange(
            m_context, favorites.append(arguments.at(0), day->day(), day->month(), std::nullopt));
    }
    // Anchored: "$" alone would let a line break end the text.
    static const QRegularExpression shape(
        QRegularExpression::anchoredPattern(u"(\\d{4})-(\\d{2})-(\\d{2})"_s));
    const QRegularExpressionMatch match = shape.match(arguments.at(1));
    const QDate date =
        match.hasMatch()
            ? QDate(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt())
            : QDate();
    if (!date.isValid())
        return fail(u"\"%1\" is not a date YYYY-MM-DD or --MM-DD"_s.arg(arguments.at(1)));

    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    favorites.load();
    return finishChange(m_context,
                        favorites.append(arguments.at(0), date.day(), date.month(), date.year()));
}

int FavoritesCommand::remove(const QStringList &arguments)
{
    if (arguments.size() != 1)
        return fail(u"remove takes one INDEX"_s);
    bool ok = false;
    const qint64 index = arguments.at(0).toLongLong(&ok);
    if (!ok || arguments.at(0).trimmed() != arguments.at(0))
        return fail(u"\"%1\" is not an index"_s.arg(arguments.at(0)));

    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    favorites.load();
    if (index < 0 || index >= favorites.count()) {
        return fail(
            u"there is no favorite %1 (the list has %2)"_s.arg(index).arg(favorites.count()));
    }
    return finishChange(m_context, favorites.remove(index));
}

int FavoritesCommand::importCards(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return fail(u"import takes vCard FILEs or --contacts"_s);
    const QCommandLineOption contactsOption(u"contacts"_s);
    CommandArguments parsed({contactsOption});
    if (!parsed.parse(arguments))
        return unknownOption(parsed);
    QList<VCardContact> contacts;
    if (parsed.isSet(contactsOption) && parsed.count(contactsOption) == 1 &&
        parsed.positional().isEmpty()) {
        contacts = PhoneContacts::readForImport(m_context.phoneContacts).contacts;
    } else {
        // Files and the phone's address books at once: --contacts is the
        // option too many.
        if (parsed.isSet(contactsOption))
            return fail(u"unknown option \"--contacts\" (try tavlo favorites --help)"_s);
        const QStringList files = parsed.positional();
        if (files.isEmpty())
            return fail(u"import takes vCard FILEs or --contacts"_s);
        // Every file is read before anything is stored: one that cannot be
        // imported leaves the list as it was.
        for (const QString &path : files) {
            const VCardFile read =
                path == u"-" ? VCardFile::readStandardInput() : VCardFile::read(path);
            if (!read.ok())
                return fail(u"%1: %2"_s.arg(path, read.problem()));
            contacts.append(read.cards.contacts);
        }
    }

    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    const BirthdayImport::Imported imported =
        BirthdayImport::importInto(favorites, contacts, m_context.clock.now().date());
    // Nothing is said to be added that did not reach the disk.
    if (!imported.stored)
        return finishChange(m_context, imported.stored);
    m_context.out << "tavlo: " << BirthdayImport::summaryText(imported.summary, UiStrings())
                  << '\n';
    m_context.out.flush();
    return ExitStatus::ok;
}

int FavoritesCommand::exportCards(const QStringList &arguments)
{
    CommandArguments parsed;
    if (!parsed.parse(arguments))
        return unknownOption(parsed);
    const QStringList files = parsed.positional();
    if (files.size() != 1)
        return fail(u"export takes one FILE.vcf (\"-\" for standard output)"_s);
    FavoritesStore favorites(m_context.settings, m_context.favoritesChanged);
    favorites.load();
    const BirthdayExport::Output output = BirthdayExport::vCards(favorites.all());
    if (output.unreadable > 0) {
        m_context.err << "tavlo: " << output.unreadable
                      << " favorites left out: their birthday cannot be read\n";
        m_context.err.flush();
    }
    return writeOutputFile(m_context, files.at(0), output.text);
}
