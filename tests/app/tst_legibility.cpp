// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "app/ScreenFactory.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"
#include "themes/Contrast.h"

#include <QHash>
#include <QImageReader>
#include <QJSValue>
#include <QQmlApplicationEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <algorithm>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

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

double opacityChain(const QQuickItem *item)
{
    double opacity = 1;
    for (; item; item = item->parentItem())
        opacity *= item->opacity();
    return opacity;
}

// The part of the window the item is drawn in, after every clipping ancestor.
QRectF visibleRect(const QQuickItem *item, const QRectF &window)
{
    QRectF rect = item->mapRectToScene(item->boundingRect()) & window;
    for (const QQuickItem *up = item->parentItem(); up && !rect.isEmpty(); up = up->parentItem()) {
        if (up->clip())
            rect &= up->mapRectToScene(up->boundingRect());
    }
    return rect;
}

bool insidePopup(const QQuickItem *item)
{
    for (; item; item = item->parentItem()) {
        if (item->inherits("QQuickPopupItem"))
            return true;
    }
    return false;
}

// The darkest and lightest pixel of a picture as decoded, with their alpha,
// and a clear one when the picture lets what is behind show through.
QList<Paint> pictureColors(const QQuickItem *image)
{
    static QHash<QString, QList<Paint>> known;
    const QUrl source = image->property("source").toUrl();
    const QSize size = image->property("sourceSize").toSize();
    const QString key =
        source.toString() + QString::number(size.width()) + u'x' + QString::number(size.height());
    if (const auto it = known.constFind(key); it != known.cend())
        return *it;
    QImageReader reader(source.scheme() == u"qrc" ? u':' + source.path() : source.toLocalFile());
    if (size.width() > 0 && size.height() > 0)
        reader.setScaledSize(size);
    const QImage picture = reader.read().convertToFormat(QImage::Format_ARGB32);
    QList<Paint> paints;
    Paint darkest{{1, 1, 1}, 0}, lightest{{0, 0, 0}, 0};
    bool clear = false;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (pixel.alphaF() < 0.98)
                clear = true;
            if (pixel.alphaF() < 0.02)
                continue;
            const Rgb rgb = rgbOf(pixel);
            if (darkest.alpha == 0 || Contrast::luminance(rgb) < Contrast::luminance(darkest.color))
                darkest = {rgb, pixel.alphaF()};
            if (lightest.alpha == 0 ||
                Contrast::luminance(rgb) > Contrast::luminance(lightest.color))
                lightest = {rgb, pixel.alphaF()};
        }
    }
    if (darkest.alpha > 0)
        paints << darkest << lightest;
    if (clear)
        paints << Paint{{0, 0, 0}, 0};
    known.insert(key, paints);
    return paints;
}

// What an item paints over the ones before it: nothing, or the colours it
// can put at a point.
QList<Paint> surfaceColors(const QQuickItem *item)
{
    if (item->inherits("QQuickRectangle")) {
        QList<Paint> paints;
        if (QObject *gradient = item->property("gradient").value<QJSValue>().toQObject()) {
            const QQmlListReference stops(gradient, "stops");
            for (qsizetype i = 0; i < stops.count(); ++i) {
                const QColor c = stops.at(i)->property("color").value<QColor>();
                paints.append({rgbOf(c), c.alphaF()});
            }
            if (!paints.isEmpty())
                return paints;
        }
        const QColor c = item->property("color").value<QColor>();
        if (c.alphaF() > 0)
            paints.append({rgbOf(c), c.alphaF()});
        return paints;
    }
    if (item->inherits("QQuickImage") && !item->inherits("QQuickIconImage") &&
        !item->property("source").toUrl().isEmpty())
        return pictureColors(item);
    return {};
}

struct Drawn
{
    QQuickItem *item;
    QRectF rect;
};

void inPaintOrder(QQuickItem *item, QList<QQuickItem *> &order)
{
    if (!item->isVisible() || item->opacity() <= 0)
        return;
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](QQuickItem *a, QQuickItem *b) { return a->z() < b->z(); });
    for (QQuickItem *child : children) {
        if (child->z() < 0)
            inPaintOrder(child, order);
    }
    order.append(item);
    for (QQuickItem *child : children) {
        if (child->z() >= 0)
            inPaintOrder(child, order);
    }
}

struct Finding
{
    QString what;
    double ratio = 21;
    double minimum = Contrast::text;
    QRectF rect;
    qsizetype drawnAt = 0;
};

// Whether an item paints one opaque colour over all it covers.
bool opaque(const QQuickItem *item)
{
    if (!item->inherits("QQuickRectangle") || opacityChain(item) < 0.999)
        return false;
    return item->property("color").value<QColor>().alphaF() > 0.999;
}

QString describe(const QQuickItem *item)
{
    QString name = item->objectName();
    for (const QQuickItem *up = item->parentItem(); name.isEmpty() && up; up = up->parentItem())
        name = up->objectName();
    const QString text = item->property("text").toString().left(24).replace(u'\n', u' ');
    return (name.isEmpty() ? QString::fromLatin1(item->metaObject()->className()) : name) +
           (text.isEmpty() ? QString() : QStringLiteral(" \"") + text + u'"');
}

