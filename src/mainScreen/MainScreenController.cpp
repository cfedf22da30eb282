// SPDX-License-Identifier: MIT
#include "mainScreen/MainScreenController.h"

#include "core/DatePattern.h"
#include "core/DateWheels.h"
#include "core/DebugLog.h"
#include "core/FatalError.h"
#include "favorites/FavoriteHandOver.h"
#include "reminders/ReminderScheduler.h"
#include "report/PersonName.h"
#include "report/ReportComposer.h"
#include "report/TodaysBirthdays.h"
#include "session/RatingRule.h"
#include "session/Session.h"
#include "settings/SettingsStore.h"
#include "texts/AccessibleNames.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QString fallbackBirthDate = u"06 02 1977"_s;

// The main screen's answer for a reminder that comes while the app is open:
// a banner only, without sound, badge or a place in the list. It answers for
// as long as its screen lives.
class ForegroundPresentation final : public QObject, public NotificationCenterDelegate
{
public:
    ForegroundPresentation(NotificationCenter &center, QObject *screen)
        : QObject(screen), m_center(center)
    {
        m_center.setDelegate(this);
    }
    ~ForegroundPresentation() override
    {
        if (m_center.delegate() == this)
            m_center.setDelegate(nullptr);
    }
    PresentationOptions willPresent(const NotificationRequest &) override
    {
        return PresentationOption::Banner;
    }

private:
    NotificationCenter &m_center;
};

} // namespace

MainScreenController::MainScreenController(Session &session, QObject *parent)
    : ScreenController(session, parent), m_picker(session.launchDate())
{}

MainScreenController::~MainScreenController() = default;

QStringList MainScreenController::dayLabels() const
{
    return m_wheels->dayLabels(m_picker.date().month(), m_picker.date().year());
}

void MainScreenController::viewDidLoad()
{
    SettingsStore &settings = m_session.settings;
    if (m_session.reminders)
        new ForegroundPresentation(m_session.reminders->center(), this);

    if (m_session.appearance != Appearance::Dark)
        m_session.themes.useLightColors();

    if (m_session.favorites.convertOlderForm()) {
        settings.set(SettingsKeys::moreDetails, true);
        settings.set(SettingsKeys::star, true);
    }
    m_session.favorites.load();

    applyTheme();

    setPlusEnabled(false);
    FavoriteHandOver::Waiting handOver = FavoriteHandOver::waiting(settings);
    m_currentFavoriteIndex = handOver.index;
    const QString savedText = u"%1 %2 %3"_s.arg(settings.value(SettingsKeys::day))
                                  .arg(settings.value(SettingsKeys::month))
                                  .arg(settings.value(SettingsKeys::year));

    m_session.prepareMainScreen();
    m_personName = m_session.strings[UiText::ReportYour];
    emit languageChanged();

    // Nothing picked yet (all zero on a fresh install): 6 February 1977.
    const QDateTime saved =
        parseRecordDate(savedText).value_or(*parseRecordDate(fallbackBirthDate));

    std::optional<Favorite> handed;
    if (handOver.pending && handOver.movePicker) {
        handed = FavoriteHandOver::favorite(settings);
        // A hand-over cut short (or edited by hand) is dropped, and the
        // screen opens as if none waited.
        if (!handed) {
            FavoriteHandOver::taken(settings, true);
            m_session.saveNotice.tell(
                m_session.strings[UiText::HandOverDropped],
                u"a favorite was handed over without a readable \"Name\" and \"birthday\"; "
                "it was dropped"_s,
                SaveNotice::showStoredProblemsFor);
            handOver.pending = false;
        }
    }

    if (!handOver.pending) {
        checkNotificationPermission();
        const QString greeting = todaysBirthdaysText();
        setReport(greeting.isEmpty() ? m_session.strings[UiText::SelectYourDateOfBirth] : greeting,
                  m_weekday);
        setPicker(saved);
    } else {
        if (!handOver.movePicker) {
            setPicker(saved);
        } else {
            showHanded(*handed);
        }
        FavoriteHandOver::taken(settings, handOver.movePicker);
        composeReport();
    }

    setPlusEnabled(false);

    const RatingDecision rating =
        applyRatingRule(settings, m_session.favorites.count(), QStringLiteral(TAVLO_VERSION));
    if (rating.askForRating)
        requestRating();
}

void MainScreenController::viewDidLayoutSubviews()
{
    applyTheme();
}

