// SPDX-License-Identifier: MIT
#include "ScreenFactory.h"

#include "main/Session.h"

namespace {
Session *currentSession = nullptr;
}

void ScreenFactory::setSession(Session *session)
{
    currentSession = session;
}

ScreenFactory *ScreenFactory::create(QQmlEngine *, QJSEngine *)
{
    Q_ASSERT_X(currentSession, "ScreenFactory", "setSession() must come before QML loads");
    return new ScreenFactory(*currentSession);
}

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

ScreenFactory::ScreenFactory(Session &session) : m_session(session)
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
