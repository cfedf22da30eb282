// SPDX-License-Identifier: MIT
#include "ScreenTour.h"
#include "themes/Contrast.h"

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
            if (item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField") ||
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

// Every text and symbol that a screen or dialog draws, against the pixels
// drawn behind it, in every theme and appearance. The window is grabbed with
// and without the texts and symbols: the pixels that differ are the glyphs,
// and each one's colour (with the opacity of it and its parents) is composed
// over what lies behind its glyphs.
//
// TAVLO_CONTRAST_REPORT=1 prints the lowest ratio of each screen instead of
// failing, for a summary across themes.

Rgb rgbOf(QRgb c)
{
    return {qRed(c) / 255.0, qGreen(c) / 255.0, qBlue(c) / 255.0};
}

QString describe(const QQuickItem *item)
{
    QString name = item->objectName();
    for (const QQuickItem *up = item->parentItem(); name.isEmpty() && up; up = up->parentItem())
        name = up->objectName();
    const QString text = item->property("text").toString().left(24).replace(u'\n', u' ');
    return (name.isEmpty() ? QString::fromLatin1(item->metaObject()->className()) : name) +
           (text.isEmpty() ? QString() : u" \""_qs + text + u'"');
}

struct Finding
{
    QString what;
    double ratio = 21;
    double minimum = Contrast::text;
};

// The lowest contrast of every enabled text and symbol in a popup or out of
// one, worst first.
QList<Finding> findings(QQuickWindow *window, bool popups)
{
    QList<QQuickItem *> marks;
    for (QList<QQuickItem *> scene{window->contentItem()}; !scene.isEmpty();) {
        QQuickItem *item = scene.takeLast();
        if (!item->isVisible() || item->opacity() <= 0)
            continue;
        scene.append(item->childItems());
        if (item->inherits("QQuickIconImage") ||
            ((item->inherits("QQuickText") || item->inherits("QQuickTextInput")) &&
             !item->property("text").toString().trimmed().isEmpty()))
            marks.append(item);
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
    marks.removeIf([&](const QQuickItem *mark) { return inPopup(mark) != popups; });
    const QImage shown = window->grabWindow();
    // A source an effect hides is left out of drawing only: its place in the
    // layout and its bindings stay as they are.
    QQmlComponent hiding(qmlEngine(window));
    hiding.setData("import QtQuick\nShaderEffectSource { hideSource: true }", {});
    std::vector<std::unique_ptr<QObject>> hiders;
    for (QQuickItem *mark : std::as_const(marks)) {
        hiders.emplace_back(hiding.create());
        hiders.back()->setProperty("sourceItem", QVariant::fromValue(mark));
    }
    const QImage behind = window->grabWindow();
    hiders.clear();

    QList<Finding> found;
    for (const QQuickItem *mark : std::as_const(marks)) {
        QRectF area = mark->mapRectToScene(mark->boundingRect() |
                                           QRectF(0, 0, mark->width(), mark->height()));
        const QColor c = mark->property("color").value<QColor>();
        double alpha = c.alphaF();
        for (const QQuickItem *up = mark; up; up = up->parentItem()) {
            alpha *= up->opacity();
            if (up->clip())
                area &= up->mapRectToScene(up->boundingRect());
        }
        const QRect rect = area.toAlignedRect() & behind.rect();
        if (rect.isEmpty() || !mark->isEnabled())
            continue;
        // Under its glyphs; where none differ from what is behind, all of it.
        QSet<QRgb> under, all;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                const QRgb back = behind.pixel(x, y);
                all.insert(back);
                if (shown.pixel(x, y) != back)
                    under.insert(back);
            }
        }
        const bool symbol = mark->inherits("QQuickIconImage");
        const bool large = !symbol && mark->property("fontSizeMode").toInt() == 0 &&
                           mark->property("font").value<QFont>().pixelSize() >= 24;
        Finding finding{describe(mark), 21,
                        symbol ? Contrast::symbol : (large ? Contrast::largeText : Contrast::text)};
        for (const QRgb pixel : std::as_const(under.isEmpty() ? all : under)) {
            const Rgb drawn =
                Contrast::over({c.redF(), c.greenF(), c.blueF()}, alpha, rgbOf(pixel));
            finding.ratio = std::min(finding.ratio, Contrast::ratio(drawn, rgbOf(pixel)));
        }
        found.append(finding);
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
    // every time "Main" is shown.
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
        auto *mainController = main->property("controller").value<ViewController *>();
        mainController->handleGesture(ViewController::Swipe::Left);
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
};

QTEST_MAIN(TestScreenHost)
#include "tst_screenhost.moc"
