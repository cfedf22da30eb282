// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

// The app's screens, as the screen host shows them and the controllers ask
// for them.
namespace Screens {
Q_NAMESPACE

enum class Id { Main, Favorites, Settings };
Q_ENUM_NS(Id)

} // namespace Screens

using Screen = Screens::Id;
