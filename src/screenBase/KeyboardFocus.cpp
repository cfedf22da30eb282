// SPDX-License-Identifier: MIT
#include "screenBase/KeyboardFocus.h"

#include <QFocusEvent>
#include <QQuickItem>

KeyboardFocus::KeyboardFocus(QQuickItem *item) : QObject(item)
{
    item->installEventFilter(this);
}

KeyboardFocus *KeyboardFocus::qmlAttachedProperties(QObject *object)
{
    auto *item = qobject_cast<QQuickItem *>(object);
    return item ? new KeyboardFocus(item) : nullptr;
}

bool KeyboardFocus::eventFilter(QObject *watched, QEvent *event)
{
    bool shown = m_shown;
    if (event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        shown = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                reason == Qt::ShortcutFocusReason;
    } else if (event->type() == QEvent::FocusOut) {
        shown = false;
    }
    if (shown != m_shown) {
        m_shown = shown;
        emit shownChanged();
    }
    return QObject::eventFilter(watched, event);
}
