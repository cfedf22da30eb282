// SPDX-License-Identifier: MIT
#include "session/SaveNotice.h"

#include "core/DebugLog.h"
#include "texts/UiStrings.h"

SaveNotice::SaveNotice(const UiStrings &strings, QObject *parent)
    : QObject(parent), m_strings(strings)
{
    m_hide.setSingleShot(true);
    m_hide.setInterval(showFor);
    connect(&m_hide, &QTimer::timeout, this, &SaveNotice::changed);
}

void SaveNotice::report(const WriteResult &failure)
{
    tell(m_strings[UiText::ChangeNotSaved].arg(failure.reason()), failure.message());
}

void SaveNotice::report(const StoredState &state)
{
    switch (state.kind) {
    case StoredState::Kind::Sound:
        return;
    case StoredState::Kind::Damaged:
        tell(m_strings[UiText::SettingsDamaged],
             QStringLiteral("%1 is damaged: %2").arg(state.path, state.problem),
             showStoredProblemsFor);
        return;
    case StoredState::Kind::Unreadable:
        tell(m_strings[UiText::SettingsUnreadable].arg(state.problem),
             QStringLiteral("cannot read %1: %2").arg(state.path, state.problem),
             showStoredProblemsFor);
        return;
    }
}

void SaveNotice::tell(const QString &text, const QString &debugLine,
                      std::chrono::milliseconds duration)
{
    DebugLog::line(debugLine);
    // A second notice at once (a damaged file, then a favorite left out)
    // joins the first rather than hiding it.
    m_text = m_hide.isActive() && !m_text.isEmpty() ? m_text + u'\n' + text : text;
    m_hide.start(std::max(duration, std::chrono::milliseconds(m_hide.remainingTime())));
    emit changed();
}
