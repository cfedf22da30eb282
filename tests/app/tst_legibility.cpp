// SPDX-License-Identifier: MIT
#include "ScreenHarness.h"
#include "themes/Contrast.h"

#include <QHash>
#include <QImageReader>
#include <QJSValue>
#include <QQmlListReference>
#include <algorithm>

// Every text and symbol that a screen or dialog draws, against what is drawn
// behind it, in every theme and appearance. The colours are read from the
// items as they stand (colour, opacity of the item and its ancestors) and
// the background is composed from the rectangles, gradients and pictures
// painted before it, in paint order, the way the scene graph draws them.
// Pictures count with their darkest and lightest pixel at the size they are
// decoded at; gradients with both ends.
//
// TAVLO_CONTRAST_REPORT=1 prints the lowest ratio of each screen instead of
// failing, for a summary across themes.

namespace {

struct Paint
{
    Rgb color;
    double alpha = 1;
};

Rgb rgbOf(const QColor &c)
{
    return {c.redF(), c.greenF(), c.blueF()};
}

bool darker(const Rgb &a, const Rgb &b)
{
    return Contrast::luminance(a) < Contrast::luminance(b);
}

double opacityChain(const QQuickItem *item)
{
    double opacity = 1;
    for (; item; item = item->parentItem())
        opacity *= item->opacity();
    return opacity;
}

QRectF sceneRect(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

// The darkest and lightest pixel of a picture as decoded, with their alpha,
// and a clear one when the picture lets what is behind show through.
QList<Paint> pictureColors(const QQuickItem *image)
{
    static QHash<QString, QList<Paint>> known;
    const QUrl source = image->property("source").toUrl();
    const QSize size = image->property("sourceSize").toSize();
    const QString key = source.toString() + QString::number(size.width() * 100000 + size.height());
    if (const auto it = known.constFind(key); it != known.cend())
        return *it;
    QImageReader reader(source.scheme() == u"qrc" ? u':' + source.path() : source.toLocalFile());
    if (size.width() > 0 && size.height() > 0)
        reader.setScaledSize(size);
    const QImage picture = reader.read().convertToFormat(QImage::Format_ARGB32);
    QList<Paint> drawn;
    bool clear = false;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            clear = clear || pixel.alphaF() < 0.98;
            if (pixel.alphaF() >= 0.02)
                drawn.append({rgbOf(pixel), pixel.alphaF()});
        }
    }
    QList<Paint> paints;
    if (!drawn.isEmpty()) {
        const auto [low, high] =
            std::minmax_element(drawn.cbegin(), drawn.cend(), [](const Paint &a, const Paint &b) {
                return darker(a.color, b.color);
            });
        paints << *low << *high;
    }
    if (clear)
        paints << Paint{{0, 0, 0}, 0};
    known.insert(key, paints);
    return paints;
}

// What an item paints over the ones before it: nothing, or the colours it
// can put at a point.
QList<Paint> surfaceColors(const QQuickItem *item)
{
    QList<Paint> paints;
    if (item->inherits("QQuickRectangle")) {
        if (QObject *gradient = item->property("gradient").value<QJSValue>().toQObject()) {
            const QQmlListReference stops(gradient, "stops");
            for (qsizetype i = 0; i < stops.count(); ++i) {
                const QColor c = stops.at(i)->property("color").value<QColor>();
                paints.append({rgbOf(c), c.alphaF()});
            }
        }
        const QColor c = item->property("color").value<QColor>();
        if (paints.isEmpty() && c.alphaF() > 0)
            paints.append({rgbOf(c), c.alphaF()});
    } else if (item->inherits("QQuickImage") && !item->inherits("QQuickIconImage") &&
               !item->property("source").toUrl().isEmpty()) {
        paints = pictureColors(item);
    }
    return paints;
}

void inPaintOrder(QQuickItem *item, QList<QQuickItem *> &order)
{
    if (!item->isVisible() || item->opacity() <= 0)
        return;
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](QQuickItem *a, QQuickItem *b) { return a->z() < b->z(); });
    const auto below = std::partition_point(children.begin(), children.end(),
                                            [](QQuickItem *child) { return child->z() < 0; });
    std::for_each(children.begin(), below, [&](QQuickItem *child) { inPaintOrder(child, order); });
    order.append(item);
    std::for_each(below, children.end(), [&](QQuickItem *child) { inPaintOrder(child, order); });
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

