// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/VCardReader.h"

#include <QString>

// A vCard file read whole for an import, by the app and the command line
// alike: at most VCardReader::maxBytes and one byte more are read, so that a
// larger file is refused rather than taken in part.
struct VCardFile
{
    // The cards, and what was wrong with the text; nothing when the file
    // could not be read.
    VCardReader::Result cards;
    // Why the file could not be opened or read; empty when it could.
    QString unreadable;

    bool ok() const { return unreadable.isEmpty() && cards.error == VCardReader::Error::None; }
    // One English line on what was wrong: the file's error, else the text's.
    QString problem() const;

    static VCardFile read(const QString &path);
    static VCardFile readStandardInput();
};
