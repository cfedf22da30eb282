#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
using Rows = QList<QStringList>;

struct Run
{
    int status = -1;
    QString out;
    QString err;
};
} // namespace

class TestFavoritesCommand : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    MemorySettingsStore m_settings;
    FixedClock m_clock{at(2026, 11, 22, 12)};

    Run tavlo(const QStringList &arguments)
    {
        Run run;
        QTextStream out(&run.out);
        QTextStream err(&run.err);
        CommandContext context{m_settings, {QStringLiteral("en-US")}, m_clock, out, err};
        run.status = runCommandLine(QStringList{"tavlo", "favorites"} + arguments, context);
        return run;
    }

    Rows stored() const { return m_settings.value(SettingsKeys::favorites).value_or(Rows{}); }

private slots:
    void init()
    {
        m_settings = MemorySettingsStore();
        m_settings.set(SettingsKeys::favorites,
                       Rows{{" Anna ", "22 11 1985"}, {"Bob", "21 11 2000"}});
    }

    void listsInStoredOrder()
    {
        const Run run = tavlo({"list"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, "0\t Anna \t22 11 1985\t41\tscorpio\t★\n"
                          "1\tBob\t21 11 2000\t26\tscorpio\t\n");
    }

    void listsAsJsonLines()
    {
        const Run run = tavlo({"list", "--json"});
        QCOMPARE(run.status, 0);
        const QStringList lines = run.out.split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        const QJsonObject anna = QJsonDocument::fromJson(lines.at(0).toUtf8()).object();
        QCOMPARE(anna, QJsonObject({{"index", 0},
                                    {"name", " Anna "},
                                    {"birthday", "22 11 1985"},
                                    {"age", 41},
                                    {"signKey", "scorpio"},
                                    {"star", true}}));
        QCOMPARE(QJsonDocument::fromJson(lines.at(1).toUtf8()).object().value("star"), false);
    }

    void addsAsTheDialogDoes_data()
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
    void addsAsTheDialogDoes()
    {
        QFETCH(QString, name);
        QFETCH(QString, date);
        QFETCH(QStringList, added);
        const Run run = tavlo({"add", name, date});
        QCOMPARE(run.status, 0);
        QCOMPARE(stored().size(), 3);
        QCOMPARE(stored().last(), added);
    }

    void removes()
    {
        QCOMPARE(tavlo({"remove", "0"}).status, 0);
        QCOMPARE(stored(), (Rows{{"Bob", "21 11 2000"}}));
    }

    void wrongArgumentsChangeNothing_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");
        QTest::newRow("no action") << QStringList{} << "list";
        QTest::newRow("unknown action") << QStringList{"rename"} << "rename";
        QTest::newRow("list extra") << QStringList{"list", "--yaml"} << "--yaml";
        QTest::newRow("add without date") << QStringList{"add", "Zoe"} << "YYYY-MM-DD";
        QTest::newRow("add bad date") << QStringList{"add", "Zoe", "2001-02-30"} << "2001-02-30";
        QTest::newRow("add dotted date") << QStringList{"add", "Zoe", "05.07.2001"} << "05.07.2001";
        QTest::newRow("remove past the end") << QStringList{"remove", "2"} << "2";
        QTest::newRow("remove negative") << QStringList{"remove", "-1"} << "-1";
        QTest::newRow("remove word") << QStringList{"remove", "first"} << "first";
        QTest::newRow("remove two") << QStringList{"remove", "0", "1"} << "INDEX";
    }
    void wrongArgumentsChangeNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const Rows before = stored();
        const qsizetype writes = m_settings.writeCount();
        const Run run = tavlo(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, QString());
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY2(run.err.contains(named), qPrintable(run.err));
        QCOMPARE(stored(), before);
        QCOMPARE(m_settings.writeCount(), writes);
    }
};

QTEST_GUILESS_MAIN(TestFavoritesCommand)
#include "tst_favoritescommand.moc"
