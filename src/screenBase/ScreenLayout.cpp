// SPDX-License-Identifier: MIT
#include "screenBase/ScreenLayout.h"

#include "themes/WindowLayout.h"

#include <QFontMetricsF>

void ScreenLayout::setWidth(qreal width)
{
    if (qFuzzyCompare(width + 1, m_width + 1))
        return;
    m_width = width;
    emit changed();
}

void ScreenLayout::setButtons(int buttons)
{
    if (buttons == m_buttons)
        return;
    m_buttons = buttons;
    emit changed();
}

bool ScreenLayout::wide() const
{
    return WindowLayout::wide(m_width);
}

qreal ScreenLayout::sidePaneWidth() const
{
    return WindowLayout::sidePaneWidth(m_width);
}

qreal ScreenLayout::barWidth() const
{
    return WindowLayout::barWidth(m_width, m_buttons);
}

qreal ScreenLayout::readableWidth(qreal available, const QFont &font) const
{
    // The average character of running text, spaces and small letters in
    // about the measure they come in, not of every glyph of the font (its
    // capitals, figures and symbols are wider).
    static const QString sample =
        QStringLiteral("the birthday of anna comes in twelve days and she will be forty one ");
    const qreal average = QFontMetricsF(font).horizontalAdvance(sample) / sample.size();
    return WindowLayout::readableWidth(available, average);
}

QVariantList ScreenLayout::panes(int asked) const
{
    QVariantList shown;
    for (const Screen screen : WindowLayout::panes(Screen(asked), m_width))
        shown.append(int(screen));
    return shown;
}
