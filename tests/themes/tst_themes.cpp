// SPDX-License-Identifier: MIT
#include "themes/Contrast.h"
#include "themes/Themes.h"

#include <QProcess>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

ThemeTable table(Appearance appearance, bool lightColors)
{
    ThemeTable table(appearance);
    if (lightColors)
        table.useLightColors();
    return table;
}

constexpr Rgb black{0, 0, 0}, white{1, 1, 1};

// Hue is meaningless without saturation, and at the ends of lightness.
void compareHue(Rgb a, Rgb b)
{
    const Contrast::Hsl x = Contrast::toHsl(a), y = Contrast::toHsl(b);
    if (x.saturation < 1e-6 || y.lightness <= 1e-6 || y.lightness >= 1 - 1e-6)
        return;
    QVERIFY2(std::abs(x.hue - y.hue) < 1e-6 || std::abs(std::abs(x.hue - y.hue) - 1) < 1e-6,
             qPrintable(QStringLiteral("hue %1 became %2").arg(x.hue).arg(y.hue)));
    QVERIFY(std::abs(x.saturation - y.saturation) < 1e-6);
}

Rgb withLightness(Rgb color, double lightness)
{
    Contrast::Hsl hsl = Contrast::toHsl(color);
    hsl.lightness = lightness;
    return Contrast::fromHsl(hsl);
}
} // namespace

class TestThemes : public QObject
{
    Q_OBJECT

private slots:
    // What the screens do not show: theme 9's accent and thin title bar,
    // and gradients that run from lighter to darker.
    void looks()
    {
        for (const Appearance appearance : {Appearance::Dark, Appearance::Light}) {
            const ThemeTable themes = table(appearance, appearance == Appearance::Light);
            for (int index = 0; index < ThemeTable::count; ++index) {
                const ThemeLook look = themes.look(index);
                const Rgb entry = themes.color(index);
                QCOMPARE(look.accent, index == 9 ? SystemColors::of(appearance).darkGrey : entry);
                QCOMPARE(look.thinTitleBar, index == 9);
                if (look.gradient) {
                    const double l = Contrast::luminance(entry);
                    QVERIFY(Contrast::luminance(look.gradient->first) > l);
                    QVERIFY(Contrast::luminance(look.gradient->second) < l);
                }
            }
        }
    }

