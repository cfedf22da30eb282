// SPDX-License-Identifier: MIT
#include "favorites/FavoriteCard.h"

#include "core/CalendarDifference.h"
#include "core/DatePattern.h"
#include "core/DayOfBirth.h"
#include "core/DebugLog.h"
#include "core/FatalError.h"
#include "core/WesternZodiac.h"
#include "texts/Translations.h"
#include "themes/Contrast.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

struct SignSpan
{
    const char16_t *picture;
    int firstMonth;
    int firstDay;
    int lastMonth;
    int lastDay;
};

// The cell's own table of sign boundaries. "sagittauris" is the picture's
// name as the list asks for it, misspelt and kept so.
constexpr std::array<SignSpan, 12> signSpans = {{
    {u"aquarius", 1, 21, 2, 19},
    {u"pisces", 2, 20, 3, 20},
    {u"aries", 3, 21, 4, 20},
    {u"taurus", 4, 21, 5, 20},
    {u"gemini", 5, 21, 6, 21},
    {u"cancer", 6, 22, 7, 22},
    {u"leo", 7, 23, 8, 23},
    {u"virgo", 8, 24, 9, 23},
    {u"libra", 9, 24, 10, 23},
    {u"scorpio", 10, 24, 11, 22},
    {u"sagittauris", 11, 23, 12, 21},
    {u"capricorn", 12, 22, 1, 20},
}};

QString birthdayFormat(Language language, bool showWeekday)
{
    const Translations &t = Translations::of(language);
    //: A birthday in the list, as a QDate format: EEEE the weekday, MMMM the month's name
    return showWeekday ? t.translate("Dates", "EEEE, MMMM dd, yyyy")
                       //: A birthday in the list, as a QDate format: MMMM the month's name
                       : t.translate("Dates", "MMMM dd, yyyy");
}

// Without a year there is no weekday either: the day and the month alone.
QString dayAndMonthFormat(Language language)
{
    //: A birthday without its year, as a QDate format: MMMM the month's name, dd the day
    return Translations::of(language).translate("Dates", "MMMM dd");
}

// A list formats every row's birthday with the same pattern: it is read
// once for each language, locale and choice of weekday, not once a row.
const DatePattern &rowPattern(Language language, const QLocale &locale, bool withYear,
                              bool showWeekday)
{
    struct Made
    {
        QString language;
        QLocale locale;
        bool showWeekday;
        DatePattern pattern;
    };
    thread_local std::optional<Made> last[2];
    std::optional<Made> &made = last[withYear ? 1 : 0];
    if (!made || made->language != language.code() || made->locale != locale ||
        made->showWeekday != showWeekday) {
        made.emplace(Made{language.code(), locale, showWeekday,
                          DatePattern(withYear ? birthdayFormat(language, showWeekday)
                                               : dayAndMonthFormat(language),
                                      locale)});
    }
    return made->pattern;
}

} // namespace

QString FavoriteCards::displayName(const QString &name)
{
    QString result = name;
    while (result.endsWith(u' '))
        result.chop(1);
    return result.isEmpty() ? u"Unknown"_s : result;
}

std::optional<QString> FavoriteCards::signPicture(int day, int month)
{
    for (const SignSpan &span : signSpans) {
        if ((month == span.firstMonth && day >= span.firstDay) ||
            (month == span.lastMonth && day <= span.lastDay))
            return QString::fromUtf16(span.picture);
    }
    return std::nullopt;
}

std::optional<bool> FavoriteCards::birthdayStillToCome(const QString &birthday, QDate today)
{
    if (const std::optional<DayOfBirth> day = DayOfBirth::fromStored(birthday);
        day && !day->hasYear()) {
        const std::optional<QDate> date = day->in(today.year());
        return date ? std::optional(*date >= today) : std::nullopt;
    }
    const QString thisYear =
        birthday.chopped(std::min<qsizetype>(4, birthday.size())) + QString::number(today.year());
    const std::optional<QDate> date = DatePattern::stored().parse(thisYear);
    if (!date)
        return std::nullopt;
    return *date >= today;
}

