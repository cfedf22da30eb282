// SPDX-License-Identifier: MIT
#include "CommandLineHarness.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestReportCommand : public QObject
{
    Q_OBJECT

    CommandLineHarness m_cli{at(2026, 11, 22, 12)};

    CommandRun tavlo(const QStringList &arguments) { return m_cli.run(arguments); }

private slots:
    void init()
    {
        m_cli.settings = MemorySettingsStore();
        m_cli.preferred = {QStringLiteral("en-US")};
    }

    // Every command: status 2, one line naming what was wrong, nothing on
    // standard output and nothing written.
    void malformedArguments_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        // Arguments split at blanks; the tag is the command.
        const auto row = [](const QString &command, const QString &named) {
            QTest::newRow(qPrintable(command)) << command.split(u' ') << named;
        };
        row("report 1985-13-01", "1985-13-01");
        row("report 1985-04-31", "1985-04-31");
        row("report 1985-3-12", "1985-3-12");
        row("report 12.03.1985", "12.03.1985");
        row("report 0000-01-01", "0000-01-01");
        row("report 10000-01-01", "10000-01-01");
        row("report 1985-03-12T24:00", "T24:00");
        row("report 1985-03-12T23:60", "T23:60");
        row("report 1985-03-12T23:59:60", "T23:59:60");
        row("report 1985-03-12T10", "1985-03-12T10");
        row("report 1985-03-12T12:00:00.5", "12:00:00.5");
        row("report 1985-03-12T12:00Z", "12:00Z");
        row("report +1985-03-12", "+1985-03-12");
        QTest::newRow("trailing blank") << QStringList{"report", "1985-03-12 "} << "1985-03-12 ";
        row(u"report １９８５-03-12"_qs, u"１９８５"_qs);
        row(u"report ١٩٨٥-03-12"_qs, u"١٩٨٥"_qs);
        row("report 1985-03-12\n", "1985-03-12\\n");
        row("report \x1b[2J", "\\u001B[2J");
        row("report " + u"9"_qs.repeated(100000), u"9"_qs.repeated(100000));
        row("report ", "BIRTH \"\"");
        row("report 2026-03-29T02:30", "02:30"); // skipped by the clock change
        row("report 1985-03-12 tomorrow", "tomorrow");
        row("report --now 2026-02-30 1985-03-12", "--now");
        row("report 1985-03-12 --now", "now");
        row("report --now 2026-11-22 --now 2026-11-23 1985-03-12", "--now");
        row("report --lang fr 1985-03-12", "fr");
        row("report --lang EN 1985-03-12", "EN");
        row("report --lang= 1985-03-12", "--lang \"\"");
        row("report --details=yes 1985-03-12", "details");
        row("report --x\ny 1985-03-12", "x\\ny");
        row("report --details --short 1985-03-12", "--short");
        row("report --name A --name B 1985-03-12", "--name");
        row("report", "BIRTH");
        row("rep\x1bort", "rep\\u001Bort");
        row("favorites", "list");
        row("favorites rename", "rename");
        row("favorites li\nst", "li\\nst");
        row("favorites list --yaml", "--yaml");
        row("favorites list --json --json", "--json --json");
        row("favorites add Zoe", "YYYY-MM-DD");
        row("favorites add Zoe 2001-02-30", "2001-02-30");
        row("favorites add Zoe 2001-02-03T10:00", "T10:00");
        row("favorites add Zoe Lee 2001-02-03", "NAME");
        row("favorites remove 5", "5");
        row("favorites remove -1", "-1");
        row("favorites remove 99999999999999999999", "99999999999999999999");
        row("favorites remove 0x1", "0x1");
        QTest::newRow("leading blank") << QStringList{"favorites", "remove", " 1"} << "\" 1\"";
        row("favorites remove 0 1", "INDEX");
        row("favorites import", "FILE");
        row("favorites export a.vcf b.vcf", "FILE.vcf");
        row("calendar export", "FILE");
        row("calendar export - --lang fr", "fr");
        row("reminders --now 2026-02-30", "2026-02-30");
        row("reminders --now 2026-03-29T02:00", "02:00");
        row("reminders --now 2026-03-01 --now 2026-03-02", "--now");
        row("reminders --json=yes", "json");
        row("reminders Anna", "reminders: ");
    }
    void malformedArguments()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.startsWith(u"tavlo") && run.err.endsWith(u'\n') && run.err.contains(named),
                 qPrintable(run.err.left(300)));
        QCOMPARE(m_cli.settings.writeCount(), 0);
    }

    void textOutput()
    {
        const CommandRun run = tavlo({"report", "--now", "2026-11-22T12:00", "--details", "--name",
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
        m_cli.settings.set(SettingsKeys::moreDetails, stored);
        QStringList arguments{"report", "1985-03-12"};
        if (!option.isEmpty())
            arguments.append(option);
        const CommandRun run = tavlo(arguments);
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out.startsWith(u"Your age is: "), detailed);
        QCOMPARE(run.out.startsWith(u"Your age\n\nIn years: 41\n"), !detailed);
        QCOMPARE(run.out.endsWith(u"\nTuesday\n"), detailed);
    }

    void jsonLines()
    {
        const CommandRun run =
            tavlo({"report", "--json", "--lang", "de", "--now", "2026-11-22T12:00",
                   "1902-02-08T10:00", "1900-01-30", "2026-11-22T12:00"});
        QCOMPARE(run.status, 0);
        QList<QJsonObject> lines;
        for (const QString &line : run.out.split(u'\n'))
            lines.append(QJsonDocument::fromJson(line.toUtf8()).object());
        QCOMPARE(lines.size(), 4);
        QVERIFY(run.out.endsWith(u'\n'));

        const QJsonObject &tiger = lines[0];
        QCOMPARE(tiger.keys().size(), 20);
        QCOMPARE(tiger.value("animal").toString(), "Tiger – 虎");
        QCOMPARE(tiger.value("zodiacSign").toString(), "Wassermann ♒︎");
        QCOMPARE(tiger.value("signKey").toString(), "aquarius");
        QCOMPARE(tiger.value("birthDay").toInt(), 8);
        QCOMPARE(tiger.value("ageYears").toInt(), 124);
        QCOMPARE(tiger.value("display").toString(), tiger.value("short").toString());
        QCOMPARE(tiger.value("weekday").toString(), QString());
        QVERIFY(tiger.value("detailed").toString().startsWith(u"Dein Alter ist: 124 Jahre,"));

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
        QTest::addColumn<QStringList>("lang");
        QTest::addColumn<QString>("startsWith");
        QTest::newRow("device German")
            << QStringList{"de-CH"} << 0LL << QStringList() << "Dein Alter";
        QTest::newRow("stored Russian")
            << QStringList{"en-US"} << 2LL << QStringList() << "Твой \n";
        QTest::newRow("--lang wins")
            << QStringList{"de-CH"} << 2LL << QStringList{"--lang", "en"} << "Your age";
    }
    void languageDecision()
    {
        QFETCH(QStringList, preferred);
        QFETCH(qint64, stored);
        QFETCH(QStringList, lang);
        QFETCH(QString, startsWith);
        m_cli.preferred = preferred;
        m_cli.settings.set(SettingsKeys::preferredLanguage, stored);
        const qsizetype writes = m_cli.settings.writeCount();
        const CommandRun run = tavlo(QStringList{"report", "1985-03-12"} + lang);
        QCOMPARE(run.status, 0);
        QVERIFY2(run.out.startsWith(startsWith), qPrintable(run.out));
        QCOMPARE(m_cli.settings.writeCount(), writes);
    }

    void nowDefaultsToTheClock()
    {
        m_cli.clock.set(at(1985, 3, 13));
        const CommandRun run = tavlo({"report", "--short", "1985-03-12"});
        m_cli.clock.set(at(2026, 11, 22, 12));
        QCOMPARE(run.out, "Your age\n\nIn years: 0\nIn months: 0\nIn days: 1\n");
    }

    void help()
    {
        const QStringList commands{"report", "favorites", "reminders", "calendar"};
        for (const QStringList &arguments : {QStringList{"--help"}, QStringList{}}) {
            const CommandRun run = tavlo(arguments);
            QCOMPARE(run.status, 0);
            for (const QString &command : commands)
                QVERIFY2(run.out.contains(u"\n  "_qs + command + u' '), qPrintable(command));
        }
        const CommandRun run = tavlo({"report", "--help"});
        QCOMPARE(run.status, 0);
        for (const char *option : {"--now", "--lang", "--details", "--short", "--name", "--json"})
            QVERIFY2(run.out.contains(QLatin1String(option)), option);
        QVERIFY(tavlo({"reminders", "--help"}).out.startsWith(u"Usage: tavlo reminders"));
    }
};

QTEST_GUILESS_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"
