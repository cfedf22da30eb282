// SPDX-License-Identifier: MIT
#pragma once

#include "texts/Language.h"
#include "texts/Translations.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <array>

// The names of the interface texts, with their meta-object: the screens
// find each text by its name.
class UiTexts
{
    Q_GADGET

public:
    // Every interface text of Tavlo, in the order of the string table. Names say
    // what the text is for; the comment gives its row number.
    enum class UiText {
        Rat,                     // 1
        Ox,                      // 2
        Tiger,                   // 3
        Rabbit,                  // 4
        Dragon,                  // 5
        Snake,                   // 6
        Horse,                   // 7
        Goat,                    // 8
        Monkey,                  // 9
        Rooster,                 // 10
        Dog,                     // 11
        Pig,                     // 12
        Metal,                   // 13
        Water,                   // 14
        Wood,                    // 15
        Fire,                    // 16
        Earth,                   // 17
        Venus,                   // 18
        Mercury,                 // 19
        Jupiter,                 // 20
        Mars,                    // 21
        Saturn,                  // 22
        Aquarius,                // 23
        Pisces,                  // 24
        Aries,                   // 25
        Taurus,                  // 26
        Gemini,                  // 27
        Cancer,                  // 28
        Leo,                     // 29
        Virgo,                   // 30
        Libra,                   // 31
        Scorpio,                 // 32
        Sagittarius,             // 33
        Capricorn,               // 34
        EnterAName,              // 35
        AddThisBirthday,         // 36
        Cancel,                  // 37
        NameForThisBirthday,     // 38
        HasABirthdayToday,       // 39
        IsNow,                   // 40
        WeeksOld,                // 41
        MonthsOld,               // 42
        DaysOld,                 // 43
        Days,                    // 44
        Months,                  // 45
        Years,                   // 46
        Your,                    // 47
        Done,                    // 48
        Favorites,               // 49
        Edit,                    // 50
        Name,                    // 51
        Save,                    // 52
        Sort,                    // 53
        Settings,                // 54
        ShowMoreDetails,         // 55
        RateApp,                 // 56
        MoreApps,                // 57
        Background,              // 58
        BirthdayReminder,        // 59
        SortByName,              // 60
        SortByAge,               // 61
        SortByBirthday,          // 62
        ReportYour,              // 63
        SelectYourDateOfBirth,   // 64
        AgeIs,                   // 65
        InMonths,                // 66
        InWeeks,                 // 67
        InDays,                  // 68
        ZodiacSignLabel,         // 69
        ChineseZodiacLabel,      // 70
        ElementLabel,            // 71
        PlanetLabel,             // 72
        NextBirthdayIn,          // 73
        Age,                     // 74
        InYears,                 // 75
        InMonthsShort,           // 76
        InDaysShort,             // 77
        ShowWeekdayInTable,      // 78
        Entries,                 // 79
        MarkFutureBirthdays,     // 80
        Undo,                    // 81
        Deleted,                 // 82
        ClearText,               // 83
        ChangeNotSaved,          // 84
        HasABirthdayTomorrow,    // 85: %1 the name
        HasABirthdayInDays,      // 86: %1 the name, %n the number of days
        Reminders,               // 87
        OnTheDay,                // 88
        OneDayBefore,            // 89
        ThreeDaysBefore,         // 90
        OneWeekBefore,           // 91
        ReminderTime,            // 92
        HowEarly,                // 93
        Earlier,                 // 94
        Later,                   // 95
        ImportAdded,             // 96
        ImportAlreadyThere,      // 97
        ImportSkipped,           // 98
        ImportNoBirthday,        // 99
        NoYear,                  // 100: the year wheel's place for a birthday without a year
        ImportImpossibleDate,    // 101
        ImportFutureDate,        // 102
        ImportUnreadableDate,    // 103
        ImportVCardFile,         // 104
        ImportFromContacts,      // 105
        VCardFiles,              // 106
        ImportNotVCard,          // 107
        ImportTruncated,         // 108
        ImportTooLarge,          // 109
        ImportUnreadableFile,    // 110
        ShowBirthdaysInCalendar, // 111
        CalendarBirthdayOf,      // 112
        CalendarBornIn,          // 113
        Ok,                      // 114
        SettingsDamaged,         // 115
        SettingsUnreadable,      // 116: %1 why, in the system's words
        HandOverDropped,         // 117
        BirthdaysUnreadable,     // 118: %1 how many
        UnreadableBirthday,      // 119
        BirthdayWithoutYear,     // 120: %1 whose ("Anna's", "Your"), %2 the day and month
        BirthYearUnknown,        // 121
        NoFavoritesYet,          // 122
        NoAddressBook,           // 123
        NoSoftwareCentre,        // 124
        DeletedUndoWithCtrlZ,    // 125: %1 the name
        PositionInList,          // 126: %1 the row, %2 how many
        ImportBirthdays,         // 127
        FollowContacts,          // 128
        FollowContactsCount,     // 129: %1 the number of favorites that follow contacts
        FollowContactsLoading,   // 130
        FollowContactsNoService, // 131
        FollowContactsStopped,   // 132
        FollowContactsNoFolder,  // 133: %1 the folder
        FollowContactsNoFile,    // 134: %1 the file
        FollowContactsCutOff,    // 135: %1 the file
        FollowContactsBadCard,   // 136: %1 the contact
        AppColors,               // 137: the caption over the colour themes
        VersionSpoken,           // 138: %1 the version number
        SecondReminder,          // 139
        ReminderOff,             // 140: the second reminder's choice of none
        ExportVCardFile,         // 141
        ExportCalendarFile,      // 142
        CalendarFiles,           // 143
        ExportSaved,             // 144: %1 how many, %2 the file
        ExportLeftOut,           // 145: %1 how many
        ExportFailed,            // 146: %1 the file
        FileChooserFailed,       // 147
        ImportOrExport,          // 148
        FileDialogOpen,          // 149
        FileDialogSave,          // 150
        FileDialogName,          // 151
        FileDialogUp,            // 152
        SyncConflictCopy,        // 153: %1 the name; the local version kept beside the server's
        SyncRow,                 // 154
        SyncServer,              // 155
        SyncUser,                // 156
        SyncPassword,            // 157
        SyncSetUp,               // 158
        SyncNow,                 // 159
        SyncRemove,              // 160
        SyncNotSetUp,            // 161
        SyncRunning,             // 162
        SyncNever,               // 163
        SyncLastDone,            // 164: %1 the date and time
        SyncUnreachable,         // 165
        SyncLoginRefused,        // 166
        SyncNoPasswordStore,     // 167
        SyncNoAddressBook,       // 168
        SyncNotSaved,            // 169
        SyncFailed,              // 170: %1 the problem in the system's words
        SyncNoPassword,          // 171
    };
    Q_ENUM(UiText)
};

