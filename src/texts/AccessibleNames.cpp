// SPDX-License-Identifier: MIT
#include "texts/AccessibleNames.h"

#include "texts/UiStrings.h"

using namespace Qt::Literals::StringLiterals;

QVariantMap accessibleNames(const UiStrings &strings, Language language)
{
    const Translations &t = Translations::of(language);
    return {
        //: What a screen reader says for the button that turns the wheels back to today
        {u"today"_s, t.translate("AccessibleNames", "Back to today")},
        {u"add"_s, strings[UiText::AddThisBirthday]},
        {u"favorites"_s, strings[UiText::Favorites]},
        {u"settings"_s, strings[UiText::Settings]},
        {u"back"_s, strings[UiText::Done]},
        //: The delete button
        {u"delete"_s, t.translate("AccessibleNames", "Delete")},
        //: The button that opens the about panel
        {u"info"_s, t.translate("AccessibleNames", "About Tavlo")},
        //: The button that closes a panel or menu
        {u"close"_s, t.translate("AccessibleNames", "Close")},
        //: The date wheels
        {u"day"_s, t.translate("AccessibleNames", "Day")},
        {u"month"_s, t.translate("AccessibleNames", "Month")},
        {u"year"_s, t.translate("AccessibleNames", "Year")},
        //: A colour theme's button: %1 its number
        {u"theme"_s, t.translate("AccessibleNames", "Colour theme %1")},
        //: A favorite's row buttons: %1 the name
        {u"edit"_s, t.translate("AccessibleNames", "Edit %1")},
        {u"deleteRow"_s, t.translate("AccessibleNames", "Delete %1")},
        //: Said with a row whose birthday this year is still to come
        {u"coming"_s, t.translate("AccessibleNames", "birthday still to come")},
        //: Said with a row: %1 the age in years
        {u"age"_s, t.translate("AccessibleNames", "age %1")},
    };
}
