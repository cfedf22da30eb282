// SPDX-License-Identifier: MIT
#include "texts/UiStrings.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Entry
{
    struct
    {
        const char *source;
        const char *disambiguation;
    } text;
    // Whether the entry counts something and has a form per number (%n).
    bool counted;
};

// The English texts, in the order of UiText; the translations are in
// translations/tavlo_*.ts. Blanks, line feeds, symbols and U+FE0E after the
// zodiac symbols are part of the texts; so is the leading blank of some
// German animals.
constexpr std::array<Entry, UiTextCount> entries{{
    {QT_TRANSLATE_NOOP3("UiStrings", "Rat – 鼠", ""), false},           // Rat
    {QT_TRANSLATE_NOOP3("UiStrings", "Ox – 牛", ""), false},            // Ox
    {QT_TRANSLATE_NOOP3("UiStrings", "Tiger – 虎", ""), false},         // Tiger
    {QT_TRANSLATE_NOOP3("UiStrings", "Rabbit – 兔", ""), false},        // Rabbit
    {QT_TRANSLATE_NOOP3("UiStrings", "Dragon – 龍", ""), false},        // Dragon
    {QT_TRANSLATE_NOOP3("UiStrings", "Snake – 蛇", ""), false},         // Snake
    {QT_TRANSLATE_NOOP3("UiStrings", "Horse – 馬", ""), false},         // Horse
    {QT_TRANSLATE_NOOP3("UiStrings", "Goat – 羊", ""), false},          // Goat
    {QT_TRANSLATE_NOOP3("UiStrings", "Monkey – 猴", ""), false},        // Monkey
    {QT_TRANSLATE_NOOP3("UiStrings", "Rooster – 雞", ""), false},       // Rooster
    {QT_TRANSLATE_NOOP3("UiStrings", "Dog – 狗", ""), false},           // Dog
    {QT_TRANSLATE_NOOP3("UiStrings", "Pig – 豬", ""), false},           // Pig
    {QT_TRANSLATE_NOOP3("UiStrings", "Metal - 金", ""), false},         // Metal
    {QT_TRANSLATE_NOOP3("UiStrings", "Water - 水", ""), false},         // Water
    {QT_TRANSLATE_NOOP3("UiStrings", "Wood - 木", ""), false},          // Wood
    {QT_TRANSLATE_NOOP3("UiStrings", "Fire - 火", ""), false},          // Fire
    {QT_TRANSLATE_NOOP3("UiStrings", "Earth - 土", ""), false},         // Earth
    {QT_TRANSLATE_NOOP3("UiStrings", "Venus ♀", ""), false},            // Venus
    {QT_TRANSLATE_NOOP3("UiStrings", "Mercury ☿", ""), false},          // Mercury
    {QT_TRANSLATE_NOOP3("UiStrings", "Jupiter ♃", ""), false},          // Jupiter
    {QT_TRANSLATE_NOOP3("UiStrings", "Mars ♂", ""), false},             // Mars
    {QT_TRANSLATE_NOOP3("UiStrings", "Saturn ♄", ""), false},           // Saturn
    {QT_TRANSLATE_NOOP3("UiStrings", "Aquarius ♒︎", ""), false},    // Aquarius
    {QT_TRANSLATE_NOOP3("UiStrings", "Pisces ♓︎", ""), false},      // Pisces
    {QT_TRANSLATE_NOOP3("UiStrings", "Aries ♈︎", ""), false},       // Aries
    {QT_TRANSLATE_NOOP3("UiStrings", "Taurus ♉︎", ""), false},      // Taurus
    {QT_TRANSLATE_NOOP3("UiStrings", "Gemini ♊︎", ""), false},      // Gemini
    {QT_TRANSLATE_NOOP3("UiStrings", "Cancer ♋︎", ""), false},      // Cancer
    {QT_TRANSLATE_NOOP3("UiStrings", "Leo ♌︎", ""), false},         // Leo
    {QT_TRANSLATE_NOOP3("UiStrings", "Virgo ♍︎", ""), false},       // Virgo
    {QT_TRANSLATE_NOOP3("UiStrings", "Libra ♎︎", ""), false},       // Libra
    {QT_TRANSLATE_NOOP3("UiStrings", "Scorpio ♏︎", ""), false},     // Scorpio
    {QT_TRANSLATE_NOOP3("UiStrings", "Sagittarius ♐︎", ""), false}, // Sagittarius
    {QT_TRANSLATE_NOOP3("UiStrings", "Capricorn ♑︎", ""), false},   // Capricorn
    {QT_TRANSLATE_NOOP3("UiStrings", "Enter a Name", ""), false},       // EnterAName
    {QT_TRANSLATE_NOOP3("UiStrings", "Add this birthday to favorites", ""),
     false},                                                                 // AddThisBirthday
    {QT_TRANSLATE_NOOP3("UiStrings", "Cancel", ""), false},                  // Cancel
    {QT_TRANSLATE_NOOP3("UiStrings", "Name for this birthday:", ""), false}, // NameForThisBirthday
    {QT_TRANSLATE_NOOP3("UiStrings", "has a birthday today!", ""), false},   // HasABirthdayToday
    {QT_TRANSLATE_NOOP3("UiStrings", "is now", ""), false},                  // IsNow
    {QT_TRANSLATE_NOOP3("UiStrings", "weeks old!", ""), false},              // WeeksOld
    {QT_TRANSLATE_NOOP3("UiStrings", "months old!", ""), false},             // MonthsOld
    {QT_TRANSLATE_NOOP3("UiStrings", "days old!", ""), false},               // DaysOld
    {QT_TRANSLATE_NOOP3("UiStrings", "Days", ""), false},                    // Days
    {QT_TRANSLATE_NOOP3("UiStrings", "Months", ""), false},                  // Months
    {QT_TRANSLATE_NOOP3("UiStrings", "Years", ""), false},                   // Years
    {QT_TRANSLATE_NOOP3("UiStrings", "Your", ""), false},                    // Your
    {QT_TRANSLATE_NOOP3("UiStrings", "Done", ""), false},                    // Done
    {QT_TRANSLATE_NOOP3("UiStrings", "Favorites", ""), false},               // Favorites
    {QT_TRANSLATE_NOOP3("UiStrings", "Edit", ""), false},                    // Edit
    {QT_TRANSLATE_NOOP3("UiStrings", "Name", ""), false},                    // Name
    {QT_TRANSLATE_NOOP3("UiStrings", "Save", ""), false},                    // Save
    {QT_TRANSLATE_NOOP3("UiStrings", "Sort", ""), false},                    // Sort
    {QT_TRANSLATE_NOOP3("UiStrings", "Settings", ""), false},                // Settings
    {QT_TRANSLATE_NOOP3("UiStrings", "Show more details", ""), false},       // ShowMoreDetails
    {QT_TRANSLATE_NOOP3("UiStrings", "Rate App", ""), false},                // RateApp
    {QT_TRANSLATE_NOOP3("UiStrings", "More Apps", ""), false},               // MoreApps
    {QT_TRANSLATE_NOOP3("UiStrings", "Background", ""), false},              // Background
    {QT_TRANSLATE_NOOP3("UiStrings", "Birthday Reminder", ""), false},       // BirthdayReminder
    {QT_TRANSLATE_NOOP3("UiStrings", "Sort by name", ""), false},            // SortByName
    {QT_TRANSLATE_NOOP3("UiStrings", "Sort by age", ""), false},             // SortByAge
    {QT_TRANSLATE_NOOP3("UiStrings", "Sort by birthday", ""), false},        // SortByBirthday
    {QT_TRANSLATE_NOOP3("UiStrings", "Your", "the report"), false},          // ReportYour
    {QT_TRANSLATE_NOOP3("UiStrings", "Select your date of birth", ""),
     false},                                                            // SelectYourDateOfBirth
    {QT_TRANSLATE_NOOP3("UiStrings", "age is:", ""), false},            // AgeIs
    {QT_TRANSLATE_NOOP3("UiStrings", "in months:", ""), false},         // InMonths
    {QT_TRANSLATE_NOOP3("UiStrings", "in weeks:", ""), false},          // InWeeks
    {QT_TRANSLATE_NOOP3("UiStrings", "in days:", ""), false},           // InDays
    {QT_TRANSLATE_NOOP3("UiStrings", "Zodiac sign: ", ""), false},      // ZodiacSignLabel
    {QT_TRANSLATE_NOOP3("UiStrings", "\nChinese zodiac: ", ""), false}, // ChineseZodiacLabel
    {QT_TRANSLATE_NOOP3("UiStrings", "\nElement: ", ""), false},        // ElementLabel
    {QT_TRANSLATE_NOOP3("UiStrings", "Planet:", ""), false},            // PlanetLabel
    {QT_TRANSLATE_NOOP3("UiStrings", "next birthday: in", ""), false},  // NextBirthdayIn
    //: The short report: "Anna's age", then a blank line and the lines below,
    //: each followed by its number
    {QT_TRANSLATE_NOOP3("UiStrings", "age", ""), false}, // Age
    //: A line of the short report, followed by the number of years
    {QT_TRANSLATE_NOOP3("UiStrings", "In years: ", ""), false},  // InYears
    {QT_TRANSLATE_NOOP3("UiStrings", "In months: ", ""), false}, // InMonthsShort
    {QT_TRANSLATE_NOOP3("UiStrings", "In days: ", ""), false},   // InDaysShort
    {QT_TRANSLATE_NOOP3("UiStrings", "Show weekday in table view", ""),
     false},                                                                 // ShowWeekdayInTable
    {QT_TRANSLATE_NOOP3("UiStrings", "Entries:", ""), false},                // Entries
    {QT_TRANSLATE_NOOP3("UiStrings", "Mark future birthdays ☆", ""), false}, // MarkFutureBirthdays
    {QT_TRANSLATE_NOOP3("UiStrings", "Undo", ""), false},                    // Undo
    {QT_TRANSLATE_NOOP3("UiStrings", "Deleted:", ""), false},                // Deleted
    {QT_TRANSLATE_NOOP3("UiStrings", "Clear text", ""), false},              // ClearText
    {QT_TRANSLATE_NOOP3("UiStrings", "Your change could not be saved: %1", ""),
     false}, // ChangeNotSaved
    //: %1 the name
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 has a birthday tomorrow", ""),
     false}, // HasABirthdayTomorrow
    //: %1 the name, %n the number of days (2 or more; one day ahead says "tomorrow")
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%1 has a birthday in %n days", ""),
     true},                                                        // HasABirthdayInDays
    {QT_TRANSLATE_NOOP3("UiStrings", "Reminders", ""), false},     // Reminders
    {QT_TRANSLATE_NOOP3("UiStrings", "On the day", ""), false},    // OnTheDay
    {QT_TRANSLATE_NOOP3("UiStrings", "1 day before", ""), false},  // OneDayBefore
    {QT_TRANSLATE_NOOP3("UiStrings", "3 days before", ""), false}, // ThreeDaysBefore
    {QT_TRANSLATE_NOOP3("UiStrings", "1 week before", ""), false}, // OneWeekBefore
    {QT_TRANSLATE_NOOP3("UiStrings", "Reminder time", ""), false}, // ReminderTime
    {QT_TRANSLATE_NOOP3("UiStrings", "How early", ""), false},     // HowEarly
    {QT_TRANSLATE_NOOP3("UiStrings", "Earlier", ""), false},       // Earlier
    {QT_TRANSLATE_NOOP3("UiStrings", "Later", ""), false},         // Later
    //: The import summary joins its counts with ", " and names the reasons for
    //: skipping in brackets: "8 added, 1 already there, 4 skipped (1 no birthday, ...)".
    //: %n how many favorites an import added
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n added", ""), true}, // ImportAdded
    //: %n how many were already favorites
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n already there", ""), true}, // ImportAlreadyThere
    //: %n how many were skipped
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n skipped", ""), true}, // ImportSkipped
    //: %n how many cards had no birthday
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n no birthday", ""), true}, // ImportNoBirthday
    //: the year wheel's place for a birthday without a year
    {QT_TRANSLATE_NOOP3("UiStrings", "no year", ""), false}, // NoYear
    //: %n how many birthdays were impossible dates
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n impossible date", ""), true}, // ImportImpossibleDate
    //: %n how many birthdays lay in the future
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n date in the future", ""), true}, // ImportFutureDate
    //: %n how many birthdays could not be read
    {QT_TRANSLATE_N_NOOP3("UiStrings", "%n unreadable date", ""), true},  // ImportUnreadableDate
    {QT_TRANSLATE_NOOP3("UiStrings", "Import a vCard file…", ""), false}, // ImportVCardFile
    {QT_TRANSLATE_NOOP3("UiStrings", "Import from contacts", ""), false}, // ImportFromContacts
    {QT_TRANSLATE_NOOP3("UiStrings", "vCard files", ""), false},          // VCardFiles
    {QT_TRANSLATE_NOOP3("UiStrings", "This file is not a vCard file.", ""),
     false}, // ImportNotVCard
    {QT_TRANSLATE_NOOP3("UiStrings", "This file ends in the middle of a card.", ""),
     false},                                                                 // ImportTruncated
    {QT_TRANSLATE_NOOP3("UiStrings", "This file is too large.", ""), false}, // ImportTooLarge
    {QT_TRANSLATE_NOOP3("UiStrings", "This file cannot be read.", ""),
     false}, // ImportUnreadableFile
    {QT_TRANSLATE_NOOP3("UiStrings", "Show birthdays in the calendar", ""),
     false},                                                       // ShowBirthdaysInCalendar
    {QT_TRANSLATE_NOOP3("UiStrings", "%1's birthday", ""), false}, // CalendarBirthdayOf
    {QT_TRANSLATE_NOOP3("UiStrings", "born %1", ""), false},       // CalendarBornIn
    {QT_TRANSLATE_NOOP3("UiStrings", "OK", ""), false},            // Ok
    {QT_TRANSLATE_NOOP3(
         "UiStrings",
         "The saved settings were damaged. Tavlo kept every favorite it could read and keeps a copy of the damaged file.",
         ""),
     false}, // SettingsDamaged
    //: %1 why, in the system's words
    {QT_TRANSLATE_NOOP3(
         "UiStrings",
         "Your saved birthdays cannot be read (%1). Nothing is saved until this is fixed.", ""),
     false}, // SettingsUnreadable
    {QT_TRANSLATE_NOOP3(
         "UiStrings", "A favorite chosen for the main screen was incomplete and is not shown.", ""),
     false}, // HandOverDropped
    //: %n how many
    {QT_TRANSLATE_N_NOOP3(
         "UiStrings", "Birthdays that cannot be read: %n. Fix or delete them in your favorites.",
         ""),
     true},                                                              // BirthdaysUnreadable
    {QT_TRANSLATE_NOOP3("UiStrings", "Unreadable birthday", ""), false}, // UnreadableBirthday
    //: %1 whose ("Anna's", "Your"), %2 the day and month
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 birthday: %2", ""), false}, // BirthdayWithoutYear
    {QT_TRANSLATE_NOOP3("UiStrings", "The year of birth is not known.", ""),
     false}, // BirthYearUnknown
    {QT_TRANSLATE_NOOP3(
         "UiStrings",
         "No favorites yet. To add someone, go back, turn the wheels to their date of birth and tap +. Or tap + above to import birthdays from a vCard file or your contacts.",
         ""),
     false}, // NoFavoritesYet
    {QT_TRANSLATE_NOOP3("UiStrings", "No address book with contacts was found on this device.", ""),
     false}, // NoAddressBook
    {QT_TRANSLATE_NOOP3(
         "UiStrings",
         "No software centre is installed to open Tavlo's page. Install one, such as GNOME Software or KDE Discover, to rate Tavlo.",
         ""),
     false}, // NoSoftwareCentre
    //: %1 the name
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 deleted. Undo with Control+Z.", ""),
     false}, // DeletedUndoWithCtrlZ
    //: %1 the row, %2 how many
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 of %2", ""), false},                // PositionInList
    {QT_TRANSLATE_NOOP3("UiStrings", "Import birthdays", ""), false},        // ImportBirthdays
    {QT_TRANSLATE_NOOP3("UiStrings", "Birthdays from contacts", ""), false}, // FollowContacts
    //: %n the number of favorites that follow contacts
    {QT_TRANSLATE_N_NOOP3("UiStrings", "Up to date: %n birthdays from contacts", ""),
     true}, // FollowContactsCount
    {QT_TRANSLATE_NOOP3("UiStrings", "Reading the address books…", ""),
     false}, // FollowContactsLoading
    {QT_TRANSLATE_NOOP3("UiStrings",
                        "The address book service does not answer; its birthdays stay as they are.",
                        ""),
     false}, // FollowContactsNoService
    {QT_TRANSLATE_NOOP3(
         "UiStrings",
         "The address book service stopped; its birthdays stay as they are until it is back.", ""),
     false}, // FollowContactsStopped
    //: %1 the folder
    {QT_TRANSLATE_NOOP3(
         "UiStrings", "The contacts folder %1 cannot be read; its birthdays stay as they are.", ""),
     false}, // FollowContactsNoFolder
    //: %1 the file
    {QT_TRANSLATE_NOOP3("UiStrings",
                        "The contacts file %1 cannot be read; its birthdays stay as they are.", ""),
     false}, // FollowContactsNoFile
    //: %1 the file
    {QT_TRANSLATE_NOOP3("UiStrings",
                        "The contacts file %1 is cut off; its birthdays stay as they are.", ""),
     false}, // FollowContactsCutOff
    //: %1 the contact
    {QT_TRANSLATE_NOOP3(
         "UiStrings", "A contact's birthday cannot be read (%1); its favorite stays as it is.", ""),
     false}, // FollowContactsBadCard
    //: The caption over the colour themes in the settings
    {QT_TRANSLATE_NOOP3("UiStrings", "App colors", ""), false}, // AppColors
    //: %1 the version number
    {QT_TRANSLATE_NOOP3("UiStrings", "Version %1", ""), false},      // VersionSpoken
    {QT_TRANSLATE_NOOP3("UiStrings", "Second reminder", ""), false}, // SecondReminder
    //: the second reminder's choice of none
    {QT_TRANSLATE_NOOP3("UiStrings", "Off", ""), false},                     // ReminderOff
    {QT_TRANSLATE_NOOP3("UiStrings", "Export to a vCard file…", ""), false}, // ExportVCardFile
    {QT_TRANSLATE_NOOP3("UiStrings", "Export to a calendar file…", ""),
     false},                                                         // ExportCalendarFile
    {QT_TRANSLATE_NOOP3("UiStrings", "iCalendar files", ""), false}, // CalendarFiles
    //: %n how many, %1 the file
    {QT_TRANSLATE_N_NOOP3("UiStrings", "Birthdays saved: %n, in %1", ""), true}, // ExportSaved
    //: %n how many
    {QT_TRANSLATE_N_NOOP3("UiStrings", "Left out, as their birthday cannot be read: %n", ""),
     true}, // ExportLeftOut
    //: %1 the file
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 could not be saved. A file already there is as it was.",
                        ""),
     false}, // ExportFailed
    {QT_TRANSLATE_NOOP3("UiStrings", "The file chooser closed without a file. Nothing was changed.",
                        ""),
     false},                                                                    // FileChooserFailed
    {QT_TRANSLATE_NOOP3("UiStrings", "Import or export birthdays", ""), false}, // ImportOrExport
    {QT_TRANSLATE_NOOP3("UiStrings", "Open", ""), false},                       // FileDialogOpen
    {QT_TRANSLATE_NOOP3("UiStrings", "Save", "file dialog"), false},            // FileDialogSave
    {QT_TRANSLATE_NOOP3("UiStrings", "File name", ""), false},                  // FileDialogName
    {QT_TRANSLATE_NOOP3("UiStrings", "Up one folder", ""), false},              // FileDialogUp
    //: %1 the name; the local version kept beside the server's
    {QT_TRANSLATE_NOOP3("UiStrings", "%1 (conflict copy)", ""), false}, // SyncConflictCopy
    //: The settings row that opens the sync account
    {QT_TRANSLATE_NOOP3("UiStrings", "Sync with CardDAV", ""), false}, // SyncRow
    {QT_TRANSLATE_NOOP3("UiStrings", "Server address", ""), false},    // SyncServer
    {QT_TRANSLATE_NOOP3("UiStrings", "User name", ""), false},         // SyncUser
    {QT_TRANSLATE_NOOP3("UiStrings", "Password", ""), false},          // SyncPassword
    //: The button that sets up the sync account
    {QT_TRANSLATE_NOOP3("UiStrings", "Set up", ""), false},         // SyncSetUp
    {QT_TRANSLATE_NOOP3("UiStrings", "Sync now", ""), false},       // SyncNow
    {QT_TRANSLATE_NOOP3("UiStrings", "Remove account", ""), false}, // SyncRemove
    //: The sync row's status without an account
    {QT_TRANSLATE_NOOP3("UiStrings", "Not set up", ""), false},     // SyncNotSetUp
    {QT_TRANSLATE_NOOP3("UiStrings", "Syncing…", ""), false},       // SyncRunning
    {QT_TRANSLATE_NOOP3("UiStrings", "Not synced yet", ""), false}, // SyncNever
    //: %1 the date and time the last sync ended
    {QT_TRANSLATE_NOOP3("UiStrings", "Last sync: %1", ""), false}, // SyncLastDone
    {QT_TRANSLATE_NOOP3("UiStrings", "The server could not be reached", ""),
     false}, // SyncUnreachable
    {QT_TRANSLATE_NOOP3("UiStrings", "The server refused the user name or password", ""),
     false}, // SyncLoginRefused
    {QT_TRANSLATE_NOOP3("UiStrings", "No password store (Secret Service) is running", ""),
     false}, // SyncNoPasswordStore
    {QT_TRANSLATE_NOOP3("UiStrings", "No CardDAV address book was found at this address", ""),
     false}, // SyncNoAddressBook
    {QT_TRANSLATE_NOOP3("UiStrings", "The favorites could not be saved on this device", ""),
     false}, // SyncNotSaved
    //: %1 the problem in the system's words, in English
    {QT_TRANSLATE_NOOP3("UiStrings", "The sync did not finish: %1", ""), false}, // SyncFailed
    {QT_TRANSLATE_NOOP3("UiStrings", "No password is kept for this account: set it up again", ""),
     false}, // SyncNoPassword
}};

} // namespace

