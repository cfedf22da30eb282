// SPDX-License-Identifier: MIT
#include "ScreenTour.h"

#include <QDir>
#include <QQuickItem>
#include <QTextLayout>

namespace {

// What a look at a screen found wrong, one line each.
using Faults = QStringList;

bool isText(const QQuickItem *item)
{
    return (item->inherits("QQuickText") || item->inherits("QQuickTextInput")) &&
           !item->property("text").toString().trimmed().isEmpty();
}

bool isSymbol(const QQuickItem *item)
{
    return isSymbolPicture(item);
}

bool isControl(const QQuickItem *item)
{
    return isButton(item) || isTavloType(item, "DateWheel") || item->inherits("QQuickTextField");
}

bool inPopup(const QQuickItem *item)
{
    for (const QQuickItem *up = item; up; up = up->parentItem()) {
        if (up->inherits("QQuickPopupItem"))
            return true;
    }
    return false;
}

// Notices that float over a screen for a moment (the undo bar, the save
// notice) and a row's keyboard buttons, which stand over its date and age
// while the keyboard is on it, lie over it on purpose: they are compared
// only among themselves.
QString floatingLayer(const QQuickItem *item)
{
    for (const QQuickItem *up = item; up; up = up->parentItem()) {
        if (up->objectName() == u"undoBar" || up->objectName() == u"saveNotice" ||
            up->objectName() == u"rowActions")
            return up->objectName();
    }
    return {};
}

bool isAncestor(const QQuickItem *up, const QQuickItem *item)
{
    for (const QQuickItem *at = item->parentItem(); at; at = at->parentItem()) {
        if (at == up)
            return true;
    }
    return false;
}

struct Mark
{
    const QQuickItem *item;
    QRectF shown;
    QString layer;
};

// Up to a pixel of anti-aliasing either way.
constexpr double slack = 1;

// Whether what `item` draws in `inner` lies within `outer`. Above a line
// of text its box keeps room for accents that few lines have.
bool reaches(const QQuickItem *item, const QRectF &inner, const QRectF &outer)
{
    const double above =
        isText(item) ? std::max(slack, 0.15 * item->property("font").value<QFont>().pixelSize())
                     : slack;
    return inner.left() >= outer.left() - slack && inner.right() <= outer.right() + slack &&
           inner.top() >= outer.top() - above && inner.bottom() <= outer.bottom() + slack;
}

// Every text, symbol and control shown (in a popup, or out of one): each
// text and symbol lies in the window and in whatever clips it (a list or a
// scrolled page only from side to side: what lies below is scrolled to), no
// text is cut short, and no two of them lie over each other. A control's
// own area may reach past the window's edge where what it draws does not.
Faults layoutFaults(QQuickWindow *window, bool popups)
{
    Faults faults;
    QList<Mark> marks;
    const QRectF windowRect(QPointF(0, 0), window->size());
    for (QList<QQuickItem *> scene{window->contentItem()}; !scene.isEmpty();) {
        QQuickItem *item = scene.takeLast();
        if (!item->isVisible() || item->opacity() <= 0)
            continue;
        scene.append(item->childItems());
        if ((!isText(item) && !isSymbol(item) && !isControl(item)) || inPopup(item) != popups)
            continue;
        const bool drawn = !isControl(item);
        // A text's own glyphs, wherever its alignment puts them; a control's
        // whole area.
        QRectF shown = item->mapRectToScene(
            isText(item) ? item->boundingRect() : QRectF(0, 0, item->width(), item->height()));
        bool scrolledAway = false;
        for (const QQuickItem *up = item->parentItem(); up; up = up->parentItem()) {
            if (!up->clip())
                continue;
            const QRectF clip = up->mapRectToScene(QRectF(0, 0, up->width(), up->height()));
            if (up->inherits("QQuickFlickable")) {
                if (shown.bottom() <= clip.top() || shown.top() >= clip.bottom()) {
                    scrolledAway = true;
                    break;
                }
                if (drawn &&
                    (shown.left() < clip.left() - slack || shown.right() > clip.right() + slack))
                    faults << u"%1 is cut at the side of %2"_qs.arg(describe(item), describe(up));
            } else if (drawn && !reaches(item, shown, clip)) {
                faults << u"%1 is cut by %2"_qs.arg(describe(item), describe(up));
            }
            shown &= clip;
        }
        if (scrolledAway)
            continue;
        if (drawn && !reaches(item, shown, windowRect))
            faults << u"%1 reaches out of the window"_qs.arg(describe(item));
        if (item->property("truncated").toBool())
            faults << u"%1 is cut short"_qs.arg(describe(item));
        // Image.Ready: a symbol named wrongly draws nothing.
        if (isSymbol(item) && item->property("status").toInt() != 1)
            faults << u"%1 has no picture"_qs.arg(describe(item));
        marks.append({item, shown & windowRect, floatingLayer(item)});
    }
    for (qsizetype i = 0; i < marks.size(); ++i) {
        for (qsizetype j = i + 1; j < marks.size(); ++j) {
            const Mark &a = marks.at(i);
            const Mark &b = marks.at(j);
            if (a.layer != b.layer || isAncestor(a.item, b.item) || isAncestor(b.item, a.item))
                continue;
            const QRectF both = a.shown & b.shown;
            if (both.width() > slack && both.height() > slack)
                faults << u"%1 and %2 overlap"_qs.arg(describe(a.item), describe(b.item));
        }
    }
    return faults;
}

// The most characters on one line of a text as it is laid out.
int longestLine(const QQuickItem *text)
{
    int longest = 0;
    const QFont font = text->property("font").value<QFont>();
    for (const QString &paragraph : text->property("text").toString().split(u'\n')) {
        QTextLayout layout(paragraph, font);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(text->width());
            longest = std::max(longest, line.textLength());
        }
        layout.endLayout();
    }
    return longest;
}

} // namespace

