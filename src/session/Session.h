// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/BirthdayCalendar.h"
#include "contacts/PhoneContacts.h"
#include "core/BirthDateResults.h"
#include "core/Clock.h"
#include "favorites/FavoritesStore.h"
#include "session/SaveNotice.h"
#include "texts/Language.h"
#include "texts/UiStrings.h"
#include "themes/Themes.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <QUrl>
#include <functional>

class ContactsFollower;
class FileChooser;
class ReminderScheduler;
class SettingsStore;
class SyncService;

// What the screens share for the whole run: the stores, the clock, the
// interface texts and language, the last birth-date results and the theme
// table. No screen keeps a copy of a setting; each reads the store itself.
class Session
{
public:
    Session(SettingsStore &settings, const Clock &clock, QStringList preferredLanguages,
            Appearance appearance);
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    SettingsStore &settings;
    const Clock &clock;
    FavoritesStore favorites;
    UiStrings strings;
    BirthDateResults results;
    ThemeTable themes;
    const QStringList preferredLanguages;
    const Appearance appearance;
    // Month and weekday names in the favorites list follow the device's
    // formats, not the interface language.
    QLocale formatLocale = QLocale::system();
    // Checks the notification permission and schedules the birthday
    // reminders; none where there is no notification centre (tests).
    ReminderScheduler *reminders = nullptr;
    // Tells the user of any change that could not be saved.
    SaveNotice saveNotice{strings};
    // The birthdays calendar, rewritten after every change of the favorites
    // while "Show birthdays in the calendar" is on.
    BirthdayCalendar calendar;
    // The phone's address books, as the platform reads them; without one,
    // only Plasma Mobile's folder of cards.
    PhoneContactsReader phoneContacts;
    // Opens a link with the desktop's handler and tells whether one took
    // it; without one, the toolkit's own opener.
    std::function<bool(const QUrl &)> openLink;
    // Keeps the favorites in step with the phone's address books while
    // "Birthdays from contacts" is on; none in tests that do without.
    ContactsFollower *contacts = nullptr;
    // The system's file chooser for importing and exporting files; without
    // one (another platform, tests), the toolkit's own dialog.
    FileChooser *fileChooser = nullptr;
    // Keeps the favorites the same as a CardDAV address book once an
    // account is set up; none in tests that do without.
    SyncService *sync = nullptr;
    // Told after every change of the favorites that reached the store.
    std::function<void()> favoritesStored;
    // Brings the phone's birthdays calendar in step with `list`, as after
    // every change made here; for favorites that came from elsewhere.
    void updateCalendar(const QList<Favorite> &list);

    Language language() const { return m_language; }
    // Decides the language from the device and "preferredL" and fills the
    // interface texts with it.
    void decideLanguage();
    // What every main screen does first: decides the language, stores the
    // background picture's name where none is stored yet, and, the first
    // time, tells what was wrong with the stored settings.
    void prepareMainScreen();

    // Tells, once a run, that `count` favorites have a birthday that cannot
    // be read; nothing for none.
    void tellUnreadableBirthdays(qsizetype count);

    // "Today" for the whole run: the moment of first use.
    QDateTime launchDate();

private:
    Language m_language = Language::English;
    bool m_storedStateTold = false;
    bool m_unreadableBirthdaysTold = false;
    QDateTime m_launchDate;
};
