// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Reading numbers back from text, the way the age figures are read.

// The decimal digits of a text read as one number; everything else (grouping
// separators, unit words of any language, a minus sign) is dropped. 0 when
// no digit is left.
qint64 readDigitsOnly(QStringView text);