// The screens at the sizes of a phone, a tablet, a small and a large
// desktop window: nothing overlaps or is cut, the phone keeps its layout,
// and wider windows put the favorites beside the main screen, keep text to
// a readable measure and the buttons together.
//
// TAVLO_LAYOUT_SHOTS=folder saves a picture of every look there.
class TestLayout : public QObject
{
    Q_OBJECT

private slots:
    void fitsEverySize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("theme");
        QTest::addColumn<Appearance>("appearance");
        QTest::addColumn<QString>("language");
        const QList<QSize> sizes{{360, 720}, {720, 1280}, {1024, 768}, {1400, 900}};
        for (const QSize size : sizes) {
            const QByteArray at =
                QByteArray::number(size.width()) + 'x' + QByteArray::number(size.height());
            // German has the longest words, Russian the widest letters.
            QTest::newRow(at + " theme 0 dark en") << size << 0 << Appearance::Dark << "en-US";
            QTest::newRow(at + " theme 6 light de") << size << 6 << Appearance::Light << "de";
            QTest::newRow(at + " theme 9 dark ru") << size << 9 << Appearance::Dark << "ru";
        }
        // Every text 40% longer than English, on a phone and a desktop.
        QTest::newRow("360x720 theme 0 dark xx") << sizes[0] << 0 << Appearance::Dark << "xx";
        QTest::newRow("1400x900 theme 6 light xx") << sizes[3] << 6 << Appearance::Light << "xx";
    }
    void fitsEverySize()
    {
        QFETCH(QSize, size);
        QFETCH(int, theme);
        QFETCH(Appearance, appearance);
        QFETCH(QString, language);
        if (language == u"xx")
            QVERIFY2(languageFromCode(language), "the pseudo-language was not built");
        const QString shots = qEnvironmentVariable("TAVLO_LAYOUT_SHOTS");
        if (!shots.isEmpty())
            QDir().mkpath(shots);
        ScreenHarness h;
        Faults faults;
        QStringList looked;
        const bool wide = size.width() >= 600;
        ScreenTour::run(
            h, theme, appearance,
            [&](const QString &screen, bool popup) {
                looked << screen;
                QCOMPARE(h.window->size(), size);
                if (!shots.isEmpty()) {
                    h.window->grabWindow().save(
                        shots + u'/' +
                        u"%1-%2-theme%3-%4.png"_qs
                            .arg(QString::fromLatin1(QTest::currentDataTag()).section(u' ', 0, 0),
                                 QString(screen).replace(u", "_qs, u"-"_qs).replace(u' ', u'-'))
                            .arg(theme)
                            .arg(language.left(2)));
                }
                // A card swiped aside slides out of the window on purpose.
                if (screen != u"favorites, delete shown") {
                    for (const QString &fault : layoutFaults(h.window, popup))
                        faults << screen + u": "_qs + fault;
                }
                if (popup)
                    return;
                // Two panes wide, one on a phone.
                const bool both = h.shows(u"mainView"_qs) && h.shows(u"favView"_qs);
                if (screen == u"main" || screen.startsWith(u"favorites"))
                    QCOMPARE(both, wide);
                if (screen == u"main") {
                    const QQuickItem *bar = h.find(u"bottomBar"_qs);
                    // Beside the list the bar holds three buttons.
                    QCOMPARE(h.shows(u"btnFav"_qs), !wide);
                    if (h.find(u"mainView"_qs)->width() >= 600)
                        QVERIFY2(bar->width() <= 3 * 72 + 2 * 8, "the buttons are spread");
                    else
                        QCOMPARE(bar->width(), h.find(u"mainView"_qs)->width());
                }
                // A readable measure in characters holds for real words; the
                // pseudo-language's padding is narrower.
                if (screen == u"info" && language != u"xx") {
                    const int longest = longestLine(h.find(u"labelInfo"_qs));
                    QVERIFY2(longest <= 85, qPrintable(u"lines of %1 characters"_qs.arg(longest)));
                }
                if (screen == u"settings") {
                    if (language == u"xx")
                        QVERIFY(h.text(u"lblDetails"_qs).startsWith(u'['));
                    // The switch and its words stay together.
                    const QQuickItem *toggle = h.find(u"switchDetails"_qs);
                    const QQuickItem *label = h.find(u"lblDetails"_qs);
                    const double apart =
                        label->mapToScene(QPointF(label->property("contentWidth").toReal(), 0))
                            .x() -
                        toggle->mapToScene(QPointF(0, 0)).x();
                    QVERIFY2(apart <= 800,
                             qPrintable(u"switch and words %1 px apart"_qs.arg(apart)));
                }
            },
            language, size);
        QCOMPARE(looked.size(), 12);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }
};

QTEST_MAIN(TestLayout)
#include "tst_layout.moc"
