<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AccessibleNames</name>
    <message>
        <source>Back to today</source>
        <extracomment>What a screen reader says for the button that turns the wheels back to today</extracomment>
        <translation>Zurück zu heute</translation>
    </message>
    <message>
        <source>Delete</source>
        <extracomment>The delete button</extracomment>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>About Tavlo</source>
        <extracomment>The button that opens the about panel</extracomment>
        <translation>Über Tavlo</translation>
    </message>
    <message>
        <source>Close</source>
        <extracomment>The button that closes a panel or menu</extracomment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Day</source>
        <extracomment>The date wheels</extracomment>
        <translation>Tag</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>Colour theme %1</source>
        <extracomment>A colour theme&apos;s button: %1 its number</extracomment>
        <translation>Farbthema %1</translation>
    </message>
    <message>
        <source>Edit %1</source>
        <extracomment>A favorite&apos;s row buttons: %1 the name</extracomment>
        <translation>%1 bearbeiten</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
    <message>
        <source>birthday still to come</source>
        <extracomment>Said with a row whose birthday this year is still to come</extracomment>
        <translation>Geburtstag steht bevor</translation>
    </message>
    <message>
        <source>age %1</source>
        <extracomment>Said with a row: %1 the age in years</extracomment>
        <translation>Alter %1</translation>
    </message>
