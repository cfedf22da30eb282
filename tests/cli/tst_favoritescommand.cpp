// SPDX-License-Identifier: MIT
#include "CommandLineHarness.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
using Rows = QList<QStringList>;

QByteArray card(const QByteArray &lines)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n";
}
} // namespace

class TestFavoritesCommand : public QObject
{
    Q_OBJECT

    CommandLineHarness m_cli{at(2026, 11, 22, 12)};

    CommandRun tavlo(const QStringList &arguments, const QString &command = "favorites")
    {
        return m_cli.run(QStringList{command} + arguments);
    }
    QString file(const QString &name, const QByteArray &contents)
    {
        return m_cli.file(name, contents);
    }
    Rows stored() const { return m_cli.settings.value(SettingsKeys::favorites).value_or(Rows{}); }

private slots:
    void init()
    {
        m_cli.phoneContacts = {};
        m_cli.settings = MemorySettingsStore();
        m_cli.settings.set(SettingsKeys::favorites,
                           Rows{{" Anna ", "22 11 1985"}, {"Bob", "21 11 2000"}});
    }

    void lists()
    {
        CommandRun run = tavlo({"list"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, "0\t Anna \t22 11 1985\t41\tscorpio\t★\n"
                          "1\tBob\t21 11 2000\t26\tscorpio\t\n");
        run = tavlo({"list", "--json"});
        QCOMPARE(run.status, 0);
        const QStringList lines = run.out.split(u'\n');
        QCOMPARE(lines.size(), 3);
        QCOMPARE(QJsonDocument::fromJson(lines.at(0).toUtf8()).object(),
                 QJsonObject({{"index", 0},
                              {"name", " Anna "},
                              {"birthday", "22 11 1985"},
                              {"age", 41},
                              {"signKey", "scorpio"},
                              {"star", true}}));
        QCOMPARE(QJsonDocument::fromJson(lines.at(1).toUtf8()).object().value("star"), false);
    }

    void addsAsTheDialogDoesAndRemoves_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QStringList>("added");
        QTest::newRow("plain") << "Zoe"
                               << "2001-07-05" << QStringList{"Zoe", "5 7 2001"};
        QTest::newRow("blank name") << "   "
                                    << "2000-01-01" << QStringList{"Unknown", "1 1 2000"};
        QTest::newRow("shell characters kept")
            << "$(touch /tmp/x); '\""
            << "1999-12-31" << QStringList{"$(touch /tmp/x); '\"", "31 12 1999"};
    }
    void addsAsTheDialogDoesAndRemoves()
    {
        QFETCH(QString, name);
        QFETCH(QString, date);
        QFETCH(QStringList, added);
        QCOMPARE(tavlo({"add", name, date}).status, 0);
        QCOMPARE(stored(), (Rows{{" Anna ", "22 11 1985"}, {"Bob", "21 11 2000"}, added}));
        QCOMPARE(tavlo({"remove", "0"}).status, 0);
        QCOMPARE(stored(), (Rows{{"Bob", "21 11 2000"}, added}));
    }

