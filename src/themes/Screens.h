// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

// The app's screens, as the screen host shows them and the controllers ask
// for them.
namespace Screens {
Q_NAMESPACE

enum class Screen { Main, Favorites, Settings };
Q_ENUM_NS(Screen)

} // namespace Screens

using Screen = Screens::Screen;
