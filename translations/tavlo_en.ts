<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>BirthdayGreeting</name>
    <message numerus="yes">
        <source>%1 is now %n days old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the days (100, 1000, ...)</extracomment>
        <translation>
            <numerusform>%1 is now %n day old!</numerusform>
            <numerusform>%1 is now %n days old!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n months old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the months (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 is now %n month old!</numerusform>
            <numerusform>%1 is now %n months old!</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 is now %n weeks old!</source>
        <extracomment>A greeting on a round age: %1 the name, %n the weeks (10, 50, 100, ...)</extracomment>
        <translation>
            <numerusform>%1 is now %n week old!</numerusform>
            <numerusform>%1 is now %n weeks old!</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReportComposer</name>
    <message numerus="yes">
        <source>next birthday: in %n day(s)</source>
        <extracomment>%n the days to the next birthday (1 or more)</extracomment>
        <translation>
            <numerusform>next birthday: in %n day</numerusform>
            <numerusform>next birthday: in %n days</numerusform>
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
</context>
<context>
    <name>UiStrings</name>
    <message numerus="yes">
        <source>%1 has a birthday in %n days</source>
        <extracomment>%1 the name, %n the number of days (2 or more; one day ahead says &quot;tomorrow&quot;)</extracomment>
        <translation>
            <numerusform>%1 has a birthday in %n day</numerusform>
            <numerusform>%1 has a birthday in %n days</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n added</source>
        <extracomment>The import summary joins its counts with &quot;, &quot; and names the reasons for skipping in brackets: &quot;8 added, 1 already there, 4 skipped (1 no birthday, ...)&quot;. %n how many favorites an import added</extracomment>
        <translation>
            <numerusform>%n added</numerusform>
            <numerusform>%n added</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n already there</source>
        <extracomment>%n how many were already favorites</extracomment>
        <translation>
            <numerusform>%n already there</numerusform>
            <numerusform>%n already there</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n skipped</source>
        <extracomment>%n how many were skipped</extracomment>
        <translation>
            <numerusform>%n skipped</numerusform>
            <numerusform>%n skipped</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n no birthday</source>
        <extracomment>%n how many cards had no birthday</extracomment>
        <translation>
            <numerusform>%n no birthday</numerusform>
            <numerusform>%n no birthday</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n impossible date</source>
        <extracomment>%n how many birthdays were impossible dates</extracomment>
        <translation>
            <numerusform>%n impossible date</numerusform>
            <numerusform>%n impossible date</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n date in the future</source>
        <extracomment>%n how many birthdays lay in the future</extracomment>
        <translation>
            <numerusform>%n date in the future</numerusform>
            <numerusform>%n date in the future</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n unreadable date</source>
        <extracomment>%n how many birthdays could not be read</extracomment>
        <translation>
            <numerusform>%n unreadable date</numerusform>
            <numerusform>%n unreadable date</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Birthdays that cannot be read: %n. Fix or delete them in your favorites.</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Birthdays that cannot be read: %n. Fix or delete them in your favorites.</numerusform>
            <numerusform>Birthdays that cannot be read: %n. Fix or delete them in your favorites.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Up to date: %n birthdays from contacts</source>
        <extracomment>%n the number of favorites that follow contacts</extracomment>
        <translation>
            <numerusform>Up to date: %n birthdays from contacts</numerusform>
            <numerusform>Up to date: %n birthdays from contacts</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Birthdays saved: %n, in %1</source>
        <extracomment>%n how many, %1 the file</extracomment>
        <translation>
            <numerusform>Birthdays saved: %n, in %1</numerusform>
            <numerusform>Birthdays saved: %n, in %1</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Left out, as their birthday cannot be read: %n</source>
        <extracomment>%n how many</extracomment>
        <translation>
            <numerusform>Left out, as their birthday cannot be read: %n</numerusform>
            <numerusform>Left out, as their birthday cannot be read: %n</numerusform>
        </translation>
    </message>
</context>
</TS>
