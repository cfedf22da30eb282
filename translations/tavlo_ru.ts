<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru">
<context>
    <name>AccessibleNames</name>
    <message>
        <source>Back to today</source>
        <extracomment>What a screen reader says for the button that turns the wheels back to today</extracomment>
        <translation>Вернуться к сегодняшнему дню</translation>
    </message>
    <message>
        <source>Delete</source>
        <extracomment>The delete button</extracomment>
        <translation>Удалить</translation>
    </message>
    <message>
        <source>About Tavlo</source>
        <extracomment>The button that opens the about panel</extracomment>
        <translation>О Tavlo</translation>
    </message>
    <message>
        <source>Close</source>
        <extracomment>The button that closes a panel or menu</extracomment>
        <translation>Закрыть</translation>
    </message>
    <message>
        <source>Day</source>
        <extracomment>The date wheels</extracomment>
        <translation>День</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Месяц</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Год</translation>
    </message>
    <message>
        <source>Colour theme %1</source>
        <extracomment>A colour theme&apos;s button: %1 its number</extracomment>
        <translation>Цветовая тема %1</translation>
    </message>
    <message>
        <source>Edit %1</source>
        <extracomment>A favorite&apos;s row buttons: %1 the name</extracomment>
        <translation>Изменить: %1</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>Удалить: %1</translation>
    </message>
    <message>
        <source>birthday still to come</source>
        <extracomment>Said with a row whose birthday this year is still to come</extracomment>
        <translation>день рождения впереди</translation>
    </message>
    <message>
        <source>age %1</source>
        <extracomment>Said with a row: %1 the age in years</extracomment>
        <translation>возраст %1</translation>
    </message>