FavoriteCard FavoriteCards::card(const Favorite &favorite, const QDateTime &now, Language language,
                                 const QLocale &deviceLocale, bool showWeekday, bool markComing)
{
    const std::optional<DayOfBirth> day = DayOfBirth::fromStored(favorite.birthday);
    FavoriteCard card;
    card.name = displayName(favorite.name);
    if (!day) {
        // Listed as it is stored, with no age or sign, to be fixed or deleted.
        card.readable = false;
        card.birthdayText = oneLine(favorite.birthday);
        return card;
    }
    if (const std::optional<QDate> birth = day->date()) {
        card.birthdayText = rowPattern(language, deviceLocale, true, showWeekday).format(*birth);
        card.age = CalendarDifference::count(birth->startOfDay(), now, CalendarUnit::Years);
    } else {
        card.birthdayText =
            rowPattern(language, deviceLocale, false, false).format(day->inLeapYear());
    }
    if (const std::optional<QString> picture = signPicture(day->day(), day->month())) {
        card.signKey = *picture;
    } else {
        DebugLog::line(u"NOT"_s);
        card.signKey = u"aquarius"_s;
    }
    if (markComing && birthdayStillToCome(favorite.birthday, now.date()).value_or(true))
        card.star = u"★"_s;
    return card;
}

FavoriteCardColors FavoriteCards::colors(const ThemeTable &themes, int theme, Appearance appearance)
{
    const SystemColors system = SystemColors::of(appearance);
    const Rgb themeColor = theme == 9 ? system.darkGrey : themes.color(theme);
    const bool dark = appearance == Appearance::Dark;
    const bool light = !dark;
    FavoriteCardColors colors{themeColor, themeColor, system.grey, {1, 1, 1}, system.label};
    // Theme 8 is darkened in light appearance but left as it is in dark.
    if (theme >= 4 && theme <= 7 && dark) {
        colors.signCircle = ThemeTable::lightened(themeColor, 10);
        colors.star = ThemeTable::lightened(themeColor, 20);
    } else if (theme >= 4 && theme <= 8 && light) {
        colors.signCircle = ThemeTable::lightened(themeColor, -10);
        colors.star = ThemeTable::lightened(themeColor, -10);
    }
    if (light)
        colors.birthday = ThemeTable::lightened(system.grey, -36);
    return colors;
}

QList<Rgb> FavoriteCards::cardBackdrop(Appearance appearance, const QList<Rgb> &screenBackdrop)
{
    const Rgb card = SystemColors::of(appearance).background;
    QList<Rgb> behind;
    for (const Rgb &screen : screenBackdrop)
        behind.append(Contrast::over(card, 0.2, screen));
    return behind;
}

FavoriteCardColors FavoriteCards::legible(FavoriteCardColors colors, const QList<Rgb> &cardBackdrop)
{
    // The age is large, but shrinks to fit three digits: it reads as text.
    const double minimum = Contrast::text + Contrast::margin;
    colors.star = Contrast::legible(colors.star, cardBackdrop, minimum);
    colors.birthday = Contrast::legible(colors.birthday, cardBackdrop, minimum);
    colors.age = Contrast::legible(colors.age, cardBackdrop, minimum);
    colors.thinName = Contrast::thinReads(colors.name, cardBackdrop);
    colors.thinAge = Contrast::thinReads(colors.age, cardBackdrop);
    // The sign pictures are white: their circle darkens in its own hue
    // until the sign stands out from it.
    const Rgb sign{1, 1, 1};
    colors.signCircle =
        Contrast::legible(colors.signCircle, {sign}, Contrast::symbol + Contrast::margin);
    return colors;
}

QString FavoriteCards::spokenRow(const FavoriteCard &card, const UiStrings &strings,
                                 const QVariantMap &names)
{
    if (!card.readable)
        return card.name + u", "_s + card.birthdayText;
    QStringList parts = {card.name, card.birthdayText};
    if (card.age)
        parts.append(names.value(u"age"_s).toString().arg(*card.age));
    for (int i = 0; i < WesternZodiac::signCount; ++i) {
        if (WesternZodiac::signKey(i) == card.signKey) {
            // The word without its symbol, which a screen reader spells out.
            parts.append(strings[WesternZodiac::signText(i)].section(u' ', 0, 0));
            break;
        }
    }
    // The star itself is not read out: its meaning is.
    if (!card.star.isEmpty())
        parts.append(names.value(u"coming"_s).toString());
    return parts.join(u", "_s);
}
