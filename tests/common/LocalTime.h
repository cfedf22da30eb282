// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

// A moment in local time, as the date wheels give it.
inline QDateTime at(int year, int month, int day, int hour = 0, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute));
}
