#pragma once

#include "Language.h"

#include <QString>
#include <array>

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
    ImportAdded,             // 81
    ImportAlreadyThere,      // 82
    ImportSkipped,           // 83
    ImportNoBirthday,        // 84
    ImportNoBirthYear,       // 85
    ImportImpossibleDate,    // 86
    ImportFutureDate,        // 87
    ImportUnreadableDate,    // 88
    ImportVCardFile,         // 89
    ImportFromContacts,      // 90
    VCardFiles,              // 91
    ImportNotVCard,          // 92
    ImportTruncated,         // 93
    ImportTooLarge,          // 94
    ImportUnreadableFile,    // 95
    ShowBirthdaysInCalendar, // 96
    CalendarBirthdayOf,      // 97
    CalendarBornIn,          // 98
    Ok,                      // 99
};

inline constexpr int UiTextCount = 99;

// The process-wide table of interface texts. It starts out English; applying
// German or Russian overwrites every entry. Applying English changes nothing,
// so once German or Russian is in place, English returns only in a new
// process.
class UiStrings
{
public:
    UiStrings();

    const QString &text(UiText id) const { return m_texts[index(id)]; }
    const QString &operator[](UiText id) const { return text(id); }

    void apply(Language language);

    // The English text of an entry, whatever has been applied.
    static const QString &english(UiText id);

    // The current text of the entry whose English text is englishText, or
    // englishText itself when no entry has it ("Unknown", say).
    QString translated(const QString &englishText) const;

private:
    static constexpr int index(UiText id) { return static_cast<int>(id); }

    std::array<QString, UiTextCount> m_texts;
};
