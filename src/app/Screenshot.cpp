// SPDX-License-Identifier: MIT
#include "app/Screenshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>

void Screenshot::takeAfterFirstFrame(QQuickWindow &window, const QString &path)
{
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [&window, path] {
            // Pictures load in the background; give them a moment.
            QTimer::singleShot(800, &window, [&window, path] {
                QDir().mkpath(QFileInfo(path).absolutePath());
                window.grabWindow().save(path);
                QCoreApplication::quit();
            });
        },
        Qt::SingleShotConnection);
}
