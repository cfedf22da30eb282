#include "AccessibleNames.h"

#include "UiStrings.h"

using namespace Qt::Literals::StringLiterals;

QVariantMap accessibleNames(const UiStrings &strings, Language language)
{
    struct Words
    {
        QString today, remove, info, day, month, year, theme;
    };
    const Words words = language == Language::German
                            ? Words{u"Zurück zu heute"_s, u"Löschen"_s, u"Über Tavlo"_s,  u"Tag"_s,
                                    u"Monat"_s,           u"Jahr"_s,    u"Farbthema %1"_s}
                        : language == Language::Russian
                            ? Words{u"Вернуться к сегодняшнему дню"_s,
                                    u"Удалить"_s,
                                    u"О Tavlo"_s,
                                    u"День"_s,
                                    u"Месяц"_s,
                                    u"Год"_s,
                                    u"Цветовая тема %1"_s}
                            : Words{u"Back to today"_s, u"Delete"_s, u"About Tavlo"_s,    u"Day"_s,
                                    u"Month"_s,         u"Year"_s,   u"Colour theme %1"_s};
    return {{u"today"_s, words.today},
            {u"add"_s, strings[UiText::AddThisBirthday]},
            {u"favorites"_s, strings[UiText::Favorites]},
            {u"settings"_s, strings[UiText::Settings]},
            {u"back"_s, strings[UiText::Done]},
            {u"delete"_s, words.remove},
            {u"info"_s, words.info},
            {u"close"_s, strings[UiText::Done]},
            {u"day"_s, words.day},
            {u"month"_s, words.month},
            {u"year"_s, words.year},
            {u"theme"_s, words.theme}};
}
