#include "ScreenTheme.h"

#include <algorithm>

ScreenTheme::ScreenTheme(Appearance appearance, QObject *parent)
    : QObject(parent), m_appearance(appearance),
      m_accent(toColor(SystemColors::of(appearance).red)),
      m_backgroundImage(imageUrl(QStringLiteral("space")))
{}

QColor ScreenTheme::toColor(Rgb c)
{
    // Components beyond 0 to 1 are clamped here, where they are drawn.
    return QColor::fromRgbF(float(std::clamp(c.red, 0.0, 1.0)),
                            float(std::clamp(c.green, 0.0, 1.0)),
                            float(std::clamp(c.blue, 0.0, 1.0)));
}

QUrl ScreenTheme::imageUrl(const QString &name)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/resources/images/") + name +
                QStringLiteral(".svg"));
}

QColor ScreenTheme::labelColor() const
{
    return toColor(SystemColors::of(m_appearance).label);
}

void ScreenTheme::apply(const ThemeLook &look)
{
    m_accent = toColor(look.accent);
    if (!look.blur)
        m_blurVisible = false;
    if (!look.backgroundImage.isEmpty())
        m_backgroundImage = imageUrl(look.backgroundImage);
    m_gradientVisible = look.gradient.has_value();
    if (look.gradient) {
        m_gradientTop = toColor(look.gradient->first);
        m_gradientBottom = toColor(look.gradient->second);
    }
    m_backgroundColor =
        look.backgroundColor ? toColor(*look.backgroundColor) : QColor(Qt::transparent);
    m_thinTitleBar = look.thinTitleBar;
    emit changed();
}
