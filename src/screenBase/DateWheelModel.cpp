// SPDX-License-Identifier: MIT
#include "screenBase/DateWheelModel.h"

#include "core/DateWheels.h"
#include "core/DayOfBirth.h"
#include "session/Session.h"

#include <QDate>

DateWheelModel::DateWheelModel(const Session &session, QObject *parent)
    : QObject(parent), m_session(session)
{}

QStringList DateWheelModel::monthNames() const
{
    return DateWheels::monthNames(localeFor(m_session.language()));
}

QStringList DateWheelModel::yearLabels() const
{
    return DateWheels::yearLabels() << m_session.strings[UiText::NoYear];
}

int DateWheelModel::yearIndex(int year) const
{
    if (year == 0)
        return DateWheels::lastYear - DateWheels::firstYear + 1;
    return year - DateWheels::firstYear;
}

int DateWheelModel::yearAt(int index) const
{
    const int year = index + DateWheels::firstYear;
    return year > DateWheels::lastYear ? 0 : year;
}

QStringList DateWheelModel::order() const
{
    return DateWheels::orderNames(localeFor(m_session.language()));
}

int DateWheelModel::firstYear() const
{
    return DateWheels::firstYear;
}

int DateWheelModel::daysInMonth(int month, int year) const
{
    return DateWheels::daysInMonth(month, year);
}

QStringList DateWheelModel::dayLabels(int month, int year) const
{
    QStringList labels;
    for (int day = 1; day <= daysInMonth(month, year); ++day)
        labels.append(QString::number(day));
    return labels;
}
