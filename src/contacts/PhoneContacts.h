// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/VCardReader.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

// The cards of the phone's address books, and a line per book on what was
// read from it (for the log: "kpeoplevcard: 3 files, 12 cards").
struct PhoneContactsRead
{
    QList<VCardContact> contacts;
    QStringList sources;
};

// Reads the phone's address books; each platform adds its own books.
using PhoneContactsReader = std::function<PhoneContactsRead()>;

namespace PhoneContacts {

// Plasma Mobile's address book: $XDG_DATA_HOME/kpeoplevcard.
QString plasmaFolder();

// What an import from the phone's contacts reads: the address books through
// `platform`, or without one Plasma Mobile's folder alone.
PhoneContactsRead readForImport(const PhoneContactsReader &platform);

// The cards of every *.vcf and *.vcard file in `folder` and in its folders one
// level down (KDE keeps the phone's own cards in "own/"). A file that is no
// vCard, or cannot be read, is passed over and named in `sources`. A missing
// folder adds nothing.
void readFolder(const QString &folder, PhoneContactsRead &read);

// The cards of texts that hold vCards (each as an address-book service gives
// them), under the name `source`.
void readTexts(const QString &source, const QList<QByteArray> &texts, PhoneContactsRead &read);

} // namespace PhoneContacts
