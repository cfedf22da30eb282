// SPDX-License-Identifier: MIT
#include "texts/AccessibleNames.h"

#include "texts/UiStrings.h"

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
    // The row buttons of the favorites and the words a row is read with.
    struct MoreWords
    {
        QString close, edit, removeRow, coming, age;
    };
    const MoreWords more = language == Language::German
                               ? MoreWords{u"Schließen"_s, u"%1 bearbeiten"_s, u"%1 löschen"_s,
                                           u"Geburtstag steht bevor"_s, u"Alter %1"_s}
                           : language == Language::Russian
                               ? MoreWords{u"Закрыть"_s, u"Изменить: %1"_s, u"Удалить: %1"_s,
                                           u"день рождения впереди"_s, u"возраст %1"_s}
                               : MoreWords{u"Close"_s, u"Edit %1"_s, u"Delete %1"_s,
                                           u"birthday still to come"_s, u"age %1"_s};
    return {{u"today"_s, words.today},
            {u"add"_s, strings[UiText::AddThisBirthday]},
            {u"favorites"_s, strings[UiText::Favorites]},
            {u"settings"_s, strings[UiText::Settings]},
            {u"back"_s, strings[UiText::Done]},
            {u"delete"_s, words.remove},
            {u"info"_s, words.info},
            {u"close"_s, more.close},
            {u"day"_s, words.day},
            {u"month"_s, words.month},
            {u"year"_s, words.year},
            {u"theme"_s, words.theme},
            {u"edit"_s, more.edit},
            {u"deleteRow"_s, more.removeRow},
            {u"coming"_s, more.coming},
            {u"age"_s, more.age}};
}
