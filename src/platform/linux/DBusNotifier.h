#pragma once

#include "main/NotificationCenter.h"

#include <QDBusConnection>
#include <QObject>
#include <functional>

// Shows reminders as freedesktop notifications (org.freedesktop.Notifications)
// over a D-Bus connection, with Tavlo's name and icon.
class DBusNotifier final : public QObject
{
public:
    DBusNotifier(QDBusConnection bus, QString iconPath, QObject *parent = nullptr);

    // Whether a notification service answers on the bus; the answer comes later.
    void probe(std::function<void(bool answered)> handler);
    // Sends the notification and returns at once; a failure is logged.
    void notify(const NotificationRequest &request, PresentationOptions options);
    // Sends the notification and waits for the service to take it. Returns
    // the service's error text, or nothing when it was shown.
    std::optional<QString> notifyAndWait(const NotificationRequest &request,
                                         PresentationOptions options);

    bool isConnected() const { return m_bus.isConnected(); }

private:
    QDBusMessage message(const NotificationRequest &request, PresentationOptions options) const;

    QDBusConnection m_bus;
    QString m_iconPath;
};
