// SPDX-License-Identifier: MIT
#include "screenBase/ScreenController.h"

#include "session/Session.h"
#include "texts/AccessibleNames.h"

#include <QAccessible>
#include <QMetaEnum>

ScreenController::ScreenController(Session &session, QObject *parent)
    : QObject(parent), m_session(session), m_theme(new ScreenTheme(session.appearance, this)),
      m_wheels(new DateWheelModel(session, this)), m_texts(new QQmlPropertyMap(this))
{
    connect(this, &ScreenController::languageChanged, m_wheels, &DateWheelModel::languageChanged);
    connect(this, &ScreenController::languageChanged, this, [this] {
        m_accessibleNames = accessibleNames(m_session.strings, m_session.language());
        if (m_textsFilled)
            fillTexts();
    });
    m_accessibleNames = accessibleNames(m_session.strings, m_session.language());
}

QVariant ScreenController::texts() const
{
    if (!m_textsFilled)
        fillTexts();
    return QVariant::fromValue<QObject *>(m_texts);
}

void ScreenController::fillTexts() const
{
    m_textsFilled = true;
    const QMetaEnum names = QMetaEnum::fromType<UiText>();
    QVariantHash texts;
    for (int i = 0; i < UiTextCount; ++i)
        texts.insert(QLatin1String(names.key(i)), m_session.strings[UiText(names.value(i))]);
    m_texts->insert(texts);
}

QString ScreenController::accessibleName(const QString &key) const
{
    return m_accessibleNames.value(key).toString();
}

bool ScreenController::screenReaderOn() const
{
    return QAccessible::isActive();
}

void ScreenController::showScreen(Screens::Id screen)
{
    if (!m_dimmed) {
        m_dimmed = true;
        emit dimmedChanged();
    }
    emit screenRequested(screen);
}