// The lowest contrast of every text and symbol in scope, worst first.
QList<Finding> findings(QQuickWindow *window, bool popups)
{
    QList<QQuickItem *> order;
    inPaintOrder(window->contentItem(), order);
    const QRectF windowRect(QPointF(0, 0), window->size());

    QList<Finding> found;
    QList<QQuickItem *> before;
    for (qsizetype drawnAt = 0; drawnAt < order.size(); ++drawnAt) {
        QQuickItem *item = order.at(drawnAt);
        // The part of the window the item is drawn in, after every clipping ancestor.
        QRectF rect = item->mapRectToScene(item->boundingRect()) & windowRect;
        bool inPopup = item->inherits("QQuickPopupItem");
        for (const QQuickItem *up = item->parentItem(); up; up = up->parentItem()) {
            if (up->clip())
                rect &= up->mapRectToScene(up->boundingRect());
            inPopup = inPopup || up->inherits("QQuickPopupItem");
        }
        if (rect.isEmpty())
            continue;
        if (!surfaceColors(item).isEmpty())
            before.append(item);
        const bool text = item->inherits("QQuickText") || item->inherits("QQuickTextInput");
        const bool symbol = item->inherits("QQuickIconImage");
        if (!(text || symbol) || !item->isEnabled() || inPopup != popups ||
            (text && item->property("text").toString().trimmed().isEmpty()))
            continue;
        // What an opaque surface drawn later hides is not seen at all.
        if (std::any_of(order.cbegin() + drawnAt + 1, order.cend(), [&](const QQuickItem *later) {
                return later->inherits("QQuickRectangle") && opacityChain(later) > 0.999 &&
                       later->property("color").value<QColor>().alphaF() > 0.999 &&
                       sceneRect(later).contains(rect);
            }))
            continue;
        // What lies behind: each surface before it that covers it is
        // composed over every candidate; one that only partly covers it
        // adds its composition beside the candidates without it.
        QList<Rgb> behind{rgbOf(window->color())};
        for (const QQuickItem *surface : std::as_const(before)) {
            const QRectF covered = sceneRect(surface);
            if (surface == item || !covered.intersects(rect))
                continue;
            QList<Rgb> next = covered.contains(rect) ? QList<Rgb>{} : behind;
            for (const Paint &paint : surfaceColors(surface)) {
                for (const Rgb &under : behind)
                    next.append(
                        Contrast::over(paint.color, paint.alpha * opacityChain(surface), under));
            }
            if (next.size() > 64) {
                // Only the darkest and lightest can be the worst.
                const auto [low, high] = std::minmax_element(next.cbegin(), next.cend(), darker);
                next = {*low, *high};
            }
            behind = next;
        }
        const QColor c = item->property("color").value<QColor>();
        const bool large = text && item->property("fontSizeMode").toInt() == 0 &&
                           item->property("font").value<QFont>().pixelSize() >= 24;
        Finding finding{describe(item), 21,
                        symbol ? Contrast::symbol : (large ? Contrast::largeText : Contrast::text)};
        for (const Rgb &under : behind) {
            const Rgb drawn = Contrast::over(rgbOf(c), c.alphaF() * opacityChain(item), under);
            finding.ratio = std::min(finding.ratio, Contrast::ratio(drawn, under));
        }
        found.append(finding);
    }
    std::sort(found.begin(), found.end(), [](const Finding &a, const Finding &b) {
        return a.ratio / a.minimum < b.ratio / b.minimum;
    });
    return found;
}

} // namespace

class TestLegibility : public QObject
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

    QObject *controller(const QString &screen) const
    {
        return h->find(screen)->property("controller").value<QObject *>();
    }

    // A dialog or menu the screen's controller opens, looked at, then closed.
    void lookAtPopup(const QString &popup, QObject *controller, const char *open,
                     QGenericArgument argument = {})
    {
        QVERIFY(QMetaObject::invokeMethod(controller, open, argument));
        QTRY_VERIFY(h->opened(popup));
        look(popup, true);
        QMetaObject::invokeMethod(h->window->findChild<QObject *>(popup), "close");
        QTRY_VERIFY(!h->opened(popup));
    }

private slots:
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
        using namespace SettingsKeys;
        ScreenHarness harness;
        h = &harness;
        m_failures.clear();
        MemorySettingsStore &settings = harness.settings;
        settings.set(favorites, {{u"Anna"_qs, u"12 3 1985"_qs},
                                 {u"<i>Zoë</i> 🎂"_qs, u"29 2 1996"_qs},
                                 {u"Max Mustermann"_qs, u"24 12 1970"_qs},
                                 {u"Bob"_qs, u"1 1 2000"_qs}});
        settings.set(color, theme);
        for (const BooleanKey &key :
             {firstStartDone, moreDetails, star, handOverPending, handOverMovePicker})
            settings.set(key, true);
        settings.set(handOverName, u"Anna"_qs);
        settings.set(handOverBirthday, u"12 3 1985"_qs);
        harness.startApp({u"en-US"_qs}, appearance);

        look(u"main"_qs);
        lookAtPopup(u"addDialog"_qs, controller(u"mainView"_qs), "plusPressed");

        QVERIFY(harness.go(u"btnFav"_qs, u"favView"_qs));
        // The rows fly in one after another.
        QTest::qWait(1700);
        look(u"favorites"_qs);
        QObject *favView = controller(u"favView"_qs);
        QQuickItem *list = harness.find(u"tableView"_qs);
        QVERIFY(list->setProperty("openRow", 0));
        QTest::qWait(400);
        look(u"favorites, delete shown"_qs);
        list->setProperty("openRow", -1);
        lookAtPopup(u"editDialog"_qs, favView, "longPressed", Q_ARG(int, 0));
        lookAtPopup(u"sortMenu"_qs, favView, "sortPressed");
        QVERIFY(QMetaObject::invokeMethod(favView, "deleteRow", Q_ARG(int, 3)));
        QTRY_VERIFY(harness.shows(u"undoBar"_qs) && harness.find(u"undoBar"_qs)->opacity() == 1);
        // The deleted row fades out first.
        QTest::qWait(400);
        look(u"favorites, undo"_qs);

        QVERIFY(harness.go(u"btnBack"_qs, u"mainView"_qs));
        QVERIFY(harness.go(u"btnSet"_qs, u"setView"_qs));
        look(u"settings"_qs);
        QVERIFY(QMetaObject::invokeMethod(controller(u"setView"_qs), "infoPressed"));
        QTRY_VERIFY(harness.shows(u"scrollViewInfo"_qs));
        look(u"info"_qs);
        QVERIFY2(m_failures.isEmpty(), qPrintable(m_failures.join(u'\n')));
    }
};

QTEST_MAIN(TestLegibility)
#include "tst_legibility.moc"
