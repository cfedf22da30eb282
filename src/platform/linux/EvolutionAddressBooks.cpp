// SPDX-License-Identifier: MIT
#include "platform/linux/EvolutionAddressBooks.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString sourcesService = u"org.gnome.evolution.dataserver.Sources5"_s;
const QString sourcesPath = u"/org/gnome/evolution/dataserver/SourceManager"_s;
const QString sourceInterface = u"org.gnome.evolution.dataserver.Source"_s;
const QString factoryService = u"org.gnome.evolution.dataserver.AddressBook10"_s;
const QString factoryPath = u"/org/gnome/evolution/dataserver/AddressBookFactory"_s;
const QString factoryInterface = u"org.gnome.evolution.dataserver.AddressBookFactory"_s;
const QString bookInterface = u"org.gnome.evolution.dataserver.AddressBook"_s;
// Starting the services on demand can take a few seconds on a phone.
constexpr int timeoutMs = 30000;

QDBusMessage call(const QDBusConnection &bus, const QString &service, const QString &path,
                  const QString &interface, const QString &method,
                  const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, timeoutMs);
}

// Whether a source's key-file text describes an address book that is on.
bool isEnabledAddressBook(const QString &data)
{
    if (!data.contains(u"\n[Address Book]"_s))
        return false;
    const qsizetype section = data.indexOf(u"[Data Source]"_s);
    if (section < 0)
        return true;
    const qsizetype end = data.indexOf(u"\n["_s, section + 1);
    return !data.mid(section, end < 0 ? -1 : end - section).contains(u"\nEnabled=false"_s);
}

// The UIDs of the enabled address books, from the registry's managed objects
// (a{oa{sa{sv}}}).
QStringList addressBookUids(const QDBusMessage &reply)
{
    QStringList uids;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return uids;
    const QDBusArgument objects = reply.arguments().at(0).value<QDBusArgument>();
    objects.beginMap();
    while (!objects.atEnd()) {
        objects.beginMapEntry();
        QDBusObjectPath path;
        objects >> path;
        objects.beginMap();
        while (!objects.atEnd()) {
            objects.beginMapEntry();
            QString interface;
            QVariantMap properties;
            objects >> interface >> properties;
            if (interface == sourceInterface &&
                isEnabledAddressBook(properties.value(u"Data"_s).toString()))
                uids.append(properties.value(u"UID"_s).toString());
            objects.endMapEntry();
        }
        objects.endMap();
        objects.endMapEntry();
    }
    objects.endMap();
    uids.sort();
    return uids;
}

} // namespace

namespace EvolutionAddressBooks {

void read(const QDBusConnection &bus, PhoneContactsRead &read)
{
    if (!bus.isConnected())
        return;
    const QStringList uids =
        addressBookUids(call(bus, sourcesService, sourcesPath,
                             u"org.freedesktop.DBus.ObjectManager"_s, u"GetManagedObjects"_s));
    for (const QString &uid : uids) {
        const QDBusMessage opened =
            call(bus, factoryService, factoryPath, factoryInterface, u"OpenAddressBook"_s, {uid});
        if (opened.type() != QDBusMessage::ReplyMessage || opened.arguments().size() < 2) {
            read.sources.append(
                u"evolution-data-server %1: could not open (%2)"_s.arg(uid, opened.errorMessage()));
            continue;
        }
        const QString path = opened.arguments().at(0).toString();
        const QString service = opened.arguments().at(1).toString();
        call(bus, service, path, bookInterface, u"Open"_s);
        // An empty query is every card of the book.
        const QDBusMessage list =
            call(bus, service, path, bookInterface, u"GetContactList"_s, {QString()});
        QList<QByteArray> cards;
        if (list.type() == QDBusMessage::ReplyMessage && !list.arguments().isEmpty()) {
            for (const QString &card : list.arguments().at(0).toStringList())
                cards.append(card.toUtf8());
        }
        PhoneContacts::readTexts(u"evolution-data-server "_s + uid, cards, read);
        call(bus, service, path, bookInterface, u"Close"_s);
    }
}

PhoneContactsRead readAll()
{
    PhoneContactsRead result;
    PhoneContacts::readFolder(PhoneContacts::plasmaFolder(), result);
    read(QDBusConnection::sessionBus(), result);
    return result;
}

} // namespace EvolutionAddressBooks
