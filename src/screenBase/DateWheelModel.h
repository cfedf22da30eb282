// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

class Session;

// What the birth date wheels offer, in the run's language: the month names,
// the years, and the order the language writes a date in. The main screen's
// picker and the edit dialog show the same wheels from it.
class DateWheelModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Held by a screen's controller.")

    Q_PROPERTY(QStringList monthNames READ monthNames NOTIFY languageChanged)
    // firstYear to the last year, then "no year" for a birthday without one.
    Q_PROPERTY(QStringList yearLabels READ yearLabels NOTIFY languageChanged)
    // "day", "month" and "year" in the order the language writes them.
    Q_PROPERTY(QStringList order READ order NOTIFY languageChanged)
    Q_PROPERTY(int firstYear READ firstYear CONSTANT)

public:
    DateWheelModel(const Session &session, QObject *parent);

    QStringList monthNames() const;
    QStringList yearLabels() const;
    QStringList order() const;
    int firstYear() const;

    // The year wheel's place of `year`, 0 being "no year"; and back.
    Q_INVOKABLE int yearIndex(int year) const;
    Q_INVOKABLE int yearAt(int index) const;
    // Year 0, no year, has every day of a leap year.
    Q_INVOKABLE int daysInMonth(int month, int year) const;
    // "1" to the last day of the month.
    Q_INVOKABLE QStringList dayLabels(int month, int year) const;

signals:
    void languageChanged();

private:
    const Session &m_session;
};
