// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Screens.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

class Session;
// Whole types: the meta-object code of the factory's methods needs them.
#include "favoritesScreen/FavoritesScreenController.h"
#include "mainScreen/MainScreenController.h"
#include "session/SaveNotice.h"
#include "settingsScreen/SettingsScreenController.h"

// Makes the controllers of the screens the screen host presents, each
// wired to the run's shared session. The app makes the one factory and hands
// it to the window as its "screens" property.
class ScreenFactory : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The app makes the one factory of the screens.")
    // Shown over every screen for a few seconds when a change could not be
    // saved.
    Q_PROPERTY(QString saveNoticeText READ saveNoticeText NOTIFY saveNoticeChanged)
    Q_PROPERTY(bool saveNoticeShown READ saveNoticeShown NOTIFY saveNoticeChanged)
    Q_PROPERTY(QColor saveNoticeColor READ saveNoticeColor CONSTANT)

public:
    explicit ScreenFactory(Session &session, QObject *parent = nullptr);

    // A new main screen controller owned by `owner`, which the host destroys
    // together with the screen.
    Q_INVOKABLE MainScreenController *makeMainController(QObject *owner) const;
    Q_INVOKABLE FavoritesScreenController *makeFavController(QObject *owner) const;
    Q_INVOKABLE SettingsScreenController *makeSetController(QObject *owner) const;

    // A tapped reminder: a new main screen opens on the favorite with this
    // id, as when it is chosen in the favorites list; on the last picked
    // date when none has it any more.
    void showFavorite(const QString &favoriteId);

    QString saveNoticeText() const;
    bool saveNoticeShown() const;
    QColor saveNoticeColor() const;

signals:
    void saveNoticeChanged();
    // The screen host presents a new screen with this identifier.
    void screenWanted(Screens::Id screen);

private:
    Session &m_session;
};
