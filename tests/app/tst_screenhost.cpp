// SPDX-License-Identifier: MIT
#include "ScreenTour.h"
#include "screenBase/BundledPictures.h"
#include "screenBase/ScreenTheme.h"
#include "screenBase/TintedSymbols.h"
#include "themes/Contrast.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QQmlContext>
#include <QQmlProperty>
#include <QSet>
#include <algorithm>

namespace {

struct Control
{
    QString name;
    int role = 0;
};

QVariant attached(QObject *item, const char *property)
{
    return QQmlProperty(item, u"Accessible."_qs + QLatin1String(property), qmlContext(item)).read();
}

// Every control a screen reader can act on on each screen, by a stable key:
// buttons, switches, fields, and the steppers that stand for the date wheels.
QMap<QString, Control> controls(const QStringList &preferred)
{
    ScreenHarness h;
    h.settings.set(SettingsKeys::favorites, {{u"Anna"_qs, u"12 3 1985"_qs}});
    h.startApp(preferred);
    QMap<QString, Control> found;
    for (const auto &[button, screen] : {std::pair{QString(), u"mainView"_qs},
                                         {u"btnFav"_qs, u"favView"_qs},
                                         {u"btnBack"_qs, u"mainView"_qs},
                                         {u"btnSet"_qs, u"setView"_qs}}) {
        if (!button.isEmpty() && !h.go(button, screen))
            qFatal("%s never showed", qPrintable(screen));
        // The rows of the list fly in.
        QTest::qWait(screen == u"favView" ? 1500 : 0);
        for (QQuickItem *item : h.window->findChildren<QQuickItem *>()) {
            if (isButton(item) || item->inherits("QQuickTextField") ||
                item->objectName().endsWith(u"Stepper"_qs)) {
                const QString name = item->objectName();
                found.insert(
                    screen + u'/' +
                        (name.isEmpty() ? QLatin1String(item->metaObject()->className()) : name),
                    {attached(item, "name").toString(), attached(item, "role").toInt()});
            }
        }
    }
    return found;
}

// Every text, symbol and switch that a screen or dialog draws, measured on
// the pixels as drawn, in every theme and appearance. The window is grabbed
// as shown, without its texts, symbols and switch knobs, and without the
// switches' tracks too: the pixels that differ are a mark's own, each seen
// against what lies behind it. A text or symbol counts with the colour its
// strokes reach as drawn at their weight, not the colour it was given: a
// thin face's strokes fall between pixels and never reach it.
//
// TAVLO_CONTRAST_REPORT=1 prints the lowest ratio of each screen instead of
// failing, for a summary across themes.

Rgb rgbOf(QRgb c)
{
    return {qRed(c) / 255.0, qGreen(c) / 255.0, qBlue(c) / 255.0};
}

struct Finding
{
    QString what;
    double ratio = 21;
    double minimum = Contrast::text;
};

enum class Kind { Text, Symbol, Track, Knob };

struct Mark
{
    QQuickItem *item;
    Kind kind;
};

Kind kindOf(const QQuickItem *item)
{
    if (item->objectName() == u"switchTrack")
        return Kind::Track;
    if (item->objectName() == u"switchKnob")
        return Kind::Knob;
    if (isSymbolPicture(item) || item->objectName() == u"signPicture")
        return Kind::Symbol;
    return Kind::Text;
}

bool isMark(const QQuickItem *item)
{
    if (item->inherits("QQuickText") || item->inherits("QQuickTextInput"))
        return !item->property("text").toString().trimmed().isEmpty();
    // A picture that is not there (a card whose birthday cannot be read).
    if (item->inherits("QQuickImage") && item->property("status").toInt() != 1)
        return false;
    return isSymbolPicture(item) ||
           QSet<QString>{u"signPicture"_qs, u"switchTrack"_qs, u"switchKnob"_qs}.contains(
               item->objectName());
}

// The part of `item` on screen, in whole pixels of `image`; none where more
// than half of it is cut away (a wheel's label half turned out of sight).
QRect areaOf(const QQuickItem *item, const QImage &image)
{
    const QRectF whole =
        item->mapRectToScene(item->boundingRect() | QRectF(0, 0, item->width(), item->height()));
    QRectF area = whole;
    for (const QQuickItem *up = item; up; up = up->parentItem()) {
        if (up->clip())
            area &= up->mapRectToScene(up->boundingRect());
    }
    area &= QRectF(image.rect());
    if (area.width() * area.height() < whole.width() * whole.height() / 2)
        return {};
    return area.toAlignedRect() & image.rect();
}

// Where a round shape is surely filled: a band through its middle, clear of
// its rounded ends and its outline.
QRect fillOf(const QQuickItem *shape)
{
    const double w = shape->width(), h = shape->height();
    const QRectF band(0, 0, std::max(w - h, h / 2), h / 2);
    return shape->mapRectToScene(band.translated((w - band.width()) / 2, (h - band.height()) / 2))
        .toAlignedRect();
}

// The lowest ratio of `shown` against `behind` over the pixels of `area`.
double lowestOver(const QImage &shown, const QImage &behind, const QRect &area)
{
    double lowest = 21;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            lowest = std::min(lowest,
                              Contrast::ratio(rgbOf(shown.pixel(x, y)), rgbOf(behind.pixel(x, y))));
    }
    return lowest;
}