    // One file that does not read stops the whole import.
    void importRefusesWhatDoesNotRead_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("named");
        QTest::newRow("missing file") << m_cli.files.filePath("none.vcf") << "none.vcf";
        QTest::newRow("no vCard") << file("notes.vcf", "Zoe 2001-07-05\n") << "not a vCard file";
        QTest::newRow("cut off") << file("cut.vcf", card("FN:Ann\r\n").repeated(3).chopped(12))
                                 << "cut off";
        QTest::newRow("folder") << m_cli.files.path() << m_cli.files.path();
    }
    void importRefusesWhatDoesNotRead()
    {
        QFETCH(QString, path);
        QFETCH(QString, named);
        const qsizetype writes = m_cli.settings.writeCount();
        const QString good = file("good.vcf", card("FN:Zoe\r\nBDAY:2001-07-05\r\n"));
        const CommandRun run = tavlo({"import", good, path});
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.contains(named), qPrintable(run.err));
        QCOMPARE(m_cli.settings.writeCount(), writes);
    }

    // Several files are one import, told in one line; a second import of the
    // same files adds nothing and writes nothing.
    void importsFilesOnce()
    {
        const QString first = file("first.vcf", card("FN:Cleo\r\nBDAY:19900101\r\n") +
                                                    card("N:Doe;Jane;;;\r\nBDAY:1985-03-12\r\n") +
                                                    card("FN:No Birthday\r\n") +
                                                    card("FN:Leap\r\nBDAY:1985-02-29\r\n"));
        const QString second = file(
            "own/second.vcard", card("FN: Anna \r\nBDAY;VALUE=date:1985-11-22\r\n") +
                                    card("FN:Dan\r\nBDAY:--0312\r\n") +
                                    card("FN:Eve\r\nBDAY;X-APPLE-OMIT-YEAR=1604:1604-03-12\r\n") +
                                    card("FN:Cleo\r\nBDAY:1990-01-01T00:00:00Z\r\n") +
                                    card("FN:Future\r\nBDAY:2030-01-01\r\n"));
        const QString skipped =
            " skipped (1 no birthday, 2 no birth year, 1 impossible date, 1 date in the future)\n";
        CommandRun run = tavlo({"import", first, second});
        QCOMPARE(run.err, QString());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, "tavlo: 2 added, 2 already there, 5" + skipped);
        const Rows after{{" Anna ", "22 11 1985"},
                         {"Bob", "21 11 2000"},
                         {"Cleo", "1 1 1990"},
                         {"Jane Doe", "12 3 1985"}};
        QCOMPARE(stored(), after);

        const qsizetype writes = m_cli.settings.writeCount();
        run = tavlo({"import", second, first});
        QCOMPARE(run.out, "tavlo: 0 added, 4 already there, 5" + skipped);
        QCOMPARE(m_cli.settings.writeCount(), writes);
        QCOMPARE(stored(), after);
    }

    // The phone's address books: the reader the platform gives, or else
    // Plasma Mobile's folder with its files one level down.
    void importsThePhonesContacts()
    {
        const QByteArray xdgData = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", m_cli.files.filePath("data").toUtf8());
        file("data/kpeoplevcard/a.vcf", card("FN:Folder Top\r\nBDAY:1970-05-06\r\n"));
        file("data/kpeoplevcard/own/b.vcard", card("FN:Folder Own\r\nBDAY:1971-05-06\r\n"));
        file("data/kpeoplevcard/own/deeper/c.vcf", card("FN:Too Deep\r\nBDAY:1972-05-06\r\n"));
        file("data/kpeoplevcard/notes.txt", card("FN:Not a vCard file\r\nBDAY:1973-05-06\r\n"));
        file("data/kpeoplevcard/broken.vcf", "garbage");
        CommandRun run = tavlo({"import", "--contacts"});
        qputenv("XDG_DATA_HOME", xdgData);
        QCOMPARE(run.out, "tavlo: 2 added, 0 already there, 0 skipped\n");
        QCOMPARE(stored().mid(2), (Rows{{"Folder Top", "6 5 1970"}, {"Folder Own", "6 5 1971"}}));

        m_cli.phoneContacts = [] {
            return PhoneContactsRead{{{"Folder Top", "1970-05-06"}, {"Service", "1999-09-09"}}, {}};
        };
        run = tavlo({"import", "--contacts"});
        QCOMPARE(run.out, "tavlo: 1 added, 1 already there, 0 skipped\n");
        QCOMPARE(stored().last(), (QStringList{"Service", "9 9 1999"}));
    }

    // Exported cards read back as the same favorites, names as stored.
    void exportReadsBackUnchanged()
    {
        QCOMPARE(tavlo({"add", "Doe, Jane; \\ Jr.\nII", "1984-02-29"}).status, 0);
        const Rows before = stored();
        const QString path = m_cli.files.filePath("export/favorites.vcf");
        CommandRun run = tavlo({"export", path});
        QCOMPARE(run.out + run.err, QString());
        QCOMPARE(run.status, 0);
        m_cli.settings.set(SettingsKeys::favorites, Rows{});
        QCOMPARE(tavlo({"import", path}).out, "tavlo: 3 added, 0 already there, 0 skipped\n");
        QCOMPARE(stored(), before);
        run = tavlo({"export", "-"});
        QVERIFY(run.out.startsWith("BEGIN:VCARD\r\nVERSION:4.0\r\n"));
        QCOMPARE(run.out.count("BEGIN:VCARD"), 3);
    }

    void calendarExport()
    {
        CommandRun run = tavlo({"export", "-", "--lang", "de"}, "calendar");
        QCOMPARE(run.status, 0);
        QVERIFY(run.out.startsWith("BEGIN:VCALENDAR\r\n"));
        QVERIFY(run.out.contains("SUMMARY:Geburtstag von Bob\r\nDESCRIPTION:geboren 2000\r\n"));
        QCOMPARE(tavlo({"export", m_cli.files.filePath("birthdays.ics")}, "calendar").status, 0);
        QFile written(m_cli.files.filePath("birthdays.ics"));
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.readAll().contains("SUMMARY:Bob's birthday\r\n"));
    }

    // A file that cannot be written: status 1, one line, nothing on standard
    // output.
    void unsavedFileSaysSo()
    {
        for (const QString &command : {QString("favorites"), QString("calendar")}) {
            const CommandRun run = tavlo({"export", "/dev/null/birthdays"}, command);
            QCOMPARE(run.status, 1);
            QCOMPARE(run.out, QString());
            QVERIFY2(run.err.startsWith("tavlo: could not save /dev/null/birthdays: "),
                     qPrintable(run.err));
            QCOMPARE(run.err.count(u'\n'), 1);
        }
    }
};

QTEST_GUILESS_MAIN(TestFavoritesCommand)
#include "tst_favoritescommand.moc"
