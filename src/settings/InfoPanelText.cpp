// SPDX-License-Identifier: MIT
#include "settings/InfoPanelText.h"

using namespace Qt::Literals::StringLiterals;

QString infoPanelText(Language language, const QString &version)
{
    const QString licences =
        u"Inter (SIL Open Font License 1.1) · DejaVu Sans, subset (Bitstream Vera License) · "
        "Droid Sans Fallback, subset (Apache License 2.0) · Material Symbols (Apache License 2.0)"_s;
    switch (language) {
    case Language::German:
        return u"Tavlo\n\nStelle die Räder auf ein Geburtsdatum: Tavlo zeigt das Alter in Jahren, "
               "Monaten und Tagen, in Monaten, Wochen und Tagen, das Sternzeichen, das "
               "chinesische Tierkreiszeichen mit Element, einen Planeten, den Wochentag der "
               "Geburt und die Tage bis zum nächsten Geburtstag.\n\n"
               "Gesten\n"
               "• Auf dem Hauptbildschirm nach links oder rechts wischen: durch die Favoriten "
               "blättern.\n"
               "• In den Favoriten lange drücken: Name und Datum ändern.\n"
               "• In den Favoriten nach links wischen: löschen.\n\n"
               "Tastatur\n"
               "• Tab und Umschalt+Tab: von Element zu Element; Eingabe oder Leertaste: "
               "drücken.\n"
               "• Pfeiltasten drehen ein Rad, Pos1 und Ende springen an seine Enden.\n"
               "• Bild auf und Bild ab: durch die Favoriten blättern.\n"
               "• In den Favoriten: F2 ändert, Entf löscht, Strg+Z holt zurück; die Menütaste "
               "zeigt Bearbeiten und Löschen.\n\n"
               "Maus\n"
               "• Rechtsklick auf einen Favoriten: Bearbeiten und Löschen.\n"
               "• Das Mausrad dreht ein Rad des Datums.\n"
               "• In einem breiten Fenster stehen die Favoriten neben dem Hauptbildschirm.\n\n"
               "Version "_s +
               version + u"\n\nSchriften und Symbole: "_s + licences +
               u"\nBilder: für Tavlo gemacht."_s;
    case Language::Russian:
        return u"Tavlo\n\nВыбери дату рождения на колёсах: Tavlo покажет возраст в годах, "
               "месяцах и днях, в месяцах, неделях и днях, знак зодиака, восточный зодиак со "
               "стихией, планету, день недели рождения и сколько дней до следующего дня "
               "рождения.\n\n"
               "Жесты\n"
               "• На главном экране провести влево или вправо: листать избранные.\n"
               "• В избранных долгое нажатие: изменить имя и дату.\n"
               "• В избранных провести влево: удалить.\n\n"
               "Клавиатура\n"
               "• Tab и Shift+Tab: от элемента к элементу; Enter или пробел: нажать.\n"
               "• Стрелки вращают колесо, Home и End переходят к его краям.\n"
               "• Page Up и Page Down: листать избранные.\n"
               "• В избранных: F2 изменяет, Delete удаляет, Ctrl+Z возвращает; клавиша меню "
               "показывает «Редактировать» и «Удалить».\n\n"
               "Мышь\n"
               "• Правый щелчок по избранному: «Редактировать» и «Удалить».\n"
               "• Колёсико мыши вращает колесо даты.\n"
               "• В широком окне избранные стоят рядом с главным экраном.\n\n"
               "Версия "_s +
               version + u"\n\nШрифты и значки: "_s + licences +
               u"\nКартинки: сделаны для Tavlo."_s;
    case Language::English:
        break;
    }
    return u"Tavlo\n\nTurn the wheels to a date of birth: Tavlo shows the age in years, months "
           "and days, in months, weeks and days, the zodiac sign, the Chinese zodiac with its "
           "element, a planet, the weekday of birth and the days to the next birthday.\n\n"
           "Gestures\n"
           "• On the main screen, swipe left or right: step through your favorites.\n"
           "• In the favorites, long press: change name and date.\n"
           "• In the favorites, swipe left: delete.\n\n"
           "Keyboard\n"
           "• Tab and Shift+Tab: from control to control; Return or Space: press.\n"
           "• The arrow keys turn a wheel, Home and End go to its ends.\n"
           "• Page Up and Page Down: step through your favorites.\n"
           "• In the favorites: F2 edits, Delete deletes, Ctrl+Z brings back; the menu key "
           "offers Edit and Delete.\n\n"
           "Mouse\n"
           "• Right click on a favorite: Edit and Delete.\n"
           "• The scroll wheel turns a date wheel.\n"
           "• In a wide window the favorites stand beside the main screen.\n\n"
           "Version "_s +
           version + u"\n\nFonts and icons: "_s + licences + u"\nPictures: made for Tavlo."_s;
}
