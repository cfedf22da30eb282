// SPDX-License-Identifier: MIT
#include "app/ScreenFactory.h"

#include "favorites/FavoriteHandOver.h"
#include "resources/ScreenTheme.h"
#include "session/Session.h"
#include "themes/Themes.h"

ViewController *ScreenFactory::makeMainController(QObject *owner) const
{
    return new ViewController(m_session, owner);
}

FavViewController *ScreenFactory::makeFavController(QObject *owner) const
{
    return new FavViewController(m_session, owner);
}

SetViewController *ScreenFactory::makeSetController(QObject *owner) const
{
    return new SetViewController(m_session, owner);
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
    emit screenWanted(QStringLiteral("Main"));
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
