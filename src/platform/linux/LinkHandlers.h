// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// Whether the desktop has an application for links of a scheme
// (x-scheme-handler/<scheme>), found where xdg-open and the desktops look:
// a desktop entry in an "applications" folder that declares the scheme, or
// an association in a mimeapps.list. Opening a link hands it to xdg-open,
// which starts even when nothing can take the link, so this is what tells
// Tavlo that a link would go nowhere. Inside a Flatpak the host's
// applications cannot be seen: the portal decides there, and every scheme
// counts as handled.
namespace LinkHandlers {

// In the XDG folders of this session.
bool installed(const QString &scheme);

// In `dataFolders` (their applications/ folders, one level of subfolders
// too) and `configFolders` (their mimeapps.list).
bool installed(const QString &scheme, const QStringList &dataFolders,
               const QStringList &configFolders);

} // namespace LinkHandlers