using UiText = UiTexts::UiText;

inline constexpr int UiTextCount = 171;

// The process-wide table of interface texts. It starts out English; applying
// another language overwrites every entry from that language's translation.
// Applying English changes nothing, so once German or Russian is in place,
// English returns only in a new process.
class UiStrings
{
public:
    UiStrings();

    const QString &text(UiText id) const { return m_texts[index(id)]; }
    const QString &operator[](UiText id) const { return text(id); }

    // An entry that counts something ("%n added"), in the form for `n`.
    QString counted(UiText id, qint64 n) const;

    void apply(Language language);

    // The translations the entries were last taken from: the sentences
    // built around them come from the same language.
    const Translations &translations() const { return *m_translations; }

    // The English text of an entry, whatever has been applied.
    static QString english(UiText id);

    // The current text of the entry whose English text is englishText, or
    // englishText itself when no entry has it ("Unknown", say).
    QString translated(const QString &englishText) const;

    // The greeting and the reminder on `name`'s birthday: "Anna has a
    // birthday today!".
    QString birthdayToday(const QString &name) const;

    // A reminder's text `days` (1 or more) before `name`'s birthday: "Anna
    // has a birthday in 3 days".
    QString birthdayInDays(const QString &name, int days) const;

private:
    static constexpr int index(UiText id) { return static_cast<int>(id); }

    std::array<QString, UiTextCount> m_texts;
    const Translations *m_translations;
};
