// SPDX-License-Identifier: MIT
#include "texts/UiStrings.h"

#include "texts/RussianPlural.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct Row
{
    QString english;
    QString german;
    QString russian;
};

// Blanks, line feeds, symbols and U+FE0E after the zodiac symbols are part
// of the texts. The leading blank of some German animals is intended.
const std::array<Row, UiTextCount> &rows()
{
    static const std::array<Row, UiTextCount> table{{
        {u"Rat – 鼠"_s, u"Ratte – 鼠"_s, u"Крыса – 鼠"_s},
        {u"Ox – 牛"_s, u"Büffel – 牛"_s, u"Бык – 牛"_s},
        {u"Tiger – 虎"_s, u"Tiger – 虎"_s, u"Тигр – 虎"_s},
        {u"Rabbit – 兔"_s, u"Hase – 兔"_s, u"Кролик – 兔"_s},
        {u"Dragon – 龍"_s, u"Drache – 龍"_s, u"Дракон – 龍"_s},
        {u"Snake – 蛇"_s, u" Schlange – 蛇"_s, u"Змея – 蛇"_s},
        {u"Horse – 馬"_s, u"Pferd – 馬"_s, u"Лошадь – 馬"_s},
        {u"Goat – 羊"_s, u"Ziege – 羊"_s, u"Коза – 羊"_s},
        {u"Monkey – 猴"_s, u" Affe – 猴"_s, u"Обезьяна – 猴"_s},
        {u"Rooster – 雞"_s, u" Hahn – 雞"_s, u"Петух – 雞"_s},
        {u"Dog – 狗"_s, u" Hund – 狗"_s, u"Собака – 狗"_s},
        {u"Pig – 豬"_s, u"Schwein – 豬"_s, u"Свинья – 豬"_s},
        {u"Metal - 金"_s, u"Metall - 金"_s, u"Металл - 金"_s},
        {u"Water - 水"_s, u"Wasser - 水"_s, u"Вода - 水"_s},
        {u"Wood - 木"_s, u"Holz - 木"_s, u"Дерево - 木"_s},
        {u"Fire - 火"_s, u"Feuer - 火"_s, u"Огонь - 火"_s},
        {u"Earth - 土"_s, u"Erde - 土"_s, u"Земля - 土"_s},
        {u"Venus ♀"_s, u"Venus ♀"_s, u"Венера ♀"_s},
        {u"Mercury ☿"_s, u"Merkur ☿"_s, u"Меркурий ☿"_s},
        {u"Jupiter ♃"_s, u"Jupiter ♃"_s, u"Юпитер ♃"_s},
        {u"Mars ♂"_s, u"Mars ♂"_s, u"Марс ♂"_s},
        {u"Saturn ♄"_s, u"Saturn ♄"_s, u"Сатурн ♄"_s},
        {u"Aquarius ♒︎"_s, u"Wassermann ♒︎"_s, u"Водолей ♒︎"_s},
        {u"Pisces ♓︎"_s, u"Fische ♓︎"_s, u"Рыбы ♓︎"_s},
        {u"Aries ♈︎"_s, u"Widder ♈︎"_s, u"Овен ♈︎"_s},
        {u"Taurus ♉︎"_s, u"Stier ♉︎"_s, u"Телец ♉︎"_s},
        {u"Gemini ♊︎"_s, u"Zwillinge ♊︎"_s, u"Близнецы ♊︎"_s},
        {u"Cancer ♋︎"_s, u"Krebs ♋︎"_s, u"Рак ♋︎"_s},
        {u"Leo ♌︎"_s, u"Löwe ♌︎"_s, u"Лев ♌︎"_s},
        {u"Virgo ♍︎"_s, u"Jungfrau ♍︎"_s, u"Дева ♍︎"_s},
        {u"Libra ♎︎"_s, u"Waage ♎︎"_s, u"Весы ♎︎"_s},
        {u"Scorpio ♏︎"_s, u"Skorpion ♏︎"_s, u"Скорпион ♏︎"_s},
        {u"Sagittarius ♐︎"_s, u"Schütze ♐︎"_s, u"Стрелец ♐︎"_s},
        {u"Capricorn ♑︎"_s, u"Steinbock ♑︎"_s, u"Козерог ♑︎"_s},
        {u"Enter a Name"_s, u"Geben Sie einen Namen ein"_s, u"Введите имя"_s},
        {u"Add this birthday to favorites"_s, u"diesen Geburtstag hinzufügen"_s,
         u"Добавить этот день рождения"_s},
        {u"Cancel"_s, u"Abbrechen"_s, u"Отменить"_s},
        {u"Name for this birthday:"_s, u"Name für: "_s, u"Имя: "_s},
        {u"has a birthday today!"_s, u"hat heute Geburtstag!"_s,
         u"отмечает сегодня день рождения!"_s},
        {u"is now"_s, u"ist jetzt"_s, u"теперь"_s},
        {u"weeks old!"_s, u"Wochen alt!"_s, u"недель!"_s},
        {u"months old!"_s, u"Monate alt!"_s, u"месяцев!"_s},
        {u"days old!"_s, u"Tage alt!"_s, u"дней!"_s},
        {u"Days"_s, u"Tage"_s, u"дней"_s},
        {u"Months"_s, u"Monate"_s, u"месяцев"_s},
        {u"Years"_s, u"Jahre"_s, u"лет"_s},
        {u"Your"_s, u"Dein"_s, u"Твой"_s},
        {u"Done"_s, u"Zurück"_s, u"назад"_s},
        {u"Favorites"_s, u"Favoriten"_s, u"Избранные"_s},
        {u"Edit"_s, u"Bearbeiten"_s, u"Редактировать"_s},
        {u"Name"_s, u"Name"_s, u"Имя"_s},
        {u"Save"_s, u"Speichern"_s, u"Сохранить"_s},
        {u"Sort"_s, u"Sortieren"_s, u"Сортировать"_s},
        {u"Settings"_s, u"Einstellungen"_s, u"Настройки"_s},
        {u"Show more details"_s, u"Zeige mehr Details"_s, u"Показать больше информации"_s},
        {u"Rate App"_s, u"App bewerten"_s, u"Оценить приложение"_s},
        {u"More Apps"_s, u"Andere Apps"_s, u"Другие приложения"_s},
        {u"Background"_s, u"Hintergrund"_s, u"фон"_s},
        {u"Birthday Reminder"_s, u"Geburtstagserinnerung"_s, u"День рождения"_s},
        {u"Sort by name"_s, u"Nach Name sortieren"_s, u"Сортировать по имени"_s},
        {u"Sort by age"_s, u"Nach Alter sortieren"_s, u"Сортировать по возрасту"_s},
        {u"Sort by birthday"_s, u"Nach Geburtstag sortieren"_s, u"Сортировать по дню рождения"_s},
        {u"Your"_s, u"Dein"_s, u"Твой"_s},
        {u"Select your date of birth"_s, u"Wähle dein Geburtsdatum"_s, u"Выбери дату рождения"_s},
        {u"age is:"_s, u"Alter ist:"_s, u"Возраст:"_s},
        {u"in months:"_s, u"in Monaten:"_s, u"в месяцах:"_s},
        {u"in weeks:"_s, u"in Wochen:"_s, u"в неделях:"_s},
        {u"in days:"_s, u"in Tagen:"_s, u"в днях:"_s},
        {u"Zodiac sign: "_s, u"Sternzeichen:"_s, u"Знак зодиака:"_s},
        {u"\nChinese zodiac: "_s, u"\nTierkreiszeichen: "_s, u"\nВосточный зодиак: "_s},
        {u"\nElement: "_s, u"\nElement: "_s, u"\nСтихия: "_s},
        {u"Planet:"_s, u"Planet: "_s, u"Обитель:"_s},
        {u"next birthday: in"_s, u"nächster Geburtstag: in"_s, u"день рождения через"_s},
        {u"age"_s, u"Alter"_s, u"\nВозраст:"_s},
        {u"In years: "_s, u"In Jahren: "_s, u"В годах: "_s},
        {u"In months: "_s, u"In Monaten: "_s, u"В месяцах: "_s},
        {u"In days: "_s, u"In Tagen: "_s, u"В днях: "_s},
        {u"Show weekday in table view"_s, u"Wochentag in Tabellenansicht anzeigen"_s,
         u"Показать день недели в таблице"_s},
        {u"Entries:"_s, u"Einträge:"_s, u"Записи:"_s},
        {u"Mark future birthdays ☆"_s, u"Zukünftige Geburtstage markieren ☆"_s,
         u"Будущие дни рождения пометить ☆"_s},
        {u"Undo"_s, u"Rückgängig"_s, u"Вернуть"_s},
        {u"Deleted:"_s, u"Gelöscht:"_s, u"Удалено:"_s},
        {u"Clear text"_s, u"Text löschen"_s, u"Очистить текст"_s},
        {u"Your change could not be saved: %1"_s,
         u"Ihre Änderung konnte nicht gespeichert werden: %1"_s,
         u"Не удалось сохранить изменение: %1"_s},
        {u"has a birthday tomorrow"_s, u"hat morgen Geburtstag"_s,
         u"отмечает день рождения завтра"_s},
        {u"has a birthday in %1 days"_s, u"hat in %1 Tagen Geburtstag"_s,
         u"отмечает день рождения через %1 %2"_s},
        {u"Reminders"_s, u"Erinnerungen"_s, u"Напоминания"_s},
        {u"On the day"_s, u"Am Tag selbst"_s, u"В тот же день"_s},
        {u"1 day before"_s, u"1 Tag vorher"_s, u"За 1 день"_s},
        {u"3 days before"_s, u"3 Tage vorher"_s, u"За 3 дня"_s},
        {u"1 week before"_s, u"1 Woche vorher"_s, u"За неделю"_s},
        {u"Reminder time"_s, u"Uhrzeit der Erinnerung"_s, u"Время напоминания"_s},
        {u"How early"_s, u"Wie früh"_s, u"Насколько заранее"_s},
        {u"Earlier"_s, u"Früher"_s, u"Раньше"_s},
        {u"Later"_s, u"Später"_s, u"Позже"_s},
        {u"%1 added"_s, u"%1 hinzugefügt"_s, u"добавлено: %1"_s},
        {u"%1 already there"_s, u"%1 schon vorhanden"_s, u"уже есть: %1"_s},
        {u"%1 skipped"_s, u"%1 übersprungen"_s, u"пропущено: %1"_s},
        {u"%1 no birthday"_s, u"%1 ohne Geburtstag"_s, u"без дня рождения: %1"_s},
        {u"no year"_s, u"ohne Jahr"_s, u"без года"_s},
        {u"%1 impossible date"_s, u"%1 unmögliches Datum"_s, u"несуществующая дата: %1"_s},
        {u"%1 date in the future"_s, u"%1 Datum in der Zukunft"_s, u"дата в будущем: %1"_s},
        {u"%1 unreadable date"_s, u"%1 unlesbares Datum"_s, u"нечитаемая дата: %1"_s},
        {u"Import a vCard file…"_s, u"vCard-Datei importieren…"_s, u"Импорт из файла vCard…"_s},
        {u"Import from contacts"_s, u"Aus Kontakten importieren"_s, u"Импорт из контактов"_s},
        {u"vCard files"_s, u"vCard-Dateien"_s, u"Файлы vCard"_s},
        {u"This file is not a vCard file."_s, u"Diese Datei ist keine vCard-Datei."_s,
         u"Этот файл не является файлом vCard."_s},
        {u"This file ends in the middle of a card."_s,
         u"Diese Datei endet mitten in einer Karte."_s, u"Файл обрывается посреди карточки."_s},
        {u"This file is too large."_s, u"Diese Datei ist zu groß."_s,
         u"Этот файл слишком большой."_s},
        {u"This file cannot be read."_s, u"Diese Datei kann nicht gelesen werden."_s,
         u"Этот файл не удаётся прочитать."_s},
        {u"Show birthdays in the calendar"_s, u"Geburtstage im Kalender zeigen"_s,
         u"Показывать дни рождения в календаре"_s},
        {u"%1's birthday"_s, u"Geburtstag von %1"_s, u"День рождения: %1"_s},
        {u"born %1"_s, u"geboren %1"_s, u"год рождения: %1"_s},
        {u"OK"_s, u"OK"_s, u"ОК"_s},
        {u"The saved settings were damaged. Tavlo kept every favorite it could read and "
         u"keeps a copy of the damaged file."_s,
         u"Die gespeicherten Einstellungen waren beschädigt. Tavlo hat jeden lesbaren "
         u"Favoriten behalten und bewahrt eine Kopie der beschädigten Datei auf."_s,
         u"Сохранённые настройки были повреждены. Tavlo сохранил всё избранное, что удалось "
         u"прочитать, и хранит копию повреждённого файла."_s},
        {u"Your saved birthdays cannot be read (%1). Nothing is saved until this is fixed."_s,
         u"Ihre gespeicherten Geburtstage können nicht gelesen werden (%1). Bis das behoben "
         u"ist, wird nichts gespeichert."_s,
         u"Не удаётся прочитать сохранённые дни рождения (%1). Пока это не исправлено, "
         u"ничего не сохраняется."_s},
        {u"A favorite chosen for the main screen was incomplete and is not shown."_s,
         u"Ein für den Hauptbildschirm gewählter Favorit war unvollständig und wird nicht "
         u"angezeigt."_s,
         u"Выбранная для главного экрана запись была неполной и не показана."_s},
        {u"Birthdays that cannot be read: %1. Fix or delete them in your favorites."_s,
         u"Geburtstage, die nicht gelesen werden können: %1. Korrigieren oder löschen Sie "
         u"sie in Ihren Favoriten."_s,
         u"Дни рождения, которые не удаётся прочитать: %1. Исправьте или удалите их в "
         u"избранном."_s},
        {u"Unreadable birthday"_s, u"Unlesbarer Geburtstag"_s, u"Нечитаемый день рождения"_s},
        {u"%1 birthday: %2"_s, u"%1 Geburtstag: %2"_s, u"%1\nДень рождения: %2"_s},
        {u"The year of birth is not known."_s, u"Das Geburtsjahr ist nicht bekannt."_s,
         u"Год рождения неизвестен."_s},
        {u"No favorites yet. To add someone, go back, turn the wheels to their date of birth "
         u"and tap +. Or tap + above to import birthdays from a vCard file or your contacts."_s,
         u"Noch keine Favoriten. Um jemanden hinzuzufügen, gehen Sie zurück, stellen Sie die "
         u"Räder auf das Geburtsdatum und tippen Sie auf +. Oder tippen Sie oben auf +, um "
         u"Geburtstage aus einer vCard-Datei oder Ihren Kontakten zu importieren."_s,
         u"Избранных пока нет. Чтобы добавить человека, вернитесь назад, выставьте на колёсах "
         u"дату рождения и нажмите +. Или нажмите + вверху, чтобы импортировать дни рождения "
         u"из файла vCard или из контактов."_s},
        {u"No address book with contacts was found on this device."_s,
         u"Auf diesem Gerät wurde kein Adressbuch mit Kontakten gefunden."_s,
         u"На этом устройстве не найдено ни одной адресной книги с контактами."_s},
        {u"No software centre is installed to open Tavlo's page. Install one, such as GNOME "
         u"Software or KDE Discover, to rate Tavlo."_s,
         u"Es ist kein Softwarecenter installiert, das die Seite von Tavlo öffnen kann. "
         u"Installieren Sie eines, etwa GNOME Software oder KDE Discover, um Tavlo zu "
         u"bewerten."_s,
         u"Не установлен центр приложений, который мог бы открыть страницу Tavlo. Установите "
         u"его, например GNOME Software или KDE Discover, чтобы оценить Tavlo."_s},
        {u"%1 deleted. Undo with Control+Z."_s, u"%1 gelöscht. Rückgängig mit Strg+Z."_s,
         u"%1: удалено. Отменить: Ctrl+Z."_s},
        {u"%1 of %2"_s, u"%1 von %2"_s, u"%1 из %2"_s},
        {u"Import birthdays"_s, u"Geburtstage importieren"_s, u"Импорт дней рождения"_s},
        {u"Birthdays from contacts"_s, u"Geburtstage aus den Kontakten"_s,
         u"Дни рождения из контактов"_s},
        {u"Up to date: %1 birthdays from contacts"_s,
         u"Aktuell: %1 Geburtstage aus den Kontakten"_s, u"Актуально, из контактов: %1"_s},
        {u"Reading the address books…"_s, u"Adressbücher werden gelesen …"_s,
         u"Чтение адресных книг…"_s},
        {u"The address book service does not answer; its birthdays stay as they are."_s,
         u"Der Adressbuchdienst antwortet nicht; seine Geburtstage bleiben, wie sie sind."_s,
         u"Служба адресной книги не отвечает; её дни рождения остаются как есть."_s},
        {u"The address book service stopped; its birthdays stay as they are until it is back."_s,
         u"Der Adressbuchdienst wurde beendet; seine Geburtstage bleiben, wie sie sind, bis er "
         u"zurück ist."_s,
         u"Служба адресной книги остановилась; её дни рождения остаются как есть, пока она не "
         u"вернётся."_s},
        {u"The contacts folder %1 cannot be read; its birthdays stay as they are."_s,
         u"Der Kontakteordner %1 kann nicht gelesen werden; seine Geburtstage bleiben, wie sie "
         u"sind."_s,
         u"Папку контактов %1 не удаётся прочитать; её дни рождения остаются как есть."_s},
        {u"The contacts file %1 cannot be read; its birthdays stay as they are."_s,
         u"Die Kontaktdatei %1 kann nicht gelesen werden; ihre Geburtstage bleiben, wie sie "
         u"sind."_s,
         u"Файл контактов %1 не удаётся прочитать; его дни рождения остаются как есть."_s},
        {u"The contacts file %1 is cut off; its birthdays stay as they are."_s,
         u"Die Kontaktdatei %1 ist abgeschnitten; ihre Geburtstage bleiben, wie sie sind."_s,
         u"Файл контактов %1 обрезан; его дни рождения остаются как есть."_s},
        {u"A contact's birthday cannot be read (%1); its favorite stays as it is."_s,
         u"Der Geburtstag eines Kontakts kann nicht gelesen werden (%1); sein Favorit bleibt, "
         u"wie er ist."_s,
         u"День рождения контакта не удаётся прочитать (%1); запись в избранном остаётся как "
         u"есть."_s},
        {u"App colours"_s, u"App-Farben"_s, u"Цвета приложения"_s},
        {u"Version %1"_s, u"Version %1"_s, u"Версия %1"_s},
        {u"Second reminder"_s, u"Zweite Erinnerung"_s, u"Второе напоминание"_s},
        {u"Off"_s, u"Aus"_s, u"Выкл."_s},
        {u"Export to a vCard file…"_s, u"In eine vCard-Datei exportieren…"_s,
         u"Экспорт в файл vCard…"_s},
        {u"Export to a calendar file…"_s, u"In eine Kalenderdatei exportieren…"_s,
         u"Экспорт в файл календаря…"_s},
        {u"iCalendar files"_s, u"iCalendar-Dateien"_s, u"Файлы iCalendar"_s},
        {u"Birthdays saved: %1, in %2"_s, u"Gespeicherte Geburtstage: %1, in %2"_s,
         u"Сохранено дней рождения: %1, в %2"_s},
        {u"Left out, as their birthday cannot be read: %1"_s,
         u"Ausgelassen, weil ihr Geburtstag nicht lesbar ist: %1"_s,
         u"Пропущено из-за нечитаемой даты рождения: %1"_s},
        {u"%1 could not be saved. A file already there is as it was."_s,
         u"%1 konnte nicht gespeichert werden. Eine Datei, die schon da war, ist unverändert."_s,
         u"Не удалось сохранить %1. Файл, который там уже был, не изменён."_s},
        {u"The file chooser closed without a file. Nothing was changed."_s,
         u"Die Dateiauswahl wurde ohne Datei geschlossen. Es wurde nichts geändert."_s,
         u"Окно выбора файла закрылось без файла. Ничего не изменено."_s},
        {u"Import or export birthdays"_s, u"Geburtstage importieren oder exportieren"_s,
         u"Импорт и экспорт дней рождения"_s},
        {u"Open"_s, u"Öffnen"_s, u"Открыть"_s},
        {u"Save"_s, u"Speichern"_s, u"Сохранить"_s},
        {u"File name"_s, u"Dateiname"_s, u"Имя файла"_s},
        {u"Up one folder"_s, u"Einen Ordner höher"_s, u"На папку выше"_s},
        {u"%1 (conflict copy)"_s, u"%1 (Konfliktkopie)"_s, u"%1 (копия при конфликте)"_s},
        {u"Sync with CardDAV"_s, u"Mit CardDAV abgleichen"_s, u"Синхронизация с CardDAV"_s},
        {u"Server address"_s, u"Serveradresse"_s, u"Адрес сервера"_s},
        {u"User name"_s, u"Benutzername"_s, u"Имя пользователя"_s},
        {u"Password"_s, u"Passwort"_s, u"Пароль"_s},
        {u"Set up"_s, u"Einrichten"_s, u"Настроить"_s},
        {u"Sync now"_s, u"Jetzt abgleichen"_s, u"Синхронизировать"_s},
        {u"Remove account"_s, u"Konto entfernen"_s, u"Удалить учётную запись"_s},
        {u"Not set up"_s, u"Nicht eingerichtet"_s, u"Не настроено"_s},
        {u"Syncing…"_s, u"Wird abgeglichen …"_s, u"Синхронизация…"_s},
        {u"Not synced yet"_s, u"Noch nicht abgeglichen"_s, u"Ещё не синхронизировано"_s},
        {u"Last sync: %1"_s, u"Zuletzt abgeglichen: %1"_s, u"Последняя синхронизация: %1"_s},
        {u"The server could not be reached"_s, u"Der Server ist nicht erreichbar"_s,
         u"Не удалось связаться с сервером"_s},
        {u"The server refused the user name or password"_s,
         u"Der Server hat Benutzername oder Passwort abgelehnt"_s,
         u"Сервер отклонил имя пользователя или пароль"_s},
        {u"No password store (Secret Service) is running"_s,
         u"Es läuft kein Passwortspeicher (Secret Service)"_s,
         u"Хранилище паролей (Secret Service) не запущено"_s},
        {u"No CardDAV address book was found at this address"_s,
         u"Unter dieser Adresse wurde kein CardDAV-Adressbuch gefunden"_s,
         u"По этому адресу не найдена адресная книга CardDAV"_s},
        {u"The favorites could not be saved on this device"_s,
         u"Die Favoriten konnten auf diesem Gerät nicht gespeichert werden"_s,
         u"Не удалось сохранить избранное на этом устройстве"_s},
        {u"The sync did not finish: %1"_s, u"Der Abgleich wurde nicht beendet: %1"_s,
         u"Синхронизация не завершена: %1"_s},
        {u"No password is kept for this account: set it up again"_s,
         u"Für dieses Konto ist kein Passwort gespeichert: bitte neu einrichten"_s,
         u"Для этой учётной записи не сохранён пароль: настройте её заново"_s},
    }};
    return table;
}

} // namespace

UiStrings::UiStrings()
{
    for (int i = 0; i < UiTextCount; ++i)
        m_texts[i] = rows()[i].english;
}

void UiStrings::apply(Language language)
{
    if (language == Language::English)
        return;
    for (int i = 0; i < UiTextCount; ++i)
        m_texts[i] = language == Language::German ? rows()[i].german : rows()[i].russian;
}

const QString &UiStrings::english(UiText id)
{
    return rows()[index(id)].english;
}

QString UiStrings::translated(const QString &englishText) const
{
    for (int i = 0; i < UiTextCount; ++i) {
        if (rows()[i].english == englishText)
            return m_texts[i];
    }
    return englishText;
}

QString UiStrings::birthdayInDays(const QString &name, int days) const
{
    if (days == 1)
        return name + u' ' + text(UiText::HasABirthdayTomorrow);
    QString body = text(UiText::HasABirthdayInDays);
    body.replace(u"%1"_s, QString::number(days)).replace(u"%2"_s, russianDays(days));
    return name + u' ' + body;
}
