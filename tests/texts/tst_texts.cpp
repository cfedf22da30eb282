// SPDX-License-Identifier: MIT
#include "texts/Language.h"
#include "texts/Translations.h"
#include "texts/UiStrings.h"

#include <QRegularExpression>
#include <QTest>

class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    void decide_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<qint64>("override");
        QTest::addColumn<QString>("language");

        QTest::newRow("de-CH") << QStringList{"de-CH", "en"} << 0LL << "de";
        QTest::newRow("fr-FR") << QStringList{"fr-FR", "de"} << 0LL << "en";
        QTest::newRow("ru") << QStringList{"ru"} << 0LL << "ru";
        QTest::newRow("only the first entry counts") << QStringList{"en-US", "de"} << 0LL << "en";
        QTest::newRow("ru, override 1") << QStringList{"ru"} << 1LL << "de";
        QTest::newRow("en-US, override 2") << QStringList{"en-US"} << 2LL << "ru";
        QTest::newRow("de-AT, override 3") << QStringList{"de-AT"} << 3LL << "en";
        QTest::newRow("ru, override 4") << QStringList{"ru"} << 4LL << "ru";
        QTest::newRow("de, override -1") << QStringList{"de"} << -1LL << "de";
        QTest::newRow("script and region") << QStringList{"zh-Hans-CN"} << 0LL << "en";
        QTest::newRow("underscore form") << QStringList{"de_DE"} << 0LL << "de";
        QTest::newRow("nothing preferred") << QStringList{} << 0LL << "en";
        QTest::newRow("one letter") << QStringList{"d"} << 0LL << "en";
    }
    void decide()
    {
        QFETCH(QStringList, preferred);
        QFETCH(qint64, override);
        QFETCH(QString, language);
        const LanguageDecision decision = decideLanguage(preferred, override);
        QCOMPARE(languageCode(decision.language), language);
        QCOMPARE(decision.override, override);
    }

    // Russian takes its three forms from Qt's plural rule; a negative count
    // (a date to come) takes the form of its size.
    void words_data()
    {
        QTest::addColumn<qint64>("number");
        QTest::addColumn<QStringList>("words"); // years, months, days
        const QList<std::pair<QList<qint64>, QStringList>> forms = {
            {{1, 21, 31, 101, 121, 1001, -1, -21}, {"год", "месяц", "день"}},
            {{2, 3, 4, 22, 23, 24, 102, 1004, -3}, {"года", "месяца", "дня"}},
            {{0,  5,  9,   10,  11,  12,  13,  14,  15,   19, 20,
              25, 30, 100, 111, 112, 113, 114, 211, 1000, -7, -11},
             {"лет", "месяцев", "дней"}}};
        for (const auto &[numbers, words] : forms) {
            for (const qint64 n : numbers)
                QTest::addRow("%lld", n) << n << words;
        }
    }
    void words()
    {
        QFETCH(qint64, number);
        QFETCH(QStringList, words);
        const Translations &russian = Translations::of(Language::Russian);
        const QString n = QString::number(number) + u' ';
        QCOMPARE(russian.translate("ReportComposer", "%n %1", "years", number), n + words[0]);
        QCOMPARE(russian.translate("ReportComposer", "%n %1", "months", number), n + words[1]);
        QCOMPARE(russian.translate("ReportComposer", "%n %1", "days", number), n + words[2]);
    }

    // Texts whose blanks, line feeds and separators are part of them.
    void exactTexts_data()
    {
        QTest::addColumn<UiText>("id");
        QTest::addColumn<QStringList>("texts"); // English, German, Russian
        QTest::newRow("leading blank in German")
            << UiText::Snake << QStringList{"Snake – 蛇", " Schlange – 蛇", "Змея – 蛇"};
        QTest::newRow("trailing blanks differ")
            << UiText::NameForThisBirthday
            << QStringList{"Name for this birthday:", "Name für: ", "Имя: "};
        QTest::newRow("blank after the German only")
            << UiText::PlanetLabel << QStringList{"Planet:", "Planet: ", "Обитель:"};
        QTest::newRow("done goes back") << UiText::Done << QStringList{"Done", "Zurück", "назад"};
        QTest::newRow("leading line feed")
            << UiText::ChineseZodiacLabel
            << QStringList{"\nChinese zodiac: ", "\nTierkreiszeichen: ", "\nВосточный зодиак: "};
        QTest::newRow("Russian begins with a line feed")
            << UiText::Age << QStringList{"age", "Alter", "\nВозраст:"};
    }
    void exactTexts()
    {
        QFETCH(UiText, id);
        QFETCH(QStringList, texts);
        UiStrings strings;
        QCOMPARE(strings[id], texts[0]);
        QCOMPARE(UiStrings::english(id), texts[0]);
        strings.apply(Language::German);
        QCOMPARE(strings[id], texts[1]);
        strings.apply(Language::Russian);
        QCOMPARE(strings[id], texts[2]);
    }

    void everyTextInEveryLanguage()
    {
        UiStrings german, russian;
        german.apply(Language::German);
        russian.apply(Language::Russian);
        for (int i = 0; i < UiTextCount; ++i) {
            const auto id = static_cast<UiText>(i);
            QVERIFY2(!UiStrings::english(id).trimmed().isEmpty() &&
                         !german[id].trimmed().isEmpty() && !russian[id].trimmed().isEmpty(),
                     qPrintable(QString::number(i)));
        }
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
        const std::tuple<UiText, int, QRegularExpression> groups[] = {
            {UiText::Rat, 12, QRegularExpression(u"^ ?\\S+ – (\\S)$"_qs)},
            {UiText::Metal, 5, QRegularExpression(u"^\\S+ - (\\S)$"_qs)},
            {UiText::Venus, 5, QRegularExpression(u"^\\S+ (\\S)$"_qs)},
            {UiText::Aquarius, 12, QRegularExpression(u"^\\S+ (\\S\\x{FE0E})$"_qs)}};
        UiStrings german, russian;
        german.apply(Language::German);
        russian.apply(Language::Russian);
        for (const auto &[first, count, form] : groups) {
            for (int i = 0; i < count; ++i) {
                const auto id = static_cast<UiText>(static_cast<int>(first) + i);
                const QRegularExpressionMatch en = form.match(UiStrings::english(id));
                QVERIFY2(en.hasMatch(), qPrintable(UiStrings::english(id)));
                for (const QString &text : {german[id], russian[id]}) {
                    const QRegularExpressionMatch m = form.match(text);
                    QVERIFY2(m.hasMatch(), qPrintable(text));
                    QCOMPARE(m.captured(1), en.captured(1));
                }
            }
        }
    }

    void daysLeftBeforeABirthday_data()
    {
        QTest::addColumn<Language>("language");
        QTest::addColumn<int>("days");
        QTest::addColumn<QString>("text");
        QTest::newRow("en 2") << Language::English << 2 << "Anna has a birthday in 2 days";
        QTest::newRow("de 1") << Language::German << 1 << "Anna hat morgen Geburtstag";
        QTest::newRow("de 7") << Language::German << 7 << "Anna hat in 7 Tagen Geburtstag";
        QTest::newRow("ru 1") << Language::Russian << 1 << "Anna отмечает день рождения завтра";
        QTest::newRow("ru 3") << Language::Russian << 3
                              << "Anna отмечает день рождения через 3 дня";
        QTest::newRow("ru 7") << Language::Russian << 7
                              << "Anna отмечает день рождения через 7 дней";
        QTest::newRow("ru 21") << Language::Russian << 21
                               << "Anna отмечает день рождения через 21 день";
        QTest::newRow("a name with a placeholder")
            << Language::Russian << 3 << "%1 отмечает день рождения через 3 дня";
    }
    void daysLeftBeforeABirthday()
    {
        QFETCH(Language, language);
        QFETCH(int, days);
        QFETCH(QString, text);
        UiStrings strings;
        strings.apply(language);
        const QString name = text.startsWith(u'%') ? QStringLiteral("%1") : QStringLiteral("Anna");
        QCOMPARE(strings.birthdayInDays(name, days), text);
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

QTEST_GUILESS_MAIN(TestTexts)
#include "tst_texts.moc"
