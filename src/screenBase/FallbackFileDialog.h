// SPDX-License-Identifier: MIT
#pragma once

#include "screenBase/ScreenTheme.h"
#include "texts/UiStrings.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

// The toolkit's own file dialog, for where no system chooser answers, drawn
// as Tavlo draws its alerts: Qt Quick Dialogs' file dialog keeps its logic
// (folders, filters, the name to save under) but takes its look and layout
// from ThemedFileDialog.qml, one column that fits a phone, in the colours of
// the screen that asked for it.
class FallbackFileDialog : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(ScreenTheme *theme READ theme NOTIFY themeChanged)
    Q_PROPERTY(QString fileNameText READ fileNameText NOTIFY themeChanged)
    Q_PROPERTY(QString upText READ upText NOTIFY themeChanged)
    // The theme's colours, dark ones before any screen asked.
    Q_PROPERTY(QColor textColor READ textColor NOTIFY themeChanged)
    Q_PROPERTY(QColor cardColor READ cardColor NOTIFY themeChanged)
    Q_PROPERTY(QColor fieldColor READ fieldColor NOTIFY themeChanged)
    Q_PROPERTY(QColor lineColor READ lineColor NOTIFY themeChanged)
    Q_PROPERTY(QColor placeholderColor READ placeholderColor NOTIFY themeChanged)
    // The name offered when saving.
    Q_PROPERTY(QString suggestedName READ suggestedName NOTIFY themeChanged)

public:
    static FallbackFileDialog *create(QQmlEngine *, QJSEngine *);
    static FallbackFileDialog &instance();

    // Makes `engine` load ThemedFileDialog.qml where Qt Quick Dialogs
    // would load its own file dialog.
    static void install(QQmlEngine &engine);

    ScreenTheme *theme() const { return m_theme; }
    QColor textColor() const;
    QColor cardColor() const;
    QColor fieldColor() const;
    QColor lineColor() const;
    QColor placeholderColor() const;
    QString fileNameText() const
    {
        return m_strings ? (*m_strings)[UiText::FileDialogName] : QString();
    }
    QString upText() const { return m_strings ? (*m_strings)[UiText::FileDialogUp] : QString(); }
    QString suggestedName() const { return m_suggestedName; }
    // The colours and texts of the screen that asks next, and the name it
    // offers when saving.
    void prepare(ScreenTheme *theme, const UiStrings &strings, const QString &suggestedName);

signals:
    void themeChanged();

private:
    // One for the process, shared with QML through create(): not
    // default-constructible, or QML would make its own.
    FallbackFileDialog() = default;
    QPointer<ScreenTheme> m_theme;
    const UiStrings *m_strings = nullptr;
    QString m_suggestedName;
};
