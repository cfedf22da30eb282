// SPDX-License-Identifier: MIT
#include "screenBase/TintedSymbols.h"

#include <QColor>
#include <QImageReader>
#include <QPainter>
#include <QQmlEngine>

TintedSymbols::TintedSymbols() : QQuickImageProvider(QQuickImageProvider::Image) {}

void TintedSymbols::install(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("symbol"), new TintedSymbols);
}

QImage TintedSymbols::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QString name = id.section(u'/', 0, 0);
    const QColor color(id.section(u'/', 1));
    QImageReader reader(QStringLiteral(":/qt/qml/Tavlo/screenBase/icons/") + name +
                        QStringLiteral(".svg"));
    if (requestedSize.isValid())
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
