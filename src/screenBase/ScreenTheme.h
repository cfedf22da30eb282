// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Themes.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>
#include <algorithm>
#include <optional>

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
    Q_PROPERTY(QColor greyColor READ greyColor CONSTANT)
    Q_PROPERTY(QColor darkGreyColor READ darkGreyColor CONSTANT)
    Q_PROPERTY(QColor redColor READ redColor CONSTANT)
    Q_PROPERTY(QColor alertBackground READ alertBackground CONSTANT)
    Q_PROPERTY(QColor fieldBackground READ fieldBackground CONSTANT)
    Q_PROPERTY(QColor separatorColor READ separatorColor CONSTANT)
    Q_PROPERTY(QColor placeholderColor READ placeholderColor CONSTANT)
    Q_PROPERTY(QColor panelBackground READ panelBackground CONSTANT)
    Q_PROPERTY(QColor switchOnColor READ switchOnColor NOTIFY changed)
    Q_PROPERTY(QColor switchOffColor READ switchOffColor NOTIFY changed)
    Q_PROPERTY(QColor knobColor READ knobColor CONSTANT)
    Q_PROPERTY(QColor switchOnKnobColor READ switchOnKnobColor NOTIFY changed)
    Q_PROPERTY(QColor alertRedColor READ alertRedColor CONSTANT)
    Q_PROPERTY(int thinWeight READ thinWeight NOTIFY changed)
    Q_PROPERTY(QColor veilColor READ veilColor CONSTANT)
    Q_PROPERTY(qreal fadedTextOpacity READ fadedTextOpacity NOTIFY changed)
    Q_PROPERTY(qreal alertFadedTextOpacity READ alertFadedTextOpacity CONSTANT)

public:
    ScreenTheme(Appearance appearance, QObject *parent = nullptr);

    // Shows a theme. Once a plain-colour theme has removed the blur, it
    // stays away for as long as the screen lives.
    void apply(const ThemeLook &look);
    // Back to a freshly built screen, blur and all.
    void reset() { m_blurVisible = true; }

    static QColor toColor(Rgb rgb);
    static QColor toColor(Translucent color);
    static QUrl imageUrl(const QString &name);

    QColor accentColor() const { return m_accent; }
    QUrl backgroundImage() const { return m_backgroundImage; }
    // The background picture to decode at `width` by `height`: a copy drawn
    // ahead of time at that size where there is one (a phone's window),
    // else the picture itself.
    Q_INVOKABLE QUrl backgroundImageAt(int width, int height) const;
    // The name of that copy, whether or not there is one.
    static QUrl drawnAheadUrl(const QUrl &picture, int width, int height);
    bool blurVisible() const { return m_blurVisible; }
    bool gradientVisible() const { return m_gradientVisible; }
    QColor gradientTop() const { return m_gradientTop; }
    QColor gradientBottom() const { return m_gradientBottom; }
    QColor backgroundColor() const { return m_backgroundColor; }
    bool thinTitleBar() const { return m_thinTitleBar; }
    bool dark() const { return m_appearance == Appearance::Dark; }
    QColor labelColor() const;
    QColor greyColor() const { return toColor(system().grey); }
    QColor darkGreyColor() const { return toColor(system().darkGrey); }
    QColor redColor() const { return toColor(system().red); }
    QColor alertBackground() const { return toColor(system().alertBackground); }
    QColor fieldBackground() const { return toColor(system().fieldBackground); }
    QColor separatorColor() const { return toColor(system().separator); }
    QColor placeholderColor() const { return toColor(system().placeholder); }
    QColor panelBackground() const { return toColor(system().panelBackground); }
    // A switch's tracks: the accent and the system's grey, unless they
    // would not be seen on this screen (SwitchColors).
    QColor switchOnColor() const { return toColor(switches().on); }
    QColor switchOffColor() const { return toColor(switches().off); }
    QColor knobColor() const { return toColor(system().knob); }
    QColor switchOnKnobColor() const { return toColor(switches().onKnob); }
    // The system red as a word on an alert's card or a row's buttons.
    QColor alertRedColor() const;
    // The weight of the screen's thin texts: thin where the label's thin
    // strokes read on this background, light elsewhere.
    int thinWeight() const { return m_thinWeight; }
    QColor veilColor() const { return toColor(system().veil); }

    // The colours that can lie behind the content of the screen, as drawn:
    // both ends of a gradient, the darkest and lightest spot of a blurred
    // picture under its veil, or the one plain colour.
    QList<Rgb> backdrop() const { return m_backdrop; }
    // How far the wheels' outer labels may fade and still read on the
    // screen's background, or on an alert's card.
    qreal fadedTextOpacity() const;
    qreal alertFadedTextOpacity() const;
    // `wanted`, or more where text that faint would not read on the screen.
    Q_INVOKABLE qreal legibleOpacity(qreal wanted) const
    {
        return std::max(wanted, fadedTextOpacity());
    }
    // The darkest and lightest colour of a picture drawn small and smoothed
    // up, as the blurred backgrounds are.
    static std::pair<Rgb, Rgb> pictureExtremes(const QUrl &picture);
    // The same for a bundled background, without decoding it.
    static std::optional<std::pair<Rgb, Rgb>> knownExtremes(const QUrl &picture);

signals:
    void changed();

private:
    SystemColors system() const { return SystemColors::of(m_appearance); }
    // Worked out when a switch first asks: the main screen has none, and
    // the search for colours that stand out costs its first frame.
    const SwitchColors &switches() const;

    Appearance m_appearance;
    QList<Rgb> m_backdrop;
    Rgb m_switchAccent;
    mutable std::optional<SwitchColors> m_switches;
    int m_thinWeight = QFont::Thin;
    QColor m_accent;
    QUrl m_backgroundImage;
    bool m_blurVisible = true;
    bool m_gradientVisible = false;
    QColor m_gradientTop;
    QColor m_gradientBottom;
    QColor m_backgroundColor = Qt::transparent;
    bool m_thinTitleBar = false;
};