void MainScreenController::applyTheme()
{
    m_theme->apply(m_session.themes.look(m_session.settings.value(SettingsKeys::color)));
}

void MainScreenController::pickDate(int day, int month, int year)
{
    const bool yearKnown = year != 0;
    const std::optional<QDate> picked = DateWheels::date(day, month, year);
    if (!picked)
        return;
    const QDate date = *picked;
    const bool sameDay = date == m_picker.date() && yearKnown == m_yearKnown;
    setPicker(QDateTime(date, m_picker.time()), yearKnown);
    if (!sameDay)
        dpChanged();
}

void MainScreenController::dpChanged()
{
    m_personName = m_session.strings[UiText::ReportYour];
    if (!m_yearKnown || m_picker < m_session.launchDate()) {
        composeReport();
        return;
    }
    m_detailed = false;
    setReport(m_session.strings[UiText::SelectYourDateOfBirth], QString());
    setPlusEnabled(false);
}

void MainScreenController::resetPressed()
{
    setPicker(m_session.launchDate());
    storePickedDate();
    composeReport();
    emit announcement(spokenReport());
}

void MainScreenController::composeReport()
{
    setPlusEnabled(false);
    ReportComposer composer(m_session.strings, m_session.results);
    if (const std::optional<DayOfBirth> day = pickedWithoutYear()) {
        const AgeReport report = composer.composeWithoutYear(
            *day, m_session.clock.now().toLocalTime().date(), m_personName, m_session.language());
        m_detailed = m_session.settings.value(SettingsKeys::moreDetails);
        m_starImage = ScreenTheme::imageUrl(report.starImage);
        setReport(report.detailed, QString());
        setPlusEnabled(true);
        return;
    }
    const AgeReport report =
        composer.compose(m_picker, m_session.clock.now(), m_personName, m_session.language());
    storePickedDate();
    m_detailed = m_session.settings.value(SettingsKeys::moreDetails);
    const ShownReport shown = ShownReport::of(report, m_detailed);
    m_starImage = ScreenTheme::imageUrl(report.starImage);
    setReport(shown.display, shown.weekday);
    setPlusEnabled(true);
}

void MainScreenController::storePickedDate()
{
    // The stored date is always a whole one: a start with no year shown
    // opens on the last date that had one.
    if (!m_yearKnown)
        return;
    const QDate date = m_picker.date();
    const SettingsBatch batch(m_session.settings);
    m_session.settings.set(SettingsKeys::day, date.day());
    m_session.settings.set(SettingsKeys::month, date.month());
    m_session.settings.set(SettingsKeys::year, date.year());
}

QString MainScreenController::todaysBirthdaysText()
{
    const FavoritesStore &favorites = m_session.favorites;
    const BirthdayList list{favorites.count(),
                            [&favorites](qsizetype i) { return favorites.at(i).name; },
                            [&favorites](qsizetype i) { return favorites.dayOfBirth(i); }};
    const TodaysBirthdays found =
        TodaysBirthdays::of(list, m_session.clock.now(), m_session.strings, m_session.results);
    m_session.tellUnreadableBirthdays(found.unreadable);
    if (!found.lastBirth) {
        // No birth with a year to stand on: the wheels stay where they were.
        setReport(m_display, QString());
        return found.greeting;
    }
    setPicker(*found.lastBirth);
    composeReport();
    return found.greeting;
}

void MainScreenController::plusPressed()
{
    const QString date =
        DatePattern(m_yearKnown ? u"dd.MM.yyyy" : u"dd.MM.").format(m_picker.date());
    m_addDialogPlaceholder = m_session.strings[UiText::NameForThisBirthday] + u' ' + date;
    emit addDialogChanged();
    emit addFavoriteDialogRequested();
}

void MainScreenController::addFavorite(const QString &fieldText)
{
    const SettingsStore &settings = m_session.settings;
    if (const std::optional<DayOfBirth> day = pickedWithoutYear())
        m_session.favorites.append(fieldText, day->day(), day->month(), std::nullopt);
    else
        m_session.favorites.append(fieldText, settings.value(SettingsKeys::day),
                                   settings.value(SettingsKeys::month),
                                   settings.value(SettingsKeys::year));
    checkNotificationPermission();
    emit favoriteAdded();
}

void MainScreenController::favPressed()
{
    showScreen(Screen::Favorites);
}

void MainScreenController::setPressed()
{
    showScreen(Screen::Settings);
}

