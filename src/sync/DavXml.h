// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// One <response> of a WebDAV multistatus, with the properties CardDAV sync
// asks for. Properties that came with a status other than 200 are absent.
struct DavResource
{
    // As the server wrote it (a path, percent-encoded, or a whole URL).
    QString href;
    // The response's own status (sync-collection's 404 for a removed
    // member); 0 when it has propstats instead.
    int status = 0;
    QByteArray etag;
    QByteArray addressData;
    bool hasAddressData = false;
    bool isCollection = false;
    bool isAddressBook = false;
    QString displayName;
    QString principal;
    QStringList addressBookHomes;
    // vCard versions of <supported-address-data>: "3.0", "4.0".
    QStringList vCardVersions;
};

struct DavMultistatus
{
    QList<DavResource> responses;
    // sync-collection's new token; empty otherwise.
    QString syncToken;
};

// WebDAV and CardDAV XML: the bodies Tavlo sends and the multistatus it
// reads, namespaces honoured whatever prefixes the server uses.
namespace DavXml {

// Nothing for a body that is no multistatus (a proxy's error page, garbage).
std::optional<DavMultistatus> readMultistatus(const QByteArray &body);

// PROPFIND bodies.
QByteArray discoveryProperties();
QByteArray etagProperties();
// sync-collection (RFC 6578) from `token` ("" for everything).
QByteArray syncCollection(const QString &token);
// addressbook-multiget of the cards at `hrefs` (paths as the server names them).
QByteArray multiget(const QStringList &hrefs);
// addressbook-query for every card with its ETag and text: one pass over
// the collection on the server, where multigets of thousands of cards cost
// some servers (Xandikos) a lookup per card.
QByteArray everyCard();
// Extended MKCOL (RFC 5689) of an address book called `displayName`.
QByteArray makeAddressBook(const QString &displayName);

} // namespace DavXml
