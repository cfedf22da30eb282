// SPDX-License-Identifier: MIT
#include "contacts/BirthdayExport.h"

#include "core/DatePattern.h"
#include "core/DayOfBirth.h"

#include <QHash>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// A content line, CRLF-ended and folded so that no line is longer than 75
// octets; a fold never splits a UTF-8 character.
void appendLine(QByteArray &out, const QString &line)
{
    const QByteArray bytes = line.toUtf8();
    qsizetype start = 0;
    qsizetype room = 75;
    while (bytes.size() - start > room) {
        qsizetype end = start + room;
        // Back off continuation bytes (10xxxxxx) to a character's start.
        while (end > start && (uchar(bytes.at(end)) & 0xC0) == 0x80)
            --end;
        out.append(bytes.constData() + start, end - start);
        out.append("\r\n ");
        start = end;
        room = 74; // the blank that starts a continued line counts
    }
    out.append(bytes.constData() + start, bytes.size() - start);
    out.append("\r\n");
}

// A text value: backslash, semicolon, comma and line breaks escaped; other
// control characters, which neither format allows, left out.
QString escaped(const QString &text)
{
    QString result;
    result.reserve(text.size() + 8);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\\' || c == u';' || c == u',') {
            result.append(u'\\');
            result.append(c);
        } else if (c == u'\r') {
            result.append(u"\\n"_s);
            if (i + 1 < text.size() && text.at(i + 1) == u'\n')
                ++i;
        } else if (c == u'\n') {
            result.append(u"\\n"_s);
        } else if (c == u'\t' || c.unicode() >= 0x20) {
            if (c.unicode() != 0x7f)
                result.append(c);
        }
    }
    return result;
}

// Whether a name holds a character that a vCard text cannot carry: a
// carriage return (it has only "\n" for a line break) or another control
// character but the tab.
bool beyondVCardText(const QString &name)
{
    return std::any_of(name.begin(), name.end(), [](QChar c) {
        const char16_t u = c.unicode();
        return (u < 0x20 && u != u'\n' && u != u'\t') || u == 0x7f;
    });
}

// FN with the name as vCard text, readable by any address book; a name
// beyond vCard text also goes whole, percent-encoded UTF-8, into the
// parameter X-TAVLO-NAME, which Tavlo's own import prefers.
QString formattedNameLine(const QString &name)
{
    if (!beyondVCardText(name))
        return u"FN:"_s + escaped(name);
    return u"FN;"_s + QString::fromLatin1(BirthdayExport::exactNameParameter) + u'=' +
           QString::fromLatin1(name.toUtf8().toPercentEncoding()) + u':' + escaped(name);
}

QString basicDate(QDate date)
{
    return DatePattern(u"yyyyMMdd").format(date);
}

// BDAY's value: "19850312", or "--0312" without a year (vCard 4.0's form
// for a date whose year is not known).
QString birthdayValue(const DayOfBirth &day)
{
    if (const std::optional<QDate> date = day.date())
        return basicDate(*date);
    return DatePattern(u"--MMdd").format(day.inLeapYear());
}

// The name as the list shows it: trailing blanks gone, "Unknown" for none.
QString shownName(const QString &name)
{
    qsizetype end = name.size();
    while (end > 0 && name.at(end - 1).isSpace())
        --end;
    return end == 0 ? u"Unknown"_s : name.first(end);
}

// Walks the favorites that can be written, with the UID each has: its own
// identity.
template <typename Write>
BirthdayExport::Output eachFavorite(const QList<Favorite> &favorites, Write write)
{
    BirthdayExport::Output output;
    QHash<QString, int> seen;
    for (const Favorite &favorite : favorites) {
        const std::optional<DayOfBirth> day = DayOfBirth::fromStored(favorite.birthday);
        if (!day) {
            ++output.unreadable;
            continue;
        }
        // A favorite that was never stored has no identity yet; it gets the
        // one the store would give it.
        int &repeat = seen[favorite.name + u'\x1f' + favorite.birthday];
        const QString id = favorite.id.isEmpty()
                               ? FavoritesStore::derivedId(favorite.name, favorite.birthday, repeat)
                               : favorite.id;
        ++repeat;
        write(output.text, favorite, *day, id);
        ++output.written;
    }
    return output;
}

} // namespace

namespace BirthdayExport {

QByteArray contentLine(const QString &line)
{
    QByteArray out;
    appendLine(out, line);
    return out;
}

QString nameLine(const QString &name)
{
    return formattedNameLine(name);
}

QString birthdayText(const DayOfBirth &day)
{
    return birthdayValue(day);
}

Output vCards(const QList<Favorite> &favorites)
{
    return eachFavorite(favorites, [](QByteArray &out, const Favorite &favorite,
                                      const DayOfBirth &day, const QString &id) {
        appendLine(out, u"BEGIN:VCARD"_s);
        appendLine(out, u"VERSION:4.0"_s);
        appendLine(out, u"UID:urn:uuid:"_s + id);
        appendLine(out, formattedNameLine(favorite.name));
        appendLine(out, u"BDAY:"_s + birthdayValue(day));
        appendLine(out, u"END:VCARD"_s);
    });
}

Output calendar(const QList<Favorite> &favorites, const UiStrings &strings, const QDateTime &stamp)
{
    const QString dtstamp = stamp.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'"_s);
    QByteArray head;
    appendLine(head, u"BEGIN:VCALENDAR"_s);
    appendLine(head, u"VERSION:2.0"_s);
    appendLine(head, u"PRODID:-//Tavlo//Birthdays//EN"_s);
    appendLine(head, u"CALSCALE:GREGORIAN"_s);
    const int thisYear = stamp.toLocalTime().date().year();
    Output output = eachFavorite(favorites, [&](QByteArray &out, const Favorite &favorite,
                                                const DayOfBirth &day, const QString &id) {
        // Without a year the series starts with this year's birthday (on
        // 1 March for 29 February in a common year, as below).
        const QDate date =
            day.date().value_or(QDate(thisYear, day.month(), 1).addDays(day.day() - 1));
        appendLine(out, u"BEGIN:VEVENT"_s);
        appendLine(out, u"UID:"_s + id);
        appendLine(out, u"DTSTAMP:"_s + dtstamp);
        appendLine(out, u"DTSTART;VALUE=DATE:"_s + basicDate(date));
        appendLine(out, u"DTEND;VALUE=DATE:"_s + basicDate(date.addDays(1)));
        // Day 60 of the year is 29 February in leap years and 1 March in
        // the others: the birthday every year, on the day Tavlo counts.
        const bool leapDay = date.month() == 2 && date.day() == 29;
        appendLine(out, leapDay ? u"RRULE:FREQ=YEARLY;BYYEARDAY=60"_s : u"RRULE:FREQ=YEARLY"_s);
        appendLine(out, u"SUMMARY:"_s + escaped(strings[UiText::CalendarBirthdayOf].arg(
                                            shownName(favorite.name))));
        if (day.hasYear())
            appendLine(out, u"DESCRIPTION:"_s +
                                escaped(strings[UiText::CalendarBornIn].arg(date.year())));
        appendLine(out, u"CATEGORIES:BIRTHDAY"_s);
        appendLine(out, u"TRANSP:TRANSPARENT"_s);
        appendLine(out, u"END:VEVENT"_s);
    });
    output.text.prepend(head);
    appendLine(output.text, u"END:VCALENDAR"_s);
    return output;
}

} // namespace BirthdayExport
