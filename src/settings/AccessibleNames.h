#pragma once

#include "Language.h"

#include <QVariantMap>

class UiStrings;

// What a screen reader says for the controls that show a symbol instead of
// words, and for the date wheels, in the interface language. Keys: today,
// add, favorites, settings, back, delete, info, close, day, month, year,
// theme (with %1 for the theme's number).
QVariantMap accessibleNames(const UiStrings &strings, Language language);
