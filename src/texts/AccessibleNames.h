// SPDX-License-Identifier: MIT
#pragma once

#include "texts/Language.h"

#include <QVariantMap>

class UiStrings;

// What a screen reader says for the controls that show a symbol instead of
// words, and for the date wheels, in the interface language. Keys: today,
// add, favorites, settings, back, delete, info, close, day, month, year,
// theme (with %1 for the theme's number), edit and deleteRow (with %1 for a
// favorite's name), coming (a birthday still to come this year) and age
// (with %1 for the years).
QVariantMap accessibleNames(const UiStrings &strings, Language language);
