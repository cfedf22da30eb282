// SPDX-License-Identifier: MIT
#include "cli/ReportCommand.h"

#include "core/OneLine.h"

#include "cli/CommandArguments.h"
#include "cli/DateTimeArgument.h"
#include "cli/JsonLine.h"
#include "core/BirthDateResults.h"
#include "core/Clock.h"
#include "core/FatalError.h"
#include "report/PersonName.h"
#include "report/ReportComposer.h"
#include "settings/SettingsStore.h"
#include "texts/UiStrings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const char *const help = R"(Usage: tavlo report [OPTIONS] BIRTH...

Prints the age report for each BIRTH, as the main screen shows it.

BIRTH and --now take YYYY-MM-DD (the start of that day), YYYY-MM-DDTHH:MM or
YYYY-MM-DDTHH:MM:SS, in local time (the TZ environment variable decides the
time zone). Several BIRTH values are reported in order; a zodiac value that
cannot be decided for one date carries over from the date before it.

Options:
  --now DATETIME     The moment to compute the age at (default: now).
  --lang en|de|ru    The language (default: the device's language and the
                     language chosen in the app).
  --details          Show the detailed report and the weekday of birth.
  --short            Show the short report.
                     (Default: the "Show more details" setting of the app.)
  --name NAME        Whose birthday it is (default: your own).
  --json             One JSON object per line for each BIRTH, with the keys
                     display, weekday, detailed, short, zodiacSign, signKey,
                     starImage, animal, element, yinYang, planet, ageYears,
                     ageMonths, ageDays, totalMonths, totalWeeks, totalDays,
                     daysToBirthday, birthDay, birthMonth. A BIRTH at or after
                     --now has only display and weekday.
  -h, --help         Show this help.

Exit status: 0 on success, 2 for a malformed date, option or argument (one
line on standard error says which; nothing else is printed).
)";

QString jsonOf(const ShownReport &shown, const AgeReport *report)
{
    JsonLine line;
    line.add(u"display"_s, shown.display).add(u"weekday"_s, shown.weekday);
    if (report) {
        const AgeFacts &a = report->age;
        line.add(u"detailed"_s, report->detailed)
            .add(u"short"_s, report->shortText)
            .add(u"zodiacSign"_s, report->zodiacSign)
            .add(u"signKey"_s, report->signKey)
            .add(u"starImage"_s, report->starImage)
            .add(u"animal"_s, report->animal)
            .add(u"element"_s, report->element)
            .add(u"yinYang"_s, report->yinYang)
            .add(u"planet"_s, report->planet)
            .add(u"ageYears"_s, a.ageYears)
            .add(u"ageMonths"_s, a.ageMonths)
            .add(u"ageDays"_s, a.ageDays)
            .add(u"totalMonths"_s, a.totalMonths)
            .add(u"totalWeeks"_s, a.totalWeeks)
            .add(u"totalDays"_s, a.totalDays)
            .add(u"daysToBirthday"_s, a.daysToBirthday)
            .add(u"birthDay"_s, a.birthDay)
            .add(u"birthMonth"_s, a.birthMonth);
    }
    return line.text();
}

} // namespace

int ReportCommand::fail(const QString &message)
{
    return failCommand(m_context, "report", message);
}

int ReportCommand::run(const QStringList &arguments)
{
    const QCommandLineOption nowOption(u"now"_s, QString(), u"DATETIME"_s);
    const QCommandLineOption langOption(u"lang"_s, QString(), u"LANG"_s);
    const QCommandLineOption detailsOption(u"details"_s);
    const QCommandLineOption shortOption(u"short"_s);
    const QCommandLineOption nameOption(u"name"_s, QString(), u"NAME"_s);
    const QCommandLineOption jsonOption(u"json"_s);
    CommandArguments parser(
        {nowOption, langOption, detailsOption, shortOption, nameOption, jsonOption});
    if (!parser.parse(arguments.mid(1)))
        return fail(parser.errorText());
    if (parser.helpAsked()) {
        m_context.out << help;
        m_context.out.flush();
        return ExitStatus::ok;
    }
    for (const QCommandLineOption *single : {&nowOption, &langOption, &nameOption}) {
        if (parser.values(*single).size() > 1)
            return fail(u"--%1 given more than once"_s.arg(single->names().first()));
    }
    if (parser.isSet(detailsOption) && parser.isSet(shortOption))
        return fail(u"--details and --short exclude each other"_s);

    QDateTime now = m_context.clock.now();
    if (parser.isSet(nowOption)) {
        const auto parsed = DateTimeArgument::parseOption(u"--now"_s, parser.value(nowOption));
        if (const auto *message = std::get_if<QString>(&parsed))
            return fail(*message);
        now = std::get<QDateTime>(parsed);
    }

    std::optional<Language> language;
    if (parser.isSet(langOption)) {
        language = languageFromCode(parser.value(langOption));
        if (!language)
            return fail(u"--lang \"%1\": expected en, de or ru"_s.arg(parser.value(langOption)));
    }

    const QStringList birthTexts = parser.positional();
    if (birthTexts.isEmpty())
        return fail(u"no BIRTH given (try tavlo report --help)"_s);
    QList<QDateTime> births;
    for (const QString &text : birthTexts) {
        const auto parsed = DateTimeArgument::parse(text);
        if (const auto *error = std::get_if<DateTimeArgument::Error>(&parsed))
            return fail(u"BIRTH \"%1\": %2"_s.arg(text, error->reason));
        births.append(std::get<QDateTime>(parsed));
    }

    // Everything is readable: from here on nothing fails.
    SettingsStore &settings = m_context.settings;
    if (!language) {
        language = decideLanguage(m_context.preferredLanguages,
                                  settings.value(SettingsKeys::preferredLanguage))
                       .language;
    }
    UiStrings strings;
    strings.apply(*language);
    const bool details = parser.isSet(detailsOption) ||
                         (!parser.isSet(shortOption) && settings.value(SettingsKeys::moreDetails));
    const bool json = parser.isSet(jsonOption);
    // Printed as text, a name's control characters stay text; JSON keeps
    // it exactly.
    const QString name = json ? parser.value(nameOption) : oneLine(parser.value(nameOption));
    const QString person = parser.isSet(nameOption) ? personNameFromFavorite(name, *language)
                                                    : strings[UiText::ReportYour];

    BirthDateResults results;
    ReportComposer composer(strings, results);
    for (qsizetype i = 0; i < births.size(); ++i) {
        const QDateTime &birth = births.at(i);
        std::optional<AgeReport> report;
        ShownReport shown{strings[UiText::SelectYourDateOfBirth], QString()};
        if (birth < now) {
            report = composer.compose(birth, now, person, *language);
            shown = ShownReport::of(*report, details);
        }
        if (json) {
            m_context.out << jsonOf(shown, report ? &*report : nullptr) << '\n';
            continue;
        }
        if (i > 0)
            m_context.out << '\n';
        m_context.out << shown.display << '\n';
        if (details)
            m_context.out << shown.weekday << '\n';
    }
    m_context.out.flush();
    return ExitStatus::ok;
}
