// SPDX-License-Identifier: MIT
#include "contacts/SavedFile.h"

#include "settings/AtomicFileWriter.h"

QString saveWholeFile(const QString &path, const QByteArray &contents)
{
    return AtomicFileWriter().write(path, contents).message();
}
