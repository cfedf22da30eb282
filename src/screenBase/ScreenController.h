// SPDX-License-Identifier: MIT
#pragma once

#include "screenBase/DateWheelModel.h"
#include "screenBase/ScreenTheme.h"
#include "texts/UiStrings.h"
#include "themes/Screens.h"

#include <QObject>
#include <QQmlPropertyMap>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

class Session;

// What every screen's controller offers its view besides the screen's own
// state: the theme's colours, the interface texts in the run's language,
// what the date wheels offer and what a screen reader says for a symbol
// button or a wheel.
class ScreenController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A screen's controller is made by the screen host.")

    Q_PROPERTY(ScreenTheme *theme READ theme CONSTANT)
    // Every interface text by its name in UiText: texts.Cancel. Filled on
    // first read and again for each language; a binding on one text follows
    // that text alone. (The main screen's first frame reads none: each text
    // put in the map costs it a rebuilt meta-object.)
    // (A variant, as tools that check QML know no property map.)
    Q_PROPERTY(QVariant texts READ texts CONSTANT)
    Q_PROPERTY(DateWheelModel *wheels READ wheels CONSTANT)
    // Whether a screen reader (or another assistive technology) follows the
    // app: then the keyboard starts inside a list rather than above it.
    Q_PROPERTY(bool screenReaderOn READ screenReaderOn CONSTANT)
    // Set once the screen has asked for another, and kept for as long as it
    // lives: the view dims itself while the next one fades in.
    Q_PROPERTY(bool dimmed READ dimmed NOTIFY dimmedChanged)

public:
    ScreenTheme *theme() const { return m_theme; }
    QVariant texts() const;
    DateWheelModel *wheels() const { return m_wheels; }
    bool screenReaderOn() const;
    bool dimmed() const { return m_dimmed; }
    // By the keys of accessibleNames(): "info", "day", "sort" and so on.
    Q_INVOKABLE QString accessibleName(const QString &key) const;

signals:
    void languageChanged();
    // A screen reader is to say this now, without the keyboard moving: the
    // outcome of something that changed no focused control.
    void announcement(const QString &words);
    void dimmedChanged();
    // The screen host is to present the screen registered under `identifier`.
    void screenRequested(Screens::Id screen);

protected:
    ScreenController(Session &session, QObject *parent);

    // Leaves this screen for the one registered under `identifier`.
    void showScreen(Screens::Id screen);

    Session &m_session;
    ScreenTheme *const m_theme;
    DateWheelModel *const m_wheels;

private:
    void fillTexts() const;

    QQmlPropertyMap *const m_texts;
    mutable bool m_textsFilled = false;
    QVariantMap m_accessibleNames;
    bool m_dimmed = false;
};
