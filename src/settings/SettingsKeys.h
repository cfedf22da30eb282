// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Every key of Tavlo's settings store, with the type its value has. A key that
// was never written, or holds a value of another type, reads as its type's
// default: integer 0, boolean false, string absent, list absent (= empty).
// Keys are case-sensitive; the misspellings ("selectetDate", "dataSave") are
// the keys' real names, kept as they are so that stored settings stay
// readable.

struct IntegerKey
{
    QString name;
};
struct BooleanKey
{
    QString name;
};
struct StringKey
{
    QString name;
};
// An array of strings.
struct StringListKey
{
    QString name;
};
// An array of arrays of strings.
struct StringTableKey
{
    QString name;
};

namespace SettingsKeys {

// Colour theme index, 0 to 9.
inline const IntegerKey color{QStringLiteral("color")};
// The age report shows its detailed text. The first start turns it on.
inline const BooleanKey moreDetails{QStringLiteral("moreDetails")};
// The favorites list shows the weekday of each birthday.
inline const BooleanKey weekday{QStringLiteral("weekday")};
// Favorites whose birthday is still ahead carry a star. The first start turns it on.
inline const BooleanKey star{QStringLiteral("star")};
// Favorites order: 0 by name, 1 by age, 2 (or any other value) by birthday.
inline const IntegerKey sort{QStringLiteral("sort")};
// Day, month and four-digit year of the last picked birth date.
inline const IntegerKey day{QStringLiteral("day")};
inline const IntegerKey month{QStringLiteral("month")};
inline const IntegerKey year{QStringLiteral("year")};
// Language override: 0 device language, 1 German, 2 Russian, 3 English.
inline const IntegerKey preferredLanguage{QStringLiteral("preferredL")};
// Name of the background picture set; written as "space" when absent.
inline const StringKey backgroundImage{QStringLiteral("backgroundImg")};
inline const QString backgroundImageWhenAbsent = QStringLiteral("space");
// The favorites: one [name, birthday] pair each, in display order.
inline const StringTableKey favorites{QStringLiteral("person")};
// The favorites as an earlier version kept them: names and dates side by side.
inline const StringListKey olderFavoriteNames{QStringLiteral("arrayName")};
inline const StringListKey olderFavoriteBirthdays{QStringLiteral("arrayBD")};
// True once the first start of this version has been handled.
inline const BooleanKey firstStartDone{QStringLiteral("firstStart2")};
// Hand-over of a favorite chosen in the list to the main screen.
inline const BooleanKey handOverPending{QStringLiteral("dataSave")};
inline const StringKey handOverName{QStringLiteral("Name")};
inline const StringKey handOverBirthday{QStringLiteral("birthday")};
inline const BooleanKey handOverMovePicker{QStringLiteral("birthdayMove")};
inline const IntegerKey handOverIndex{QStringLiteral("indexCount")};
// Start counter and last asked version of the rating prompt.
inline const IntegerKey appStarts{QStringLiteral("appStarts")};
inline const StringKey reviewedVersion{QStringLiteral("myReviewVers")};
inline const QString reviewedVersionWhenAbsent = QStringLiteral("0.0");

// "selectetDate1" to "selectetDate5": the fire dates of the last scheduled reminders.
inline constexpr int maxScheduledReminders = 5;
inline StringKey scheduledReminder(int number)
{
    return {QStringLiteral("selectetDate") + QString::number(number)};
}

// The time of day birthday reminders come, "HH:mm" in local time; 07:30 when absent.
inline const StringKey reminderTime{QStringLiteral("reminderTime")};
// How many days before the birthday its reminder comes: 0 (on the day), 1, 3 or 7.
inline const IntegerKey reminderDaysBefore{QStringLiteral("reminderDaysBefore")};
// A second reminder of each birthday, at the same time of day: off unless
// "secondReminder" is true; then "secondReminderDaysBefore" days before the
// birthday, 0 (on the day), 1, 3 or 7. One the same as the first adds nothing.
inline const BooleanKey secondReminder{QStringLiteral("secondReminder")};
inline const IntegerKey secondReminderDaysBefore{QStringLiteral("secondReminderDaysBefore")};
// The favorites' birthdays are kept as a calendar file that evolution-data-server
// shows (Phosh, GNOME) and other calendar apps can subscribe to.
inline const BooleanKey birthdaysInCalendar{QStringLiteral("birthdaysInCalendar")};
// The favorites follow the phone's address books ("Birthdays from contacts").
inline const BooleanKey followContacts{QStringLiteral("followContacts")};
// What is remembered of each contact that a favorite came from, by the
// contact's UID: [uid, book, favorite id, state, name, birthday]. The state
// is "follow" while the favorite follows the contact, "kept" once the person
// renamed or redated it and "deleted" once the person deleted it; name and
// birthday are what the contact said when the favorite was last set from it.
inline const StringTableKey followedContacts{QStringLiteral("followedContacts")};

// The CardDAV address book the favorites are synced with (its URL), the
// user name, and the vCard version new cards are written in ("4.0" or
// "3.0"). The password is in the Secret Service, never here.
inline const StringKey syncAddressBook{QStringLiteral("syncAddressBook")};
inline const StringKey syncUser{QStringLiteral("syncUser")};
inline const StringKey syncCardVersion{QStringLiteral("syncCardVersion")};
// When the last sync ended well (ISO 8601, UTC), and what went wrong with
// the last one that did not (empty after one that went well): its line and
// its kind (SyncProblem::nameOf), which the settings row's text follows.
inline const StringKey syncLastDone{QStringLiteral("syncLastDone")};
inline const StringKey syncProblem{QStringLiteral("syncProblem")};
inline const StringKey syncProblemKind{QStringLiteral("syncProblemKind")};
// The mark of the favorites a sync stored last, written with them: the
// sync state kept aside with the same mark goes with them (SyncState).
inline const StringKey syncStored{QStringLiteral("syncStored")};

} // namespace SettingsKeys
