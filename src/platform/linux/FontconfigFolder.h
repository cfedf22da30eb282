// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Fontconfig keeps what it learned of the fonts in a folder (each face's
// characters, styles and names) in a cache of its own, and reads that in a
// moment at the next start; faces handed over from memory it reads whole at
// every start. Qt's font database, made at the first text, lists the
// folder's faces with the system's.
namespace FontconfigFolder {

// Adds the `faces` fonts in `folder` as this application's, before any
// other. False, with none of them added, when fontconfig did not take them
// all (a configuration may turn files away by their names): the caller
// registers the faces another way.
bool add(const QString &folder, int faces);

} // namespace FontconfigFolder
