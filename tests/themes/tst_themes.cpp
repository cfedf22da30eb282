// SPDX-License-Identifier: MIT
#include "themes/Contrast.h"
#include "themes/Themes.h"

#include <QProcess>
#include <QTest>

namespace {
// Run as a child with "--look N", the binary only asks for theme N.
const char lookArgument[] = "--look";

ThemeTable table(Appearance appearance, bool lightColors)
{
    ThemeTable table(appearance);
    if (lightColors)
        table.useLightColors();
    return table;
}
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
        const ThemeTable themes = table(appearance, lightColors);
        const ThemeLook look = themes.look(index);
        const SystemColors system = SystemColors::of(appearance);
        const Rgb entry = themes.color(index);

        QCOMPARE(look.accent, index == 9 ? system.darkGrey : entry);
        QCOMPARE(look.backgroundImage, index <= 4 ? QStringLiteral("space%1").arg(index) : "");
        QCOMPARE(look.blur, index <= 4);
        QCOMPARE(look.thinTitleBar, index == 9);
        QCOMPARE(look.backgroundColor.has_value(), index > 4);
        QCOMPARE(look.gradient.has_value(), index > 4 && index < 9);
        if (index == 9)
            QCOMPARE(*look.backgroundColor, system.background);
        if (index <= 4 || index == 9)
            return;
        QCOMPARE(*look.backgroundColor, entry);
        // 0.07 lighter to 0.12 darker, to the rounding of a double.
        const auto [top, bottom] = *look.gradient;
        for (const auto &[end, by] : {std::pair{top, 0.07}, std::pair{bottom, -0.12}}) {
            QCOMPARE(end.red, entry.red + by);
            QCOMPARE(end.green, entry.green + by);
            QCOMPARE(end.blue, entry.blue + by);
        }
    }

    // Nine distinct colours in each table; the light table is lighter where
    // it differs, and keeps 0, 1 and 3.
    void tables()
    {
        const ThemeTable dark = table(Appearance::Dark, false);
        const ThemeTable light = table(Appearance::Dark, true);
        for (int i = 0; i < 9; ++i) {
            for (const ThemeTable *t : {&dark, &light}) {
                const Rgb c = t->tableColor(i);
                for (const double channel : {c.red, c.green, c.blue})
                    QVERIFY(channel >= 0 && channel <= 1);
                for (int j = 0; j < i; ++j)
                    QVERIFY(t->tableColor(j) != c);
            }
            const bool kept = i == 0 || i == 1 || i == 3;
            QCOMPARE(light.tableColor(i) == dark.tableColor(i), kept);
            if (!kept)
                QVERIFY(Contrast::toHsl(light.tableColor(i)).lightness >
                        Contrast::toHsl(dark.tableColor(i)).lightness);
        }
    }

    // The table is chosen by useLightColors(), theme 9 by the appearance.
    void tableAndAppearanceAreIndependent()
    {
        for (const bool lightColors : {false, true}) {
            const ThemeTable onDark = table(Appearance::Dark, lightColors);
            const ThemeTable onLight = table(Appearance::Light, lightColors);
            QCOMPARE(onLight.lightColors(), lightColors);
            for (int i = 0; i < 9; ++i)
                QCOMPARE(onLight.tableColor(i), onDark.tableColor(i));
            QCOMPARE(*onDark.look(9).backgroundColor, (Rgb{0, 0, 0}));
            QCOMPARE(*onLight.look(9).backgroundColor, (Rgb{1, 1, 1}));
        }
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
        const Rgb result = ThemeTable::lightened(color, percent);
        QCOMPARE(result.red, expected.red);
        QCOMPARE(result.green, expected.green);
        QCOMPARE(result.blue, expected.blue);
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
        QCOMPARE(child.exitStatus(), stops ? QProcess::CrashExit : QProcess::NormalExit);
        if (stops) {
            QCOMPARE(lines.size(), 1);
            QVERIFY2(lines.first().contains("\"color\""), lines.first().constData());
        } else {
            QCOMPARE(child.exitCode(), 0);
        }
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
