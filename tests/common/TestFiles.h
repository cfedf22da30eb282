// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QtGlobal>

// Files a test sets up: a failure to make one is the machine's, not the
// code's, so it stops the test run instead of reading as a finding.
inline QString writeFile(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// What is on disk; empty where there is no file to read.
inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