    // Nine distinct colours in each table, chosen by useLightColors() alone;
    // the light table is lighter where it differs, and keeps 0, 1 and 3.
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
            QCOMPARE(table(Appearance::Light, false).tableColor(i), dark.tableColor(i));
            const bool kept = i == 0 || i == 1 || i == 3;
            QCOMPARE(light.tableColor(i) == dark.tableColor(i), kept);
            if (!kept)
                QVERIFY(Contrast::toHsl(light.tableColor(i)).lightness >
                        Contrast::toHsl(dark.tableColor(i)).lightness);
        }
    }

    // Per channel, and never past full strength.
    void lightened()
    {
        const Rgb result = ThemeTable::lightened({0.5, 0.95, 1}, 10);
        QCOMPARE(result.red, 0.6);
        QCOMPARE(result.green, 1.0);
        QCOMPARE(result.blue, 1.0);
    }

    // A stored theme number outside the table (a hand edit, a later
    // version) is the first theme, not a reason to stop.
    void indexOutsideTheTableIsTheFirstTheme_data()
    {
        QTest::addColumn<qint64>("index");
        QTest::addColumn<int>("theme");
        QTest::newRow("9 is a theme") << 9LL << 9;
        QTest::newRow("10") << 10LL << 0;
        QTest::newRow("-1") << -1LL << 0;
        // Would wrap to theme 0 if cut to 32 bits; 2^32 + 3 to theme 3.
        QTest::newRow("2^32 + 3") << 4294967299LL << 0;
    }
    void indexOutsideTheTableIsTheFirstTheme()
    {
        QFETCH(qint64, index);
        QFETCH(int, theme);
        const ThemeTable table;
        QCOMPARE(table.look(index).accent, table.look(theme).accent);
        QCOMPARE(table.look(index).backgroundImage, table.look(theme).backgroundImage);
    }

    // Fixed points of the WCAG formula.
    void ratio_data()
    {
        QTest::addColumn<Rgb>("a");
        QTest::addColumn<Rgb>("b");
        QTest::addColumn<double>("ratio");
        QTest::newRow("black on white") << black << white << 21.0;
        QTest::newRow("the same") << Rgb{0.3, 0.6, 0.9} << Rgb{0.3, 0.6, 0.9} << 1.0;
        QTest::newRow("#777777 on white, just short of 4.5")
            << Rgb{0x77 / 255.0, 0x77 / 255.0, 0x77 / 255.0} << white << 4.48;
        QTest::newRow("pure red on black") << Rgb{1, 0, 0} << black << 5.25;
        QTest::newRow("out of range clamps") << Rgb{1.2, 1.3, 1.1} << Rgb{-0.1, 0, 0} << 21.0;
    }
    void ratio()
    {
        QFETCH(Rgb, a);
        QFETCH(Rgb, b);
        QFETCH(double, ratio);
        QCOMPARE(std::round(Contrast::ratio(a, b) * 100) / 100, ratio);
        QCOMPARE(Contrast::ratio(a, b), Contrast::ratio(b, a));
    }

    void hslRoundTrip()
    {
        for (int i = 0; i < 125; ++i) {
            const Rgb c{i / 25 / 4.0, i / 5 % 5 / 4.0, i % 5 / 4.0};
            const Rgb back = Contrast::fromHsl(Contrast::toHsl(c));
            QVERIFY(std::abs(back.red - c.red) < 1e-9 && std::abs(back.green - c.green) < 1e-9 &&
                    std::abs(back.blue - c.blue) < 1e-9);
        }
    }

    // The designed colours that come out too faint, against the
    // backgrounds they meet: the result reads, keeps its hue and saturation,
    // and moves no further than it must.
    void legible_data()
    {
        QTest::addColumn<Rgb>("color");
        QTest::addColumn<QList<Rgb>>("backgrounds");
        QTest::addColumn<double>("minimum");
        const Rgb alert{0.17, 0.17, 0.18};
        QTest::newRow("navy accent on a dark alert")
            << Rgb{0.009912484, 0.1478197, 0.21379039} << QList<Rgb>{alert} << 4.5;
        QTest::newRow("olive accent on a dark alert")
            << Rgb{0.22145256, 0.27209446, 0.0019903344} << QList<Rgb>{alert} << 4.5;
        QTest::newRow("yellow star on a yellow card")
            << Rgb{0.9, 0.7740956, 0} << QList<Rgb>{{1, 0.9, 0.2}, {0.9, 0.77, 0}} << 4.5;
        QTest::newRow("white age on a pale card") << white << QList<Rgb>{{0.95, 0.9, 0.6}} << 4.5;
        QTest::newRow("grey birthday on a dark red card")
            << Rgb{0.56, 0.56, 0.58} << QList<Rgb>{{0.5, 0.02, 0.2}, {0.2, 0, 0.05}} << 4.5;
        QTest::newRow("already enough: unchanged") << white << QList<Rgb>{black} << 4.5;
        QTest::newRow("a swatch on its own colour")
            << Rgb{0.46, 0.57, 0} << QList<Rgb>{{0.46, 0.57, 0}} << 3.0;
    }
    void legible()
    {
        QFETCH(Rgb, color);
        QFETCH(QList<Rgb>, backgrounds);
        QFETCH(double, minimum);
        const Rgb result = Contrast::legible(color, backgrounds, minimum);
        QVERIFY2(Contrast::lowestRatio(result, backgrounds) >= minimum,
                 qPrintable(QString::number(Contrast::lowestRatio(result, backgrounds))));
        compareHue(color, result);
        if (Contrast::lowestRatio(color, backgrounds) >= minimum) {
            QCOMPARE(result, color);
            return;
        }
        // One step less of the change would not be enough.
        const double from = Contrast::toHsl(color).lightness;
        const double to = Contrast::toHsl(result).lightness;
        const double back = to + (from > to ? 0.001 : -0.001);
        QVERIFY(Contrast::lowestRatio(withLightness(color, back), backgrounds) < minimum);
    }

    void lowestOpacityIsTheLowest_data()
    {
        QTest::addColumn<Rgb>("color");
        QTest::addColumn<QList<Rgb>>("backgrounds");
        QTest::newRow("white on navy") << white << QList<Rgb>{{0.03, 0.2, 0.27}, {0, 0.03, 0.09}};
        QTest::newRow("black on pale yellow") << black << QList<Rgb>{{1, 0.94, 0.07}};
        QTest::newRow("white on a dark alert") << white << QList<Rgb>{{0.17, 0.17, 0.18}};
    }
    void lowestOpacityIsTheLowest()
    {
        QFETCH(Rgb, color);
        QFETCH(QList<Rgb>, backgrounds);
        const double alpha = Contrast::lowestOpacity(color, backgrounds, Contrast::text);
        QVERIFY(alpha > 0 && alpha < 1);
        const auto reads = [&](double a) {
            return std::all_of(backgrounds.cbegin(), backgrounds.cend(), [&](Rgb under) {
                return Contrast::ratio(Contrast::over(color, a, under), under) >= Contrast::text;
            });
        };
        QVERIFY(reads(alpha));
        QVERIFY(!reads(alpha - 0.01));
    }

    // The plain colours are the screens' backgrounds: the label reads over
    // both ends of their gradient, in the table's hue, changed only where the
    // table's own colour did not read.
    void plainThemesCarryTheirLabel_data()
    {
        QTest::addColumn<Appearance>("appearance");
        QTest::addColumn<int>("theme");
        for (const Appearance appearance : {Appearance::Dark, Appearance::Light}) {
            for (int theme = 5; theme <= 8; ++theme) {
                QTest::addRow("%s %d", appearance == Appearance::Dark ? "dark" : "light", theme)
                    << appearance << theme;
            }
        }
    }
    void plainThemesCarryTheirLabel()
    {
        QFETCH(Appearance, appearance);
        QFETCH(int, theme);
        ThemeTable table(appearance);
        if (appearance == Appearance::Light)
            table.useLightColors();
        const Rgb label = SystemColors::of(appearance).label;
        const auto worst = [&](Rgb color) {
            const auto [top, bottom] = ThemeTable::gradientOf(color);
            return Contrast::lowestRatio(label, {top, bottom});
        };
        const Rgb original = table.tableColor(theme);
        const Rgb shown = table.color(theme);
        QVERIFY(worst(shown) >= Contrast::drawnText);
        compareHue(original, shown);
        if (worst(original) >= Contrast::drawnText)
            QCOMPARE(shown, original);
        const ThemeLook look = table.look(theme);
        QCOMPARE(look.backgroundColor, std::optional<Rgb>(shown));
    }

    // A switch is seen on every screen: its knob on its track, and the
    // switch on the screen by its track or its knob. The accent stays where
    // it is seen already, and an "on" track stands out by itself wherever
    // some lightness of it can.
    void switchesStandOut_data()
    {
        QTest::addColumn<Appearance>("appearance");
        QTest::addColumn<Rgb>("accent");
        QTest::addColumn<QList<Rgb>>("backdrop");
        // Whether the white knob can stand out on an "on" track that does.
        QTest::addColumn<bool>("whiteKnob");
        for (const Appearance appearance : {Appearance::Dark, Appearance::Light}) {
            const char *name = appearance == Appearance::Dark ? "dark" : "light";
            const ThemeTable themes = table(appearance, appearance == Appearance::Light);
            for (int theme = 5; theme <= 9; ++theme) {
                const ThemeLook look = themes.look(theme);
                QList<Rgb> backdrop{*look.backgroundColor};
                if (look.gradient)
                    backdrop = {look.gradient->first, look.gradient->second};
                const bool midDark = appearance == Appearance::Dark && (theme == 5 || theme == 8);
                QTest::addRow("%s %d", name, theme)
                    << appearance << look.accent << backdrop << !midDark;
            }
            QTest::addRow("%s, violet on a dark picture", name)
                << appearance << themes.color(0) << QList<Rgb>{{0.02, 0.02, 0.05}, {0.2, 0.2, 0.3}}
                << true;
        }
    }
    void switchesStandOut()
    {
        QFETCH(Appearance, appearance);
        QFETCH(Rgb, accent);
        QFETCH(QList<Rgb>, backdrop);
        const SystemColors system = SystemColors::of(appearance);
        const SwitchColors colors = SwitchColors::of(appearance, accent, backdrop);
        const double minimum = Contrast::symbol;
        compareHue(accent, colors.on);
        if (Contrast::lowestRatio(accent, backdrop) >= minimum + Contrast::margin &&
            Contrast::ratio(accent, system.knob) >= minimum + Contrast::margin)
            QCOMPARE(colors.on, accent);
        QFETCH(bool, whiteKnob);
        QCOMPARE(colors.onKnob == system.knob, whiteKnob);
        // Anywhere on the gradient or picture, not only at its ends.
        QList<Rgb> screens;
        for (int step = 0; step <= 20; ++step)
            screens.append(Contrast::over(backdrop.first(), step / 20.0, backdrop.last()));
        for (const Rgb &screen : std::as_const(screens)) {
            const Rgb off = Contrast::over(colors.off.color, colors.off.alpha, screen);
            const QString where =
                u"on %1 %2 %3"_s.arg(screen.red).arg(screen.green).arg(screen.blue);
            QVERIFY2(Contrast::ratio(system.knob, off) >= minimum, qPrintable(where));
            QVERIFY2(std::max(Contrast::ratio(off, screen), Contrast::ratio(system.knob, screen)) >=
                         minimum,
                     qPrintable(where));
            QVERIFY2(Contrast::ratio(colors.onKnob, colors.on) >= minimum, qPrintable(where));
            QVERIFY2(Contrast::ratio(colors.on, screen) >= minimum, qPrintable(where));
        }
    }
};

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    TestThemes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_themes.moc"
