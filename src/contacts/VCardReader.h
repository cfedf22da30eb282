// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

// What Tavlo takes from one address-book card: who it is and the birthday as
// written, before any judgement on it.
struct VCardContact
{
    // FN, or the given and family names of N; empty when the card has neither.
    QString name;
    // The BDAY value as written ("19850312", "--0312", "1985-03-12T00:00:00Z"),
    // unescaped; absent without BDAY.
    std::optional<QString> birthday;
    // BDAY;VALUE=text: a phrase, not a date.
    bool birthdayIsText = false;
    // Apple's X-APPLE-OMIT-YEAR=1604 on BDAY: the year that, written in the
    // date, stands for "not known" (-1 for the mark without a year).
    std::optional<int> omittedYear;
    // UID, as written ("urn:uuid:…"); empty without one.
    QString uid;
};

// Reads vCard 2.1, 3.0 and 4.0 as address books write them: several cards in
// one text, CRLF or LF line ends, folded lines, backslash escapes, and 2.1's
// CHARSET and ENCODING=QUOTED-PRINTABLE with its soft line breaks. Texts are
// UTF-8 unless a CHARSET says otherwise.
class VCardReader
{
public:
    enum class Error {
        None,
        // No BEGIN:VCARD anywhere: not an address-book file.
        NotVCard,
        // A card begun and never ended: the file was cut off.
        Truncated,
        // Larger than maxBytes.
        TooLarge,
    };

    struct Result
    {
        Error error = Error::None;
        QList<VCardContact> contacts;
    };

    // Larger files are refused rather than read: a real address book of
    // 100,000 cards with photos is well below this.
    static constexpr qsizetype maxBytes = 256 * 1024 * 1024;

    static Result read(const QByteArray &data);

    // The one-line English reason, for the command line.
    static QString errorText(Error error);
};
