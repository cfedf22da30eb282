// SPDX-License-Identifier: MIT
#include "sync/DavXml.h"

#include <QBuffer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <initializer_list>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString dav = u"DAV:"_s;
const QString carddav = u"urn:ietf:params:xml:ns:carddav"_s;

bool is(const QXmlStreamReader &xml, const QString &ns, QStringView name)
{
    return xml.namespaceUri() == ns && xml.name() == name;
}

// "HTTP/1.1 404 Not Found" -> 404
int statusOf(const QString &line)
{
    const QStringList words = line.simplified().split(u' ');
    return words.size() >= 2 ? words.at(1).toInt() : 0;
}

// The hrefs inside the element the reader stands on.
QStringList hrefsInside(QXmlStreamReader &xml)
{
    QStringList hrefs;
    while (xml.readNextStartElement()) {
        if (is(xml, dav, u"href"))
            hrefs.append(xml.readElementText().trimmed());
        else
            xml.skipCurrentElement();
    }
    return hrefs;
}

// One <prop> of a propstat whose status is `ok`.
void readProp(QXmlStreamReader &xml, DavResource &resource)
{
    while (xml.readNextStartElement()) {
        if (is(xml, dav, u"getetag")) {
            resource.etag = xml.readElementText().trimmed().toUtf8();
        } else if (is(xml, carddav, u"address-data")) {
            resource.addressData = xml.readElementText().toUtf8();
            resource.hasAddressData = true;
        } else if (is(xml, dav, u"displayname")) {
            resource.displayName = xml.readElementText().trimmed();
        } else if (is(xml, dav, u"resourcetype")) {
            while (xml.readNextStartElement()) {
                if (is(xml, dav, u"collection"))
                    resource.isCollection = true;
                else if (is(xml, carddav, u"addressbook"))
                    resource.isAddressBook = true;
                xml.skipCurrentElement();
            }
        } else if (is(xml, dav, u"current-user-principal")) {
            resource.principal = hrefsInside(xml).value(0);
        } else if (is(xml, carddav, u"addressbook-home-set")) {
            resource.addressBookHomes = hrefsInside(xml);
        } else if (is(xml, carddav, u"supported-address-data")) {
            while (xml.readNextStartElement()) {
                if (is(xml, carddav, u"address-data-type")) {
                    const QString version =
                        xml.attributes().value(QLatin1StringView("version")).toString();
                    if (!version.isEmpty())
                        resource.vCardVersions.append(version);
                }
                xml.skipCurrentElement();
            }
        } else {
            xml.skipCurrentElement();
        }
    }
}

void readPropstat(QXmlStreamReader &xml, DavResource &resource)
{
    // The status follows the prop; keep what was read until it is known.
    DavResource found;
    int status = 0;
    while (xml.readNextStartElement()) {
        if (is(xml, dav, u"prop"))
            readProp(xml, found);
        else if (is(xml, dav, u"status"))
            status = statusOf(xml.readElementText());
        else
            xml.skipCurrentElement();
    }
    if (status < 200 || status >= 300)
        return;
    if (!found.etag.isEmpty())
        resource.etag = found.etag;
    if (found.hasAddressData) {
        resource.addressData = found.addressData;
        resource.hasAddressData = true;
    }
    resource.isCollection |= found.isCollection;
    resource.isAddressBook |= found.isAddressBook;
    if (!found.displayName.isEmpty())
        resource.displayName = found.displayName;
    if (!found.principal.isEmpty())
        resource.principal = found.principal;
    resource.addressBookHomes += found.addressBookHomes;
    resource.vCardVersions += found.vCardVersions;
}

DavResource readResponse(QXmlStreamReader &xml)
{
    DavResource resource;
    while (xml.readNextStartElement()) {
        if (is(xml, dav, u"href"))
            resource.href = xml.readElementText().trimmed();
        else if (is(xml, dav, u"status"))
            resource.status = statusOf(xml.readElementText());
        else if (is(xml, dav, u"propstat"))
            readPropstat(xml, resource);
        else
            xml.skipCurrentElement();
    }
    return resource;
}