// The lowest contrast of every text and symbol in scope, worst first.
QList<Finding> findings(QQuickWindow *window, bool popups)
{
    QList<QQuickItem *> order;
    inPaintOrder(window->contentItem(), order);
    const QRectF windowRect(QPointF(0, 0), window->size());
    const Rgb windowColor = rgbOf(window->color());

    QList<Finding> found;
    QList<Drawn> before;
    for (QQuickItem *item : order) {
        const QRectF rect = visibleRect(item, windowRect);
        if (rect.isEmpty())
            continue;
        const bool text = item->inherits("QQuickText") || item->inherits("QQuickTextInput");
        const bool symbol = item->inherits("QQuickIconImage");
        if ((text || symbol) && item->isEnabled() && insidePopup(item) == popups &&
            !(text && item->property("text").toString().trimmed().isEmpty())) {
            // What lies behind: each surface before it that covers it is
            // composed over every candidate; one that only partly covers it
            // adds its composition beside the candidates without it.
            QList<Rgb> behind{windowColor};
            for (const Drawn &surface : before) {
                if (!surface.rect.intersects(rect))
                    continue;
                const double opacity = opacityChain(surface.item);
                QList<Rgb> next = surface.rect.contains(rect) ? QList<Rgb>{} : behind;
                for (const Paint &paint : surfaceColors(surface.item)) {
                    for (const Rgb &under : behind)
                        next.append(Contrast::over(paint.color, paint.alpha * opacity, under));
                }
                if (next.size() > 64) {
                    // Only the darkest and lightest can be the worst.
                    const auto [low, high] = std::minmax_element(
                        next.cbegin(), next.cend(), [](const Rgb &a, const Rgb &b) {
                            return Contrast::luminance(a) < Contrast::luminance(b);
                        });
                    next = {*low, *high};
                }
                behind = next;
            }
            const QColor c = item->property("color").value<QColor>();
            const double alpha = c.alphaF() * opacityChain(item);
            const bool large = text && item->property("fontSizeMode").toInt() == 0 &&
                               item->property("font").value<QFont>().pixelSize() >= 24;
            Finding finding{describe(item), 21,
                            symbol ? Contrast::symbol
                                   : (large ? Contrast::largeText : Contrast::text),
                            rect, order.indexOf(item)};
            for (const Rgb &under : behind) {
                finding.ratio = std::min(
                    finding.ratio, Contrast::ratio(Contrast::over(rgbOf(c), alpha, under), under));
            }
            found.append(finding);
        }
        if (!surfaceColors(item).isEmpty())
            before.append(
                {item, item->mapRectToScene(QRectF(0, 0, item->width(), item->height()))});
    }
    // What an opaque surface drawn later hides is not seen at all.
    found.removeIf([&](const Finding &finding) {
        for (qsizetype i = finding.drawnAt + 1; i < order.size(); ++i) {
            const QQuickItem *later = order.at(i);
            if (opaque(later) &&
                later->mapRectToScene(QRectF(0, 0, later->width(), later->height()))
                    .contains(finding.rect))
                return true;
        }
        return false;
    });
    std::sort(found.begin(), found.end(), [](const Finding &a, const Finding &b) {
        return a.ratio / a.minimum < b.ratio / b.minimum;
    });
    return found;
}

QQuickItem *findItem(QQuickWindow *window, const QString &name)
{
    for (QQuickItem *item : window->findChildren<QQuickItem *>(name)) {
        if (item->isVisible())
            return item;
    }
    return nullptr;
}

QObject *controllerOf(QQuickWindow *window, const char *screen)
{
    QQuickItem *item = findItem(window, QLatin1String(screen));
    return item ? item->property("controller").value<QObject *>() : nullptr;
}

} // namespace

