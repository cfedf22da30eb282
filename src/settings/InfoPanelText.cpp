// SPDX-License-Identifier: MIT
#include "settings/InfoPanelText.h"

#include "texts/Translations.h"

using namespace Qt::Literals::StringLiterals;

QString infoPanelText(Language language, const QString &version)
{
    const Translations &t = Translations::of(language);
    const QString licences =
        u"Inter (SIL Open Font License 1.1) · DejaVu Sans, subset (Bitstream Vera License) · "
        "Droid Sans Fallback, subset (Apache License 2.0) · Material Symbols (Apache License 2.0)"_s;
    const QStringList paragraphs = {
        //: The about panel's first paragraph
        t.translate("InfoPanelText",
                    "Tavlo\n\nTurn the wheels to a date of birth: Tavlo shows the age in "
                    "years, months and days, in months, weeks and days, the zodiac sign, "
                    "the Chinese zodiac with its element, a planet, the weekday of birth "
                    "and the days to the next birthday."),
        t.translate("InfoPanelText", "Gestures\n"
                                     "• On the main screen, swipe left or right: step through your "
                                     "favorites.\n"
                                     "• In the favorites, long press: change name and date.\n"
                                     "• In the favorites, swipe left: delete."),
        //: Key names as the keyboard of the language labels them
        t.translate("InfoPanelText",
                    "Keyboard\n"
                    "• Tab and Shift+Tab: from control to control; Return or Space: "
                    "press.\n"
                    "• The arrow keys turn a wheel, Home and End go to its ends.\n"
                    "• Page Up and Page Down: step through your favorites.\n"
                    "• In the favorites: F2 edits, Delete deletes, Ctrl+Z brings back; "
                    "the menu key offers Edit and Delete."),
        t.translate("InfoPanelText",
                    "Mouse\n"
                    "• Right click on a favorite: Edit and Delete.\n"
                    "• The scroll wheel turns a date wheel.\n"
                    "• In a wide window the favorites stand beside the main screen."),
        //: %1 the version number
        filled(t.translate("InfoPanelText", "Version %1"), {version}),
        //: %1 the fonts and icons with their licences, left in English
        filled(t.translate("InfoPanelText", "Fonts and icons: %1\nPictures: made for Tavlo."),
               {licences}),
    };
    return paragraphs.join(u"\n\n"_s);
}
