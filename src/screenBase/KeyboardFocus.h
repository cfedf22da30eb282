// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQuickItem;

// Whether an item's keyboard focus came from the keyboard (Tab, Backtab or
// a shortcut), so that its focus ring shows then and not after a tap or
// when a screen places the focus: the rule Qt Quick Controls follow, for
// items built on Qt Quick alone. Attached: `KeyboardFocus.shown`.
class KeyboardFocus : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("attached only")
    QML_ATTACHED(KeyboardFocus)

    Q_PROPERTY(bool shown READ shown NOTIFY shownChanged)

public:
    explicit KeyboardFocus(QQuickItem *item);

    bool shown() const { return m_shown; }

    static KeyboardFocus *qmlAttachedProperties(QObject *object);

signals:
    void shownChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_shown = false;
};
