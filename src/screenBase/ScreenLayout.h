// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QObject>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The layout rules of WindowLayout for a screen or pane of a given width:
// whether it is wide, how wide its bottom bar and side pane are, and how
// wide a column of text may be.
class ScreenLayout : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    // The width of the window, screen or pane the rules apply to.
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY changed)
    // How many buttons the screen's bottom bar holds.
    Q_PROPERTY(int buttons READ buttons WRITE setButtons NOTIFY changed)
    Q_PROPERTY(bool wide READ wide NOTIFY changed)
    Q_PROPERTY(qreal sidePaneWidth READ sidePaneWidth NOTIFY changed)
    Q_PROPERTY(qreal barWidth READ barWidth NOTIFY changed)

public:
    using QObject::QObject;

    qreal width() const { return m_width; }
    void setWidth(qreal width);
    int buttons() const { return m_buttons; }
    void setButtons(int buttons);
    bool wide() const;
    qreal sidePaneWidth() const;
    qreal barWidth() const;

    // The screens (Screens.Main, ...) shown for `asked` at this width, left
    // to right.
    Q_INVOKABLE QVariantList panes(int asked) const;

    // A column of running text in `available` pixels, in `font`.
    Q_INVOKABLE qreal readableWidth(qreal available, const QFont &font) const;

signals:
    void changed();

private:
    qreal m_width = 0;
    int m_buttons = 4;
};
