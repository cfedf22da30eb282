// SPDX-License-Identifier: MIT
#include "sync/SyncCard.h"

#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "contacts/VCardReader.h"
#include "core/DatePattern.h"

#include <QList>

using namespace Qt::Literals::StringLiterals;

namespace {

// A card's content lines as they are written: each with its folded
// continuation lines and its line end.
QList<QByteArray> rawLines(const QByteArray &card)
{
    QList<QByteArray> lines;
    qsizetype start = 0;
    while (start < card.size()) {
        qsizetype end = card.indexOf('\n', start);
        end = end < 0 ? card.size() : end + 1;
        const bool continued =
            !lines.isEmpty() && (card.at(start) == ' ' || card.at(start) == '\t');
        if (continued)
            lines.last().append(card.mid(start, end - start));
        else
            lines.append(card.mid(start, end - start));
        start = end;
    }
    return lines;
}

// "item1.BDAY;VALUE=date:..." -> "BDAY"
QByteArray propertyName(const QByteArray &line)
{
    qsizetype end = 0;
    while (end < line.size() && line.at(end) != ':' && line.at(end) != ';')
        ++end;
    QByteArray name = line.left(end).trimmed().toUpper();
    if (const qsizetype dot = name.lastIndexOf('.'); dot >= 0)
        name = name.mid(dot + 1);
    return name;
}

QString valueAfterColon(const QByteArray &line)
{
    const qsizetype colon = line.indexOf(':');
    return colon < 0 ? QString() : QString::fromUtf8(line.mid(colon + 1)).trimmed();
}

QString birthdayLine(const DayOfBirth &day, const QString &version)
{
    if (version == u"4.0")
        return u"BDAY:"_s + BirthdayExport::birthdayText(day);
    if (const std::optional<QDate> date = day.date())
        return u"BDAY:"_s + DatePattern(u"yyyy-MM-dd").format(*date);
    // 3.0 has no date without a year: the placeholder year, marked.
    return u"BDAY;X-APPLE-OMIT-YEAR=1604:"_s +
           DatePattern(u"yyyy-MM-dd").format(QDate(1604, day.month(), day.day()));
}

// N for a name Tavlo knows only whole: all of it as the family name.
QString structuredNameLine(const QString &name)
{
    QString escaped;
    for (const QChar c : name) {
        if (c == u'\\' || c == u';' || c == u',')
            escaped += u'\\';
        if (c == u'\n' || c == u'\r')
            escaped += u"\\n"_s;
        else if (c.unicode() >= 0x20 || c == u'\t')
            escaped += c;
    }
    return u"N:"_s + escaped + u";;;;"_s;
}

} // namespace

namespace SyncCard {

std::optional<Favorite> favoriteOf(const QByteArray &card, QDate today)
{
    const VCardReader::Result read = VCardReader::read(card);
    if (read.error != VCardReader::Error::None || read.contacts.size() != 1)
        return std::nullopt;
    const VCardContact &contact = read.contacts.first();
    const BirthdayImport::Birthday birthday = BirthdayImport::birthday(contact, today);
    if (birthday.outcome != ImportOutcome::Added || !birthday.day)
        return std::nullopt;
    return Favorite(contact.name, birthday.day->stored(), BirthdayImport::uuidOf(contact.uid));
}

QString uidOf(const QByteArray &card)
{
    const VCardReader::Result read = VCardReader::read(card);
    return read.contacts.isEmpty() ? QString() : read.contacts.first().uid;
}

QByteArray newCard(const Favorite &favorite, const DayOfBirth &day, const QString &version)
{
    QByteArray out;
    out += BirthdayExport::contentLine(u"BEGIN:VCARD"_s);
    out += BirthdayExport::contentLine(u"VERSION:"_s + version);
    out += BirthdayExport::contentLine(u"UID:urn:uuid:"_s + favorite.id);
    out += BirthdayExport::contentLine(BirthdayExport::nameLine(favorite.name));
    if (version != u"4.0")
        out += BirthdayExport::contentLine(structuredNameLine(favorite.name));
    out += BirthdayExport::contentLine(birthdayLine(day, version));
    out += BirthdayExport::contentLine(u"END:VCARD"_s);
    return out;
}

QByteArray changedCard(const QByteArray &card, const Favorite &favorite, const DayOfBirth &day)
{
    const VCardReader::Result read = VCardReader::read(card);
    const VCardContact said = read.contacts.value(0);
    const std::optional<Favorite> was = favoriteOf(card, QDate(9999, 12, 31));
    const bool renamed = said.name != favorite.name;
    const bool redated = !was || was->birthday != favorite.birthday;

    QList<QByteArray> lines = rawLines(card);
    QString version = u"3.0"_s;
    for (const QByteArray &line : lines) {
        if (propertyName(line) == "VERSION")
            version = valueAfterColon(line);
    }
    bool nameWritten = false;
    bool birthdayWritten = false;
    QList<QByteArray> out;
    for (const QByteArray &line : std::as_const(lines)) {
        const QByteArray name = propertyName(line);
        if (name == "FN" && !nameWritten) {
            out.append(renamed
                           ? BirthdayExport::contentLine(BirthdayExport::nameLine(favorite.name))
                           : line);
            nameWritten = true;
        } else if (name == "BDAY") {
            // One birthday: a second BDAY (another calendar's) would read as this.
            if (!birthdayWritten)
                out.append(redated ? BirthdayExport::contentLine(birthdayLine(day, version))
                                   : line);
            birthdayWritten = true;
        } else if (name == "END" &&
                   valueAfterColon(line).compare(u"VCARD"_s, Qt::CaseInsensitive) == 0) {
            if (!nameWritten)
                out.append(BirthdayExport::contentLine(BirthdayExport::nameLine(favorite.name)));
            if (!birthdayWritten)
                out.append(BirthdayExport::contentLine(birthdayLine(day, version)));
            nameWritten = birthdayWritten = true;
            out.append(line);
        } else {
            out.append(line);
        }
    }
    // vCard lines end in CRLF; a card that came through XML has lost its CRs.
    QByteArray result;
    result.reserve(card.size() + 64);
    for (const QByteArray &line : std::as_const(out)) {
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (line.at(i) == '\n' && (i == 0 || line.at(i - 1) != '\r'))
                result.append('\r');
            result.append(line.at(i));
        }
    }
    return result;
}

} // namespace SyncCard
