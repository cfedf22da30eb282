// SPDX-License-Identifier: MIT
#include "texts/UiStrings.h"

#include <QRegularExpression>
#include <QTest>

class TestUiStrings : public QObject
{
    Q_OBJECT

private slots:
    void exactTexts_data()
    {
        QTest::addColumn<UiText>("id");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("german");
        QTest::addColumn<QString>("russian");

        QTest::newRow("1 first animal") << UiText::Rat << "Rat – 鼠"
                                        << "Ratte – 鼠"
                                        << "Крыса – 鼠";
        QTest::newRow("6 leading blank in German") << UiText::Snake << "Snake – 蛇"
                                                   << " Schlange – 蛇"
                                                   << "Змея – 蛇";
        QTest::newRow("14 element with a hyphen") << UiText::Water << "Water - 水"
                                                  << "Wasser - 水"
                                                  << "Вода - 水";
        QTest::newRow("34 last sign") << UiText::Capricorn << "Capricorn ♑︎"
                                      << "Steinbock ♑︎"
                                      << "Козерог ♑︎";
        QTest::newRow("38 trailing blanks differ")
            << UiText::NameForThisBirthday << "Name for this birthday:"
            << "Name für: "
            << "Имя: ";
        QTest::newRow("47") << UiText::Your << "Your"
                            << "Dein"
                            << "Твой";
        QTest::newRow("48") << UiText::Done << "Done"
                            << "Zurück"
                            << "назад";
        QTest::newRow("63") << UiText::ReportYour << "Your"
                            << "Dein"
                            << "Твой";
        QTest::newRow("64") << UiText::SelectYourDateOfBirth << "Select your date of birth"
                            << "Wähle dein Geburtsdatum"
                            << "Выбери дату рождения";
        QTest::newRow("70 leading line feed") << UiText::ChineseZodiacLabel << "\nChinese zodiac: "
                                              << "\nTierkreiszeichen: "
                                              << "\nВосточный зодиак: ";
        QTest::newRow("72") << UiText::PlanetLabel << "Planet:"
                            << "Planet: "
                            << "Обитель:";
        QTest::newRow("74 Russian begins with a line feed") << UiText::Age << "age"
                                                            << "Alter"
                                                            << "\nВозраст:";
        QTest::newRow("80 last") << UiText::MarkFutureBirthdays << "Mark future birthdays ☆"
                                 << "Zukünftige Geburtstage markieren ☆"
                                 << "Будущие дни рождения пометить ☆";
    }
    void exactTexts()
    {
        QFETCH(UiText, id);
        QFETCH(QString, english);
        QFETCH(QString, german);
        QFETCH(QString, russian);
        UiStrings strings;
        QCOMPARE(strings[id], english);
        strings.apply(Language::German);
        QCOMPARE(strings[id], german);
        strings.apply(Language::Russian);
        QCOMPARE(strings[id], russian);
        QCOMPARE(UiStrings::english(id), english);
    }

    void englishDoesNotComeBackInTheSameRun()
    {
        UiStrings strings;
        strings.apply(Language::English);
        QCOMPARE(strings[UiText::Settings], "Settings");
        strings.apply(Language::Russian);
        strings.apply(Language::English);
        QCOMPARE(strings[UiText::Settings], "Настройки");
        strings.apply(Language::German);
        QCOMPARE(strings[UiText::Settings], "Einstellungen");
    }

    // Every animal, element, planet and sign keeps its form in all three
    // languages: name, blank, separator, blank, the same character or symbol.
    void resultTextsKeepTheirForm()
    {
        const QRegularExpression animal(QStringLiteral("^ ?\\S+ – (\\S)$"));
        const QRegularExpression element(QStringLiteral("^\\S+ - (\\S)$"));
        const QRegularExpression planet(QStringLiteral("^\\S+ (\\S)$"));
        const QRegularExpression sign(QStringLiteral("^\\S+ (\\S\\x{FE0E})$"));
        struct Group
        {
            UiText first;
            int count;
            const QRegularExpression &form;
        };
        const Group groups[] = {{UiText::Rat, 12, animal},
                                {UiText::Metal, 5, element},
                                {UiText::Venus, 5, planet},
                                {UiText::Aquarius, 12, sign}};
        UiStrings german;
        german.apply(Language::German);
        UiStrings russian;
        russian.apply(Language::Russian);
        for (const Group &g : groups) {
            for (int i = 0; i < g.count; ++i) {
                const auto id = static_cast<UiText>(static_cast<int>(g.first) + i);
                const QRegularExpressionMatch en = g.form.match(UiStrings::english(id));
                QVERIFY2(en.hasMatch(), qPrintable(UiStrings::english(id)));
                for (const QString &text : {german[id], russian[id]}) {
                    const QRegularExpressionMatch m = g.form.match(text);
                    QVERIFY2(m.hasMatch(), qPrintable(text));
                    QCOMPARE(m.captured(1), en.captured(1));
                }
            }
        }
    }

    void daysLeftBeforeABirthday_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<int>("days");
        QTest::addColumn<QString>("text");
        QTest::newRow("en 1") << int(Language::English) << 1 << "Anna has a birthday tomorrow";
        QTest::newRow("en 3") << int(Language::English) << 3 << "Anna has a birthday in 3 days";
        QTest::newRow("de 1") << int(Language::German) << 1 << "Anna hat morgen Geburtstag";
        QTest::newRow("de 7") << int(Language::German) << 7 << "Anna hat in 7 Tagen Geburtstag";
        QTest::newRow("ru 1") << int(Language::Russian) << 1
                              << "Anna отмечает день рождения завтра";
        QTest::newRow("ru 3") << int(Language::Russian) << 3
                              << "Anna отмечает день рождения через 3 дня";
        QTest::newRow("ru 7") << int(Language::Russian) << 7
                              << "Anna отмечает день рождения через 7 дней";
        QTest::newRow("ru 21") << int(Language::Russian) << 21
                               << "Anna отмечает день рождения через 21 день";
    }
    void daysLeftBeforeABirthday()
    {
        QFETCH(int, language);
        QFETCH(int, days);
        UiStrings strings;
        strings.apply(Language(language));
        QTEST(strings.birthdayInDays(QStringLiteral("Anna"), days), "text");
    }

    void translatesEnglishResultTexts()
    {
        UiStrings strings;
        strings.apply(Language::German);
        QCOMPARE(strings.translated(QStringLiteral("Aquarius ♒︎")), "Wassermann ♒︎");
        QCOMPARE(strings.translated(QStringLiteral("Mercury ☿")), "Merkur ☿");
        QCOMPARE(strings.translated(QStringLiteral("Unknown")), "Unknown");
        QCOMPARE(strings.translated(QStringLiteral("Aquarius")), "Aquarius");
    }
};

QTEST_GUILESS_MAIN(TestUiStrings)
#include "tst_uistrings.moc"