// How far a text's or symbol's strokes stand out from what is behind them,
// as drawn: each pixel that the mark darkens (or lightens, as its colour
// would) is compared with the pixel behind it, and the mark counts with the
// contrast that its strongest 15 % of pixels reach: the cores of its
// strokes, the rest being their smoothed edges. A thin face whose strokes
// fall between pixels reaches only part of its colour; a lone pixel where
// a stroke lies whole on the pixel grid does not make the text read, and
// a shadow on the other side of the background does not count.
std::optional<double> asDrawn(const QImage &shown, const QImage &behind, const QRect &area,
                              std::optional<bool> lighter)
{
    QList<double> lighterRatios, darkerRatios;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const Rgb drawn = rgbOf(shown.pixel(x, y)), back = rgbOf(behind.pixel(x, y));
            const double a = Contrast::luminance(drawn), b = Contrast::luminance(back);
            if (a != b)
                (a > b ? lighterRatios : darkerRatios).append(Contrast::ratio(drawn, back));
        }
    }
    // A picture without a colour of its own goes the way most of it goes.
    const bool up = lighter.value_or(lighterRatios.size() > darkerRatios.size());
    QList<double> &ratios = up ? lighterRatios : darkerRatios;
    if (ratios.isEmpty())
        return std::nullopt;
    const auto strongest = ratios.begin() + qsizetype(ratios.size() * 0.85);
    std::nth_element(ratios.begin(), strongest, ratios.end());
    return *strongest;
}

// Marks in groups of which no two overlap, so that what one group's hiding
// changes inside a mark is that mark's own drawing.
QList<QList<Mark>> apart(const QList<Mark> &marks, const QImage &image)
{
    QList<QList<Mark>> groups;
    QList<QList<QRect>> taken;
    for (const Mark &mark : marks) {
        // A shadow or an edge's smoothing reaches a pixel or two further.
        const QRect area = areaOf(mark.item, image).adjusted(-2, -2, 2, 2);
        qsizetype g = 0;
        while (g < groups.size() && std::any_of(taken[g].cbegin(), taken[g].cend(),
                                                [&](const QRect &r) { return r.intersects(area); }))
            ++g;
        if (g == groups.size()) {
            groups.append(QList<Mark>());
            taken.append(QList<QRect>());
        }
        groups[g].append(mark);
        taken[g].append(area);
    }
    return groups;
}

