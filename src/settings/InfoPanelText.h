// SPDX-License-Identifier: MIT
#pragma once

#include "texts/Language.h"

#include <QString>

// What the info panel of the settings screen says, in the interface language:
// what Tavlo shows, its gestures, the version, and the licences of what it
// bundles.
QString infoPanelText(Language language, const QString &version);
