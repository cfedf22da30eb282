// SPDX-License-Identifier: MIT
#include "app/ScreenFactory.h"

#include "favorites/FavoriteHandOver.h"
#include "screenBase/ScreenTheme.h"
#include "session/Session.h"
#include "themes/Themes.h"

MainScreenController *ScreenFactory::makeMainController(QObject *owner) const
{
    return new MainScreenController(m_session, owner);
}

FavoritesScreenController *ScreenFactory::makeFavController(QObject *owner) const
{
    return new FavoritesScreenController(m_session, owner);
}

SettingsScreenController *ScreenFactory::makeSetController(QObject *owner) const
{
    return new SettingsScreenController(m_session, owner);
}

ScreenFactory::ScreenFactory(Session &session, QObject *parent)
    : QObject(parent), m_session(session)
{
    connect(&session.saveNotice, &SaveNotice::changed, this, &ScreenFactory::saveNoticeChanged);
}

void ScreenFactory::showFavorite(const QString &favoriteId)
{
    // A hand-over that could not be saved is told by the store's notice; the
    // main screen then opens as it would.
    (void)FavoriteHandOver::handById(m_session.settings, m_session.favorites.all(), favoriteId);
    emit screenWanted(Screen::Main);
}

QString ScreenFactory::saveNoticeText() const
{
    return m_session.saveNotice.text();
}

bool ScreenFactory::saveNoticeShown() const
{
    return m_session.saveNotice.shown();
}

QColor ScreenFactory::saveNoticeColor() const
{
    return ScreenTheme::toColor(SystemColors::of(m_session.appearance).notice);
}
