// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/NotificationCenter.h"

#include <QList>
#include <QMap>

// A notification centre that answers at once as told and keeps what it was
// asked, the pending requests by identifier as the platform would.
class RecordingNotificationCenter final : public NotificationCenter
{
public:
    AuthorizationStatus status = AuthorizationStatus::Authorized;
    bool grants = true;
    std::optional<NotificationError> authorizationError;
    std::optional<NotificationError> addError;

    int statusQueries = 0;
    QList<AuthorizationOptions> authorizationRequests;
    QList<NotificationRequest> added;
    QMap<QString, NotificationRequest> pending;

    void getAuthorizationStatus(StatusHandler handler) override
    {
        ++statusQueries;
        handler(status);
    }
    void requestAuthorization(AuthorizationOptions options, AuthorizationHandler handler) override
    {
        authorizationRequests.append(options);
        handler(grants, authorizationError);
    }
    void add(const NotificationRequest &request, AddHandler handler) override
    {
        added.append(request);
        if (!addError)
            pending.insert(request.identifier, request);
        handler(addError);
    }
};
