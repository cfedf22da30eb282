// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Tavlo's icon as a file, for notification servers that take an icon by
// path.
namespace NotificationIcon {

// Puts the icon in `folder` (once) and returns its path, or an empty text
// when it cannot be written.
QString install(const QString &folder);

} // namespace NotificationIcon
