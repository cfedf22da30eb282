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
};
