// SPDX-License-Identifier: MIT
#include "sync/AccountSetup.h"

#include "sync/DavXml.h"
#include "sync/SyncEngine.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString versionOf(const QStringList &versions)
{
    return versions.contains(u"4.0"_s) ? u"4.0"_s : u"3.0"_s;
}

QUrl asFolder(QUrl url)
{
    if (!url.path().endsWith(u'/'))
        url.setPath(url.path() + u'/');
    return url;
}

} // namespace

AccountSetup::AccountSetup(QUrl url, QString user, QString password, QObject *parent)
    : QObject(parent), m_url(std::move(url)), m_client(new DavClient(user, password, this))
{}

void AccountSetup::start(std::function<void(const Found &)> done)
{
    m_done = std::move(done);
    if (!m_url.isValid() || (m_url.scheme() != u"https" && m_url.scheme() != u"http") ||
        m_url.host().isEmpty())
        return fail(SyncProblem::other(u"%1 is no http or https URL"_s.arg(m_url.toString())));
    probe(m_url, false, 0);
}

void AccountSetup::probe(const QUrl &url, bool wellKnownTried, int hops)
{
    m_client->propfind(
        url, 0, DavXml::discoveryProperties(), [=, this](const DavResponse &response) {
            if (response.status == 0 || response.status == 401)
                return fail(SyncEngine::problemOf(response, u"looking for the address books"_s));
            const std::optional<DavMultistatus> answer =
                response.status == 207 ? DavXml::readMultistatus(response.body) : std::nullopt;
            const DavResource found = answer ? answer->responses.value(0) : DavResource();
            const QUrl here = response.url;
            if (found.isAddressBook)
                return finish({true, {}, asFolder(here), versionOf(found.vCardVersions), false});
            if (!found.addressBookHomes.isEmpty())
                return listHome(asFolder(here.resolved(QUrl(found.addressBookHomes.first()))));
            const QUrl principal = here.resolved(QUrl(found.principal));
            if (!found.principal.isEmpty() && principal.path() != here.path() && hops < 4)
                return probe(principal, wellKnownTried, hops + 1);
            if (!wellKnownTried)
                return probe(url.resolved(QUrl(u"/.well-known/carddav"_s)), true, hops + 1);
            if (response.status >= 500)
                return fail(SyncEngine::problemOf(response, u"looking for the address books"_s));
            fail({SyncProblem::Kind::NoAddressBook,
                  u"no CardDAV address books found at %1"_s.arg(m_url.toString())});
        });
}

void AccountSetup::listHome(const QUrl &home)
{
    m_client->propfind(
        home, 1, DavXml::discoveryProperties(), [=, this](const DavResponse &response) {
            if (response.status != 207)
                return fail(SyncEngine::problemOf(response, u"listing the address books"_s));
            const std::optional<DavMultistatus> answer = DavXml::readMultistatus(response.body);
            if (!answer)
                return fail(SyncProblem::other(u"the server's answer could not be read"_s));
            for (const DavResource &book : answer->responses) {
                const QString last = QUrl(book.href).path().section(u'/', -2, -2);
                if (book.isAddressBook &&
                    (book.displayName.compare(bookName, Qt::CaseInsensitive) == 0 ||
                     (book.displayName.isEmpty() &&
                      last.compare(bookName, Qt::CaseInsensitive) == 0)))
                    return finish({true,
                                   {},
                                   asFolder(home.resolved(QUrl(book.href))),
                                   versionOf(book.vCardVersions),
                                   false});
            }
            makeBook(home);
        });
}

void AccountSetup::makeBook(const QUrl &home)
{
    const QUrl book = home.resolved(QUrl(u"birthdays/"_s));
    m_client->send(
        "MKCOL", book, DavXml::makeAddressBook(bookName),
        {{"Content-Type", "application/xml; charset=utf-8"}},
        [=, this](const DavResponse &response) {
            if (!response.ok())
                return fail(
                    SyncEngine::problemOf(response, u"making the address book \"Birthdays\""_s));
            // What the new book takes, asked of the book itself.
            m_client->propfind(
                book, 0, DavXml::discoveryProperties(), [=, this](const DavResponse &props) {
                    const std::optional<DavMultistatus> answer =
                        props.status == 207 ? DavXml::readMultistatus(props.body) : std::nullopt;
                    const QStringList versions =
                        answer ? answer->responses.value(0).vCardVersions : QStringList();
                    finish({true, {}, book, versionOf(versions), true});
                });
        });
}

void AccountSetup::finish(Found found)
{
    if (m_done)
        std::exchange(m_done, {})(found);
}

void AccountSetup::fail(const SyncProblem &problem)
{
    finish({false, problem, {}, {}, false});
}
