// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/NotificationCenter.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QSet>
#include <functional>
#include <variant>

// Shows reminders as freedesktop notifications (org.freedesktop.Notifications)
// over a D-Bus connection, with Tavlo's name, icon and desktop entry, and
// learns when the person taps one. Each notification first asks the server
// whether it reads markup (it may have been replaced since the last one) and
// escapes the texts for it when it does.
class DBusNotifier final : public QObject
{
    Q_OBJECT

public:
    DBusNotifier(QDBusConnection bus, QString iconPath, QObject *parent = nullptr);

    // Whether a notification service answers on the bus; the answer comes later.
    void probe(std::function<void(bool answered)> handler);
    // Sends the notification and returns at once; a failure is logged.
    void notify(const NotificationRequest &request, PresentationOptions options);
    // Sends the notification and waits for the service to take it: its id,
    // or the service's error text.
    std::variant<uint, QString> notifyAndWait(const NotificationRequest &request,
                                              PresentationOptions options);
    // Waits until every notification sent that stays has been tapped or
    // closed, or until `limitMs` have passed.
    void waitForAnswers(qint64 limitMs);

    bool isConnected() const { return m_bus.isConnected(); }

    // Called when the person taps one of our notifications, with the id of
    // the favorite it was about (empty when none).
    std::function<void(const QString &favoriteId)> onActivated;

private slots:
    void actionInvoked(uint id, const QString &action);
    void notificationClosed(uint id, uint reason);

private:
    QDBusMessage capabilitiesQuestion() const;
    static bool doesMarkup(const QDBusMessage &capabilities);
    QDBusMessage message(const NotificationRequest &request, PresentationOptions options,
                         bool serverDoesMarkup) const;
    void shown(uint id, const NotificationRequest &request, PresentationOptions options);

    QDBusConnection m_bus;
    QString m_iconPath;
    // Every notification sent, with its favorite, and those of them that
    // stay until answered.
    QHash<uint, QString> m_sent;
    QSet<uint> m_open;
};
