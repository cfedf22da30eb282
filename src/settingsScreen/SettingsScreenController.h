// SPDX-License-Identifier: MIT
#pragma once

#include "screenBase/ScreenController.h"
#include "settings/HiddenLanguageSwitch.h"
#include "settingsScreen/StoreLinks.h"
#include "sync/SyncProblem.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>
#include <functional>

class Session;

// The settings screen: the details, weekday and star switches, the ten
// colour themes, rating and more apps, the info panel, and the version
// button with the hidden language switch.
class SettingsScreenController : public ScreenController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screen host.")

    Q_PROPERTY(bool detailsOn READ detailsOn NOTIFY changed)
    Q_PROPERTY(bool weekdayOn READ weekdayOn NOTIFY changed)
    Q_PROPERTY(bool starOn READ starOn NOTIFY changed)
    // The ten colour buttons: their colour, whether chosen, and the frame and
    // symbol colours of the chosen one.
    Q_PROPERTY(QVariantList colorButtons READ colorButtons NOTIFY changed)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    // The version button as a screen reader says it: words, not "v0.1.0".
    Q_PROPERTY(QString versionSpoken READ versionSpoken NOTIFY languageChanged)
    Q_PROPERTY(QString secretText READ secretText NOTIFY secretChanged)
    Q_PROPERTY(bool secretVisible READ secretVisible NOTIFY secretChanged)
    Q_PROPERTY(bool infoVisible READ infoVisible NOTIFY infoVisibleChanged)
    Q_PROPERTY(QString infoText READ infoText CONSTANT)
    // The reminders row: when they come and how early.
    Q_PROPERTY(QString reminderTimeText READ reminderTimeText NOTIFY changed)
    Q_PROPERTY(QString reminderLeadText READ reminderLeadText NOTIFY changed)
    Q_PROPERTY(QString secondReminderText READ secondReminderText NOTIFY changed)
    Q_PROPERTY(bool calendarOn READ calendarOn NOTIFY changed)
    // "Birthdays from contacts", and one line on how following goes.
    Q_PROPERTY(bool followContactsOn READ followContactsOn NOTIFY changed)
    Q_PROPERTY(QString followContactsStatus READ followContactsStatus NOTIFY followStatusChanged)
    // The sync row and its dialog: whether an account is set up, its server
    // and user, whether a sync or setup runs, and one line on how it went.
    Q_PROPERTY(bool syncAvailable READ syncAvailable CONSTANT)
    Q_PROPERTY(bool syncAccount READ syncAccount NOTIFY syncChanged)
    Q_PROPERTY(bool syncBusy READ syncBusy NOTIFY syncChanged)
    Q_PROPERTY(QString syncServer READ syncServer NOTIFY syncChanged)
    Q_PROPERTY(QString syncUser READ syncUser NOTIFY syncChanged)
    Q_PROPERTY(QString syncStatus READ syncStatus NOTIFY syncChanged)

public:
    explicit SettingsScreenController(Session &session, QObject *parent = nullptr);

    bool detailsOn() const;
    bool weekdayOn() const;
    bool starOn() const;
    QVariantList colorButtons() const;
    int selectedColor() const;
    QString versionText() const;
    QString versionSpoken() const;
    QString secretText() const { return m_secretText; }
    bool secretVisible() const { return m_secretVisible; }
    bool infoVisible() const { return m_infoVisible; }
    QString infoText() const;
    QString reminderTimeText() const;
    QString reminderLeadText() const;
    // How early the second reminder comes, or "Off".
    QString secondReminderText() const;
    bool calendarOn() const;
    bool followContactsOn() const;
    QString followContactsStatus() const;
    bool syncAvailable() const;
    bool syncAccount() const;
    bool syncBusy() const;
    QString syncServer() const;
    QString syncUser() const;
    QString syncStatus() const;

    // Opens a link with the desktop's handler and tells whether it did
    // (QDesktopServices::openUrl unless replaced).
    using UrlOpener = std::function<bool(const QUrl &)>;
    void setUrlOpener(UrlOpener opener) { m_openUrl = std::move(opener); }
    // Which kind of store the links lead to (the one built for, unless set).
    void setStorePlatform(StoreLinks::Platform platform) { m_platform = platform; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void backPressed();
    Q_INVOKABLE void switchDetailsValue(bool on);
    Q_INVOKABLE void switchWeekdayValue(bool on);
    Q_INVOKABLE void switchStarValue(bool on);
    // A colour button, by its tag 1 to 10.
    Q_INVOKABLE void setColor(int tag);
    Q_INVOKABLE void versionTaped();
    Q_INVOKABLE void ratePressed();
    Q_INVOKABLE void moreAppsPressed();
    Q_INVOKABLE void infoPressed();
    Q_INVOKABLE void scrollViewHide();
    // The reminder time, `steps` quarter hours later (earlier when negative).
    Q_INVOKABLE void stepReminderTime(int steps);
    // The next choice of how early, round the four.
    Q_INVOKABLE void nextReminderLead();
    // The second reminder's next choice: off, on the day, 1, 3, 7 days before.
    Q_INVOKABLE void nextSecondReminder();
    // "Show birthdays in the calendar".
    Q_INVOKABLE void switchCalendarValue(bool on);
    // "Birthdays from contacts".
    Q_INVOKABLE void switchFollowContactsValue(bool on);
    // The sync dialog's buttons. Setting up finds the address book from
    // `server` as the command line does; its outcome comes as syncChanged.
    Q_INVOKABLE void syncSetUp(const QString &server, const QString &user, const QString &password);
    Q_INVOKABLE void syncNow();
    Q_INVOKABLE void syncRemove();

signals:
    void changed();
    void secretChanged();
    void infoVisibleChanged();
    void followStatusChanged();
    void syncChanged();

private:
    void applyTheme();

    HiddenLanguageSwitch m_secret;
    QString m_secretText;
    bool m_secretVisible = false;
    bool m_infoVisible = false;
    UrlOpener m_openUrl;
    // What the last setup or removal in the dialog came to, until the next.
    SyncProblem m_syncProblem;
    StoreLinks::Platform m_platform = StoreLinks::current();
};
