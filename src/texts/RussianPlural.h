// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Russian nouns after a number take one of three forms: 1, 21, 101 take the
// singular (год); 2 to 4, 22 to 24 the "few" form (года); 0, 5 to 20, 25 to
// 30 and 111 to 114 the "many" form (лет).
enum class RussianPluralForm { One, Few, Many };

RussianPluralForm russianPluralForm(qint64 number);

QString russianYears(qint64 number);
QString russianMonths(qint64 number);
QString russianDays(qint64 number);
