#include "SetViewController.h"

#include "InfoPanelText.h"
#include "core/DebugLog.h"
#include "main/Session.h"
#include "settings/AccessibleNames.h"
#include "settings/SettingsStore.h"

#include <QDesktopServices>

using namespace Qt::Literals::StringLiterals;

SetViewController::SetViewController(Session &session, QObject *parent)
    : QObject(parent), m_session(session), m_theme(new ScreenTheme(session.appearance, this))
{}

QString SetViewController::title() const
{
    return m_session.strings[UiText::Settings];
}

QString SetViewController::backText() const
{
    return m_session.strings[UiText::Done];
}

bool SetViewController::detailsOn() const
{
    return m_session.settings.value(SettingsKeys::moreDetails);
}

bool SetViewController::weekdayOn() const
{
    return m_session.settings.value(SettingsKeys::weekday);
}

bool SetViewController::starOn() const
{
    return m_session.settings.value(SettingsKeys::star);
}

QString SetViewController::detailsCaption() const
{
    return m_session.strings[UiText::ShowMoreDetails];
}

QString SetViewController::weekdayCaption() const
{
    return m_session.strings[UiText::ShowWeekdayInTable];
}

QString SetViewController::starCaption() const
{
    return m_session.strings[UiText::MarkFutureBirthdays];
}

QString SetViewController::appColorsCaption() const
{
    // The same words in every language.
    return u"App colors"_s;
}

int SetViewController::selectedColor() const
{
    return int(m_session.settings.value(SettingsKeys::color));
}

QVariantList SetViewController::colorButtons() const
{
    const QColor frame = m_theme->labelColor();
    const QColor symbol =
        m_session.appearance == Appearance::Dark ? QColor(Qt::white) : QColor(Qt::black);
    const QString name = names().value(u"theme"_s).toString();
    QVariantList buttons;
    for (int i = 0; i < ThemeTable::count; ++i) {
        buttons.append(QVariantMap{{u"name"_s, name.arg(i + 1)},
                                   {u"color"_s, ScreenTheme::toColor(m_session.themes.color(i))},
                                   {u"chosen"_s, i == selectedColor()},
                                   {u"frame"_s, frame},
                                   {u"symbol"_s, symbol}});
    }
    return buttons;
}

QString SetViewController::rateText() const
{
    return m_session.strings[UiText::RateApp];
}

QString SetViewController::moreAppsText() const
{
    return m_session.strings[UiText::MoreApps];
}

QString SetViewController::versionText() const
{
    return u"v"_s + QStringLiteral(TAVLO_VERSION);
}

QString SetViewController::infoText() const
{
    return infoPanelText(m_session.language(), QStringLiteral(TAVLO_VERSION));
}

QUrl SetViewController::moreAppsUrl()
{
    return QUrl(u"itms-apps://apps.apple.com/at/developer/tavlo/id1600000000?mt=8"_s);
}

void SetViewController::viewDidLoad()
{
    applyTheme();
}

void SetViewController::applyTheme()
{
    // Every rebuild starts from a fresh screen, so a picture theme gets its blur back.
    m_theme->reset();
    m_theme->apply(m_session.themes.look(m_session.settings.value(SettingsKeys::color)));
}

void SetViewController::backPressed()
{
    if (!m_dimmed) {
        m_dimmed = true;
        emit dimmedChanged();
    }
    emit screenRequested(u"Main"_s);
}

void SetViewController::switchDetailsValue(bool on)
{
    m_session.settings.set(SettingsKeys::moreDetails, on);
    emit changed();
}

void SetViewController::switchWeekdayValue(bool on)
{
    m_session.settings.set(SettingsKeys::weekday, on);
    emit changed();
}

void SetViewController::switchStarValue(bool on)
{
    m_session.settings.set(SettingsKeys::star, on);
    emit changed();
}

void SetViewController::setColor(int tag)
{
    DebugLog::line(u"color = "_s + QString::number(tag));
    m_session.settings.set(SettingsKeys::color, tag - 1);
    applyTheme();
    emit changed();
}

void SetViewController::versionTaped()
{
    const HiddenLanguageSwitch::Answer answer =
        m_secret.tap(m_session.settings.value(SettingsKeys::color), detailsOn(),
                     m_session.language(), m_session.favorites.count(), m_session.settings);
    m_secretText = answer.text;
    if (answer.reveal)
        m_secretVisible = true;
    emit secretChanged();
}

void SetViewController::ratePressed()
{
    // Linux has no rating prompt of its own; the request is logged and announced.
    DebugLog::line(u"CANCEL"_s);
    emit ratingRequested();
}

void SetViewController::moreAppsPressed()
{
    const QUrl url = moreAppsUrl();
    const bool opened = url.isValid() && QDesktopServices::openUrl(url);
    DebugLog::line(u"RateApp "_s + (opened ? u"true"_s : u"false"_s));
}

void SetViewController::infoPressed()
{
    DebugLog::line(u" Gestures "_s);
    m_infoVisible = true;
    emit infoVisibleChanged();
}

void SetViewController::scrollViewHide()
{
    m_infoVisible = false;
    emit infoVisibleChanged();
}

QVariantMap SetViewController::names() const
{
    return accessibleNames(m_session.strings, m_session.language());
}

bool SetViewController::calendarOn() const
{
    return m_session.calendar.enabled();
}

QString SetViewController::calendarCaption() const
{
    return m_session.strings[UiText::ShowBirthdaysInCalendar];
}

void SetViewController::switchCalendarValue(bool on)
{
    if (const QString problem = m_session.calendar.setEnabled(on); !problem.isEmpty())
        DebugLog::line(problem);
    emit changed();
}
