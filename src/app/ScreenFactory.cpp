// SPDX-License-Identifier: MIT
#include "app/ScreenFactory.h"

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
