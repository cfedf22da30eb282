#include "DBusNotifier.h"

#include <QDBusPendingCallWatcher>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString objectPath = u"/org/freedesktop/Notifications"_s;
const QString interfaceName = u"org.freedesktop.Notifications"_s;
const QString appName = u"Tavlo"_s;

} // namespace

DBusNotifier::DBusNotifier(QDBusConnection bus, QString iconPath, QObject *parent)
    : QObject(parent), m_bus(std::move(bus)), m_iconPath(std::move(iconPath))
{}

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

QDBusMessage DBusNotifier::message(const NotificationRequest &request,
                                   PresentationOptions options) const
{
    QVariantMap hints;
    // Desktops group the reminders under the app and its notification settings.
    hints.insert(u"desktop-entry"_s, u"io.github.tavlo.Tavlo"_s);
    hints.insert(u"urgency"_s, QVariant::fromValue(uchar(1)));
    // A banner alone leaves nothing in the notification list.
    hints.insert(u"transient"_s, !options.testFlag(PresentationOption::List));
    hints.insert(u"suppress-sound"_s, !options.testFlag(PresentationOption::Sound));
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath, interfaceName, u"Notify"_s);
    message << appName << uint(0) << m_iconPath << request.title << request.body << QStringList()
            << hints << int(-1);
    return message;
}

void DBusNotifier::notify(const NotificationRequest &request, PresentationOptions options)
{
    if (!m_bus.isConnected()) {
        qWarning("tavlo: the reminder %s cannot be shown: no session bus",
                 qPrintable(request.identifier));
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message(request, options)), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [identifier = request.identifier](QDBusPendingCallWatcher *w) {
                         w->deleteLater();
                         if (w->isError()) {
                             qWarning("tavlo: the reminder %s could not be shown: %s",
                                      qPrintable(identifier), qPrintable(w->error().message()));
                         }
                     });
}

std::optional<QString> DBusNotifier::notifyAndWait(const NotificationRequest &request,
                                                   PresentationOptions options)
{
    const QDBusMessage reply = m_bus.call(message(request, options), QDBus::Block, 10'000);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return reply.errorMessage();
    return std::nullopt;
}