</context>
<context>
    <name>BirthdayGreeting</name>
    <message numerus="yes">
        <source>%1 is now %n days old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the days (100, 1000, ...)</extracomment>
        <translation>
            <numerusform>%1 ist jetzt %n Tag alt!</numerusform>
            <numerusform>%1 ist jetzt %n Tage alt!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n months old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the months (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 ist jetzt %n Monat alt!</numerusform>
            <numerusform>%1 ist jetzt %n Monate alt!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n weeks old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the weeks (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 ist jetzt %n Woche alt!</numerusform>
            <numerusform>%1 ist jetzt %n Wochen alt!</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Dates</name>
    <message>
        <source>EEEE, MMMM dd, yyyy</source>
        <extracomment>A birthday in the list, as a QDate format: EEEE the weekday, MMMM the month&apos;s name</extracomment>
        <translation>EEEE, dd. MMMM yyyy</translation>
    </message>
    <message>
        <source>MMMM dd, yyyy</source>
        <translation>dd. MMMM yyyy</translation>
    </message>
    <message>
        <source>MMMM dd</source>
        <extracomment>A birthday without its year, as a QDate format: MMMM the month&apos;s name, dd the day</extracomment>
        <translation>dd. MMMM</translation>
    </message>
</context>
<context>
    <name>InfoPanelText</name>
    <message>
        <source>Tavlo

Turn the wheels to a date of birth: Tavlo shows the age in years, months and days, in months, weeks and days, the zodiac sign, the Chinese zodiac with its element, a planet, the weekday of birth and the days to the next birthday.</source>
        <extracomment>The about panel&apos;s first paragraph</extracomment>
        <translation>Tavlo

Stelle die Räder auf ein Geburtsdatum: Tavlo zeigt das Alter in Jahren, Monaten und Tagen, in Monaten, Wochen und Tagen, das Sternzeichen, das chinesische Tierkreiszeichen mit Element, einen Planeten, den Wochentag der Geburt und die Tage bis zum nächsten Geburtstag.</translation>
    </message>
    <message>
        <source>Gestures
• On the main screen, swipe left or right: step through your favorites.
• In the favorites, long press: change name and date.
• In the favorites, swipe left: delete.</source>
        <translation>Gesten
• Auf dem Hauptbildschirm nach links oder rechts wischen: durch die Favoriten blättern.
• In den Favoriten lange drücken: Name und Datum ändern.
• In den Favoriten nach links wischen: löschen.</translation>
    </message>
    <message>
        <source>Keyboard
• Tab and Shift+Tab: from control to control; Return or Space: press.
• The arrow keys turn a wheel, Home and End go to its ends.
• Page Up and Page Down: step through your favorites.
• In the favorites: F2 edits, Delete deletes, Ctrl+Z brings back; the menu key offers Edit and Delete.</source>
        <extracomment>Key names as the keyboard of the language labels them</extracomment>
        <translation>Tastatur
• Tab und Umschalt+Tab: von Element zu Element; Eingabe oder Leertaste: drücken.
• Pfeiltasten drehen ein Rad, Pos1 und Ende springen an seine Enden.
• Bild auf und Bild ab: durch die Favoriten blättern.
• In den Favoriten: F2 ändert, Entf löscht, Strg+Z holt zurück; die Menütaste zeigt Bearbeiten und Löschen.</translation>
    </message>
    <message>
        <source>Mouse
• Right click on a favorite: Edit and Delete.
• The scroll wheel turns a date wheel.
• In a wide window the favorites stand beside the main screen.</source>
        <translation>Maus
• Rechtsklick auf einen Favoriten: Bearbeiten und Löschen.
• Das Mausrad dreht ein Rad des Datums.
• In einem breiten Fenster stehen die Favoriten neben dem Hauptbildschirm.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>%1 the version number</extracomment>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Fonts and icons: %1
Pictures: made for Tavlo.</source>
        <extracomment>%1 the fonts and icons with their licences, left in English</extracomment>
        <translation>Schriften und Symbole: %1
Bilder: für Tavlo gemacht.</translation>
    </message>
</context>
<context>
    <name>PersonName</name>
    <message>
        <source>%1&apos;s</source>
        <extracomment>Whose report it is: %1 a person&apos;s name (&quot;Anna&apos;s age is: ...&quot;). Where the language marks it in the sentence, as Russian does, this is %1 alone</extracomment>
        <translation>%1&apos;s</translation>
    </message>
</context>
<context>
    <name>ReportComposer</name>
    <message>
        <source>Yang</source>
        <extracomment>The polarity of a Chinese year, shown before its element</extracomment>
        <translation>Yang</translation>
    </message>
    <message>
        <source>Yin</source>
        <translation>Yin</translation>
    </message>
    <message>
        <source>Zodiac sign: %1</source>
        <extracomment>%1 the sign with its symbol (&quot;Aries ♈︎&quot;); the Chinese zodiac lines follow it</extracomment>
        <translation>Sternzeichen: %1</translation>
    </message>
    <message numerus="yes">
        <source>next birthday: in %n day(s)</source>
        <extracomment>%n the days to the next birthday (1 or more)</extracomment>
        <translation>
            <numerusform>nächster Geburtstag: in %n Tag</numerusform>
            <numerusform>nächster Geburtstag: in %n Tagen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>years</comment>
        <extracomment>%n a number of years; %1 the word &quot;Years&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n %1</numerusform>
            <numerusform>%n %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>months</comment>
        <extracomment>%n a number of months; %1 the word &quot;Months&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n %1</numerusform>
            <numerusform>%n %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>days</comment>
        <extracomment>%n a number of days; %1 the word &quot;Days&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n %1</numerusform>
            <numerusform>%n %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 age is: %2,
 %3 &amp; %4</source>
        <extracomment>The age paragraph. %1 whose age (&quot;Anna&apos;s&quot;, &quot;Your&quot;), %2 the years, %3 the months, %4 the days, each with its word (&quot;41 Years&quot;)</extracomment>
        <translation>%1 Alter ist: %2,
 %3 &amp; %4</translation>
    </message>
    <message>
        <source>in months: %1
in weeks: %2
in days: %3</source>
        <extracomment>The age in one unit each: %1 months, %2 weeks, %3 days</extracomment>
        <translation>in Monaten: %1
in Wochen: %2
in Tagen: %3</translation>
    </message>
    <message>
        <source>Planet: %1</source>
        <extracomment>%1 the ruling planet with its symbol (&quot;Venus ♀&quot;)</extracomment>
        <translation>Planet: %1</translation>
    </message>
</context>
<context>
    <name>UiStrings</name>
    <message>
        <source>Rat – 鼠</source>
        <translation>Ratte – 鼠</translation>
    </message>
    <message>
        <source>Ox – 牛</source>
        <translation>Büffel – 牛</translation>
    </message>
    <message>
        <source>Tiger – 虎</source>
        <translation>Tiger – 虎</translation>
    </message>
    <message>
        <source>Rabbit – 兔</source>
        <translation>Hase – 兔</translation>
    </message>
    <message>
        <source>Dragon – 龍</source>
        <translation>Drache – 龍</translation>
    </message>
    <message>
        <source>Snake – 蛇</source>
        <translation> Schlange – 蛇</translation>
    </message>
    <message>
        <source>Horse – 馬</source>
        <translation>Pferd – 馬</translation>
    </message>
    <message>
        <source>Goat – 羊</source>
        <translation>Ziege – 羊</translation>
    </message>
    <message>
        <source>Monkey – 猴</source>
        <translation> Affe – 猴</translation>
    </message>
    <message>
        <source>Rooster – 雞</source>
        <translation> Hahn – 雞</translation>
    </message>
    <message>
        <source>Dog – 狗</source>
        <translation> Hund – 狗</translation>
    </message>
    <message>
        <source>Pig – 豬</source>
        <translation>Schwein – 豬</translation>
    </message>
    <message>
        <source>Metal - 金</source>
        <translation>Metall - 金</translation>
    </message>
    <message>
        <source>Water - 水</source>
        <translation>Wasser - 水</translation>
    </message>
    <message>
        <source>Wood - 木</source>
        <translation>Holz - 木</translation>
    </message>
    <message>
        <source>Fire - 火</source>
        <translation>Feuer - 火</translation>
    </message>
    <message>
        <source>Earth - 土</source>
        <translation>Erde - 土</translation>
    </message>
    <message>
        <source>Venus ♀</source>
        <translation>Venus ♀</translation>
    </message>
    <message>
        <source>Mercury ☿</source>
        <translation>Merkur ☿</translation>
    </message>
    <message>
        <source>Jupiter ♃</source>
        <translation>Jupiter ♃</translation>
    </message>
    <message>
        <source>Mars ♂</source>
        <translation>Mars ♂</translation>
    </message>
    <message>
        <source>Saturn ♄</source>
        <translation>Saturn ♄</translation>
    </message>
    <message>
        <source>Aquarius ♒︎</source>
        <translation>Wassermann ♒︎</translation>
    </message>
    <message>
        <source>Pisces ♓︎</source>
        <translation>Fische ♓︎</translation>
    </message>
    <message>
        <source>Aries ♈︎</source>
        <translation>Widder ♈︎</translation>
    </message>
    <message>
        <source>Taurus ♉︎</source>
        <translation>Stier ♉︎</translation>
    </message>
    <message>
        <source>Gemini ♊︎</source>
        <translation>Zwillinge ♊︎</translation>
    </message>
    <message>
        <source>Cancer ♋︎</source>
        <translation>Krebs ♋︎</translation>
    </message>
    <message>
        <source>Leo ♌︎</source>
        <translation>Löwe ♌︎</translation>
    </message>
    <message>
        <source>Virgo ♍︎</source>
        <translation>Jungfrau ♍︎</translation>
    </message>
    <message>
        <source>Libra ♎︎</source>
        <translation>Waage ♎︎</translation>
    </message>
    <message>
        <source>Scorpio ♏︎</source>
        <translation>Skorpion ♏︎</translation>
    </message>
    <message>
        <source>Sagittarius ♐︎</source>
        <translation>Schütze ♐︎</translation>
    </message>
    <message>
        <source>Capricorn ♑︎</source>
        <translation>Steinbock ♑︎</translation>
    </message>
    <message>
        <source>Enter a Name</source>
        <translation>Geben Sie einen Namen ein</translation>
    </message>
    <message>
        <source>Add this birthday to favorites</source>
        <translation>diesen Geburtstag hinzufügen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Name for this birthday:</source>
        <translation>Name für: </translation>
    </message>
    <message>
        <source>has a birthday today!</source>
        <translation>hat heute Geburtstag!</translation>
    </message>
    <message>
        <source>is now</source>
        <translation>ist jetzt</translation>
    </message>
    <message>
        <source>weeks old!</source>
        <translation>Wochen alt!</translation>
    </message>
    <message>
        <source>months old!</source>
        <translation>Monate alt!</translation>
    </message>
    <message>
        <source>days old!</source>
        <translation>Tage alt!</translation>
    </message>
    <message>
        <source>Days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>Months</source>
        <translation>Monate</translation>
    </message>
    <message>
        <source>Years</source>
        <translation>Jahre</translation>
    </message>
    <message>
        <source>Your</source>
        <translation>Dein</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Sortieren</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Show more details</source>
        <translation>Zeige mehr Details</translation>
    </message>
    <message>
        <source>Rate App</source>
        <translation>App bewerten</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Andere Apps</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Birthday Reminder</source>
        <translation>Geburtstagserinnerung</translation>
    </message>
    <message>
        <source>Sort by name</source>
        <translation>Nach Name sortieren</translation>
    </message>
    <message>
        <source>Sort by age</source>
        <translation>Nach Alter sortieren</translation>
    </message>
    <message>
        <source>Sort by birthday</source>
        <translation>Nach Geburtstag sortieren</translation>
    </message>
    <message>
        <source>Your</source>
        <comment>the report</comment>
        <translation>Dein</translation>
    </message>
    <message>
        <source>Select your date of birth</source>
        <translation>Wähle dein Geburtsdatum</translation>
    </message>
    <message>
        <source>age is:</source>
        <translation>Alter ist:</translation>
    </message>
    <message>
        <source>in months:</source>
        <translation>in Monaten:</translation>
    </message>
    <message>
        <source>in weeks:</source>
        <translation>in Wochen:</translation>
    </message>
    <message>
        <source>in days:</source>
        <translation>in Tagen:</translation>
    </message>
    <message>
        <source>Zodiac sign: </source>
        <translation>Sternzeichen:</translation>
    </message>
    <message>
        <source>
Chinese zodiac: </source>
        <translation>
Tierkreiszeichen: </translation>
    </message>
    <message>
        <source>
Element: </source>
        <translation>
Element: </translation>
    </message>
    <message>
        <source>Planet:</source>
        <translation>Planet: </translation>
    </message>
    <message>
        <source>next birthday: in</source>
        <translation>nächster Geburtstag: in</translation>
    </message>
    <message>
        <source>age</source>
        <extracomment>The short report: &quot;Anna&apos;s age&quot;, then a blank line and the lines below, each followed by its number</extracomment>
        <translation>Alter</translation>
    </message>
    <message>
        <source>In years: </source>
        <extracomment>A line of the short report, followed by the number of years</extracomment>
        <translation>In Jahren: </translation>
    </message>
    <message>
        <source>In months: </source>
        <translation>In Monaten: </translation>
    </message>
    <message>
        <source>In days: </source>
        <translation>In Tagen: </translation>
    </message>
    <message>
        <source>Show weekday in table view</source>
        <translation>Wochentag in Tabellenansicht anzeigen</translation>
    </message>
    <message>
        <source>Entries:</source>
        <translation>Einträge:</translation>
    </message>
    <message>
        <source>Mark future birthdays ☆</source>
        <translation>Zukünftige Geburtstage markieren ☆</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Deleted:</source>
        <translation>Gelöscht:</translation>
    </message>
    <message>
        <source>Clear text</source>
        <translation>Text löschen</translation>
    </message>
    <message>
        <source>Your change could not be saved: %1</source>
        <translation>Ihre Änderung konnte nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>%1 has a birthday tomorrow</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1 hat morgen Geburtstag</translation>
    </message>
    <message numerus="yes">
        <source>%1 has a birthday in %n days</source>
        <extracomment>%1 the name, %n the number of days (2 or more; one day ahead says &quot;tomorrow&quot;)</extracomment>
        <translation>
            <numerusform>%1 hat in %n Tag Geburtstag</numerusform>
            <numerusform>%1 hat in %n Tagen Geburtstag</numerusform>
        </translation>
    </message>
    <message>
        <source>Reminders</source>
        <translation>Erinnerungen</translation>
    </message>
    <message>
        <source>On the day</source>
        <translation>Am Tag selbst</translation>
    </message>
    <message>
        <source>1 day before</source>
        <translation>1 Tag vorher</translation>
    </message>
    <message>
        <source>3 days before</source>
        <translation>3 Tage vorher</translation>
    </message>
    <message>
        <source>1 week before</source>
        <translation>1 Woche vorher</translation>
    </message>
    <message>
        <source>Reminder time</source>
        <translation>Uhrzeit der Erinnerung</translation>
    </message>
    <message>
        <source>How early</source>
        <translation>Wie früh</translation>
    </message>
    <message>
        <source>Earlier</source>
        <translation>Früher</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <extracomment>The import summary joins its counts with &quot;, &quot; and names the reasons for skipping in brackets: &quot;8 added, 1 already there, 4 skipped (1 no birthday, ...)&quot;. %n how many favorites an import added</extracomment>
        <translation>
            <numerusform>%n hinzugefügt</numerusform>
            <numerusform>%n hinzugefügt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already there</source>
        <extracomment>%n how many were already favorites</extracomment>
        <translation>
            <numerusform>%n schon vorhanden</numerusform>
            <numerusform>%n schon vorhanden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped</source>
        <extracomment>%n how many were skipped</extracomment>
        <translation>
            <numerusform>%n übersprungen</numerusform>
            <numerusform>%n übersprungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n no birthday</source>
        <extracomment>%n how many cards had no birthday</extracomment>
        <translation>
            <numerusform>%n ohne Geburtstag</numerusform>
            <numerusform>%n ohne Geburtstag</numerusform>
        </translation>
    </message>
    <message>
        <source>no year</source>
        <extracomment>the year wheel&apos;s place for a birthday without a year</extracomment>
        <translation>ohne Jahr</translation>
    </message>
    <message numerus="yes">
        <source>%n impossible date</source>
        <extracomment>%n how many birthdays were impossible dates</extracomment>
        <translation>
            <numerusform>%n unmögliches Datum</numerusform>
            <numerusform>%n unmögliches Datum</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n date in the future</source>
        <extracomment>%n how many birthdays lay in the future</extracomment>
        <translation>
            <numerusform>%n Datum in der Zukunft</numerusform>
            <numerusform>%n Datum in der Zukunft</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n unreadable date</source>
        <extracomment>%n how many birthdays could not be read</extracomment>
        <translation>
            <numerusform>%n unlesbares Datum</numerusform>
            <numerusform>%n unlesbares Datum</numerusform>
        </translation>
    </message>
    <message>
        <source>Import a vCard file…</source>
        <translation>vCard-Datei importieren…</translation>
    </message>
    <message>
        <source>Import from contacts</source>
        <translation>Aus Kontakten importieren</translation>
    </message>
    <message>
        <source>vCard files</source>
        <translation>vCard-Dateien</translation>
    </message>
    <message>
        <source>This file is not a vCard file.</source>
        <translation>Diese Datei ist keine vCard-Datei.</translation>
    </message>
    <message>
        <source>This file ends in the middle of a card.</source>
        <translation>Diese Datei endet mitten in einer Karte.</translation>
    </message>
    <message>
        <source>This file is too large.</source>
        <translation>Diese Datei ist zu groß.</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>Diese Datei kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Show birthdays in the calendar</source>
        <translation>Geburtstage im Kalender zeigen</translation>
    </message>
    <message>
        <source>%1&apos;s birthday</source>
        <translation>Geburtstag von %1</translation>
    </message>
    <message>
        <source>born %1</source>
        <translation>geboren %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The saved settings were damaged. Tavlo kept every favorite it could read and keeps a copy of the damaged file.</source>
        <translation>Die gespeicherten Einstellungen waren beschädigt. Tavlo hat jeden lesbaren Favoriten behalten und bewahrt eine Kopie der beschädigten Datei auf.</translation>
    </message>
    <message>
        <source>Your saved birthdays cannot be read (%1). Nothing is saved until this is fixed.</source>
        <extracomment>%1 why, in the system&apos;s words</extracomment>
        <translation>Ihre gespeicherten Geburtstage können nicht gelesen werden (%1). Bis das behoben ist, wird nichts gespeichert.</translation>
    </message>
    <message>
        <source>A favorite chosen for the main screen was incomplete and is not shown.</source>
        <translation>Ein für den Hauptbildschirm gewählter Favorit war unvollständig und wird nicht angezeigt.</translation>
    </message>
    <message numerus="yes">
        <source>Birthdays that cannot be read: %n. Fix or delete them in your favorites.</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Geburtstage, die nicht gelesen werden können: %n. Korrigieren oder löschen Sie sie in Ihren Favoriten.</numerusform>
            <numerusform>Geburtstage, die nicht gelesen werden können: %n. Korrigieren oder löschen Sie sie in Ihren Favoriten.</numerusform>
        </translation>
    </message>
    <message>
        <source>Unreadable birthday</source>
        <translation>Unlesbarer Geburtstag</translation>
    </message>
    <message>
        <source>%1 birthday: %2</source>
        <extracomment>%1 whose (&quot;Anna&apos;s&quot;, &quot;Your&quot;), %2 the day and month</extracomment>
        <translation>%1 Geburtstag: %2</translation>
    </message>
    <message>
        <source>The year of birth is not known.</source>
        <translation>Das Geburtsjahr ist nicht bekannt.</translation>
    </message>
    <message>
        <source>No favorites yet. To add someone, go back, turn the wheels to their date of birth and tap +. Or tap + above to import birthdays from a vCard file or your contacts.</source>
        <translation>Noch keine Favoriten. Um jemanden hinzuzufügen, gehen Sie zurück, stellen Sie die Räder auf das Geburtsdatum und tippen Sie auf +. Oder tippen Sie oben auf +, um Geburtstage aus einer vCard-Datei oder Ihren Kontakten zu importieren.</translation>
    </message>
    <message>
        <source>No address book with contacts was found on this device.</source>
        <translation>Auf diesem Gerät wurde kein Adressbuch mit Kontakten gefunden.</translation>
    </message>
    <message>
        <source>No software centre is installed to open Tavlo&apos;s page. Install one, such as GNOME Software or KDE Discover, to rate Tavlo.</source>
        <translation>Es ist kein Softwarecenter installiert, das die Seite von Tavlo öffnen kann. Installieren Sie eines, etwa GNOME Software oder KDE Discover, um Tavlo zu bewerten.</translation>
    </message>
    <message>
        <source>%1 deleted. Undo with Control+Z.</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1 gelöscht. Rückgängig mit Strg+Z.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>%1 the row, %2 how many</extracomment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Import birthdays</source>
        <translation>Geburtstage importieren</translation>
    </message>
    <message>
        <source>Birthdays from contacts</source>
        <translation>Geburtstage aus den Kontakten</translation>
    </message>
    <message numerus="yes">
        <source>Up to date: %n birthdays from contacts</source>
        <extracomment>%n the number of favorites that follow contacts</extracomment>
        <translation>
            <numerusform>Aktuell: %n Geburtstage aus den Kontakten</numerusform>
            <numerusform>Aktuell: %n Geburtstage aus den Kontakten</numerusform>
        </translation>
    </message>
    <message>
        <source>Reading the address books…</source>
        <translation>Adressbücher werden gelesen …</translation>
    </message>
    <message>
        <source>The address book service does not answer; its birthdays stay as they are.</source>
        <translation>Der Adressbuchdienst antwortet nicht; seine Geburtstage bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>The address book service stopped; its birthdays stay as they are until it is back.</source>
        <translation>Der Adressbuchdienst wurde beendet; seine Geburtstage bleiben, wie sie sind, bis er zurück ist.</translation>
    </message>
    <message>
        <source>The contacts folder %1 cannot be read; its birthdays stay as they are.</source>
        <extracomment>%1 the folder</extracomment>
        <translation>Der Kontakteordner %1 kann nicht gelesen werden; seine Geburtstage bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>The contacts file %1 cannot be read; its birthdays stay as they are.</source>
        <extracomment>%1 the file</extracomment>
        <translation>Die Kontaktdatei %1 kann nicht gelesen werden; ihre Geburtstage bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>The contacts file %1 is cut off; its birthdays stay as they are.</source>
        <extracomment>%1 the file</extracomment>
        <translation>Die Kontaktdatei %1 ist abgeschnitten; ihre Geburtstage bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>A contact&apos;s birthday cannot be read (%1); its favorite stays as it is.</source>
        <extracomment>%1 the contact</extracomment>
        <translation>Der Geburtstag eines Kontakts kann nicht gelesen werden (%1); sein Favorit bleibt, wie er ist.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>%1 the version number</extracomment>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Second reminder</source>
        <translation>Zweite Erinnerung</translation>
    </message>
    <message>
        <source>Off</source>
        <extracomment>the second reminder&apos;s choice of none</extracomment>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Export to a vCard file…</source>
        <translation>In eine vCard-Datei exportieren…</translation>
    </message>
    <message>
        <source>Export to a calendar file…</source>
        <translation>In eine Kalenderdatei exportieren…</translation>
    </message>
    <message>
        <source>iCalendar files</source>
        <translation>iCalendar-Dateien</translation>
    </message>
    <message numerus="yes">
        <source>Birthdays saved: %n, in %1</source>
        <extracomment>%n how many, %1 the file</extracomment>
        <translation>
            <numerusform>Gespeicherte Geburtstage: %n, in %1</numerusform>
            <numerusform>Gespeicherte Geburtstage: %n, in %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Left out, as their birthday cannot be read: %n</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Ausgelassen, weil ihr Geburtstag nicht lesbar ist: %n</numerusform>
            <numerusform>Ausgelassen, weil ihr Geburtstag nicht lesbar ist: %n</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 could not be saved. A file already there is as it was.</source>
        <extracomment>%1 the file</extracomment>
        <translation>%1 konnte nicht gespeichert werden. Eine Datei, die schon da war, ist unverändert.</translation>
    </message>
    <message>
        <source>The file chooser closed without a file. Nothing was changed.</source>
        <translation>Die Dateiauswahl wurde ohne Datei geschlossen. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>Import or export birthdays</source>
        <translation>Geburtstage importieren oder exportieren</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <comment>file dialog</comment>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>Up one folder</source>
        <translation>Einen Ordner höher</translation>
    </message>
    <message>
        <source>%1 (conflict copy)</source>
        <extracomment>%1 the name; the local version kept beside the server&apos;s</extracomment>
        <translation>%1 (Konfliktkopie)</translation>
    </message>
    <message>
        <source>App colors</source>
        <extracomment>The caption over the colour themes in the settings</extracomment>
        <translation>App-Farben</translation>
    </message>
    <message>
        <source>%1 has a birthday today!</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1 hat heute Geburtstag!</translation>
    </message>
    <message>
        <source>Sync with CardDAV</source>
        <extracomment>The settings row that opens the sync account</extracomment>
        <translation>Mit CardDAV abgleichen</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Serveradresse</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Benutzername</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Set up</source>
        <extracomment>The button that sets up the sync account</extracomment>
        <translation>Einrichten</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>Jetzt abgleichen</translation>
    </message>
    <message>
        <source>Remove account</source>
        <translation>Konto entfernen</translation>
    </message>
    <message>
        <source>Not set up</source>
        <extracomment>The sync row&apos;s status without an account</extracomment>
        <translation>Nicht eingerichtet</translation>
    </message>
    <message>
        <source>Syncing…</source>
        <translation>Wird abgeglichen …</translation>
    </message>
    <message>
        <source>Not synced yet</source>
        <translation>Noch nicht abgeglichen</translation>
    </message>
    <message>
        <source>Last sync: %1</source>
        <extracomment>%1 the date and time the last sync ended</extracomment>
        <translation>Zuletzt abgeglichen: %1</translation>
    </message>
    <message>
        <source>The server could not be reached</source>
        <translation>Der Server ist nicht erreichbar</translation>
    </message>
    <message>
        <source>The server refused the user name or password</source>
        <translation>Der Server hat Benutzername oder Passwort abgelehnt</translation>
    </message>
    <message>
        <source>No password store (Secret Service) is running</source>
        <translation>Es läuft kein Passwortspeicher (Secret Service)</translation>
    </message>
    <message>
        <source>No CardDAV address book was found at this address</source>
        <translation>Unter dieser Adresse wurde kein CardDAV-Adressbuch gefunden</translation>
    </message>
    <message>
        <source>The favorites could not be saved on this device</source>
        <translation>Die Favoriten konnten auf diesem Gerät nicht gespeichert werden</translation>
    </message>
    <message>
        <source>The sync did not finish: %1</source>
        <extracomment>%1 the problem in the system&apos;s words, in English</extracomment>
        <translation>Der Abgleich wurde nicht beendet: %1</translation>
    </message>
    <message>
        <source>No password is kept for this account: set it up again</source>
        <translation>Für dieses Konto ist kein Passwort gespeichert: bitte neu einrichten</translation>
    </message>
</context>
</TS>
