// SPDX-License-Identifier: MIT
#include "platform/linux/PortalFileChooser.h"

#include "core/DebugLog.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFile>
#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString portalService = u"org.freedesktop.portal.Desktop"_s;
const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString chooserInterface = u"org.freedesktop.portal.FileChooser"_s;
const QString requestInterface = u"org.freedesktop.portal.Request"_s;

// The portal's filter, a(sa(us)): a name and its rules, each a glob (0)
// or a MIME type (1).
struct PortalRule
{
    uint kind = 0;
    QString pattern;
};
struct PortalFilter
{
    QString name;
    QList<PortalRule> rules;
};

QDBusArgument &operator<<(QDBusArgument &out, const PortalRule &rule)
{
    out.beginStructure();
    out << rule.kind << rule.pattern;
    out.endStructure();
    return out;
}
const QDBusArgument &operator>>(const QDBusArgument &in, PortalRule &rule)
{
    in.beginStructure();
    in >> rule.kind >> rule.pattern;
    in.endStructure();
    return in;
}
QDBusArgument &operator<<(QDBusArgument &out, const PortalFilter &filter)
{
    out.beginStructure();
    out << filter.name << filter.rules;
    out.endStructure();
    return out;
}
const QDBusArgument &operator>>(const QDBusArgument &in, PortalFilter &filter)
{
    in.beginStructure();
    in >> filter.name >> filter.rules;
    in.endStructure();
    return in;
}

} // namespace

Q_DECLARE_METATYPE(PortalRule)
Q_DECLARE_METATYPE(PortalFilter)

namespace {

PortalFilter portalFilter(const FileChooser::Filter &filter)
{
    PortalFilter out{filter.name, {}};
    for (const QString &glob : filter.globs)
        out.rules.append({0, glob});
    for (const QString &type : filter.mimeTypes)
        out.rules.append({1, type});
    return out;
}

// The request object the portal makes for `token`: known before asking,
// so that an answer given at once is not missed.
QString expectedHandle(const QDBusConnection &bus, const QString &token)
{
    QString sender = bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    return portalPath + u"/request/"_s + sender + u'/' + token;
}

} // namespace

PortalFileChooser::PortalFileChooser(QDBusConnection bus, QObject *parent)
    : FileChooser(parent), m_bus(std::move(bus)),
      m_watcher(portalService, m_bus, QDBusServiceWatcher::WatchForUnregistration)
{
    qDBusRegisterMetaType<PortalRule>();
    qDBusRegisterMetaType<QList<PortalRule>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    // The portal went away while the person was choosing: nothing will
    // answer now, so the toolkit's dialog takes over.
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        if (!m_handle.isEmpty()) {
            DebugLog::line(u"file chooser: the portal went away"_s);
            giveUp();
        }
    });
}

PortalFileChooser::~PortalFileChooser()
{
    stopListening();
}

void PortalFileChooser::choose(const Request &request)
{
    stopListening();
    const quint64 question = ++m_question;
    const QString token = u"tavlo"_s + QString::number(QRandomGenerator::global()->generate());

    QVariantMap options{{u"handle_token"_s, token}, {u"modal"_s, true}};
    QList<PortalFilter> filters;
    for (const Filter &filter : request.filters)
        filters.append(portalFilter(filter));
    if (!filters.isEmpty()) {
        options.insert(u"filters"_s, QVariant::fromValue(filters));
        options.insert(u"current_filter"_s, QVariant::fromValue(filters.constFirst()));
    }
    // The portal takes the folder as the file system's bytes, ending in NUL.
    if (!request.folder.isEmpty())
        options.insert(u"current_folder"_s, QFile::encodeName(request.folder).append('\0'));
    if (request.mode == Mode::Open)
        options.insert(u"multiple"_s, false);
    else if (!request.suggestedName.isEmpty())
        options.insert(u"current_name"_s, request.suggestedName);

    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, chooserInterface,
                                       request.mode == Mode::Open ? u"OpenFile"_s : u"SaveFile"_s);
    call << (m_parentWindow ? m_parentWindow() : QString()) << request.title << options;

    listen(expectedHandle(m_bus, token));
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, m_callTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, question](QDBusPendingCallWatcher *watcher) {
                watcher->deleteLater();
                // Replaced by a newer question, or already answered.
                if (question != m_question || m_handle.isEmpty())
                    return;
                const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
                if (reply.isError()) {
                    DebugLog::line(u"file chooser: no portal ("_s + reply.error().name() + u": "_s +
                                   reply.error().message() + u')');
                    giveUp();
                    return;
                }
                // Portals before version 0.9 name the request their own way.
                if (reply.value().path() != m_handle)
                    listen(reply.value().path());
            });
}

void PortalFileChooser::listen(const QString &handle)
{
    stopListening();
    m_handle = handle;
    m_bus.connect(portalService, m_handle, requestInterface, u"Response"_s, this,
                  SLOT(answered(uint, QVariantMap)));
}

void PortalFileChooser::stopListening()
{
    if (m_handle.isEmpty())
        return;
    m_bus.disconnect(portalService, m_handle, requestInterface, u"Response"_s, this,
                     SLOT(answered(uint, QVariantMap)));
    // A question still open is withdrawn; its chooser closes.
    m_bus.asyncCall(
        QDBusMessage::createMethodCall(portalService, m_handle, requestInterface, u"Close"_s));
    m_handle.clear();
}

void PortalFileChooser::giveUp()
{
    stopListening();
    emit unavailable();
}

void PortalFileChooser::answered(uint response, const QVariantMap &results)
{
    if (m_handle.isEmpty())
        return;
    // The request is over: there is nothing left to close.
    m_bus.disconnect(portalService, m_handle, requestInterface, u"Response"_s, this,
                     SLOT(answered(uint, QVariantMap)));
    m_handle.clear();
    switch (response) {
    case 0: {
        const QStringList uris = results.value(u"uris"_s).toStringList();
        const QUrl file = uris.isEmpty() ? QUrl() : localFile(uris.constFirst());
        if (file.isEmpty()) {
            DebugLog::line(u"file chooser: no local file in "_s + uris.join(u' '));
            emit failed(u"no local file"_s);
        } else {
            emit chosen(file);
        }
        return;
    }
    case 1:
        emit cancelled();
        return;
    default:
        DebugLog::line(u"file chooser: ended with response "_s + QString::number(response));
        emit failed(u"the chooser ended with response "_s + QString::number(response));
        return;
    }
}

QUrl PortalFileChooser::localFile(const QString &uri)
{
    const QUrl url = QUrl::fromEncoded(uri.toUtf8());
    if (!url.isValid() || !url.isLocalFile() || url.toLocalFile().isEmpty())
        return {};
    return url;
}
