// SPDX-License-Identifier: MIT
#include "platform/linux/DBusNotifier.h"

#include "platform/linux/NotificationMarkup.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString objectPath = u"/org/freedesktop/Notifications"_s;
const QString interfaceName = u"org.freedesktop.Notifications"_s;
const QString appName = u"Tavlo"_s;
const QString desktopEntry = u"io.github.tavlo.Tavlo"_s;

} // namespace

DBusNotifier::DBusNotifier(QDBusConnection bus, QString iconPath, QObject *parent)
    : QObject(parent), m_bus(std::move(bus)), m_iconPath(std::move(iconPath))
{
    if (!m_bus.isConnected())
        return;
    // From whoever serves notifications now (the shell may restart); only
    // the ids we were given count.
    m_bus.connect(QString(), objectPath, interfaceName, u"ActionInvoked"_s, this,
                  SLOT(actionInvoked(uint, QString)));
    m_bus.connect(QString(), objectPath, interfaceName, u"NotificationClosed"_s, this,
                  SLOT(notificationClosed(uint, uint)));
}

void DBusNotifier::probe(std::function<void(bool answered)> handler)
{
    if (!m_bus.isConnected()) {
        QTimer::singleShot(0, this, [handler] { handler(false); });
        return;
    }
    const QDBusMessage question = QDBusMessage::createMethodCall(service, objectPath, interfaceName,
                                                                 u"GetServerInformation"_s);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [handler](QDBusPendingCallWatcher *w) {
                         w->deleteLater();
                         handler(!w->isError());
                     });
}

QDBusMessage DBusNotifier::capabilitiesQuestion() const
{
    return QDBusMessage::createMethodCall(service, objectPath, interfaceName, u"GetCapabilities"_s);
}

bool DBusNotifier::doesMarkup(const QDBusMessage &capabilities)
{
    // A server that does not answer is asked for nothing fancy: plain text.
    return capabilities.type() == QDBusMessage::ReplyMessage &&
           capabilities.arguments().value(0).toStringList().contains(
               QString::fromUtf16(NotificationMarkup::bodyMarkupCapability));
}

QDBusMessage DBusNotifier::message(const NotificationRequest &request, PresentationOptions options,
                                   bool serverDoesMarkup) const
{
    QVariantMap hints;
    // Desktops group the reminders under the app, and open it from there.
    hints.insert(u"desktop-entry"_s, desktopEntry);
    hints.insert(u"urgency"_s, QVariant::fromValue(uchar(1)));
    // A banner alone leaves nothing in the list or on the lock screen.
    if (!options.testFlag(PresentationOption::List))
        hints.insert(u"transient"_s, true);
    if (!options.testFlag(PresentationOption::Sound))
        hints.insert(u"suppress-sound"_s, true);
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath, interfaceName, u"Notify"_s);
    // "default" is the tap on the notification itself: it opens Tavlo on
    // the reminder's favorite.
    message << appName << uint(0) << m_iconPath
            << NotificationMarkup::forServer(request.title, serverDoesMarkup)
            << NotificationMarkup::forServer(request.body, serverDoesMarkup)
            << QStringList{u"default"_s, appName} << hints << int(-1);
    return message;
}

void DBusNotifier::notify(const NotificationRequest &request, PresentationOptions options)
{
    if (!m_bus.isConnected()) {
        qWarning("tavlo: the reminder %s cannot be shown: no session bus",
                 qPrintable(request.identifier));
        return;
    }
    auto *asked = new QDBusPendingCallWatcher(m_bus.asyncCall(capabilitiesQuestion()), this);
    QObject::connect(asked, &QDBusPendingCallWatcher::finished, this,
                     [this, request, options](QDBusPendingCallWatcher *capabilities) {
                         capabilities->deleteLater();
                         const bool markup = doesMarkup(capabilities->reply());
                         auto *watcher = new QDBusPendingCallWatcher(
                             m_bus.asyncCall(message(request, options, markup)), this);
                         QObject::connect(
                             watcher, &QDBusPendingCallWatcher::finished, this,
                             [this, options, request](QDBusPendingCallWatcher *w) {
                                 w->deleteLater();
                                 const QDBusPendingReply<uint> reply = *w;
                                 if (reply.isError()) {
                                     qWarning("tavlo: the reminder %s could not be shown: %s",
                                              qPrintable(request.identifier),
                                              qPrintable(reply.error().message()));
                                     return;
                                 }
                                 shown(reply.value(), request, options);
                             });
                     });
}

std::variant<uint, QString> DBusNotifier::notifyAndWait(const NotificationRequest &request,
                                                        PresentationOptions options)
{
    const bool markup = doesMarkup(m_bus.call(capabilitiesQuestion(), QDBus::Block, 10'000));
    const QDBusMessage reply = m_bus.call(message(request, options, markup), QDBus::Block, 10'000);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return reply.errorMessage();
    const uint id = reply.arguments().value(0).toUInt();
    shown(id, request, options);
    return id;
}

void DBusNotifier::shown(uint id, const NotificationRequest &request, PresentationOptions options)
{
    m_sent.insert(id, request.favoriteId);
    if (options.testFlag(PresentationOption::List))
        m_open.insert(id);
}

void DBusNotifier::waitForAnswers(qint64 limitMs)
{
    const QDeadlineTimer deadline(limitMs);
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        if (m_open.isEmpty() || deadline.hasExpired())
            loop.quit();
    });
    check.start(200);
    if (!m_open.isEmpty() && !deadline.hasExpired())
        loop.exec();
}

void DBusNotifier::actionInvoked(uint id, const QString &action)
{
    if (!m_sent.contains(id))
        return;
    m_open.remove(id);
    if (action == u"default" && onActivated)
        onActivated(m_sent.value(id));
}

void DBusNotifier::notificationClosed(uint id, uint)
{
    m_open.remove(id);
}
