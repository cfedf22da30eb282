// SPDX-License-Identifier: MIT
#include "settingsScreen/SettingsScreenController.h"

#include "contacts/ContactsFollower.h"
#include "core/DebugLog.h"
#include "session/Session.h"
#include "settings/InfoPanelText.h"
#include "settings/ReminderTiming.h"
#include "settings/SettingsStore.h"
#include "sync/SyncService.h"
#include "texts/AccessibleNames.h"
#include "themes/Contrast.h"

#include <QDesktopServices>
#include <QPointer>

using namespace Qt::Literals::StringLiterals;

SettingsScreenController::SettingsScreenController(Session &session, QObject *parent)
    : ScreenController(session, parent),
      m_openUrl(session.openLink ? session.openLink
                                 : [](const QUrl &url) { return QDesktopServices::openUrl(url); })
{
    if (m_session.contacts) {
        connect(m_session.contacts, &ContactsFollower::statusChanged, this,
                &SettingsScreenController::followStatusChanged);
    }
    if (m_session.sync) {
        connect(m_session.sync, &SyncService::statusChanged, this,
                &SettingsScreenController::syncChanged);
        connect(m_session.sync, &SyncService::busyChanged, this,
                &SettingsScreenController::syncChanged);
    }
}

bool SettingsScreenController::detailsOn() const
{
    return m_session.settings.value(SettingsKeys::moreDetails);
}

bool SettingsScreenController::weekdayOn() const
{
    return m_session.settings.value(SettingsKeys::weekday);
}

bool SettingsScreenController::starOn() const
{
    return m_session.settings.value(SettingsKeys::star);
}

int SettingsScreenController::selectedColor() const
{
    return ThemeTable::stored(m_session.settings.value(SettingsKeys::color));
}

QVariantList SettingsScreenController::colorButtons() const
{
    const QColor frame = m_theme->labelColor();
    const Rgb symbol = m_session.appearance == Appearance::Dark ? Rgb{1, 1, 1} : Rgb{0, 0, 0};
    const QString name = accessibleName(u"theme"_s);
    QVariantList buttons;
    for (int i = 0; i < ThemeTable::count; ++i) {
        const Rgb color = m_session.themes.color(i);
        const bool chosen = i == selectedColor();
        // A cube must stand out from the screen, and the chosen one's symbol
        // from the cube's colour that fills its frame: each moves in lightness
        // just as far as it needs to.
        const double minimum = Contrast::symbol + Contrast::margin;
        const Rgb shown = chosen ? color : Contrast::legible(color, m_theme->backdrop(), minimum);
        buttons.append(QVariantMap{
            {u"name"_s, name.arg(i + 1)},
            {u"color"_s, ScreenTheme::toColor(shown)},
            {u"chosen"_s, chosen},
            {u"frame"_s, frame},
            {u"symbol"_s, ScreenTheme::toColor(Contrast::legible(symbol, {color}, minimum))}});
    }
    return buttons;
}

QString SettingsScreenController::versionText() const
{
    return u"v"_s + QStringLiteral(TAVLO_VERSION);
}

QString SettingsScreenController::versionSpoken() const
{
    return m_session.strings[UiText::VersionSpoken].arg(QStringLiteral(TAVLO_VERSION));
}

QString SettingsScreenController::infoText() const
{
    return infoPanelText(m_session.language(), QStringLiteral(TAVLO_VERSION));
}

void SettingsScreenController::viewDidLoad()
{
    applyTheme();
}

void SettingsScreenController::applyTheme()
{
    // Every rebuild starts from a fresh screen, so a picture theme gets its blur back.
    m_theme->reset();
    m_theme->apply(m_session.themes.look(m_session.settings.value(SettingsKeys::color)));
}

void SettingsScreenController::backPressed()
{
    showScreen(Screen::Main);
}

void SettingsScreenController::switchDetailsValue(bool on)
{
    m_session.settings.set(SettingsKeys::moreDetails, on);
    emit changed();
}

void SettingsScreenController::switchWeekdayValue(bool on)
{
    m_session.settings.set(SettingsKeys::weekday, on);
    emit changed();
}

void SettingsScreenController::switchStarValue(bool on)
{
    m_session.settings.set(SettingsKeys::star, on);
    emit changed();
}

void SettingsScreenController::setColor(int tag)
{
    DebugLog::line(u"color = "_s + QString::number(tag));
    m_session.settings.set(SettingsKeys::color, tag - 1);
    applyTheme();
    emit changed();
}

void SettingsScreenController::versionTaped()
{
    const HiddenLanguageSwitch::Answer answer =
        m_secret.tap(m_session.settings.value(SettingsKeys::color), detailsOn(),
                     m_session.language(), m_session.favorites.count(), m_session.settings);
    m_secretText = answer.text;
    if (answer.reveal)
        m_secretVisible = true;
    emit secretChanged();
}

void SettingsScreenController::ratePressed()
{
    // The request is logged; where there is a software centre,
    // Tavlo's page there is where it can be rated.
    DebugLog::line(u"CANCEL"_s);
    const QUrl page = StoreLinks::ratePage(m_platform);
    if (page.isValid() && !m_openUrl(page))
        m_session.saveNotice.tell(m_session.strings[UiText::NoSoftwareCentre],
                                  u"no handler for "_s + page.toString());
}

void SettingsScreenController::moreAppsPressed()
{
    const QUrl url = StoreLinks::moreAppsPage(m_platform);
    const bool opened = url.isValid() && m_openUrl(url);
    // "RateApp true" or "RateApp false" is the debug line this button is
    // known by to those who read the log, though the name is another's.
    DebugLog::line(u"RateApp "_s + (opened ? u"true"_s : u"false"_s));
}

