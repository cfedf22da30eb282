// SPDX-License-Identifier: MIT
#include "TimeZoneScope.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

struct Run
{
    int status = -1;
    QString out;
    QString err;
};

} // namespace

class TestReportCommand : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    MemorySettingsStore m_settings;
    QStringList m_preferred{QStringLiteral("en-US")};
    FixedClock m_clock{QDateTime(QDate(2026, 11, 22), QTime(12, 0))};

    Run tavlo(const QStringList &arguments)
    {
        Run run;
        QTextStream out(&run.out);
        QTextStream err(&run.err);
        CommandContext context{m_settings, m_preferred, m_clock, out, err};
        run.status = runCommandLine(QStringList{QStringLiteral("tavlo")} + arguments, context);
        return run;
    }

    static QList<QJsonObject> jsonLines(const QString &out)
    {
        QList<QJsonObject> objects;
        for (const QString &line : out.split(u'\n', Qt::SkipEmptyParts))
            objects.append(QJsonDocument::fromJson(line.toUtf8()).object());
        return objects;
    }

private slots:
    void init()
    {
        m_settings = MemorySettingsStore();
        m_preferred = {QStringLiteral("en-US")};
    }

    void malformedInput_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named"); // the message must name this

        QTest::newRow("month 13") << QStringList{"report", "1985-13-01"} << "1985-13-01";
        QTest::newRow("31 April") << QStringList{"report", "1985-04-31"} << "1985-04-31";
        QTest::newRow("one-digit month") << QStringList{"report", "1985-3-12"} << "1985-3-12";
        QTest::newRow("dotted date") << QStringList{"report", "12.03.1985"} << "12.03.1985";
        QTest::newRow("hour 25") << QStringList{"report", "1985-03-12T25:00"} << "1985-03-12T25:00";
        QTest::newRow("time without minutes")
            << QStringList{"report", "1985-03-12T10"} << "1985-03-12T10";
        QTest::newRow("skipped by the clock change")
            << QStringList{"report", "2026-03-29T02:30"} << "2026-03-29T02:30";
        QTest::newRow("second birth malformed")
            << QStringList{"report", "1985-03-12", "tomorrow"} << "tomorrow";
        QTest::newRow("bad --now")
            << QStringList{"report", "--now", "2026-02-30", "1985-03-12"} << "--now";
        QTest::newRow("--now without value")
            << QStringList{"report", "1985-03-12", "--now"} << "now";
        QTest::newRow("unknown language")
            << QStringList{"report", "--lang", "fr", "1985-03-12"} << "fr";
        QTest::newRow("unknown option")
            << QStringList{"report", "--frobnicate", "1985-03-12"} << "frobnicate";
        QTest::newRow("details and short")
            << QStringList{"report", "--details", "--short", "1985-03-12"} << "--short";
        QTest::newRow("two names")
            << QStringList{"report", "--name", "A", "--name", "B", "1985-03-12"} << "--name";
        QTest::newRow("no birth") << QStringList{"report"} << "BIRTH";
        QTest::newRow("unknown command") << QStringList{"reprot", "1985-03-12"} << "reprot";
    }
    void malformedInput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const Run run = tavlo(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY(run.err.endsWith(u'\n'));
        QVERIFY2(run.err.contains(named), qPrintable(run.err));
        QCOMPARE(m_settings.writeCount(), 0);
    }

    void textOutput()
    {
        const Run run = tavlo({"report", "--now", "2026-11-22T12:00", "--details", "--name",
                               "Anna. ", "1985-03-12T08:30", "2030-01-01"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.err, QString());
        QCOMPARE(run.out, "Anna's age is: 41 Years,\n 8 Months & 10 Days\n\n"
                          "in months: 500\nin weeks: 2175\nin days: 15230\n\n"
                          "Zodiac sign: Pisces ♓︎\nChinese zodiac: Ox – 牛\n"
                          "Element: Yin  Wood - 木\nPlanet: Jupiter ♃\n"
                          "next birthday: in 110 days\nTuesday\n"
                          "\n"
                          "Select your date of birth\n\n");
    }

    void detailsFollowTheStoredSettingUnlessChosen_data()
    {
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QString>("option");
        QTest::addColumn<bool>("detailed");
        QTest::newRow("fresh install") << false << "" << false;
        QTest::newRow("stored on") << true << "" << true;
        QTest::newRow("stored on, --short") << true << "--short" << false;
        QTest::newRow("stored off, --details") << false << "--details" << true;
    }
    void detailsFollowTheStoredSettingUnlessChosen()
    {
        QFETCH(bool, stored);
        QFETCH(QString, option);
        QFETCH(bool, detailed);
        m_settings.set(SettingsKeys::moreDetails, stored);
        QStringList arguments{"report", "1985-03-12"};
        if (!option.isEmpty())
            arguments.append(option);
        const Run run = tavlo(arguments);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out.startsWith(u"Your age is: "), detailed);
        QCOMPARE(run.out.startsWith(u"Your age\n\nIn years: 41\n"), !detailed);
        QCOMPARE(run.out.endsWith(u"\nTuesday\n"), detailed);
    }

    void jsonLines()
    {
        const Run run = tavlo({"report", "--json", "--lang", "de", "--now", "2026-11-22T12:00",
                               "1902-02-08T10:00", "1900-01-30", "2026-11-22T12:00"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out.count(u'\n'), 3);
        const QList<QJsonObject> lines = jsonLines(run.out);
        QCOMPARE(lines.size(), 3);

        const QJsonObject &tiger = lines[0];
        QCOMPARE(tiger.keys().size(), 20);
        QCOMPARE(tiger.value("animal").toString(), "Tiger – 虎");
        QCOMPARE(tiger.value("element").toString(), "Wasser - 水");
        QCOMPARE(tiger.value("yinYang").toString(), "Yang");
        QCOMPARE(tiger.value("planet").toString(), "Merkur ☿");
        QCOMPARE(tiger.value("zodiacSign").toString(), "Wassermann ♒︎");
        QCOMPARE(tiger.value("signKey").toString(), "aquarius");
        QCOMPARE(tiger.value("starImage").toString(), "aquariusStars");
        QCOMPARE(tiger.value("birthDay").toInt(), 8);
        QCOMPARE(tiger.value("birthMonth").toInt(), 2);
        QCOMPARE(tiger.value("ageYears").toInt(), 124);
        QCOMPARE(tiger.value("display").toString(), tiger.value("short").toString());
        QCOMPARE(tiger.value("weekday").toString(), QString());
        QVERIFY(tiger.value("detailed").toString().startsWith(u"Dein Alter ist: 124 Jahre,"));

        // Before the table: animal and element unknown, polarity and planet carried over.
        const QJsonObject &before = lines[1];
        QCOMPARE(before.value("animal").toString(), "Unknown");
        QCOMPARE(before.value("element").toString(), "Unknow");
        QCOMPARE(before.value("yinYang").toString(), "Yang");
        QCOMPARE(before.value("planet").toString(), "Merkur ☿");
        QVERIFY(!before.value("detailed").toString().contains(u"Tierkreiszeichen"));

        // At the moment of "now": the prompt, nothing computed.
        QCOMPARE(lines[2], QJsonObject({{"display", "Wähle dein Geburtsdatum"}, {"weekday", ""}}));

        // Keys come in a fixed order.
        QVERIFY(run.out.startsWith(u"{\"display\":\"Dein Alter\\n\\nIn Jahren: 124\\n"));
        QVERIFY(run.out.contains(u"\"birthDay\":8,\"birthMonth\":2}\n"));
    }

    void languageDecision_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<qint64>("stored");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("startsWith");
        QTest::newRow("device German") << QStringList{"de-CH"} << 0LL << ""
                                       << "Dein Alter";
        QTest::newRow("device French") << QStringList{"fr-FR"} << 0LL << ""
                                       << "Your age";
        QTest::newRow("stored Russian") << QStringList{"en-US"} << 2LL << ""
                                        << "Твой \n";
        QTest::newRow("stored German over Russian device") << QStringList{"ru"} << 1LL << ""
                                                           << "Dein Alter";
        QTest::newRow("--lang wins") << QStringList{"de-CH"} << 2LL << "en"
                                     << "Your age";
    }
    void languageDecision()
    {
        QFETCH(QStringList, preferred);
        QFETCH(qint64, stored);
        QFETCH(QString, lang);
        QFETCH(QString, startsWith);
        m_preferred = preferred;
        m_settings.set(SettingsKeys::preferredLanguage, stored);
        const qsizetype writes = m_settings.writeCount();
        QStringList arguments{"report", "1985-03-12"};
        if (!lang.isEmpty())
            arguments << "--lang" << lang;
        const Run run = tavlo(arguments);
        QCOMPARE(run.status, 0);
        QVERIFY2(run.out.startsWith(startsWith), qPrintable(run.out));
        QCOMPARE(m_settings.writeCount(), writes);
    }

    void russianNameHasNoPossessive()
    {
        const Run run = tavlo({"report", "--lang", "ru", "--name", "Анна..", "1985-03-12"});
        QVERIFY2(run.out.startsWith(u"Анна \nВозраст:\n\n"), qPrintable(run.out));
    }

    void nowDefaultsToTheClock()
    {
        m_clock.set(QDateTime(QDate(1985, 3, 13), QTime(0, 0)));
        const Run run = tavlo({"report", "--short", "1985-03-12"});
        QCOMPARE(run.out, "Your age\n\nIn years: 0\nIn months: 0\nIn days: 1\n");
        m_clock.set(QDateTime(QDate(2026, 11, 22), QTime(12, 0)));
    }

    void help()
    {
        for (const QStringList &arguments : {QStringList{"--help"}, QStringList{}}) {
            const Run run = tavlo(arguments);
            QCOMPARE(run.status, 0);
            QVERIFY(run.out.contains(u"report"));
        }
        const Run run = tavlo({"report", "--help"});
        QCOMPARE(run.status, 0);
        for (const char *option : {"--now", "--lang", "--details", "--short", "--name", "--json"})
            QVERIFY2(run.out.contains(QLatin1String(option)), option);
    }
};

QTEST_GUILESS_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"
