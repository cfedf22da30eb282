// SPDX-License-Identifier: MIT
#include "contacts/VCardFile.h"

#include <QFile>

#include <cstdio>

namespace {

VCardFile readOpened(QFile &file, bool opened)
{
    VCardFile read;
    if (!opened) {
        read.unreadable = file.errorString();
        return read;
    }
    const QByteArray data = file.read(VCardReader::maxBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        read.unreadable = file.errorString();
        return read;
    }
    read.cards = VCardReader::read(data);
    return read;
}

} // namespace

QString VCardFile::problem() const
{
    if (!unreadable.isEmpty())
        return unreadable;
    return cards.error == VCardReader::Error::None ? QString()
                                                   : VCardReader::errorText(cards.error);
}

VCardFile VCardFile::read(const QString &path)
{
    QFile file(path);
    const bool opened = file.open(QIODevice::ReadOnly);
    return readOpened(file, opened);
}

VCardFile VCardFile::readStandardInput()
{
    QFile file;
    const bool opened = file.open(stdin, QIODevice::ReadOnly);
    return readOpened(file, opened);
}
