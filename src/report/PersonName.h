// SPDX-License-Identifier: MIT
#pragma once

#include "texts/Language.h"

#include <QString>

// Whose report is shown, from a favorite's name: line breaks become blanks,
// full stops go, trailing blanks go, nothing left reads "Unknown", and
// outside Russian "'s" follows ("Anna. " becomes "Anna's").
QString personNameFromFavorite(const QString &name, Language language);
