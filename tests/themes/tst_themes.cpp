// SPDX-License-Identifier: MIT
#include "themes/Themes.h"

#include <QProcess>
#include <QTest>

namespace {
// The colours each theme is designed with; entry 9 is the system background.
const std::array<Rgb, 9> dark = {{{0.5875715, 0, 1},
                                  {0, 0.7842817, 0},
                                  {0.9586653, 0.30533227, 0},
                                  {0, 0.5496425, 1},
                                  {0.5491386, 0.0055863583, 0},
                                  {0.22145256, 0.27209446, 0.0019903344},
                                  {0.37183267, 0, 0.41554463},
                                  {0.009912484, 0.1478197, 0.21379039},
                                  {0.80784315, 0.02745098, 0.33333334}}};
const std::array<Rgb, 9> light = {{{0.5875715, 0, 1},
                                   {0, 0.7842817, 0},
                                   {0.99685484, 0.50263304, 0},
                                   {0, 0.5496425, 1},
                                   {0.9665492, 0.0017098036, 0.39665306},
                                   {0.46517736, 0.5723657, 0},
                                   {0.59157747, 0.51231426, 0.95020324},
                                   {0, 0.7254303, 0.67676395},
                                   {1, 0.8740956, 0}}};

Rgb plus(Rgb c, double by)
{
    return {c.red + by, c.green + by, c.blue + by};
}

// Exact comparison would hold the gradient ends to one way of rounding.
#define COMPARE_RGB(actual, expected)                                                              \
    do {                                                                                           \
        const Rgb a = (actual), e = (expected);                                                    \
        QCOMPARE(a.red, e.red);                                                                    \
        QCOMPARE(a.green, e.green);                                                                \
        QCOMPARE(a.blue, e.blue);                                                                  \
    } while (false)

// Run as a child with "--look N", the binary only asks for theme N.
const char lookArgument[] = "--look";
} // namespace

class TestThemes : public QObject
{
    Q_OBJECT

private slots:
    void everyTheme_data()
    {
        QTest::addColumn<bool>("lightColors");
        QTest::addColumn<int>("index");
        for (const bool isLight : {false, true}) {
            for (int c = 0; c < ThemeTable::count; ++c)
                QTest::addRow("%s %d", isLight ? "light" : "dark", c) << isLight << c;
        }
    }
    void everyTheme()
    {
        QFETCH(bool, lightColors);
        QFETCH(int, index);
        const Appearance appearance = lightColors ? Appearance::Light : Appearance::Dark;
        ThemeTable table(appearance);
        if (lightColors)
            table.useLightColors();
        const ThemeLook look = table.look(index);
        const SystemColors system = SystemColors::of(appearance);

        if (index == 9) {
            COMPARE_RGB(look.accent, system.darkGrey);
            QCOMPARE(look.backgroundImage, QString());
            QVERIFY(!look.blur);
            QVERIFY(!look.gradient);
            QVERIFY(look.backgroundColor);
            COMPARE_RGB(*look.backgroundColor, system.background);
            QVERIFY(look.thinTitleBar);
            return;
        }
        // The table holds the designed colour; a plain colour may be shown a
        // little lighter or darker so that the label reads on it.
        COMPARE_RGB(table.tableColor(index), (lightColors ? light : dark).at(size_t(index)));
        const Rgb entry = table.color(index);
        COMPARE_RGB(look.accent, entry);
        QVERIFY(!look.thinTitleBar);
        if (index <= 4) {
            QCOMPARE(look.backgroundImage, QStringLiteral("space%1").arg(index));
            QVERIFY(look.blur);
            QVERIFY(!look.gradient);
            QVERIFY(!look.backgroundColor);
            return;
        }
        QCOMPARE(look.backgroundImage, QString());
        QVERIFY(!look.blur);
        QVERIFY(look.gradient);
        COMPARE_RGB(look.gradient->first, plus(entry, 0.07));
        COMPARE_RGB(look.gradient->second, plus(entry, -0.12));
        QVERIFY(look.backgroundColor);
        COMPARE_RGB(*look.backgroundColor, entry);
    }

    // Which table and which system background apply are set apart: the table
    // by useLightColors(), theme 9 by the appearance.
    void tableAndAppearanceAreIndependent()
    {
        const Rgb black = SystemColors::of(Appearance::Dark).background;
        const Rgb white = SystemColors::of(Appearance::Light).background;
        QVERIFY(black != white);

        ThemeTable lightScreen(Appearance::Light);
        QVERIFY(!lightScreen.lightColors());
        COMPARE_RGB(lightScreen.look(2).accent, dark[2]);
        COMPARE_RGB(lightScreen.tableColor(5), dark[5]);
        COMPARE_RGB(*lightScreen.look(9).backgroundColor, white);
        lightScreen.useLightColors();
        QVERIFY(lightScreen.lightColors());
        COMPARE_RGB(lightScreen.look(2).accent, light[2]);

        ThemeTable darkScreen(Appearance::Dark);
        darkScreen.useLightColors();
        COMPARE_RGB(darkScreen.tableColor(7), light[7]);
        COMPARE_RGB(*darkScreen.look(9).backgroundColor, black);
    }

    void lightened_data()
    {
        QTest::addColumn<Rgb>("color");
        QTest::addColumn<double>("percent");
        QTest::addColumn<Rgb>("expected");
        QTest::newRow("plain") << Rgb{0.2, 0.4, 0.6} << 10.0 << Rgb{0.3, 0.5, 0.7};
        QTest::newRow("clamped per channel") << Rgb{0.5, 0.95, 1} << 10.0 << Rgb{0.6, 1, 1};
    }
    void lightened()
    {
        QFETCH(Rgb, color);
        QFETCH(double, percent);
        QFETCH(Rgb, expected);
        COMPARE_RGB(ThemeTable::lightened(color, percent), expected);
    }

    void indexOutsideTheTableStops_data()
    {
        QTest::addColumn<QString>("index");
        QTest::addColumn<bool>("stops");
        QTest::newRow("9 is a theme") << "9" << false;
        QTest::newRow("10") << "10" << true;
        QTest::newRow("-1") << "-1" << true;
        // Would wrap to theme 0 if cut to 32 bits.
        QTest::newRow("2^32") << "4294967296" << true;
    }
    void indexOutsideTheTableStops()
    {
        QFETCH(QString, index);
        QFETCH(bool, stops);
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {lookArgument, index});
        QVERIFY(child.waitForFinished(30000));
        const QList<QByteArray> lines = child.readAllStandardError().trimmed().split('\n');
        if (!stops) {
            QCOMPARE(child.exitStatus(), QProcess::NormalExit);
            QCOMPARE(child.exitCode(), 0);
            return;
        }
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().contains("\"color\""), lines.first().constData());
    }
};

int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], lookArgument) == 0) {
        ThemeTable().look(QByteArray(argv[2]).toLongLong());
        return 0;
    }
    QCoreApplication app(argc, argv);
    TestThemes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_themes.moc"
