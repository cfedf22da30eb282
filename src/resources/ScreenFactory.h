// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;
class Session;
// Whole types: the meta-object code of the factory's methods needs them.
#include "favorites/FavViewController.h"
#include "main/SaveNotice.h"
#include "main/ViewController.h"
#include "settingsScreen/SetViewController.h"

// Makes the controllers of the screens the screen host presents, each
// wired to the run's shared session.
class ScreenFactory : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // Shown over every screen for a few seconds when a change could not be
    // saved.
    Q_PROPERTY(QString saveNoticeText READ saveNoticeText NOTIFY saveNoticeChanged)
    Q_PROPERTY(bool saveNoticeShown READ saveNoticeShown NOTIFY saveNoticeChanged)

public:
    // The session every controller works on; set before QML is loaded.
    static void setSession(Session *session);
    static ScreenFactory *create(QQmlEngine *, QJSEngine *);

    // A new main screen controller owned by `owner`, which the host destroys
    // together with the screen.
    Q_INVOKABLE ViewController *makeMainController(QObject *owner) const;
    Q_INVOKABLE FavViewController *makeFavController(QObject *owner) const;
    Q_INVOKABLE SetViewController *makeSetController(QObject *owner) const;

    QString saveNoticeText() const;
    bool saveNoticeShown() const;

signals:
    void saveNoticeChanged();

private:
    explicit ScreenFactory(Session &session);

    Session &m_session;
};