</context>
<context>
    <name>BirthdayGreeting</name>
    <message numerus="yes">
        <source>%1 is now %n days old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the days (100, 1000, ...)</extracomment>
        <translation>
            <numerusform>%1 теперь %n день!</numerusform>
            <numerusform>%1 теперь %n дня!</numerusform>
            <numerusform>%1 теперь %n дней!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n months old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the months (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 теперь %n месяц!</numerusform>
            <numerusform>%1 теперь %n месяца!</numerusform>
            <numerusform>%1 теперь %n месяцев!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n weeks old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the weeks (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 теперь %n неделя!</numerusform>
            <numerusform>%1 теперь %n недели!</numerusform>
            <numerusform>%1 теперь %n недель!</numerusform>
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

Выбери дату рождения на колёсах: Tavlo покажет возраст в годах, месяцах и днях, в месяцах, неделях и днях, знак зодиака, восточный зодиак со стихией, планету, день недели рождения и сколько дней до следующего дня рождения.</translation>
    </message>
    <message>
        <source>Gestures
• On the main screen, swipe left or right: step through your favorites.
• In the favorites, long press: change name and date.
• In the favorites, swipe left: delete.</source>
        <translation>Жесты
• На главном экране провести влево или вправо: листать избранные.
• В избранных долгое нажатие: изменить имя и дату.
• В избранных провести влево: удалить.</translation>
    </message>
    <message>
        <source>Keyboard
• Tab and Shift+Tab: from control to control; Return or Space: press.
• The arrow keys turn a wheel, Home and End go to its ends.
• Page Up and Page Down: step through your favorites.
• In the favorites: F2 edits, Delete deletes, Ctrl+Z brings back; the menu key offers Edit and Delete.</source>
        <extracomment>Key names as the keyboard of the language labels them</extracomment>
        <translation>Клавиатура
• Tab и Shift+Tab: от элемента к элементу; Enter или пробел: нажать.
• Стрелки вращают колесо, Home и End переходят к его краям.
• Page Up и Page Down: листать избранные.
• В избранных: F2 изменяет, Delete удаляет, Ctrl+Z возвращает; клавиша меню показывает «Редактировать» и «Удалить».</translation>
    </message>
    <message>
        <source>Mouse
• Right click on a favorite: Edit and Delete.
• The scroll wheel turns a date wheel.
• In a wide window the favorites stand beside the main screen.</source>
        <translation>Мышь
• Правый щелчок по избранному: «Редактировать» и «Удалить».
• Колёсико мыши вращает колесо даты.
• В широком окне избранные стоят рядом с главным экраном.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>%1 the version number</extracomment>
        <translation>Версия %1</translation>
    </message>
    <message>
        <source>Fonts and icons: %1
Pictures: made for Tavlo.</source>
        <extracomment>%1 the fonts and icons with their licences, left in English</extracomment>
        <translation>Шрифты и значки: %1
Картинки: сделаны для Tavlo.</translation>
    </message>
</context>
<context>
    <name>PersonName</name>
    <message>
        <source>%1&apos;s</source>
        <extracomment>Whose report it is: %1 a person&apos;s name (&quot;Anna&apos;s age is: ...&quot;). Where the language marks it in the sentence, as Russian does, this is %1 alone</extracomment>
        <translation>%1</translation>
    </message>
</context>
<context>
    <name>ReportComposer</name>
    <message>
        <source>Yang</source>
        <extracomment>The polarity of a Chinese year, shown before its element</extracomment>
        <translation>Ян</translation>
    </message>
    <message>
        <source>Yin</source>
        <translation>Инь</translation>
    </message>
    <message>
        <source>Zodiac sign: %1</source>
        <extracomment>%1 the sign with its symbol (&quot;Aries ♈︎&quot;); the Chinese zodiac lines follow it</extracomment>
        <translation>Знак зодиака: %1</translation>
    </message>
    <message numerus="yes">
        <source>next birthday: in %n day(s)</source>
        <extracomment>%n the days to the next birthday (1 or more)</extracomment>
        <translation>
            <numerusform>день рождения через %n день</numerusform>
            <numerusform>день рождения через %n дня</numerusform>
            <numerusform>день рождения через %n дней</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>years</comment>
        <extracomment>%n a number of years; %1 the word &quot;Years&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n год</numerusform>
            <numerusform>%n года</numerusform>
            <numerusform>%n лет</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>months</comment>
        <extracomment>%n a number of months; %1 the word &quot;Months&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n месяц</numerusform>
            <numerusform>%n месяца</numerusform>
            <numerusform>%n месяцев</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n %1</source>
        <comment>days</comment>
        <extracomment>%n a number of days; %1 the word &quot;Days&quot; as the table has it. A language whose word changes with the number writes its forms here: %1 may be left out</extracomment>
        <translation>
            <numerusform>%n день</numerusform>
            <numerusform>%n дня</numerusform>
            <numerusform>%n дней</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 age is: %2,
 %3 &amp; %4</source>
        <extracomment>The age paragraph. %1 whose age (&quot;Anna&apos;s&quot;, &quot;Your&quot;), %2 the years, %3 the months, %4 the days, each with its word (&quot;41 Years&quot;)</extracomment>
        <translation>%1
 Возраст: %2,
 %3 &amp; %4</translation>
    </message>
    <message>
        <source>in months: %1
in weeks: %2
in days: %3</source>
        <extracomment>The age in one unit each: %1 months, %2 weeks, %3 days</extracomment>
        <translation>в месяцах: %1
в неделях: %2
в днях: %3</translation>
    </message>
    <message>
        <source>Planet: %1</source>
        <extracomment>%1 the ruling planet with its symbol (&quot;Venus ♀&quot;)</extracomment>
        <translation>Обитель: %1</translation>
    </message>
</context>
<context>
    <name>UiStrings</name>
    <message>
        <source>Rat – 鼠</source>
        <translation>Крыса – 鼠</translation>
    </message>
    <message>
        <source>Ox – 牛</source>
        <translation>Бык – 牛</translation>
    </message>
    <message>
        <source>Tiger – 虎</source>
        <translation>Тигр – 虎</translation>
    </message>
    <message>
        <source>Rabbit – 兔</source>
        <translation>Кролик – 兔</translation>
    </message>
    <message>
        <source>Dragon – 龍</source>
        <translation>Дракон – 龍</translation>
    </message>
    <message>
        <source>Snake – 蛇</source>
        <translation>Змея – 蛇</translation>
    </message>
    <message>
        <source>Horse – 馬</source>
        <translation>Лошадь – 馬</translation>
    </message>
    <message>
        <source>Goat – 羊</source>
        <translation>Коза – 羊</translation>
    </message>
    <message>
        <source>Monkey – 猴</source>
        <translation>Обезьяна – 猴</translation>
    </message>
    <message>
        <source>Rooster – 雞</source>
        <translation>Петух – 雞</translation>
    </message>
    <message>
        <source>Dog – 狗</source>
        <translation>Собака – 狗</translation>
    </message>
    <message>
        <source>Pig – 豬</source>
        <translation>Свинья – 豬</translation>
    </message>
    <message>
        <source>Metal - 金</source>
        <translation>Металл - 金</translation>
    </message>
    <message>
        <source>Water - 水</source>
        <translation>Вода - 水</translation>
    </message>
    <message>
        <source>Wood - 木</source>
        <translation>Дерево - 木</translation>
    </message>
    <message>
        <source>Fire - 火</source>
        <translation>Огонь - 火</translation>
    </message>
    <message>
        <source>Earth - 土</source>
        <translation>Земля - 土</translation>
    </message>
    <message>
        <source>Venus ♀</source>
        <translation>Венера ♀</translation>
    </message>
    <message>
        <source>Mercury ☿</source>
        <translation>Меркурий ☿</translation>
    </message>
    <message>
        <source>Jupiter ♃</source>
        <translation>Юпитер ♃</translation>
    </message>
    <message>
        <source>Mars ♂</source>
        <translation>Марс ♂</translation>
    </message>
    <message>
        <source>Saturn ♄</source>
        <translation>Сатурн ♄</translation>
    </message>
    <message>
        <source>Aquarius ♒︎</source>
        <translation>Водолей ♒︎</translation>
    </message>
    <message>
        <source>Pisces ♓︎</source>
        <translation>Рыбы ♓︎</translation>
    </message>
    <message>
        <source>Aries ♈︎</source>
        <translation>Овен ♈︎</translation>
    </message>
    <message>
        <source>Taurus ♉︎</source>
        <translation>Телец ♉︎</translation>
    </message>
    <message>
        <source>Gemini ♊︎</source>
        <translation>Близнецы ♊︎</translation>
    </message>
    <message>
        <source>Cancer ♋︎</source>
        <translation>Рак ♋︎</translation>
    </message>
    <message>
        <source>Leo ♌︎</source>
        <translation>Лев ♌︎</translation>
    </message>
    <message>
        <source>Virgo ♍︎</source>
        <translation>Дева ♍︎</translation>
    </message>
    <message>
        <source>Libra ♎︎</source>
        <translation>Весы ♎︎</translation>
    </message>
    <message>
        <source>Scorpio ♏︎</source>
        <translation>Скорпион ♏︎</translation>
    </message>
    <message>
        <source>Sagittarius ♐︎</source>
        <translation>Стрелец ♐︎</translation>
    </message>
    <message>
        <source>Capricorn ♑︎</source>
        <translation>Козерог ♑︎</translation>
    </message>
    <message>
        <source>Enter a Name</source>
        <translation>Введите имя</translation>
    </message>
    <message>
        <source>Add this birthday to favorites</source>
        <translation>Добавить этот день рождения</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отменить</translation>
    </message>
    <message>
        <source>Name for this birthday:</source>
        <translation>Имя: </translation>
    </message>
    <message>
        <source>has a birthday today!</source>
        <translation>отмечает сегодня день рождения!</translation>
    </message>
    <message>
        <source>is now</source>
        <translation>теперь</translation>
    </message>
    <message>
        <source>weeks old!</source>
        <translation>недель!</translation>
    </message>
    <message>
        <source>months old!</source>
        <translation>месяцев!</translation>
    </message>
    <message>
        <source>days old!</source>
        <translation>дней!</translation>
    </message>
    <message>
        <source>Days</source>
        <translation>дней</translation>
    </message>
    <message>
        <source>Months</source>
        <translation>месяцев</translation>
    </message>
    <message>
        <source>Years</source>
        <translation>лет</translation>
    </message>
    <message>
        <source>Your</source>
        <translation>Твой</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>назад</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>Избранные</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Редактировать</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Имя</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>Sort</source>
        <translation>Сортировать</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Show more details</source>
        <translation>Показать больше информации</translation>
    </message>
    <message>
        <source>Rate App</source>
        <translation>Оценить приложение</translation>
    </message>
    <message>
        <source>More Apps</source>
        <translation>Другие приложения</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>фон</translation>
    </message>
    <message>
        <source>Birthday Reminder</source>
        <translation>День рождения</translation>
    </message>
    <message>
        <source>Sort by name</source>
        <translation>Сортировать по имени</translation>
    </message>
    <message>
        <source>Sort by age</source>
        <translation>Сортировать по возрасту</translation>
    </message>
    <message>
        <source>Sort by birthday</source>
        <translation>Сортировать по дню рождения</translation>
    </message>
    <message>
        <source>Your</source>
        <comment>the report</comment>
        <translation>Твой</translation>
    </message>
    <message>
        <source>Select your date of birth</source>
        <translation>Выбери дату рождения</translation>
    </message>
    <message>
        <source>age is:</source>
        <translation>Возраст:</translation>
    </message>
    <message>
        <source>in months:</source>
        <translation>в месяцах:</translation>
    </message>
    <message>
        <source>in weeks:</source>
        <translation>в неделях:</translation>
    </message>
    <message>
        <source>in days:</source>
        <translation>в днях:</translation>
    </message>
    <message>
        <source>Zodiac sign: </source>
        <translation>Знак зодиака:</translation>
    </message>
    <message>
        <source>
Chinese zodiac: </source>
        <translation>
Восточный зодиак: </translation>
    </message>
    <message>
        <source>
Element: </source>
        <translation>
Стихия: </translation>
    </message>
    <message>
        <source>Planet:</source>
        <translation>Обитель:</translation>
    </message>
    <message>
        <source>next birthday: in</source>
        <translation>день рождения через</translation>
    </message>
    <message>
        <source>age</source>
        <extracomment>The short report: &quot;Anna&apos;s age&quot;, then a blank line and the lines below, each followed by its number</extracomment>
        <translation>
Возраст:</translation>
    </message>
    <message>
        <source>In years: </source>
        <extracomment>A line of the short report, followed by the number of years</extracomment>
        <translation>В годах: </translation>
    </message>
    <message>
        <source>In months: </source>
        <translation>В месяцах: </translation>
    </message>
    <message>
        <source>In days: </source>
        <translation>В днях: </translation>
    </message>
    <message>
        <source>Show weekday in table view</source>
        <translation>Показать день недели в таблице</translation>
    </message>
    <message>
        <source>Entries:</source>
        <translation>Записи:</translation>
    </message>
    <message>
        <source>Mark future birthdays ☆</source>
        <translation>Будущие дни рождения пометить ☆</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Вернуть</translation>
    </message>
    <message>
        <source>Deleted:</source>
        <translation>Удалено:</translation>
    </message>
    <message>
        <source>Clear text</source>
        <translation>Очистить текст</translation>
    </message>
    <message>
        <source>Your change could not be saved: %1</source>
        <translation>Не удалось сохранить изменение: %1</translation>
    </message>
    <message>
        <source>%1 has a birthday tomorrow</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1 отмечает день рождения завтра</translation>
    </message>
    <message numerus="yes">
        <source>%1 has a birthday in %n days</source>
        <extracomment>%1 the name, %n the number of days (2 or more; one day ahead says &quot;tomorrow&quot;)</extracomment>
        <translation>
            <numerusform>%1 отмечает день рождения через %n день</numerusform>
            <numerusform>%1 отмечает день рождения через %n дня</numerusform>
            <numerusform>%1 отмечает день рождения через %n дней</numerusform>
        </translation>
    </message>
    <message>
        <source>Reminders</source>
        <translation>Напоминания</translation>
    </message>
    <message>
        <source>On the day</source>
        <translation>В тот же день</translation>
    </message>
    <message>
        <source>1 day before</source>
        <translation>За 1 день</translation>
    </message>
    <message>
        <source>3 days before</source>
        <translation>За 3 дня</translation>
    </message>
    <message>
        <source>1 week before</source>
        <translation>За неделю</translation>
    </message>
    <message>
        <source>Reminder time</source>
        <translation>Время напоминания</translation>
    </message>
    <message>
        <source>How early</source>
        <translation>Насколько заранее</translation>
    </message>
    <message>
        <source>Earlier</source>
        <translation>Раньше</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Позже</translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <extracomment>The import summary joins its counts with &quot;, &quot; and names the reasons for skipping in brackets: &quot;8 added, 1 already there, 4 skipped (1 no birthday, ...)&quot;. %n how many favorites an import added</extracomment>
        <translation>
            <numerusform>добавлено: %n</numerusform>
            <numerusform>добавлено: %n</numerusform>
            <numerusform>добавлено: %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already there</source>
        <extracomment>%n how many were already favorites</extracomment>
        <translation>
            <numerusform>уже есть: %n</numerusform>
            <numerusform>уже есть: %n</numerusform>
            <numerusform>уже есть: %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped</source>
        <extracomment>%n how many were skipped</extracomment>
        <translation>
            <numerusform>пропущено: %n</numerusform>
            <numerusform>пропущено: %n</numerusform>
            <numerusform>пропущено: %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n no birthday</source>
        <extracomment>%n how many cards had no birthday</extracomment>
        <translation>
            <numerusform>без дня рождения: %n</numerusform>
            <numerusform>без дня рождения: %n</numerusform>
            <numerusform>без дня рождения: %n</numerusform>
        </translation>
    </message>
    <message>
        <source>no year</source>
        <extracomment>the year wheel&apos;s place for a birthday without a year</extracomment>
        <translation>без года</translation>
    </message>
    <message numerus="yes">
        <source>%n impossible date</source>
        <extracomment>%n how many birthdays were impossible dates</extracomment>
        <translation>
            <numerusform>несуществующая дата: %n</numerusform>
            <numerusform>несуществующая дата: %n</numerusform>
            <numerusform>несуществующая дата: %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n date in the future</source>
        <extracomment>%n how many birthdays lay in the future</extracomment>
        <translation>
            <numerusform>дата в будущем: %n</numerusform>
            <numerusform>дата в будущем: %n</numerusform>
            <numerusform>дата в будущем: %n</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n unreadable date</source>
        <extracomment>%n how many birthdays could not be read</extracomment>
        <translation>
            <numerusform>нечитаемая дата: %n</numerusform>
            <numerusform>нечитаемая дата: %n</numerusform>
            <numerusform>нечитаемая дата: %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Import a vCard file…</source>
        <translation>Импорт из файла vCard…</translation>
    </message>
    <message>
        <source>Import from contacts</source>
        <translation>Импорт из контактов</translation>
    </message>
    <message>
        <source>vCard files</source>
        <translation>Файлы vCard</translation>
    </message>
    <message>
        <source>This file is not a vCard file.</source>
        <translation>Этот файл не является файлом vCard.</translation>
    </message>
    <message>
        <source>This file ends in the middle of a card.</source>
        <translation>Файл обрывается посреди карточки.</translation>
    </message>
    <message>
        <source>This file is too large.</source>
        <translation>Этот файл слишком большой.</translation>
    </message>
    <message>
        <source>This file cannot be read.</source>
        <translation>Этот файл не удаётся прочитать.</translation>
    </message>
    <message>
        <source>Show birthdays in the calendar</source>
        <translation>Показывать дни рождения в календаре</translation>
    </message>
    <message>
        <source>%1&apos;s birthday</source>
        <translation>День рождения: %1</translation>
    </message>
    <message>
        <source>born %1</source>
        <translation>год рождения: %1</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>ОК</translation>
    </message>
    <message>
        <source>The saved settings were damaged. Tavlo kept every favorite it could read and keeps a copy of the damaged file.</source>
        <translation>Сохранённые настройки были повреждены. Tavlo сохранил всё избранное, что удалось прочитать, и хранит копию повреждённого файла.</translation>
    </message>
    <message>
        <source>Your saved birthdays cannot be read (%1). Nothing is saved until this is fixed.</source>
        <extracomment>%1 why, in the system&apos;s words</extracomment>
        <translation>Не удаётся прочитать сохранённые дни рождения (%1). Пока это не исправлено, ничего не сохраняется.</translation>
    </message>
    <message>
        <source>A favorite chosen for the main screen was incomplete and is not shown.</source>
        <translation>Выбранная для главного экрана запись была неполной и не показана.</translation>
    </message>
    <message numerus="yes">
        <source>Birthdays that cannot be read: %n. Fix or delete them in your favorites.</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Дни рождения, которые не удаётся прочитать: %n. Исправьте или удалите их в избранном.</numerusform>
            <numerusform>Дни рождения, которые не удаётся прочитать: %n. Исправьте или удалите их в избранном.</numerusform>
            <numerusform>Дни рождения, которые не удаётся прочитать: %n. Исправьте или удалите их в избранном.</numerusform>
        </translation>
    </message>
    <message>
        <source>Unreadable birthday</source>
        <translation>Нечитаемый день рождения</translation>
    </message>
    <message>
        <source>%1 birthday: %2</source>
        <extracomment>%1 whose (&quot;Anna&apos;s&quot;, &quot;Your&quot;), %2 the day and month</extracomment>
        <translation>%1
День рождения: %2</translation>
    </message>
    <message>
        <source>The year of birth is not known.</source>
        <translation>Год рождения неизвестен.</translation>
    </message>
    <message>
        <source>No favorites yet. To add someone, go back, turn the wheels to their date of birth and tap +. Or tap + above to import birthdays from a vCard file or your contacts.</source>
        <translation>Избранных пока нет. Чтобы добавить человека, вернитесь назад, выставьте на колёсах дату рождения и нажмите +. Или нажмите + вверху, чтобы импортировать дни рождения из файла vCard или из контактов.</translation>
    </message>
    <message>
        <source>No address book with contacts was found on this device.</source>
        <translation>На этом устройстве не найдено ни одной адресной книги с контактами.</translation>
    </message>
    <message>
        <source>No software centre is installed to open Tavlo&apos;s page. Install one, such as GNOME Software or KDE Discover, to rate Tavlo.</source>
        <translation>Не установлен центр приложений, который мог бы открыть страницу Tavlo. Установите его, например GNOME Software или KDE Discover, чтобы оценить Tavlo.</translation>
    </message>
    <message>
        <source>%1 deleted. Undo with Control+Z.</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1: удалено. Отменить: Ctrl+Z.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <extracomment>%1 the row, %2 how many</extracomment>
        <translation>%1 из %2</translation>
    </message>
    <message>
        <source>Import birthdays</source>
        <translation>Импорт дней рождения</translation>
    </message>
    <message>
        <source>Birthdays from contacts</source>
        <translation>Дни рождения из контактов</translation>
    </message>
    <message numerus="yes">
        <source>Up to date: %n birthdays from contacts</source>
        <extracomment>%n the number of favorites that follow contacts</extracomment>
        <translation>
            <numerusform>Актуально, из контактов: %n</numerusform>
            <numerusform>Актуально, из контактов: %n</numerusform>
            <numerusform>Актуально, из контактов: %n</numerusform>
        </translation>
    </message>
    <message>
        <source>Reading the address books…</source>
        <translation>Чтение адресных книг…</translation>
    </message>
    <message>
        <source>The address book service does not answer; its birthdays stay as they are.</source>
        <translation>Служба адресной книги не отвечает; её дни рождения остаются как есть.</translation>
    </message>
    <message>
        <source>The address book service stopped; its birthdays stay as they are until it is back.</source>
        <translation>Служба адресной книги остановилась; её дни рождения остаются как есть, пока она не вернётся.</translation>
    </message>
    <message>
        <source>The contacts folder %1 cannot be read; its birthdays stay as they are.</source>
        <extracomment>%1 the folder</extracomment>
        <translation>Папку контактов %1 не удаётся прочитать; её дни рождения остаются как есть.</translation>
    </message>
    <message>
        <source>The contacts file %1 cannot be read; its birthdays stay as they are.</source>
        <extracomment>%1 the file</extracomment>
        <translation>Файл контактов %1 не удаётся прочитать; его дни рождения остаются как есть.</translation>
    </message>
    <message>
        <source>The contacts file %1 is cut off; its birthdays stay as they are.</source>
        <extracomment>%1 the file</extracomment>
        <translation>Файл контактов %1 обрезан; его дни рождения остаются как есть.</translation>
    </message>
    <message>
        <source>A contact&apos;s birthday cannot be read (%1); its favorite stays as it is.</source>
        <extracomment>%1 the contact</extracomment>
        <translation>День рождения контакта не удаётся прочитать (%1); запись в избранном остаётся как есть.</translation>
    </message>
    <message>
        <source>Version %1</source>
        <extracomment>%1 the version number</extracomment>
        <translation>Версия %1</translation>
    </message>
    <message>
        <source>Second reminder</source>
        <translation>Второе напоминание</translation>
    </message>
    <message>
        <source>Off</source>
        <extracomment>the second reminder&apos;s choice of none</extracomment>
        <translation>Выкл.</translation>
    </message>
    <message>
        <source>Export to a vCard file…</source>
        <translation>Экспорт в файл vCard…</translation>
    </message>
    <message>
        <source>Export to a calendar file…</source>
        <translation>Экспорт в файл календаря…</translation>
    </message>
    <message>
        <source>iCalendar files</source>
        <translation>Файлы iCalendar</translation>
    </message>
    <message numerus="yes">
        <source>Birthdays saved: %n, in %1</source>
        <extracomment>%n how many, %1 the file</extracomment>
        <translation>
            <numerusform>Сохранено дней рождения: %n, в %1</numerusform>
            <numerusform>Сохранено дней рождения: %n, в %1</numerusform>
            <numerusform>Сохранено дней рождения: %n, в %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Left out, as their birthday cannot be read: %n</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Пропущено из-за нечитаемой даты рождения: %n</numerusform>
            <numerusform>Пропущено из-за нечитаемой даты рождения: %n</numerusform>
            <numerusform>Пропущено из-за нечитаемой даты рождения: %n</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 could not be saved. A file already there is as it was.</source>
        <extracomment>%1 the file</extracomment>
        <translation>Не удалось сохранить %1. Файл, который там уже был, не изменён.</translation>
    </message>
    <message>
        <source>The file chooser closed without a file. Nothing was changed.</source>
        <translation>Окно выбора файла закрылось без файла. Ничего не изменено.</translation>
    </message>
    <message>
        <source>Import or export birthdays</source>
        <translation>Импорт и экспорт дней рождения</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Открыть</translation>
    </message>
    <message>
        <source>Save</source>
        <comment>file dialog</comment>
        <translation>Сохранить</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Имя файла</translation>
    </message>
    <message>
        <source>Up one folder</source>
        <translation>На папку выше</translation>
    </message>
    <message>
        <source>%1 (conflict copy)</source>
        <extracomment>%1 the name; the local version kept beside the server&apos;s</extracomment>
        <translation>%1 (копия при конфликте)</translation>
    </message>
    <message>
        <source>App colors</source>
        <extracomment>The caption over the colour themes in the settings</extracomment>
        <translation>Цвета приложения</translation>
    </message>
    <message>
        <source>%1 has a birthday today!</source>
        <extracomment>%1 the name</extracomment>
        <translation>%1 отмечает сегодня день рождения!</translation>
    </message>
    <message>
        <source>Sync with CardDAV</source>
        <extracomment>The settings row that opens the sync account</extracomment>
        <translation>Синхронизация с CardDAV</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Адрес сервера</translation>
    </message>
    <message>
        <source>User name</source>
        <translation>Имя пользователя</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Пароль</translation>
    </message>
    <message>
        <source>Set up</source>
        <extracomment>The button that sets up the sync account</extracomment>
        <translation>Настроить</translation>
    </message>
    <message>
        <source>Sync now</source>
        <translation>Синхронизировать</translation>
    </message>
    <message>
        <source>Remove account</source>
        <translation>Удалить учётную запись</translation>
    </message>
    <message>
        <source>Not set up</source>
        <extracomment>The sync row&apos;s status without an account</extracomment>
        <translation>Не настроено</translation>
    </message>
    <message>
        <source>Syncing…</source>
        <translation>Синхронизация…</translation>
    </message>
    <message>
        <source>Not synced yet</source>
        <translation>Ещё не синхронизировано</translation>
    </message>
    <message>
        <source>Last sync: %1</source>
        <extracomment>%1 the date and time the last sync ended</extracomment>
        <translation>Последняя синхронизация: %1</translation>
    </message>
    <message>
        <source>The server could not be reached</source>
        <translation>Не удалось связаться с сервером</translation>
    </message>
    <message>
        <source>The server refused the user name or password</source>
        <translation>Сервер отклонил имя пользователя или пароль</translation>
    </message>
    <message>
        <source>No password store (Secret Service) is running</source>
        <translation>Хранилище паролей (Secret Service) не запущено</translation>
    </message>
    <message>
        <source>No CardDAV address book was found at this address</source>
        <translation>По этому адресу не найдена адресная книга CardDAV</translation>
    </message>
    <message>
        <source>The favorites could not be saved on this device</source>
        <translation>Не удалось сохранить избранное на этом устройстве</translation>
    </message>
    <message>
        <source>The sync did not finish: %1</source>
        <extracomment>%1 the problem in the system&apos;s words, in English</extracomment>
        <translation>Синхронизация не завершена: %1</translation>
    </message>
    <message>
        <source>No password is kept for this account: set it up again</source>
        <translation>Для этой учётной записи не сохранён пароль: настройте её заново</translation>
    </message>
</context>
</TS>
