// SPDX-License-Identifier: MIT
#include "platform/linux/FontconfigFolder.h"

#include <QFile>
#include <fontconfig/fontconfig.h>

namespace {

int applicationFaces()
{
    const FcFontSet *faces = FcConfigGetFonts(nullptr, FcSetApplication);
    return faces ? faces->nfont : 0;
}

} // namespace

namespace FontconfigFolder {

bool add(const QString &folder, int faces)
{
    const int before = applicationFaces();
    const QByteArray path = QFile::encodeName(folder);
    if (FcConfigAppFontAddDir(nullptr, reinterpret_cast<const FcChar8 *>(path.constData())) &&
        applicationFaces() - before == faces)
        return true;
    // A configuration that turns some of them away (its own rules on which
    // files to accept) must not leave half of the set.
    FcConfigAppFontClear(nullptr);
    return false;
}

} // namespace FontconfigFolder
