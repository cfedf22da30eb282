// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Screens.h"

#include <QtQml/qqmlregistration.h>

// The screens by name in QML: Screens.Main, Screens.Favorites,
// Screens.Settings.
namespace ScreensInQml {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(Screens)
QML_NAMED_ELEMENT(Screens)
} // namespace ScreensInQml