void MainScreenController::handleGesture(Swipe swipe)
{
    const FavoritesStore &favorites = m_session.favorites;
    const auto direction =
        swipe == Swipe::Left ? FavoriteBrowsing::Swipe::Left : FavoriteBrowsing::Swipe::Right;
    std::optional<qint64> index =
        FavoriteBrowsing::afterSwipe(m_currentFavoriteIndex, direction, favorites.count());
    // A stored row beyond the list (a hand edit, a list shortened elsewhere)
    // goes on from the nearest end; a favorite whose birthday cannot be read
    // is stepped over.
    if (index)
        index = std::clamp<qint64>(*index, 0, favorites.count() - 1);
    while (index && !favorites.dayOfBirth(*index)) {
        const std::optional<qint64> next =
            FavoriteBrowsing::afterSwipe(*index, direction, favorites.count());
        index = next && *next != *index ? next : std::nullopt;
    }
    if (!index)
        return;
    m_currentFavoriteIndex = *index;
    showFavorite(*index);
    emit announcement(spokenReport());
}

void MainScreenController::showFavorite(qint64 index)
{
    SettingsStore &settings = m_session.settings;
    m_session.prepareMainScreen();
    emit languageChanged();

    const Favorite favorite = m_session.favorites.at(index);
    // Only readable ones are shown (handleGesture()).
    const std::optional<DayOfBirth> day = m_session.favorites.dayOfBirth(index);
    if (!day)
        return;
    m_personName = personNameFromFavorite(favorite.name, m_session.language());
    if (const std::optional<QDate> date = day->date())
        setPicker(date->startOfDay());
    else
        setPickerWithoutYear(*day);
    FavoriteHandOver::taken(settings, true);
    composeReport();
}

void MainScreenController::showHanded(const Favorite &handed)
{
    m_personName = personNameFromFavorite(handed.name, m_session.language());
    const DayOfBirth day = *DayOfBirth::fromStored(handed.birthday);
    if (const std::optional<QDate> date = day.date())
        setPicker(date->startOfDay());
    else
        setPickerWithoutYear(day);
}

void MainScreenController::takeHandOver()
{
    SettingsStore &settings = m_session.settings;
    const FavoriteHandOver::Waiting handOver = FavoriteHandOver::waiting(settings);
    if (!handOver.pending || !handOver.movePicker)
        return;
    const std::optional<Favorite> handed = FavoriteHandOver::favorite(settings);
    FavoriteHandOver::taken(settings, true);
    // The list checked the favorite as it handed it over.
    if (!handed)
        return;
    // Swipes go on from the chosen one.
    m_currentFavoriteIndex = handOver.index;
    showHanded(*handed);
    emit pickerJumped();
    composeReport();
    emit announcement(spokenReport());
}

void MainScreenController::checkNotificationPermission()
{
    emit notificationPermissionCheckRequested();
    if (m_session.reminders)
        m_session.reminders->checkNotificationPermission();
}

void MainScreenController::requestRating()
{
    // Linux has no rating prompt of its own; the request is logged.
    DebugLog::line(u"CANCEL"_s);
}

void MainScreenController::setPickerWithoutYear(const DayOfBirth &day)
{
    setPicker(day.inLeapYear().startOfDay(), false);
}

std::optional<DayOfBirth> MainScreenController::pickedWithoutYear() const
{
    if (m_yearKnown)
        return std::nullopt;
    return DayOfBirth::withoutYear(m_picker.date().day(), m_picker.date().month());
}

void MainScreenController::setPicker(const QDateTime &date, bool yearKnown)
{
    if (date == m_picker && yearKnown == m_yearKnown)
        return;
    const int daysBefore = m_picker.date().daysInMonth();
    m_picker = date;
    m_yearKnown = yearKnown;
    // New day labels reset the day wheel; the date that follows puts it back.
    if (m_picker.date().daysInMonth() != daysBefore)
        emit dayLabelsChanged();
    emit pickerChanged();
}

void MainScreenController::setPlusEnabled(bool enabled)
{
    if (enabled == m_plusEnabled)
        return;
    m_plusEnabled = enabled;
    emit plusEnabledChanged();
}

void MainScreenController::setReport(const QString &display, const QString &weekday)
{
    m_display = display;
    m_weekday = weekday;
    emit reportChanged();
}

std::optional<QDateTime> MainScreenController::parseRecordDate(const QString &text)
{
    const std::optional<QDate> date = DatePattern::stored().parse(text);
    if (!date)
        return std::nullopt;
    return date->startOfDay();
}
