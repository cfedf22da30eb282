// SPDX-License-Identifier: MIT
#pragma once

#include "ScreenHarness.h"

#include <QQuickItem>
#include <QTest>
#include <functional>

// An item as a finding names it: its own or its nearest named parent's
// objectName, and the start of its text.
// A symbol drawn in one colour: Qt's icon item, or one of Tavlo's tinted
// symbols (image://symbol/).
inline bool isSymbolPicture(const QQuickItem *item)
{
    return item->inherits("QQuickIconImage") ||
           (item->inherits("QQuickImage") &&
            item->property("source").toUrl().toString().startsWith(u"image://symbol/"));
}

// An item of one of Tavlo's own QML types (SymbolButton, DateWheel).
inline bool isTavloType(const QQuickItem *item, const char *type)
{
    return QByteArray(item->metaObject()->className()).startsWith(QByteArray(type) + "_QMLTYPE_");
}

// A control a tap presses: Qt Quick Controls' buttons, and the symbol
// buttons made of Qt Quick alone.
inline bool isButton(const QQuickItem *item)
{
    return item->inherits("QQuickAbstractButton") || isTavloType(item, "SymbolButton");
}

inline QString describe(const QQuickItem *item)
{
    QString name = item->objectName();
    for (const QQuickItem *up = item->parentItem(); name.isEmpty() && up; up = up->parentItem())
        name = up->objectName();
    const QString text = item->property("text").toString().left(24).replace(u'\n', u' ');
    return (name.isEmpty() ? QString::fromLatin1(item->metaObject()->className()) : name) +
           (text.isEmpty() ? QString() : u" \""_qs + text + u'"');
}

// The whole app, every screen, dialog and menu shown in turn with a list of
// favorites whose names need every bundled face (a sign, an emoji, markup)
// and one whose birthday cannot be read (listed as such, and told of),
// so that a test can look at each. `look` is called with the screen's name
// and whether it is a popup, while it is shown and still. The harness's
// settings take the theme `theme` and every switch on; the app speaks
// `language`. In a window wide enough for two panes, the favorites stand
// beside the main screen from the start.
class ScreenTour
{
public:
    using Look = std::function<void(const QString &screen, bool popup)>;

    static void run(ScreenHarness &h, int theme, Appearance appearance, const Look &look,
                    const QString &language = u"en-US"_qs, QSize size = {})
    {
        using namespace SettingsKeys;
        MemorySettingsStore &settings = h.settings;
        settings.set(favorites, {{u"Anna"_qs, u"12 3 1985"_qs},
                                 {u"<i>Zoë</i> 🎂"_qs, u"29 2 1996"_qs},
                                 {u"Max Mustermann"_qs, u"24 12 1970"_qs},
                                 {u"Bob"_qs, u"1 1 2000"_qs},
                                 {u"Cleo"_qs, u"soon"_qs}});
        settings.set(color, theme);
        for (const BooleanKey &key :
             {firstStartDone, moreDetails, star, handOverPending, handOverMovePicker})
            settings.set(key, true);
        settings.set(handOverName, u"Anna"_qs);
        settings.set(handOverBirthday, u"12 3 1985"_qs);
        h.startApp({language}, appearance, size);

        const bool together = h.shows(u"favView"_qs);
        // The rows fly in one after another.
        if (together)
            QTest::qWait(1700);
        look(u"main"_qs, false);
        lookAtPopup(h, look, u"addDialog"_qs, controller(h, u"mainView"_qs), "plusPressed");

        if (!together) {
            QVERIFY(h.go(u"btnFav"_qs, u"favView"_qs));
            QTest::qWait(1700);
        }
        look(u"favorites"_qs, false);
        // A card the keyboard is on shows its own edit and delete buttons.
        QQuickItem *card = h.find(u"cell0"_qs);
        card->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(h.shows(u"rowActions"_qs));
        look(u"favorites, row buttons"_qs, false);
        card->setFocus(false);
        QTRY_VERIFY(!h.shows(u"rowActions"_qs));
        QObject *favView = controller(h, u"favView"_qs);
        QVERIFY(favView->setProperty("openRow", 0));
        QTest::qWait(400);
        look(u"favorites, delete shown"_qs, false);
        favView->setProperty("openRow", -1);
        lookAtPopup(h, look, u"editDialog"_qs, favView, "longPressed", Q_ARG(int, 0));
        lookAtPopup(h, look, u"sortMenu"_qs, favView, "sortPressed");
        QQuickItem *list = h.find(u"tableView"_qs);
        QVERIFY(QMetaObject::invokeMethod(list, "rowMenuRequested", Q_ARG(int, 1),
                                          Q_ARG(QString, u"<i>Zoë</i> 🎂"_qs)));
        QTRY_VERIFY(h.opened(u"rowMenu"_qs));
        look(u"rowMenu"_qs, true);
        QMetaObject::invokeMethod(h.window->findChild<QObject *>(u"rowMenu"_qs), "close");
        QTRY_VERIFY(!h.opened(u"rowMenu"_qs));
        QVERIFY(QMetaObject::invokeMethod(favView, "deleteRow", Q_ARG(int, 3)));
        QTRY_VERIFY(h.shows(u"undoBar"_qs) && h.find(u"undoBar"_qs)->opacity() == 1);
        // The deleted row fades out first.
        QTest::qWait(400);
        look(u"favorites, undo"_qs, false);

        if (!together)
            QVERIFY(h.go(u"btnBack"_qs, u"mainView"_qs));
        QVERIFY(h.go(u"btnSet"_qs, u"setView"_qs));
        look(u"settings"_qs, false);
        lookAtPopup(h, look, u"syncDialog"_qs, h.window->findChild<QObject *>(u"syncDialog"_qs),
                    "open");
        QVERIFY(QMetaObject::invokeMethod(controller(h, u"setView"_qs), "infoPressed"));
        QTRY_VERIFY(h.shows(u"scrollViewInfo"_qs));
        look(u"info"_qs, false);
    }

private:
    static QObject *controller(const ScreenHarness &h, const QString &screen)
    {
        return h.find(screen)->property("controller").value<QObject *>();
    }

    // A dialog or menu the screen's controller opens, looked at, then closed.
    static void lookAtPopup(ScreenHarness &h, const Look &look, const QString &popup,
                            QObject *controller, const char *open, QGenericArgument argument = {})
    {
        QVERIFY(QMetaObject::invokeMethod(controller, open, argument));
        QTRY_VERIFY(h.opened(popup));
        look(popup, true);
        QMetaObject::invokeMethod(h.window->findChild<QObject *>(popup), "close");
        QTRY_VERIFY(!h.opened(popup));
    }
};
