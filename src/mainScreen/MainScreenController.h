// SPDX-License-Identifier: MIT
#pragma once

#include "core/DayOfBirth.h"
#include "favorites/FavoriteBrowsing.h"
#include "favorites/FavoritesStore.h"
#include "report/ReportComposer.h"
#include "screenBase/ScreenController.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>
#include <optional>

class Session;

// The main screen: the birth date wheels, the age report, the theme, and
// the buttons to reset, add a favorite, and open the favorites and settings.
// It runs the screen's rules in their fixed order and shows the results as
// properties; the view (MainScreen.qml) only lays them out.
class MainScreenController : public ScreenController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screen host.")

    Q_PROPERTY(QString displayText READ displayText NOTIFY reportChanged)
    Q_PROPERTY(QString weekdayText READ weekdayText NOTIFY reportChanged)
    // The report as a screen reader says it when it changes.
    Q_PROPERTY(QString spokenReport READ spokenReport NOTIFY reportChanged)
    Q_PROPERTY(bool detailed READ detailed NOTIFY reportChanged)
    Q_PROPERTY(QUrl starImage READ starImage NOTIFY reportChanged)
    Q_PROPERTY(bool plusEnabled READ plusEnabled NOTIFY plusEnabledChanged)

    Q_PROPERTY(int pickerDay READ pickerDay NOTIFY pickerChanged)
    Q_PROPERTY(int pickerMonth READ pickerMonth NOTIFY pickerChanged)
    Q_PROPERTY(int pickerYear READ pickerYear NOTIFY pickerChanged)
    // False while the wheels show a birthday whose year is not known.
    Q_PROPERTY(bool pickerYearKnown READ pickerYearKnown NOTIFY pickerChanged)
    Q_PROPERTY(QStringList dayLabels READ dayLabels NOTIFY dayLabelsChanged)

    Q_PROPERTY(QString addDialogPlaceholder READ addDialogPlaceholder NOTIFY addDialogChanged)

public:
    enum class Swipe { Left, Right };
    Q_ENUM(Swipe)

    explicit MainScreenController(Session &session, QObject *parent = nullptr);
    ~MainScreenController() override;

    QString displayText() const { return m_display; }
    QString weekdayText() const { return m_weekday; }
    QString spokenReport() const { return spokenSummary(m_display); }
    bool detailed() const { return m_detailed; }
    QUrl starImage() const { return m_starImage; }
    bool plusEnabled() const { return m_plusEnabled; }
    int pickerDay() const { return m_picker.date().day(); }
    int pickerMonth() const { return m_picker.date().month(); }
    int pickerYear() const { return m_picker.date().year(); }
    bool pickerYearKnown() const { return m_yearKnown; }
    QDateTime pickerDate() const { return m_picker; }
    QStringList dayLabels() const;
    QString addDialogPlaceholder() const { return m_addDialogPlaceholder; }

    // The screen's load: once per main screen, in a fixed order.
    Q_INVOKABLE void viewDidLoad();
    // After every layout pass.
    Q_INVOKABLE void viewDidLayoutSubviews();
    // The user turned a wheel to this date; the time of day stays. A year of
    // 0 is the year wheel's "no year".
    Q_INVOKABLE void pickDate(int day, int month, int year);
    Q_INVOKABLE void resetPressed();
    Q_INVOKABLE void plusPressed();
    // "OK" in the add dialog, with the name field's text.
    Q_INVOKABLE void addFavorite(const QString &fieldText);
    Q_INVOKABLE void favPressed();
    Q_INVOKABLE void setPressed();
    Q_INVOKABLE void handleGesture(Swipe swipe);
    // The favorites list beside this screen handed a favorite over: it is
    // shown as a new main screen would show it, and said.
    Q_INVOKABLE void takeHandOver();

    void applyTheme();
    void composeReport();

signals:
    void reportChanged();
    void plusEnabledChanged();
    void pickerChanged();
    // Only when the month's length changes, so the day wheel keeps its place.
    void dayLabelsChanged();
    void addDialogChanged();
    // The add dialog is to open; its texts are in the addDialog properties.
    void addFavoriteDialogRequested();
    // The add dialog added a favorite.
    void favoriteAdded();
    // The wheels are to stand on the new date at once, not ride there: a
    // favorite chosen beside them may lie a century away.
    void pickerJumped();
    // Reminders are to be checked and scheduled again.
    void notificationPermissionCheckRequested();

private:
    void dpChanged();
    void checkNotificationPermission();
    QString todaysBirthdaysText();
    void requestRating();
    void setPicker(const QDateTime &date, bool yearKnown = true);
    // The wheels on a day and month without a year.
    void setPickerWithoutYear(const DayOfBirth &day);
    std::optional<DayOfBirth> pickedWithoutYear() const;
    void setPlusEnabled(bool enabled);
    void setReport(const QString &display, const QString &weekday);
    void storePickedDate();
    static std::optional<QDateTime> parseRecordDate(const QString &text);
    void showFavorite(qint64 index);
    // The wheels and the name on a favorite handed over.
    void showHanded(const Favorite &handed);

    QDateTime m_picker;
    // Without a year, m_picker holds the day and month in a leap year.
    bool m_yearKnown = true;
    QString m_display;
    QString m_weekday;
    bool m_detailed = false;
    QUrl m_starImage;
    bool m_plusEnabled = true;

    QString m_addDialogPlaceholder;

    QString m_personName;
    // The favorite that a swipe steps on from.
    qint64 m_currentFavoriteIndex = 0;
};
