// SPDX-License-Identifier: MIT
#include "resources/BundledFonts.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>

namespace {

const QString sans = QStringLiteral("Tavlo Sans");

// After Tavlo Sans, in this order: the signs keep their plain bundled glyphs
// before the emoji font could draw them in colour.
QStringList fallbacks()
{
    return {QStringLiteral("Tavlo Symbols"), QStringLiteral("Tavlo Han"),
            QStringLiteral("Noto Color Emoji")};
}

} // namespace

namespace BundledFonts {

void install()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    const QDir folder(QStringLiteral(":/qt/qml/Tavlo/resources/fonts"));
    for (const QString &file :
         folder.entryList({QStringLiteral("*.otf"), QStringLiteral("*.ttf")}, QDir::Files)) {
        if (QFontDatabase::addApplicationFont(folder.filePath(file)) < 0)
            qWarning("tavlo: the bundled font %s could not be loaded", qPrintable(file));
    }
    QFont::insertSubstitutions(sans, fallbacks());
    QFont font(sans);
    font.setFamilies(QStringList{sans} + fallbacks());
    QGuiApplication::setFont(font);
}

QStringList families()
{
    return QStringList{sans} + fallbacks();
}

QList<QFont::Weight> weights()
{
    return {QFont::Thin, QFont::Light, QFont::Normal, QFont::DemiBold};
}

} // namespace BundledFonts