UiStrings::UiStrings() : m_translations(&Translations::of(Language::English))
{
    for (int i = 0; i < UiTextCount; ++i)
        m_texts[i] = QString::fromUtf8(entries[i].text.source);
}

void UiStrings::apply(Language language)
{
    if (language == Language::English)
        return;
    m_translations = &Translations::of(language);
    for (int i = 0; i < UiTextCount; ++i) {
        const Entry &entry = entries[i];
        m_texts[i] =
            m_translations->translate("UiStrings", entry.text.source, entry.text.disambiguation);
    }
}

QString UiStrings::counted(UiText id, qint64 n) const
{
    const Entry &entry = entries[index(id)];
    return m_translations->translate("UiStrings", entry.text.source, entry.text.disambiguation, n);
}

QString UiStrings::english(UiText id)
{
    return QString::fromUtf8(entries[index(id)].text.source);
}

QString UiStrings::translated(const QString &englishText) const
{
    for (int i = 0; i < UiTextCount; ++i) {
        if (!entries[i].counted && englishText == QString::fromUtf8(entries[i].text.source))
            return m_texts[i];
    }
    return englishText;
}

QString UiStrings::birthdayToday(const QString &name) const
{
    //: %1 the name
    return filled(m_translations->translate("UiStrings", "%1 has a birthday today!"), {name});
}

QString UiStrings::birthdayInDays(const QString &name, int days) const
{
    if (days == 1)
        return filled(text(UiText::HasABirthdayTomorrow), {name});
    return filled(counted(UiText::HasABirthdayInDays, days), {name});
}
