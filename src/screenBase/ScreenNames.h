// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Screens.h"

#include <QtQml/qqml.h>

// The screens by name in QML: Screens.Id.Main, Screens.Id.Favorites,
// Screens.Id.Settings (written in full: a bare Screens.Main would meet the
// window type Main).
namespace ScreensInQml {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(Screens)
QML_NAMED_ELEMENT(Screens)
} // namespace ScreensInQml
