// SPDX-License-Identifier: MIT
#include "screenBase/FallbackFileDialog.h"

#include <QJSEngine>
#include <QQmlAbstractUrlInterceptor>
#include <QQmlEngine>

namespace {

// Where Qt Quick Dialogs (6.4) takes its file dialog from, and ours.
const QUrl qtFileDialog(
    QStringLiteral("qrc:/qt-project.org/imports/QtQuick/Dialogs/quickimpl/qml/FileDialog.qml"));
const QUrl themedFileDialog(QStringLiteral("qrc:/qt/qml/Tavlo/screenBase/ThemedFileDialog.qml"));

class DialogInterceptor final : public QQmlAbstractUrlInterceptor
{
public:
    QUrl intercept(const QUrl &url, DataType type) override
    {
        return type == QmlFile && url == qtFileDialog ? themedFileDialog : url;
    }
};

} // namespace

FallbackFileDialog &FallbackFileDialog::instance()
{
    static FallbackFileDialog *const one = new FallbackFileDialog;
    return *one;
}

FallbackFileDialog *FallbackFileDialog::create(QQmlEngine *, QJSEngine *)
{
    FallbackFileDialog *one = &instance();
    QJSEngine::setObjectOwnership(one, QJSEngine::CppOwnership);
    return one;
}

void FallbackFileDialog::install(QQmlEngine &engine)
{
    static DialogInterceptor interceptor;
    if (!engine.urlInterceptors().contains(&interceptor))
        engine.addUrlInterceptor(&interceptor);
}

QColor FallbackFileDialog::textColor() const
{
    return m_theme ? m_theme->labelColor() : QColor(Qt::white);
}

QColor FallbackFileDialog::cardColor() const
{
    return m_theme ? m_theme->alertBackground() : QColor(0x2c, 0x2c, 0x2e);
}

QColor FallbackFileDialog::fieldColor() const
{
    return m_theme ? m_theme->fieldBackground() : QColor(0x3a, 0x3a, 0x3c);
}

QColor FallbackFileDialog::lineColor() const
{
    return m_theme ? m_theme->separatorColor() : QColor(0x54, 0x54, 0x58);
}

QColor FallbackFileDialog::placeholderColor() const
{
    return m_theme ? m_theme->placeholderColor() : QColor(Qt::gray);
}

void FallbackFileDialog::prepare(ScreenTheme *theme, const UiStrings &strings,
                                 const QString &suggestedName)
{
    m_theme = theme;
    m_strings = &strings;
    m_suggestedName = suggestedName;
    emit themeChanged();
}
