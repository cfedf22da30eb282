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
    DebugLog::line(failure.message());
    m_text = m_strings[UiText::ChangeNotSaved].arg(failure.reason());
    m_hide.start();
    emit changed();
}
