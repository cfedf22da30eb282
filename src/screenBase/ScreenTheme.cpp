// SPDX-License-Identifier: MIT
#include "screenBase/ScreenTheme.h"

#include "screenBase/BundledPictures.h"
#include "themes/Contrast.h"

#include <QFile>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <algorithm>

ScreenTheme::ScreenTheme(Appearance appearance, QObject *parent)
    : QObject(parent), m_appearance(appearance), m_switchAccent(SystemColors::of(appearance).red),
      m_accent(toColor(SystemColors::of(appearance).red)),
      m_backgroundImage(imageUrl(QStringLiteral("space")))
{}

const SwitchColors &ScreenTheme::switches() const
{
    if (!m_switches)
        m_switches = SwitchColors::of(m_appearance, m_switchAccent, m_backdrop);
    return *m_switches;
}

QColor ScreenTheme::toColor(Rgb c)
{
    // Components beyond 0 to 1 are clamped here, where they are drawn.
    return QColor::fromRgbF(float(std::clamp(c.red, 0.0, 1.0)),
                            float(std::clamp(c.green, 0.0, 1.0)),
                            float(std::clamp(c.blue, 0.0, 1.0)));
}

QColor ScreenTheme::toColor(Translucent color)
{
    QColor result = toColor(color.color);
    result.setAlphaF(float(color.alpha));
    return result;
}

QUrl ScreenTheme::imageUrl(const QString &name)
{
    return QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/screenBase/images/") + name +
                QStringLiteral(".svg"));
}

QUrl ScreenTheme::drawnAheadUrl(const QUrl &picture, int width, int height)
{
    QString path = picture.toString();
    path.chop(4);
    return QUrl(path + QStringLiteral("-%1x%2.png").arg(width).arg(height));
}

QUrl ScreenTheme::backgroundImageAt(int width, int height) const
{
    // Decoding the drawing takes longer than the rest of the first frame's
    // pictures together; the copy is decoded in a fraction of that.
    const QUrl copy = drawnAheadUrl(m_backgroundImage, width, height);
    return QFile::exists(u':' + copy.path()) ? BundledPictures::urlOf(copy.fileName())
                                             : m_backgroundImage;
}

QColor ScreenTheme::labelColor() const
{
    return toColor(SystemColors::of(m_appearance).label);
}

QColor ScreenTheme::alertRedColor() const
{
    return toColor(Contrast::legible(system().red, {system().alertBackground},
                                     Contrast::text + Contrast::margin));
}

// The faint star picture over the report and the rounding of drawn colours
// may take a little from the contrast reckoned against the backdrop.
constexpr double headroom = 0.3;

qreal ScreenTheme::fadedTextOpacity() const
{
    return Contrast::lowestOpacity(system().label, m_backdrop, Contrast::drawnText + headroom);
}

qreal ScreenTheme::alertFadedTextOpacity() const
{
    return Contrast::lowestOpacity(system().label, {system().alertBackground},
                                   Contrast::drawnText + headroom);
}

namespace {

// What pictureExtremes() finds in the bundled backgrounds, written down so
// that a start does not decode a picture for it: darkest, then lightest,
// in 8-bit RGB. The test of ScreenTheme checks them against the pictures.
struct KnownExtremes
{
    const char16_t *name;
    int darkest[3];
    int lightest[3];
};
constexpr KnownExtremes bundledExtremes[] = {
    {u"space", {4, 5, 12}, {71, 71, 77}},    {u"space0", {8, 2, 15}, {83, 22, 131}},
    {u"space1", {1, 4, 2}, {12, 86, 19}},    {u"space2", {10, 3, 1}, {93, 73, 62}},
    {u"space3", {1, 5, 16}, {70, 100, 131}}, {u"space4", {6, 0, 0}, {104, 56, 58}},
};

// As a decoded pixel gives it.
Rgb toRgb(const int (&rgb)[3])
{
    const QColor color(rgb[0], rgb[1], rgb[2]);
    return {color.redF(), color.greenF(), color.blueF()};
}

} // namespace

std::optional<std::pair<Rgb, Rgb>> ScreenTheme::knownExtremes(const QUrl &picture)
{
    for (const KnownExtremes &known : bundledExtremes) {
        if (picture == imageUrl(QString::fromUtf16(known.name)))
            return std::pair{toRgb(known.darkest), toRgb(known.lightest)};
    }
    return std::nullopt;
}

std::pair<Rgb, Rgb> ScreenTheme::pictureExtremes(const QUrl &picture)
{
    static QHash<QUrl, std::pair<Rgb, Rgb>> known;
    if (const auto it = known.constFind(picture); it != known.cend())
        return *it;
    // The size the backgrounds are decoded at on a phone-sized window.
    QImageReader reader(u':' + picture.path());
    reader.setScaledSize(QSize(24, 53));
    const QImage image = reader.read().convertToFormat(QImage::Format_RGB32);
    std::pair<Rgb, Rgb> extremes{{1, 1, 1}, {0, 0, 0}};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const Rgb rgb{pixel.redF(), pixel.greenF(), pixel.blueF()};
            if (Contrast::luminance(rgb) < Contrast::luminance(extremes.first))
                extremes.first = rgb;
            if (Contrast::luminance(rgb) > Contrast::luminance(extremes.second))
                extremes.second = rgb;
        }
    }
    known.insert(picture, extremes);
    return extremes;
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

    if (m_gradientVisible) {
        m_backdrop = {look.gradient->first, look.gradient->second};
    } else if (m_blurVisible) {
        const auto known = knownExtremes(m_backgroundImage);
        const auto [darkest, lightest] = known ? *known : pictureExtremes(m_backgroundImage);
        const Translucent veil = system().veil;
        m_backdrop = {Contrast::over(veil.color, veil.alpha, darkest),
                      Contrast::over(veil.color, veil.alpha, lightest)};
    } else {
        m_backdrop = {look.backgroundColor.value_or(system().background)};
    }
    m_switchAccent = look.accent;
    m_switches.reset();
    m_thinWeight = Contrast::thinReads(system().label, m_backdrop) ? QFont::Thin : QFont::Light;
    emit changed();
}
