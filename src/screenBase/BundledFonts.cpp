// SPDX-License-Identifier: MIT
#include "screenBase/BundledFonts.h"

#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QResource>

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
    const QDir folder(QStringLiteral(":/qt/qml/Tavlo/screenBase/fonts"));
    for (const QString &file :
         folder.entryList({QStringLiteral("*.otf"), QStringLiteral("*.ttf")}, QDir::Files)) {
        // Read in place where the resource is stored as is: the faces then
        // take memory only for the parts of them that are drawn, not a copy
        // of each whole file.
        const QResource resource(folder.filePath(file));
        const int id = resource.compressionAlgorithm() == QResource::NoCompression
                           ? QFontDatabase::addApplicationFontFromData(QByteArray::fromRawData(
                                 reinterpret_cast<const char *>(resource.data()), resource.size()))
                           : QFontDatabase::addApplicationFont(folder.filePath(file));
        if (id < 0)
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