// The lowest contrast of every enabled mark in a popup or out of one,
// worst first.
QList<Finding> findings(QQuickWindow *window, bool popups)
{
    QList<Mark> marks;
    for (QList<QQuickItem *> scene{window->contentItem()}; !scene.isEmpty();) {
        QQuickItem *item = scene.takeLast();
        if (!item->isVisible() || item->opacity() <= 0)
            continue;
        scene.append(item->childItems());
        if (isMark(item) && item->isEnabled())
            marks.append({item, kindOf(item)});
    }
    // Only the marks looked at are hidden: a text of the screen under a
    // popup's rounded corner is not a glyph of the popup's title.
    const auto inPopup = [](const QQuickItem *mark) {
        for (const QQuickItem *up = mark; up; up = up->parentItem()) {
            if (up->inherits("QQuickPopupItem"))
                return true;
        }
        return false;
    };
    const QImage shown = window->grabWindow();
    marks.removeIf([&](const Mark &mark) {
        return inPopup(mark.item) != popups || areaOf(mark.item, shown).isEmpty();
    });

    // A source an effect hides is left out of drawing only: its place in the
    // layout and its bindings stay as they are.
    QQmlComponent hiding(qmlEngine(window));
    hiding.setData("import QtQuick\nShaderEffectSource { hideSource: true }", {});
    std::vector<std::unique_ptr<QObject>> hiders;
    const auto hide = [&](const QList<Mark> &these) {
        for (const Mark &mark : these) {
            hiders.emplace_back(hiding.create());
            hiders.back()->setProperty("sourceItem", QVariant::fromValue(mark.item));
        }
        return window->grabWindow();
    };

    QList<Finding> found;
    const auto of = [&](Kind kind) {
        QList<Mark> these;
        std::copy_if(marks.cbegin(), marks.cend(), std::back_inserter(these),
                     [&](const Mark &mark) { return mark.kind == kind; });
        return these;
    };
    // Texts and symbols, each against what its hiding uncovers.
    QList<Mark> drawn = of(Kind::Text) + of(Kind::Symbol);
    for (const QList<Mark> &group : apart(drawn, shown)) {
        const QImage behind = hide(group);
        hiders.clear();
        for (const Mark &mark : group) {
            const QRect rect = areaOf(mark.item, shown);
            Finding finding{describe(mark.item), 21, Contrast::symbol};
            std::optional<bool> lighter;
            if (mark.kind == Kind::Text) {
                const bool large = mark.item->property("fontSizeMode").toInt() == 0 &&
                                   mark.item->property("font").value<QFont>().pixelSize() >= 24;
                finding.minimum = large ? Contrast::largeText : Contrast::text;
                // Which way the text's colour goes from what is behind it.
                const QColor c = mark.item->property("color").value<QColor>();
                double behindLight = 0;
                for (int y = rect.top(); y <= rect.bottom(); ++y) {
                    for (int x = rect.left(); x <= rect.right(); ++x)
                        behindLight += Contrast::luminance(rgbOf(behind.pixel(x, y)));
                }
                lighter = Contrast::luminance({c.redF(), c.greenF(), c.blueF()}) >
                          behindLight / (rect.width() * rect.height());
            }
            const std::optional<double> ratio = asDrawn(shown, behind, rect, lighter);
            // Nothing of it drawn: covered by what lies over it (the row's
            // buttons over its age), unless its colour is its background's.
            if (!ratio && mark.kind == Kind::Text) {
                const QColor c = mark.item->property("color").value<QColor>();
                const Rgb color{c.redF(), c.greenF(), c.blueF()};
                if (Contrast::ratio(color, rgbOf(behind.pixel(rect.center()))) >= 1.5)
                    continue;
            }
            finding.ratio = ratio.value_or(1);
            found.append(finding);
        }
    }
    // Switches: the knob against its track, and the switch against the
    // screen: when on by its track, when off by its track or its knob.
    const QList<Mark> knobs = of(Kind::Knob), tracks = of(Kind::Track);
    if (!tracks.isEmpty()) {
        const QImage noKnobs = hide(knobs);
        const QImage screen = hide(tracks);
        hiders.clear();
        for (const Mark &knob : knobs)
            found.append({describe(knob.item),
                          lowestOver(shown, noKnobs, fillOf(knob.item) & shown.rect()),
                          Contrast::symbol});
        for (const Mark &track : tracks) {
            double ratio = lowestOver(noKnobs, screen, fillOf(track.item) & shown.rect());
            const auto *knob = track.item->findChild<QQuickItem *>(u"switchKnob"_qs);
            if (knob && !track.item->parentItem()->property("checked").toBool())
                ratio = std::max(ratio, lowestOver(shown, screen, fillOf(knob) & shown.rect()));
            found.append({describe(track.item), ratio, Contrast::symbol});
        }
    }
    std::sort(found.begin(), found.end(), [](const Finding &a, const Finding &b) {
        return a.ratio / a.minimum < b.ratio / b.minimum;
    });
    return found;
}

} // namespace