void SettingsScreenController::infoPressed()
{
    DebugLog::line(u" Gestures "_s);
    m_infoVisible = true;
    emit infoVisibleChanged();
}

void SettingsScreenController::scrollViewHide()
{
    m_infoVisible = false;
    emit infoVisibleChanged();
}

QString SettingsScreenController::reminderTimeText() const
{
    // In the device's own clock format, as the favorites show dates; hours
    // and minutes only (the C locale's short format has seconds).
    const QLocale &locale = m_session.formatLocale;
    const QString format = locale.timeFormat(QLocale::ShortFormat).remove(u":ss"_s);
    return locale.toString(ReminderTiming::from(m_session.settings).timeOfDay, format);
}

QString SettingsScreenController::reminderLeadText() const
{
    const int days = ReminderTiming::from(m_session.settings).daysBefore;
    return ReminderTiming::leadChoiceTexts(m_session.strings)
        .value(ReminderTiming::leadDayChoices.indexOf(days));
}

void SettingsScreenController::stepReminderTime(int steps)
{
    ReminderTiming::setTimeOfDay(m_session.settings,
                                 ReminderTiming::from(m_session.settings).steppedTime(steps));
    emit changed();
    emit announcement(m_session.strings[UiText::ReminderTime] + u": "_s + reminderTimeText());
}

void SettingsScreenController::nextReminderLead()
{
    const QList<int> &choices = ReminderTiming::leadDayChoices;
    const int now = int(choices.indexOf(ReminderTiming::from(m_session.settings).daysBefore));
    ReminderTiming::setDaysBefore(m_session.settings, choices.value((now + 1) % choices.size()));
    emit changed();
    emit announcement(m_session.strings[UiText::HowEarly] + u": "_s + reminderLeadText());
}

QString SettingsScreenController::secondReminderText() const
{
    const ReminderTiming timing = ReminderTiming::from(m_session.settings);
    if (timing.leads().size() < 2)
        return m_session.strings[UiText::ReminderOff];
    return ReminderTiming::leadChoiceTexts(m_session.strings)
        .value(ReminderTiming::leadDayChoices.indexOf(*timing.secondDaysBefore));
}

void SettingsScreenController::nextSecondReminder()
{
    ReminderTiming::setSecondDaysBefore(
        m_session.settings, ReminderTiming::from(m_session.settings).nextSecondChoice());
    emit changed();
    emit announcement(m_session.strings[UiText::SecondReminder] + u": "_s + secondReminderText());
}

bool SettingsScreenController::calendarOn() const
{
    return m_session.calendar.enabled();
}

void SettingsScreenController::switchCalendarValue(bool on)
{
    if (const QString problem = m_session.calendar.setEnabled(on); !problem.isEmpty())
        DebugLog::line(problem);
    emit changed();
}

bool SettingsScreenController::followContactsOn() const
{
    return m_session.settings.value(SettingsKeys::followContacts);
}

QString SettingsScreenController::followContactsStatus() const
{
    return m_session.contacts ? m_session.contacts->status() : QString();
}

void SettingsScreenController::switchFollowContactsValue(bool on)
{
    // A write that fails is told by the save notice, as every change's is.
    if (m_session.contacts)
        m_session.contacts->setEnabled(on);
    else
        m_session.settings.set(SettingsKeys::followContacts, on);
    emit changed();
    emit followStatusChanged();
}

bool SettingsScreenController::syncAvailable() const
{
    return m_session.sync != nullptr;
}

bool SettingsScreenController::syncAccount() const
{
    return m_session.sync && m_session.sync->hasAccount();
}

bool SettingsScreenController::syncBusy() const
{
    return m_session.sync && m_session.sync->busy();
}

QString SettingsScreenController::syncServer() const
{
    return m_session.sync ? m_session.sync->server() : QString();
}

QString SettingsScreenController::syncUser() const
{
    return m_session.sync ? m_session.sync->user() : QString();
}

QString SettingsScreenController::syncStatus() const
{
    if (!m_session.sync)
        return {};
    if (!m_syncProblem.isEmpty() && !m_session.sync->busy())
        return SyncService::plainProblem(m_syncProblem, m_session.strings);
    return m_session.sync->status(m_session.strings, m_session.formatLocale);
}

void SettingsScreenController::syncSetUp(const QString &server, const QString &user,
                                         const QString &password)
{
    if (!m_session.sync)
        return;
    m_syncProblem = {};
    const QPointer<SettingsScreenController> self = this;
    m_session.sync->setUp(QUrl::fromUserInput(server.trimmed()), user.trimmed(), password,
                          [self](const SyncProblem &problem) {
                              if (!self)
                                  return;
                              self->m_syncProblem = problem;
                              emit self->syncChanged();
                              const QString said = self->syncStatus();
                              emit self->announcement(said);
                          });
    emit syncChanged();
}

void SettingsScreenController::syncNow()
{
    m_syncProblem = {};
    if (m_session.sync)
        m_session.sync->syncNow();
    emit syncChanged();
}

void SettingsScreenController::syncRemove()
{
    if (!m_session.sync)
        return;
    m_syncProblem = {};
    const QPointer<SettingsScreenController> self = this;
    m_session.sync->remove([self](const SyncProblem &problem) {
        if (!self)
            return;
        self->m_syncProblem = problem;
        emit self->syncChanged();
        emit self->announcement(self->syncStatus());
    });
}
