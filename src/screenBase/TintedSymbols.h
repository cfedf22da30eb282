// SPDX-License-Identifier: MIT
#pragma once

#include <QQuickImageProvider>

class QQmlEngine;

// The bundled symbols (screenBase/icons/*.svg), drawn at the size asked for
// and tinted in one colour: image://symbol/<name>/<colour>, the colour as
// QColor names it ("#ffffff", "#80ff0000"). Each symbol is read once, by
// its file's type alone: Qt's own icon item reads a symbol twice and, to
// find its file, wakes every image format Qt has.
class TintedSymbols final : public QQuickImageProvider
{
public:
    TintedSymbols();

    // Makes the symbols available to `engine` as image://symbol/.
    static void install(QQmlEngine &engine);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

    // The symbol's drawing, and its copy drawn ahead at `size` (a PNG of the
    // same pixels, which reads in a fraction of the time and needs no SVG
    // reader): the main screen's bar has one for each screen scale a phone
    // uses, so that its first frame draws no SVG.
    static QString drawingPath(const QString &name);
    static QString drawnAheadPath(const QString &name, QSize size);
};