class TestScreenHost : public QObject
{
    Q_OBJECT

    bool m_report = qEnvironmentVariableIsSet("TAVLO_CONTRAST_REPORT");
    ScreenHarness *h = nullptr;
    QStringList m_failures;

    void look(const QString &screen, bool popup = false)
    {
        const QList<Finding> found = findings(h->window, popup);
        QVERIFY2(!found.isEmpty(), qPrintable(screen + u": nothing drawn"_qs));
        if (m_report)
            qInfo("%s\t%s\t%.2f\t%s", QTest::currentDataTag(), qPrintable(screen),
                  found.first().ratio, qPrintable(found.first().what));
        for (const Finding &finding : found) {
            if (finding.ratio < finding.minimum - 1e-9 && !m_report)
                m_failures.append(u"%1: %2 has %3:1, needs %4:1"_qs.arg(screen, finding.what)
                                      .arg(finding.ratio, 0, 'f', 2)
                                      .arg(finding.minimum));
        }
    }

private slots:
    // The window and its screen host: screens by identifier, each asked for
    // under a dim and presented over the one before, and a new main screen
    // every time the main screen is shown.
    void presentsScreensAndComesBackToANewMain_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("view");
        QTest::newRow("favorites") << "btnFav"
                                   << "favView";
        QTest::newRow("settings") << "btnSet"
                                  << "setView";
    }
    void presentsScreensAndComesBackToANewMain()
    {
        QFETCH(QString, button);
        QFETCH(QString, view);
        ScreenHarness h;
        h.startApp();
        QCOMPARE(h.window->title(), "Tavlo");
        QCOMPARE(h.window->size(), QSize(390, 844));
        QVERIFY(h.shows(u"mainView"_qs));
        QCOMPARE(h.settings.value(SettingsKeys::appStarts), 1);

        for (const auto &[tapped, next] :
             {std::pair{button, view}, {u"btnBack"_qs, u"mainView"_qs}}) {
            QVERIFY(!h.shows(u"dimOverlay"_qs));
            h.tap(tapped);
            // The screen asking stays dimmed until the next one covers it.
            QVERIFY(h.shows(u"dimOverlay"_qs));
            QTRY_VERIFY(h.showsOnly(next));
        }
        // A new main screen ran its load: the start counter counted it.
        QCOMPARE(h.settings.value(SettingsKeys::appStarts), 2);
        QVERIFY(!h.shows(u"dimOverlay"_qs));
    }

    // A tapped reminder opens a new main screen on its favorite, from
    // whatever screen was shown; one whose favorite has gone since, as the
    // main screen opens anyway (here: no date picked yet).
    void aTappedReminderOpensItsFavorite_data()
    {
        QTest::addColumn<QString>("favoriteId");
        QTest::addColumn<QString>("startsWith");
        QTest::newRow("its favorite") << "id-b"
                                      << "Bo's age is: ";
        QTest::newRow("deleted since") << "id-gone"
                                       << "Select your date of birth";
    }
    void aTappedReminderOpensItsFavorite()
    {
        QFETCH(QString, favoriteId);
        QFETCH(QString, startsWith);
        ScreenHarness h;
        h.settings.set(SettingsKeys::favorites, {{u"Anna"_qs, u"12 3 1985"_qs, u"id-a"_qs},
                                                 {u"Bo"_qs, u"1 6 1990"_qs, u"id-b"_qs}});
        h.startApp();
        QVERIFY(h.go(u"btnSet"_qs, u"setView"_qs));
        h.screens().showFavorite(favoriteId);
        QTRY_VERIFY(h.showsOnly(u"mainView"_qs));
        QVERIFY2(h.text(u"lblDisplay"_qs).startsWith(startsWith),
                 qPrintable(h.text(u"lblDisplay"_qs)));
        QCOMPARE(h.settings.value(SettingsKeys::handOverPending), false);
    }

    // Wide, the favorites stand beside the main screen: a favorite chosen
    // there is shown in the other pane (and said), the list stays, a
    // favorite added on the main screen joins the list, and the window made
    // narrow or wide again shows one screen or two.
    void twoPanesInAWideWindow()
    {
        ScreenHarness h;
        h.settings.set(SettingsKeys::favorites,
                       {{u"Anna"_qs, u"12 3 1985"_qs}, {u"Bob"_qs, u"1 1 2000"_qs}});
        h.settings.set(SettingsKeys::sort, 0);
        h.startApp({u"en-US"_qs}, Appearance::Dark, {1024, 768});
        QVERIFY(h.shows(u"mainView"_qs) && h.shows(u"favView"_qs));
        QQuickItem *list = h.find(u"favView"_qs);
        QQuickItem *main = h.find(u"mainView"_qs);
        QCOMPARE(list->width(), 400.0);
        QCOMPARE(main->x() + main->parentItem()->x(), 400.0);
        QCOMPARE(main->width(), 624.0);
        // Nothing to go back to, nothing to open: both are there.
        QVERIFY(!h.shows(u"btnBack"_qs));
        QVERIFY(!h.shows(u"btnFav"_qs));
        // The keyboard starts on the main screen's report, as on a phone,
        // and Tab goes on from the list to the main screen and back.
        QVERIFY(h.find(u"lblDisplay"_qs)->hasActiveFocus());
        const auto focusIn = [&](QQuickItem *pane) {
            const QQuickItem *focused = h.window->activeFocusItem();
            return focused && (focused == pane || pane->isAncestorOf(focused));
        };
        QTest::keyClick(h.window, Qt::Key_Tab, Qt::ShiftModifier);
        QTRY_VERIFY(focusIn(list));
        QTest::keyClick(h.window, Qt::Key_Tab);
        QTRY_VERIFY(h.find(u"lblDisplay"_qs)->hasActiveFocus());

        // The wheels stand on the last favorite, Bob.
        QQuickItem *anna = h.find(u"cell0"_qs);
        QTRY_COMPARE(h.find(u"cell1"_qs)->y(), 66.0);
        QQuickItem *announcer = h.find(u"announcer"_qs, main);
        // Where the year wheel shows "1985" now.
        const auto year1985 = [&] {
            for (QList<QQuickItem *> items{h.find(u"yearWheel"_qs)}; !items.isEmpty();) {
                QQuickItem *label = items.takeLast();
                if (label->inherits("QQuickText") && label->property("text") == u"1985"_qs)
                    return label->mapToScene({}).y();
                items.append(label->childItems());
            }
            return -1.0;
        };
        h.tap(anna);
        QTRY_VERIFY(h.text(u"lblDisplay"_qs).startsWith(u"Anna's age is:"_qs));
        QCOMPARE(announcer->property("text").toString().left(14), u"Anna's age is:"_qs);
        // The wheels stand on Anna's birthday at once, without a ride
        // across the years.
        const double shown = year1985();
        QVERIFY(shown > 0);
        QTest::qWait(300);
        QCOMPARE(year1985(), shown);
        QCOMPARE(h.find(u"yearWheel"_qs)->property("currentIndex").toInt(), 1985 - 1800);
        QCOMPARE(main, h.find(u"mainView"_qs));
        QVERIFY(h.shows(u"favView"_qs));
        QVERIFY(!h.settings.value(SettingsKeys::handOverPending));
        QCOMPARE(h.settings.value(SettingsKeys::handOverIndex), 0);
        // Swipes go on from the chosen one.
        auto *mainController = main->property("controller").value<MainScreenController *>();
        mainController->handleGesture(MainScreenController::Swipe::Left);
        QTRY_VERIFY(h.text(u"lblDisplay"_qs).startsWith(u"Bob's age is:"_qs));
        // Escape on the list does not leave it.
        anna->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(h.window, Qt::Key_Escape);
        QTest::qWait(100);
        QVERIFY(h.shows(u"favView"_qs) && h.shows(u"mainView"_qs));

        mainController->addFavorite(u"Cleo"_qs);
        QTRY_COMPARE(h.find(u"tableView"_qs)->property("count").toInt(), 3);

        h.window->resize(390, 768);
        QTRY_VERIFY(h.showsOnly(u"mainView"_qs));
        h.window->resize(1400, 900);
        QTRY_VERIFY(h.shows(u"favView"_qs) && h.shows(u"mainView"_qs));
        QTRY_COMPARE(h.find(u"favView"_qs)->width(), 400.0);
        // The narrow screen has faded out.
        QTRY_COMPARE(h.window->findChildren<QQuickItem *>(u"mainView"_qs).size(), 1);
        // Settings open alone, over both panes, and come back to both.
        QVERIFY(h.go(u"btnSet"_qs, u"setView"_qs));
        h.tap(u"btnBack"_qs);
        QTRY_VERIFY(h.shows(u"favView"_qs) && h.shows(u"mainView"_qs));
    }

    void everyControlIsNamedInTheLanguage()
    {
        const QMap<QString, Control> english = controls({u"en-US"_qs});
        const QMap<QString, Control> russian = controls({u"ru"_qs});
        QVERIFY(english.size() > 25);
        QCOMPARE(russian.keys(), english.keys());
        // Words that are the same in every language.
        const QStringList universal = {u"OK"_qs, u"v"_qs + QStringLiteral(TAVLO_VERSION)};
        for (auto it = russian.cbegin(); it != russian.cend(); ++it) {
            QVERIFY2(!it->name.trimmed().isEmpty(), qPrintable(it.key() + u" has no name"_qs));
            QVERIFY2(it->role != 0, qPrintable(it.key() + u" has no role"_qs));
            const QString inEnglish = english.value(it.key()).name;
            QVERIFY2(it->name != inEnglish || universal.contains(inEnglish),
                     qPrintable(it.key() + u" is not translated: "_qs + inEnglish));
        }
    }

    void everyTextReads_data()
    {
        QTest::addColumn<int>("theme");
        QTest::addColumn<Appearance>("appearance");
        for (int theme = 0; theme < ThemeTable::count; ++theme) {
            QTest::addRow("%d dark", theme) << theme << Appearance::Dark;
            QTest::addRow("%d light", theme) << theme << Appearance::Light;
        }
    }
    void everyTextReads()
    {
        QFETCH(int, theme);
        QFETCH(Appearance, appearance);
        ScreenHarness harness;
        h = &harness;
        m_failures.clear();
        ScreenTour::run(harness, theme, appearance,
                        [this](const QString &screen, bool popup) { look(screen, popup); });
        QVERIFY2(m_failures.isEmpty(), qPrintable(m_failures.join(u'\n')));
    }

    // What a start takes from the bundled background pictures without
    // decoding them must be what they hold: the darkest and lightest spots
    // that text is made legible against, and the copy decoded ahead of time
    // for a phone's window.
    void bundledBackgroundsAreKnown_data()
    {
        QTest::addColumn<QString>("name");
        const QDir images(u":/qt/qml/Tavlo/screenBase/images"_qs);
        const QStringList files = images.entryList({u"space*.svg"_qs});
        QVERIFY(!files.isEmpty());
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << file.chopped(4);
    }
    void bundledBackgroundsAreKnown()
    {
        QFETCH(QString, name);
        const QUrl picture = ScreenTheme::imageUrl(name);
        const auto known = ScreenTheme::knownExtremes(picture);
        QVERIFY2(known, qPrintable(name + u" is not written down"_qs));
        QCOMPARE(known->first, ScreenTheme::pictureExtremes(picture).first);
        QCOMPARE(known->second, ScreenTheme::pictureExtremes(picture).second);

        // Main.qml's window, and the background's decoding size in it.
        const QSize phone = QSize(390, 844) / 16;
        const QUrl copy = ScreenTheme::drawnAheadUrl(picture, phone.width(), phone.height());
        QImageReader reader(u':' + picture.path());
        reader.setScaledSize(phone);
        const QImage drawn = reader.read();
        const QImage kept = QImage(u':' + copy.path()).convertToFormat(drawn.format());
        if (kept != drawn)
            drawn.save(copy.fileName());
        QVERIFY2(kept == drawn,
                 qPrintable(copy.fileName() + u" differs from its picture; the "
                                              u"right one is in the test's folder"_qs));
        // The window shows the copy as it is, read by its type alone.
        QSize size;
        const QImage shown = BundledPictures().requestImage(copy.fileName(), &size, phone);
        QCOMPARE(size, phone);
        QCOMPARE(shown.convertToFormat(drawn.format()), drawn);
    }

    // The main screen's bar: 26 px symbols, decoded at twice that, at the
    // screen scales phones use (1, 1.5, 2, 3).
    void barSymbolsAreDrawnAhead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("pixels");
        for (const char *name : {"restart_alt", "add", "star", "settings"}) {
            for (const int pixels : {52, 78, 104, 156})
                QTest::addRow("%s %d", name, pixels) << QString::fromLatin1(name) << pixels;
        }
    }
    void barSymbolsAreDrawnAhead()
    {
        QFETCH(QString, name);
        QFETCH(int, pixels);
        const QSize size(pixels, pixels);
        QImageReader reader(TintedSymbols::drawingPath(name));
        reader.setScaledSize(size);
        const QImage drawn = reader.read().convertToFormat(QImage::Format_Alpha8);
        QVERIFY(!drawn.isNull());
        const QString copy = TintedSymbols::drawnAheadPath(name, size);
        const QImage kept = QImage(copy).convertToFormat(QImage::Format_Alpha8);
        if (kept != drawn) {
            QImageReader again(TintedSymbols::drawingPath(name));
            again.setScaledSize(size);
            again.read().save(QFileInfo(copy).fileName());
        }
        QVERIFY2(kept == drawn, qPrintable(QFileInfo(copy).fileName() +
                                           u" is missing or differs from its drawing; the "
                                           u"right one is in the test's folder"_qs));
        // The bar's request is answered from the copy, in the same shape.
        QSize shownSize;
        const QImage shown =
            TintedSymbols().requestImage(name + u"/#ff336699"_qs, &shownSize, size);
        QCOMPARE(shownSize, size);
        QCOMPARE(shown.convertToFormat(QImage::Format_Alpha8), drawn);
        // ... and in the colour asked for.
        QSet<QRgb> opaque;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (qAlpha(shown.pixel(x, y)) == 255)
                    opaque.insert(shown.pixel(x, y));
            }
        }
        QCOMPARE(opaque, QSet<QRgb>{qRgb(0x33, 0x66, 0x99)});
    }
};

QTEST_MAIN(TestScreenHost)
#include "tst_screenhost.moc"