class TestLegibility : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    bool m_report = qEnvironmentVariableIsSet("TAVLO_CONTRAST_REPORT");

    void look(QQuickWindow *window, const QString &screen, bool popup, QStringList &failures)
    {
        const QList<Finding> found = findings(window, popup);
        QVERIFY2(!found.isEmpty(), qPrintable(screen + u": nothing drawn"_qs));
        if (m_report) {
            const Finding &worst = found.first();
            qInfo("%s\t%s\t%.2f\t%s", QTest::currentDataTag(), qPrintable(screen), worst.ratio,
                  qPrintable(worst.what));
        }
        for (const Finding &finding : found) {
            if (finding.ratio < finding.minimum - 1e-9)
                failures.append(QStringLiteral("%1: %2 has %3:1, needs %4:1")
                                    .arg(screen, finding.what)
                                    .arg(finding.ratio, 0, 'f', 2)
                                    .arg(finding.minimum));
        }
    }

    void tap(QQuickWindow *window, const char *name)
    {
        QQuickItem *item = findItem(window, QLatin1String(name));
        QVERIFY2(item, name);
        QTest::mouseClick(
            window, Qt::LeftButton, {},
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    }

    static bool popupShown(QQuickWindow *window, const char *name)
    {
        QObject *popup = window->findChild<QObject *>(QLatin1String(name));
        return popup && popup->property("opened").toBool();
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
        MemorySettingsStore settings;
        settings.set(SettingsKeys::favorites,
                     {{QStringLiteral("Anna"), QStringLiteral("12 3 1985")},
                      {QStringLiteral("<i>Zoë</i> 🎂"), QStringLiteral("29 2 1996")},
                      {QStringLiteral("Max Mustermann"), QStringLiteral("24 12 1970")},
                      {QStringLiteral("Bob"), QStringLiteral("1 1 2000")}});
        settings.set(SettingsKeys::color, theme);
        settings.set(SettingsKeys::firstStartDone, true);
        settings.set(SettingsKeys::moreDetails, true);
        settings.set(SettingsKeys::star, true);
        settings.set(SettingsKeys::handOverPending, true);
        settings.set(SettingsKeys::handOverMovePicker, true);
        settings.set(SettingsKeys::handOverName, QStringLiteral("Anna"));
        settings.set(SettingsKeys::handOverBirthday, QStringLiteral("12 3 1985"));
        FixedClock clock(at(2026, 11, 22, 12));
        Session session(settings, clock, {QStringLiteral("en-US")}, appearance);
        ScreenFactory factory(session);
        QQmlApplicationEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        engine.setInitialProperties({{QStringLiteral("screens"), QVariant::fromValue(&factory)}});
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/app/Main.qml")));
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
        QVERIFY(window && QTest::qWaitForWindowExposed(window));

        QStringList failures;
        look(window, u"main"_qs, false, failures);

        QObject *main = controllerOf(window, "mainView");
        QVERIFY(main);
        QVERIFY(QMetaObject::invokeMethod(main, "plusPressed"));
        QTRY_VERIFY(popupShown(window, "addDialog"));
        look(window, u"add dialog"_qs, true, failures);
        QMetaObject::invokeMethod(window->findChild<QObject *>(u"addDialog"_qs), "close");
        QTRY_VERIFY(!popupShown(window, "addDialog"));

        tap(window, "btnFav");
        QTRY_VERIFY(!findItem(window, u"mainView"_qs) && findItem(window, u"favView"_qs));
        // The rows fly in one after another.
        QTest::qWait(1700);
        look(window, u"favorites"_qs, false, failures);
        QObject *favorites = controllerOf(window, "favView");
        if (QQuickItem *list = findItem(window, u"tableView"_qs); list->setProperty("openRow", 0)) {
            QTest::qWait(400);
            look(window, u"favorites, delete shown"_qs, false, failures);
            list->setProperty("openRow", -1);
        }
        QVERIFY(QMetaObject::invokeMethod(favorites, "longPressed", Q_ARG(int, 0)));
        QTRY_VERIFY(popupShown(window, "editDialog"));
        look(window, u"edit dialog"_qs, true, failures);
        QMetaObject::invokeMethod(window->findChild<QObject *>(u"editDialog"_qs), "close");
        QTRY_VERIFY(!popupShown(window, "editDialog"));
        QVERIFY(QMetaObject::invokeMethod(favorites, "sortPressed"));
        QTRY_VERIFY(popupShown(window, "sortMenu"));
        look(window, u"sort menu"_qs, true, failures);
        QMetaObject::invokeMethod(window->findChild<QObject *>(u"sortMenu"_qs), "close");
        QTRY_VERIFY(!popupShown(window, "sortMenu"));
        QVERIFY(QMetaObject::invokeMethod(favorites, "deleteRow", Q_ARG(int, 3)));
        if (findItem(window, u"favView"_qs)->findChild<QQuickItem *>(u"undoBar"_qs)) {
            QTRY_VERIFY(findItem(window, u"undoBar"_qs) &&
                        findItem(window, u"undoBar"_qs)->opacity() == 1);
            // The deleted row fades out first.
            QTest::qWait(400);
            look(window, u"favorites, undo"_qs, false, failures);
        }

        tap(window, "btnBack");
        QTRY_VERIFY(!findItem(window, u"favView"_qs) && findItem(window, u"mainView"_qs));
        tap(window, "btnSet");
        QTRY_VERIFY(!findItem(window, u"mainView"_qs) && findItem(window, u"setView"_qs));
        look(window, u"settings"_qs, false, failures);
        QVERIFY(QMetaObject::invokeMethod(controllerOf(window, "setView"), "infoPressed"));
        QTRY_VERIFY(findItem(window, u"scrollViewInfo"_qs));
        look(window, u"info"_qs, false, failures);

        if (!m_report)
            QVERIFY2(failures.isEmpty(), qPrintable(failures.join(u'\n')));
    }
};

QTEST_MAIN(TestLegibility)
#include "tst_legibility.moc"
