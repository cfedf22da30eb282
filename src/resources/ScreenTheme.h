#pragma once

#include "main/Themes.h"

#include <QColor>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

// How a screen is coloured in the current theme: the accent, the background
// picture under its blur, or the theme's colour under its gradient.
class ScreenTheme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Each screen controller has one.")

    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY changed)
    Q_PROPERTY(QUrl backgroundImage READ backgroundImage NOTIFY changed)
    Q_PROPERTY(bool blurVisible READ blurVisible NOTIFY changed)
    Q_PROPERTY(bool gradientVisible READ gradientVisible NOTIFY changed)
    Q_PROPERTY(QColor gradientTop READ gradientTop NOTIFY changed)
    Q_PROPERTY(QColor gradientBottom READ gradientBottom NOTIFY changed)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY changed)
    Q_PROPERTY(bool thinTitleBar READ thinTitleBar NOTIFY changed)
    Q_PROPERTY(bool dark READ dark CONSTANT)
    Q_PROPERTY(QColor labelColor READ labelColor CONSTANT)

public:
    ScreenTheme(Appearance appearance, QObject *parent = nullptr);

    // Shows a theme. Once a plain-colour theme has removed the blur, it
    // stays away for as long as the screen lives.
    void apply(const ThemeLook &look);
    // Back to a freshly built screen, blur and all.
    void reset() { m_blurVisible = true; }

    static QColor toColor(Rgb rgb);
    static QUrl imageUrl(const QString &name);

    QColor accentColor() const { return m_accent; }
    QUrl backgroundImage() const { return m_backgroundImage; }
    bool blurVisible() const { return m_blurVisible; }
    bool gradientVisible() const { return m_gradientVisible; }
    QColor gradientTop() const { return m_gradientTop; }
    QColor gradientBottom() const { return m_gradientBottom; }
    QColor backgroundColor() const { return m_backgroundColor; }
    bool thinTitleBar() const { return m_thinTitleBar; }
    bool dark() const { return m_appearance == Appearance::Dark; }
    QColor labelColor() const;

signals:
    void changed();

private:
    Appearance m_appearance;
    QColor m_accent;
    QUrl m_backgroundImage;
    bool m_blurVisible = true;
    bool m_gradientVisible = false;
    QColor m_gradientTop;
    QColor m_gradientBottom;
    QColor m_backgroundColor = Qt::transparent;
    bool m_thinTitleBar = false;
};
