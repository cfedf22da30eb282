// SPDX-License-Identifier: MIT
#include "screenBase/BundledPictures.h"

#include <QFileInfo>
#include <QImageReader>
#include <QQmlEngine>

BundledPictures::BundledPictures() : QQuickImageProvider(QQuickImageProvider::Image) {}

void BundledPictures::install(QQmlEngine &engine)
{
    engine.addImageProvider(QStringLiteral("picture"), new BundledPictures);
}

QUrl BundledPictures::urlOf(const QString &file)
{
    return QUrl(QStringLiteral("image://picture/") + file);
}

QImage BundledPictures::requestImage(const QString &id, QSize *size, const QSize &)
{
    QImageReader reader(QStringLiteral(":/qt/qml/Tavlo/screenBase/images/") + id,
                        QFileInfo(id).suffix().toLatin1());
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read();
    if (image.isNull())
        qWarning("tavlo: no picture %s (%s)", qPrintable(id), qPrintable(reader.errorString()));
    if (size)
        *size = image.size();
    return image;
}
