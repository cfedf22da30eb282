// SPDX-License-Identifier: MIT
#include "screenBase/TintedSymbols.h"

#include <QColor>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QQmlEngine>

TintedSymbols::TintedSymbols() : QQuickImageProvider(QQuickImageProvider::Image) {}

void TintedSymbols::install(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("symbol"), new TintedSymbols);
}

QString TintedSymbols::drawingPath(const QString &name)
{
    return QStringLiteral(":/qt/qml/Tavlo/screenBase/icons/") + name + QStringLiteral(".svg");
}

QString TintedSymbols::drawnAheadPath(const QString &name, QSize size)
{
    return QStringLiteral(":/qt/qml/Tavlo/screenBase/icons/%1-%2x%3.png")
        .arg(name)
        .arg(size.width())
        .arg(size.height());
}

QImage TintedSymbols::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QString name = id.section(u'/', 0, 0);
    const QColor color(id.section(u'/', 1));
    const QString copy = drawnAheadPath(name, requestedSize);
    const bool drawnAhead = requestedSize.isValid() && QFile::exists(copy);
    QImageReader reader(drawnAhead ? copy : drawingPath(name), drawnAhead ? "png" : "svg");
    reader.setAutoDetectImageFormat(false);
    if (requestedSize.isValid() && !drawnAhead)
        reader.setScaledSize(requestedSize);
    QImage image = reader.read();
    if (image.isNull()) {
        qWarning("tavlo: no symbol named %s", qPrintable(name));
        return image;
    }
    if (color.isValid()) {
        // The symbol's shape, filled with the colour.
        image.convertTo(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
    }
    if (size)
        *size = image.size();
    return image;
}
