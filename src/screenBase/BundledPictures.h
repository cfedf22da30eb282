// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickImageProvider>
#include <QUrl>

class QQmlEngine;

// Tavlo's own raster pictures (screenBase/images/*.png, drawn ahead of time
// at the size they are shown): image://picture/<file>. Each is read by its
// file's type alone. Qt's image item asks every image format it has whether
// a picture is theirs before it tries PNG itself, which loads them all, and
// the libraries behind them, for a picture that is a PNG.
class BundledPictures final : public QQuickImageProvider
{
public:
    BundledPictures();

    // Makes the pictures available to `engine` as image://picture/.
    static void install(QQmlEngine &engine);
    // The address of the bundled picture `file` ("space0-24x53.png").
    static QUrl urlOf(const QString &file);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
