// SPDX-License-Identifier: MIT
#include "resources/DateWheelModel.h"

#include "core/DateWheels.h"
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
    return DateWheels::yearLabels();
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
    return QDate(year, month, 1).daysInMonth();
}

QStringList DateWheelModel::dayLabels(int month, int year) const
{
    QStringList labels;
    for (int day = 1; day <= daysInMonth(month, year); ++day)
        labels.append(QString::number(day));
    return labels;
}