void startDocument(QXmlStreamWriter &xml)
{
    xml.writeStartDocument();
    xml.writeNamespace(dav, u"D"_s);
    xml.writeNamespace(carddav, u"C"_s);
}

// A PROPFIND asking for `properties` (namespace, name).
QByteArray propfind(std::initializer_list<std::pair<QString, QString>> properties)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startDocument(xml);
    xml.writeStartElement(dav, u"propfind"_s);
    xml.writeStartElement(dav, u"prop"_s);
    for (const auto &[space, name] : properties)
        xml.writeEmptyElement(space, name);
    xml.writeEndDocument();
    return out;
}

// Each card's ETag and the card itself.
void cardProperties(QXmlStreamWriter &xml)
{
    xml.writeStartElement(dav, u"prop"_s);
    xml.writeEmptyElement(dav, u"getetag"_s);
    xml.writeEmptyElement(carddav, u"address-data"_s);
    xml.writeEndElement();
}

} // namespace

namespace DavXml {

std::optional<DavMultistatus> readMultistatus(const QByteArray &body)
{
    // Through a device, so that the reader decodes the text a little at a
    // time: given the bytes themselves it decodes them whole at once, and
    // an answer of 5,000 cards would be held twice more in UTF-16.
    QBuffer device;
    device.setData(body);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&device);
    if (!xml.readNextStartElement() || !is(xml, dav, u"multistatus"))
        return std::nullopt;
    DavMultistatus result;
    while (xml.readNextStartElement()) {
        if (is(xml, dav, u"response"))
            result.responses.append(readResponse(xml));
        else if (is(xml, dav, u"sync-token"))
            result.syncToken = xml.readElementText().trimmed();
        else
            xml.skipCurrentElement();
    }
    // A document cut off or malformed half way is no answer either.
    if (xml.hasError())
        return std::nullopt;
    return result;
}

QByteArray discoveryProperties()
{
    return propfind({{dav, u"resourcetype"_s},
                     {dav, u"displayname"_s},
                     {dav, u"current-user-principal"_s},
                     {carddav, u"addressbook-home-set"_s},
                     {carddav, u"supported-address-data"_s}});
}

QByteArray etagProperties()
{
    return propfind({{dav, u"resourcetype"_s}, {dav, u"getetag"_s}});
}

QByteArray syncCollection(const QString &token)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startDocument(xml);
    xml.writeStartElement(dav, u"sync-collection"_s);
    xml.writeTextElement(dav, u"sync-token"_s, token);
    xml.writeTextElement(dav, u"sync-level"_s, u"1"_s);
    xml.writeStartElement(dav, u"prop"_s);
    xml.writeEmptyElement(dav, u"getetag"_s);
    xml.writeEndDocument();
    return out;
}

QByteArray everyCard()
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startDocument(xml);
    xml.writeStartElement(carddav, u"addressbook-query"_s);
    cardProperties(xml);
    // A filter without conditions: every card.
    xml.writeEmptyElement(carddav, u"filter"_s);
    xml.writeEndDocument();
    return out;
}

QByteArray multiget(const QStringList &hrefs)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startDocument(xml);
    xml.writeStartElement(carddav, u"addressbook-multiget"_s);
    cardProperties(xml);
    for (const QString &href : hrefs)
        xml.writeTextElement(dav, u"href"_s, href);
    xml.writeEndDocument();
    return out;
}

QByteArray makeAddressBook(const QString &displayName)
{
    QByteArray out;
    QXmlStreamWriter xml(&out);
    startDocument(xml);
    xml.writeStartElement(dav, u"mkcol"_s);
    xml.writeStartElement(dav, u"set"_s);
    xml.writeStartElement(dav, u"prop"_s);
    xml.writeStartElement(dav, u"resourcetype"_s);
    xml.writeEmptyElement(dav, u"collection"_s);
    xml.writeEmptyElement(carddav, u"addressbook"_s);
    xml.writeEndElement();
    xml.writeTextElement(dav, u"displayname"_s, displayName);
    xml.writeEndDocument();
    return out;
}

} // namespace DavXml
