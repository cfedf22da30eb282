// SPDX-License-Identifier: MIT
#include "DiskFaults.h"
#include "PortalStandIn.h"
#include "ScreenHarness.h"
#include "TestFiles.h"
#include "WithoutIds.h"
#include "favoritesScreen/FavoritesScreenController.h"
#include "platform/linux/PortalFileChooser.h"
#include "settings/FileSettingsStore.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSignalSpy>
#include <optional>

using namespace SettingsKeys;

namespace {

using Rows = QList<QStringList>;

Rows people()
{
    return {{"bob", "12 3 1985"}, {"Anna", "22 11 1990"}, {"Zoe", "1 1 2000"}};
}

QStringList names(const Rows &rows)
{
    QStringList result;
    for (const QStringList &row : rows)
        result.append(row.value(0));
    return result;
}

// A home folder of the test's own, where the file dialogs start, for as
// long as it lives.
class TemporaryHome
{
public:
    TemporaryHome() { qputenv("HOME", m_home.path().toUtf8()); }
    ~TemporaryHome() { qputenv("HOME", m_old); }
    QString filePath(const QString &name) const { return m_home.filePath(name); }

private:
    QByteArray m_old = qgetenv("HOME");
    QTemporaryDir m_home;
};

} // namespace

class TestFavoritesScreen : public QObject
{
    Q_OBJECT

    std::optional<ScreenHarness> h;
    FavoritesScreenController *c = nullptr;

    void start(const QStringList &preferred = {"en-US"}, bool settle = true)
    {
        c = h->show<FavoritesScreenController>("favoritesScreen/FavoritesScreen.qml", preferred);
        QTRY_COMPARE(count(), h->session->favorites.count());
        if (settle)
            waitForRowsInPlace();
    }

    // The rows fly in when the screen appears; a tap lands where they settle.
    void waitForRowsInPlace()
    {
        for (int row = 0; row < std::min(count(), 10); ++row)
            QTRY_COMPARE_WITH_TIMEOUT(cell(row) ? cell(row)->y() : -1.0, row * 66.0, 4000);
    }

    int count() const { return h->find("tableView")->property("count").toInt(); }
    QQuickItem *cell(int row) const { return h->find(u"cell"_qs + QString::number(row)); }
    QString name(int row) const { return h->text("labelName", cell(row)); }
    Rows stored() const { return namesAndBirthdays(h->settings.value(favorites)); }
    QString storedId(qsizetype row) const { return h->settings.value(favorites)->at(row).value(2); }
    void openEditDialog(int row)
    {
        QTest::mousePress(h->window, Qt::LeftButton, {}, h->centre(cell(row)));
        QTRY_VERIFY(h->opened("editDialog"));
        QTest::mouseRelease(h->window, Qt::LeftButton, {}, h->centre(cell(row)));
    }

    void swipeLeft(int row, int distance, int steps, int ms)
    {
        h->drag(h->centre(cell(row)) + QPoint(150, 0), QPoint(-distance, 0), steps, ms);
    }

    bool deleteShown(int row) const { return h->find("deleteAction", cell(row))->isVisible(); }

private slots:
    void init()
    {
        h.emplace();
        h->settings.set(firstStartDone, true);
    }
    void cleanup() { h.reset(); }

    // Names that look like markup are shown as typed: as rich text "<Mama>"
    // would draw nothing at all.
    void cardsShowTheirFavorites()
    {
        h->settings.set(
            favorites,
            Rows{{"  Ann  ", "22 11 1985"}, {"   ", "21 11 1990"}, {"<Mama>", "12 3 1985"}});
        h->settings.set(star, true);
        h->settings.set(weekday, true);
        h->settings.set(sort, 0);
        start();
        // Plain code-point order: blanks come before letters.
        QCOMPARE(cell(1)->height(), 66.0);
        QCOMPARE(name(1), "  Ann");
        QCOMPARE(h->text("labelBD", cell(1)), "Friday, November 22, 1985");
        QCOMPARE(h->text("labelAge", cell(1)), "41");
        QCOMPARE(h->text("labelStar", cell(1)), "★");
        QCOMPARE(cell(0)->height(), 66.0);
        QCOMPARE(name(0), "Unknown");
        QCOMPARE(h->text("labelAge", cell(0)), "36");
        QCOMPARE(h->text("labelStar", cell(0)), QString());
        QCOMPARE(name(2), "<Mama>");
        QQuickItem *label = h->find("labelName", cell(2));
        QCOMPARE(label->property("textFormat").toInt(), 0); // Text.PlainText
        QVERIFY(label->property("contentWidth").toReal() > 30);
        QTRY_COMPARE(h->text("footerCount"), "Entries: 3");
        QCOMPARE(h->text("titleLabel"), "Favorites");
    }

    // The screen's texts in the interface language, the month names in the
    // device's (English here). An empty list says how to add someone, and
    // the hint goes once there is a favorite again.
    void textsInTheInterfaceLanguage_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QStringList>("texts"); // title, birthday, undo, how the hint begins
        QTest::newRow("English") << "en-US"
                                 << QStringList{"Favorites", "March 12, 1985", "Deleted: Анна",
                                                "No favorites yet. To add someone, go back,"};
        QTest::newRow("German") << "de-DE"
                                << QStringList{"Favoriten", "12. March 1985", "Gelöscht: Анна",
                                               "Noch keine Favoriten. Um jemanden hinzuzufügen,"};
        QTest::newRow("Russian") << "ru"
                                 << QStringList{"Избранные", "12. March 1985", "Удалено: Анна",
                                                "Избранных пока нет. Чтобы добавить человека,"};
    }
    void textsInTheInterfaceLanguage()
    {
        QFETCH(QString, language);
        QFETCH(QStringList, texts);
        h->settings.set(favorites, Rows{{"Анна", "12 3 1985"}});
        start({language});
        QCOMPARE(h->text("titleLabel"), texts[0]);
        QCOMPARE(h->text("labelBD", cell(0)), texts[1]);
        QVERIFY(!h->shows("emptyHint"));
        c->deleteRow(0);
        QCOMPARE(h->text("undoLabel"), texts[2]);
        QTRY_VERIFY(h->shows("emptyHint"));
        QVERIFY2(h->text("emptyHint").startsWith(texts[3]), qPrintable(h->text("emptyHint")));
        c->undoDelete();
        QTRY_VERIFY(!h->shows("emptyHint"));
    }

    void sortMenu_data()
    {
        QTest::addColumn<int>("choice");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("by name") << 0 << QStringList{"Anna", "Zoe", "bob"};
        QTest::newRow("by age") << 1 << QStringList{"Zoe", "Anna", "bob"};
        QTest::newRow("by birthday") << 2 << QStringList{"Zoe", "bob", "Anna"};
    }
    void sortMenu()
    {
        QFETCH(int, choice);
        QFETCH(QStringList, order);
        h->settings.set(favorites, people());
        h->settings.set(sort, choice == 0 ? 1 : 0);
        start();
        h->tap("btnSort");
        QTRY_VERIFY(h->opened("sortMenu"));
        // Only Escape closes it without a choice, never a tap beside it.
        QCOMPARE(h->window->findChild<QObject *>("sortMenu")->property("closePolicy").toInt(),
                 0x10);
        h->tap(u"sortChoice"_qs + QString::number(choice));
        QTRY_VERIFY(!h->opened("sortMenu"));
        QCOMPARE(h->settings.value(sort), choice);
        QCOMPARE(names(stored()), order);
        QTRY_COMPARE(name(0), order.at(0));
        waitForRowsInPlace();
        QCOMPARE(name(2), order.at(2));
    }

    void tappingAFavoriteHandsItToTheMainScreen()
    {
        h->settings.set(favorites, people());
        start();
        QSignalSpy requested(c, &FavoritesScreenController::screenRequested);
        h->tap(cell(1));
        QTRY_COMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).value<Screen>(), Screen::Main);
        QCOMPARE(h->settings.value(handOverIndex), 1);
        QCOMPARE(h->settings.value(handOverName), stored().at(1).at(0));
    }

    void longPressEditsTheRow()
    {
        h->settings.set(favorites, Rows{{"Anna", "05 07 1985"}, {"Bob", "1 1 2000"}});
        h->settings.set(sort, 0);
        start();
        // Below the rows a long press does nothing.
        QTest::mousePress(h->window, Qt::LeftButton, {}, QPoint(195, 700));
        QTest::qWait(1200);
        QTest::mouseRelease(h->window, Qt::LeftButton, {}, QPoint(195, 700));
        QVERIFY(!h->opened("editDialog"));
        QTest::mousePress(h->window, Qt::LeftButton, {}, h->centre(cell(0)));
        QTRY_VERIFY(h->opened("editDialog"));
        QTest::mouseRelease(h->window, Qt::LeftButton, {}, h->centre(cell(0)));
        QCOMPARE(h->text("editNameField"), "Anna");
        const auto wheel = [&](const char *name) { return h->find(name); };
        QCOMPARE(wheel("editDayWheel")->property("currentIndex").toInt(), 4);
        QCOMPARE(wheel("editMonthWheel")->property("currentIndex").toInt(), 6);
        QCOMPARE(wheel("editYearWheel")->property("currentIndex").toInt(), 1985 - 1800);

        h->find("editNameField")->setProperty("text", QString());
        wheel("editYearWheel")->setProperty("currentIndex", 2001 - 1800);
        h->tap("editOkButton");
        QTRY_VERIFY(!h->opened("editDialog"));
        QCOMPARE(stored(), (Rows{{"", "5 7 2001"}, {"Bob", "1 1 2000"}}));
        QTRY_COMPARE(name(0), "Unknown");
    }

    // The row's own buttons come with the keyboard: Tab walks from the row
    // through them, and they stay while it does.
    void keyboardWalksIntoTheRowsButtons()
    {
        h->settings.set(favorites, people());
        h->settings.set(sort, 0);
        start();
        const auto focused = [&](const QString &name) {
            QQuickItem *item = h->find(name, cell(1));
            return item && item->hasActiveFocus();
        };
        cell(1)->forceActiveFocus(Qt::TabFocusReason);
        QTRY_VERIFY(h->find("rowActions", cell(1)) && h->find("rowActions", cell(1))->isVisible());
        QTest::keyClick(h->window, Qt::Key_Tab);
        QTRY_VERIFY(focused("editRow1"));
        QTest::keyClick(h->window, Qt::Key_Tab);
        QTRY_VERIFY(focused("deleteRow1"));
        QVERIFY(h->find("rowActions", cell(1))->isVisible());
        QTest::keyClick(h->window, Qt::Key_Space);
        QTRY_COMPARE(names(stored()), (QStringList{"Anna", "bob"}));
    }

    // A right click, the menu key or Shift+F10 on a row opens its menu of
    // Edit and Delete, named after the favorite; a right click gives the row
    // no keyboard focus (its buttons would come up), the keys keep it there.
    void rowMenuEditsAndDeletes_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("choice");
        for (const char *way : {"right click", "menu key", "shift F10"}) {
            QTest::addRow("%s, edit", way) << way << "rowMenuEdit";
            QTest::addRow("%s, delete", way) << way << "rowMenuDelete";
        }
        QTest::newRow("right click, cancel") << "right click"
                                             << "rowMenuCancel";
    }
    void rowMenuEditsAndDeletes()
    {
        QFETCH(QString, way);
        QFETCH(QString, choice);
        h->settings.set(favorites, people());
        h->settings.set(sort, 0);
        start();
        const Rows before = stored();
        QSignalSpy requested(c, &FavoritesScreenController::screenRequested);
        if (way == "right click") {
            QTest::mouseClick(h->window, Qt::RightButton, {}, h->centre(cell(1)));
        } else {
            cell(1)->forceActiveFocus(Qt::TabFocusReason);
            QTest::keyClick(h->window, way == "menu key" ? Qt::Key_Menu : Qt::Key_F10,
                            way == "menu key" ? Qt::NoModifier : Qt::ShiftModifier);
        }
        QTRY_VERIFY(h->opened("rowMenu"));
        QCOMPARE(h->window->findChild<QObject *>("rowMenu")->property("title").toString(), "Zoe");
        QVERIFY(!h->opened("editDialog"));
        QCOMPARE(c->openRow(), -1);
        // The row was not chosen.
        QTest::qWait(100);
        QCOMPARE(requested.count(), 0);
        QVERIFY(!h->settings.value(handOverPending));
        if (way == "right click")
            QVERIFY(!cell(1)->hasActiveFocus());
        // The keyboard is in the menu, on its first choice.
        QTRY_VERIFY(h->find("rowMenuEdit")->hasActiveFocus());
        h->tap(choice);
        QTRY_VERIFY(!h->opened("rowMenu"));
        if (choice == "rowMenuEdit") {
            QTRY_VERIFY(h->opened("editDialog"));
            QCOMPARE(c->editName(), "Zoe");
        } else if (choice == "rowMenuDelete") {
            QTRY_COMPARE(stored(), Rows({before.at(0), before.at(2)}));
            QTRY_VERIFY(h->shows("undoBar"));
            // From the keys the keyboard goes on to the next row.
            if (way != "right click")
                QTRY_VERIFY(cell(1) && cell(1)->hasActiveFocus() && name(1) == "bob");
        } else {
            QTest::qWait(300);
            QCOMPARE(stored(), before);
            QVERIFY(!h->opened("editDialog"));
        }
    }

    // A shorter month shows its last day; the next longer one brings the
    // chosen day back.
    void editWheelsKeepTheChosenDay()
    {
        h->settings.set(favorites, Rows{{"Anna", "31 1 1985"}});
        start();
        openEditDialog(0);
        QObject *day = h->find("editDayWheel");
        for (const auto &[month, shown] : {std::pair{3, 31}, {2, 28}, {4, 30}, {5, 31}}) {
            h->find("editMonthWheel")->setProperty("currentIndex", month - 1);
            QTRY_COMPARE(day->property("currentIndex").toInt() + 1, shown);
        }
        h->tap("editOkButton");
        QTRY_COMPARE(stored(), (Rows{{"Anna", "31 5 1985"}}));
    }

    // Only a swipe past 45 mm (two thirds of a phone's row) deletes;
    // anything shorter, at whatever speed, shows the delete button or closes
    // again. A wide row asks no longer a swipe. The offscreen screen has
    // 96 dpi: 45 mm are 170 px.
    void swipeOutcomes_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<int>("distance");
        QTest::addColumn<int>("steps");
        QTest::addColumn<int>("ms");
        QTest::addColumn<bool>("open");
        QTest::addColumn<bool>("deleted");
        QTest::newRow("slow 45 px: opens") << 390 << people() << 45 << 9 << 40 << true << false;
        QTest::newRow("quick flick of 150 px: opens")
            << 390 << people() << 150 << 3 << 5 << true << false;
        QTest::newRow("a nudge: closes") << 390 << people() << 25 << 5 << 20 << false << false;
        QTest::newRow("past two thirds: deletes")
            << 390 << people() << 300 << 15 << 10 << false << true;
        QTest::newRow("the last one: deletes")
            << 390 << Rows{{"Anna", "12 3 1985"}} << 400 << 20 << 10 << false << true;
        QTest::newRow("wide row, 150 px: opens")
            << 1200 << people() << 150 << 3 << 5 << true << false;
        QTest::newRow("wide row, 200 px: deletes")
            << 1200 << people() << 200 << 10 << 10 << false << true;
    }
    void swipeOutcomes()
    {
        QFETCH(int, width);
        QFETCH(Rows, rows);
        QFETCH(int, distance);
        QFETCH(int, steps);
        QFETCH(int, ms);
        QFETCH(bool, open);
        QFETCH(bool, deleted);
        h->settings.set(favorites, rows);
        start();
        h->window->resize(width, 844);
        QTRY_COMPARE(cell(0)->width(), double(width));
        const Rows before = stored();
        swipeLeft(0, distance, steps, ms);
        QTest::qWait(600);
        QCOMPARE(stored(), deleted ? before.mid(1) : before);
        QTRY_COMPARE(h->text("footerCount"), u"Entries: %1"_qs.arg(stored().size()));
        QVERIFY(h->shows("footerCount"));
        QCOMPARE(count(), stored().size());
        if (!deleted) {
            QCOMPARE(c->openRow(), open ? 0 : -1);
            QCOMPARE(deleteShown(0), open);
        }
    }

    void anOpenRowWaitsForATap()
    {
        h->settings.set(favorites, people());
        start();
        const Rows before = stored();
        QSignalSpy requested(c, &FavoritesScreenController::screenRequested);
        swipeLeft(1, 60, 6, 30);
        QTest::qWait(1000);
        QVERIFY(deleteShown(1));
        h->tap(cell(0));
        QTRY_VERIFY(!deleteShown(1));
        QCOMPARE(requested.count(), 0);
        QCOMPARE(stored(), before);
        swipeLeft(1, 60, 6, 30);
        QTRY_COMPARE(h->find("deleteAction", cell(1))->width(), 80.0);
        h->tap(h->find("deleteAction", cell(1)));
        QTRY_COMPARE(stored(), Rows({before.at(0), before.at(2)}));
    }

    // "Undo" puts the favorite back where it was, with one write each way.
    void undoPutsItBack()
    {
        h->settings.set(favorites, people());
        start();
        const Rows before = stored();
        QCOMPARE(names(before), (QStringList{"Anna", "Zoe", "bob"}));
        const qsizetype writes = h->settings.writeCount();
        swipeLeft(1, 300, 15, 10);
        QTRY_COMPARE(stored(), Rows({before.at(0), before.at(2)}));
        QCOMPARE(h->settings.writeCount(), writes + 1);
        QTRY_VERIFY(h->shows("undoBar"));
        QCOMPARE(h->text("btnUndo"), "Undo");
        QCOMPARE(h->text("undoLabel"), "Deleted: Zoe");
        h->tap("btnUndo");
        QTRY_COMPARE(stored(), before);
        QCOMPARE(h->settings.writeCount(), writes + 2);
        QTRY_COMPARE(count(), 3);
        QTRY_COMPARE(cell(1) ? name(1) : QString(), "Zoe");
        QTRY_VERIFY(!h->shows("undoBar"));
    }

    // However a run of deletes is made, one "Undo" brings every favorite of
    // it back to its place. Only the red button and a long swipe delete: a
    // finger never brings up the keyboard's buttons over the red one, and a
    // delete closes the open row, so a second tap where the red button was
    // chooses the row that moved up.
    void aRunOfDeletesIsUndone_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("undoText");
        QTest::newRow("two taps on the red button") << "tap twice"
                                                    << "Deleted: Anna";
        QTest::newRow("red button, twice") << "open and tap"
                                           << "Deleted: Anna, Zoe";
        QTest::newRow("long swipes") << "swipe far"
                                     << "Deleted: Anna, Zoe";
        QTest::newRow("Delete key") << "key"
                                    << "Deleted: Anna, Zoe";
    }
    void aRunOfDeletesIsUndone()
    {
        QFETCH(QString, way);
        QFETCH(QString, undoText);
        h->settings.set(favorites, people());
        start();
        const Rows before = stored();
        QSignalSpy requested(c, &FavoritesScreenController::screenRequested);
        const auto openFirst = [&] {
            swipeLeft(0, 60, 6, 30);
            QTRY_COMPARE(h->find("deleteAction", cell(0))->width(), 80.0);
            QVERIFY(!h->shows("rowActions"));
        };
        std::optional<QPoint> red;
        for (int time = 0; time < 2; ++time) {
            const qsizetype left = stored().size();
            if (way == "key") {
                // As Tab brings it there; after a delete the keyboard is
                // on the next row already.
                if (time == 0) {
                    h->find("btnBack")->forceActiveFocus();
                    cell(0)->forceActiveFocus(Qt::TabFocusReason);
                }
                QVERIFY(cell(0)->hasActiveFocus());
                QTRY_VERIFY(h->shows("rowActions"));
                QTest::keyClick(h->window, Qt::Key_Delete);
            } else if (way == "swipe far") {
                swipeLeft(0, 300, 15, 10);
            } else {
                if (!red || way == "open and tap") {
                    openFirst();
                    red = h->centre(h->find("deleteAction", cell(0)));
                }
                QTest::mouseClick(h->window, Qt::LeftButton, {}, *red);
            }
            if (way == "tap twice" && time == 1) {
                QTRY_COMPARE(requested.count(), 1);
                QCOMPARE(stored().size(), left);
            } else {
                QTRY_COMPARE(stored().size(), left - 1);
                QCOMPARE(c->openRow(), -1);
            }
            QTest::qWait(300);
        }
        QTRY_VERIFY(h->shows("undoBar"));
        QCOMPARE(h->text("undoLabel"), undoText);
        h->tap("btnUndo");
        QTRY_COMPARE(stored(), before);
        QTRY_COMPARE(count(), 3);
        for (int row = 0; row < 3; ++row)
            QTRY_COMPARE(cell(row) ? name(row) : QString(), before.at(row).at(0));
        QTRY_VERIFY(!h->shows("undoBar"));
    }

    // A restore that did not reach the disk is not called done: the save
    // notice says why, and the favorites, back in the list, are written
    // with the next change.
    void aRestoreThatIsNotSavedIsNotDone()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("tavlo.conf");
        const auto diskFull = std::make_shared<bool>(false);
        FileSettingsStore settings(path,
                                   failingWriter(AtomicFileWriter::Step::Write, ENOSPC, diskFull));
        settings.set(favorites, people());
        Session session(settings, h->clock, {"en-US"}, Appearance::Dark);
        session.decideLanguage();
        session.favorites.load();
        FavoritesScreenController screen(session);
        screen.viewDidLoad();
        const auto onDisk = [&] { return FileSettingsStore(path).value(favorites); };
        const Rows before = onDisk().value_or(Rows{});

        screen.deleteRow(2);
        screen.deleteRow(0);
        QVERIFY(screen.undoDelete());
        QCOMPARE(onDisk(), before);
        QVERIFY(!session.saveNotice.shown());

        screen.deleteRow(1);
        screen.deleteRow(0);
        *diskFull = true;
        QVERIFY(!screen.undoDelete());
        QVERIFY(session.saveNotice.shown());
        QCOMPARE(session.saveNotice.text(),
                 "Your change could not be saved: No space left on device");
        QCOMPARE(onDisk(), Rows{before.at(2)});
        QVERIFY(!screen.undoVisible());
        QCOMPARE(screen.count(), 3);
        *diskFull = false;
        screen.chooseSort(0);
        QCOMPARE(onDisk(), before);
    }

    // Five seconds, twelve while a screen reader runs: the offer is gone
    // soon after, and an undo then changes nothing.
    void undoGoesAfterFiveSeconds()
    {
        QCOMPARE(FavoritesScreenController::undoMillisecondsFor(true), 12'000);
        QCOMPARE(FavoritesScreenController::undoMillisecondsFor(false), 5'000);
        h->settings.set(favorites, people());
        start();
        c->deleteRow(0);
        const Rows after = stored();
        QTest::qWait(5'000 - 600);
        QVERIFY(c->undoVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!c->undoVisible(), 1500);
        c->undoDelete();
        QCOMPARE(stored(), after);
    }

    // A stored order that the sort menu never writes (3, from a later
    // version or by hand) sorts by birthday, and so scrolls as 2 does.
    void orderedByBirthdayScrollsToTheNextOne_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<qint64>("order");
        QTest::addColumn<int>("target");
        QTest::newRow("late November: 1 December") << QDate(2026, 11, 22) << 2LL << 22;
        QTest::newRow("all past: no scroll") << QDate(2026, 12, 31) << 2LL << -1;
        QTest::newRow("order 3: as by birthday") << QDate(2026, 11, 22) << 3LL << 22;
    }
    void orderedByBirthdayScrollsToTheNextOne()
    {
        QFETCH(QDate, today);
        QFETCH(qint64, order);
        QFETCH(int, target);
        Rows many;
        for (int i = 0; i < 24; ++i)
            many.append(
                {u"P"_qs + QString::number(i), u"%1 %2 1990"_qs.arg(1 + i % 2).arg(1 + i / 2)});
        h->settings.set(favorites, many);
        h->settings.set(sort, order);
        h->clock.set(QDateTime(today, QTime(12, 0)));
        start({"en-US"}, false);
        QCOMPARE(c->scrollTarget(), target);
        QQuickItem *list = h->find("tableView");
        const auto top = [&] { return list->property("contentY").toReal(); };
        if (target < 0) {
            QTest::qWait(1300);
            QCOMPARE(top(), 0.0);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(top() > 0, 3000);
        QTest::qWait(500);
        int row = -1;
        QMetaObject::invokeMethod(list, "indexAt", Q_RETURN_ARG(int, row), Q_ARG(qreal, 10),
                                  Q_ARG(qreal, top() + 10));
        // The row goes to the top, unless the list ends before that.
        QVERIFY2(row == target || list->property("atYEnd").toBool(),
                 qPrintable(QString::number(row)));
    }

    // The import button offers both imports, and each tells what it did in
    // the interface language: a file chosen in the dialog is imported in one
    // write and the new row shows, or it is refused; "Import from contacts"
    // says so when no address book holds anyone (the address-book service
    // always has its own, empty or not), and a card read gets the counts.
    void importsTellWhatTheyDid_data()
    {
        QTest::addColumn<QByteArray>("file"); // empty: from the contacts
        QTest::addColumn<QStringList>("sources");
        QTest::addColumn<int>("cards"); // cards read, none with a birthday
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("summary");
        QTest::addColumn<int>("rows");
        const auto contacts = [](const char *tag, const QStringList &sources, int cards,
                                 const char *language, const QString &summary) {
            QTest::newRow(tag) << QByteArray() << sources << cards << language << summary << 1;
        };
        QTest::newRow("file of cards")
            << QByteArray("BEGIN:VCARD\nFN:Jane\nBDAY:1985-03-12\nEND:VCARD\n"
                          "BEGIN:VCARD\nFN:Anna\nEND:VCARD\n")
            << QStringList() << 0 << "de-DE"
            << u"1 hinzugefügt, 0 schon vorhanden, 1 übersprungen (1 ohne Geburtstag)"_qs << 2;
        QTest::newRow("file, no vCard") << QByteArray("hello") << QStringList() << 0 << "de-DE"
                                        << u"Diese Datei ist keine vCard-Datei."_qs << 1;
        contacts("contacts, none", {}, 0, "en-US",
                 "No address book with contacts was found on this device.");
        contacts("contacts, only an empty one, Russian",
                 {"evolution-data-server system-address-book: 0 cards"}, 0, "ru",
                 "На этом устройстве не найдено ни одной адресной книги с контактами.");
        contacts("contacts, a card", {"kpeoplevcard: 1 files, 1 cards"}, 1, "en-US",
                 "0 added, 0 already there, 1 skipped (1 no birthday)");
    }
    void importsTellWhatTheyDid()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, sources);
        QFETCH(int, cards);
        QFETCH(QString, language);
        QFETCH(int, rows);
        h->settings.set(favorites, Rows{{"Anna", "1 1 2000"}});
        start({language});
        PhoneContactsRead read;
        read.sources = sources;
        for (int i = 0; i < cards; ++i) {
            VCardContact card;
            card.name = u"Jane"_qs;
            read.contacts.append(card);
        }
        h->session->phoneContacts = [&] { return read; };
        h->tap("btnImport");
        QTRY_VERIFY(h->opened("importMenu"));
        QTemporaryDir dir;
        if (file.isEmpty())
            h->tap("btnImportContacts");
        else
            c->importFile(QUrl::fromLocalFile(writeFile(dir.filePath("contacts.vcf"), file)));
        QTRY_VERIFY(h->opened("importSummary"));
        QTEST(c->importSummary(), "summary");
        QCOMPARE(stored().size(), rows);
        QCOMPARE(stored().first(), (QStringList{"Anna", "1 1 2000"}));
        QTRY_COMPARE(count(), rows);
    }

    // Import and export through the desktop portal's chooser, as the person
    // meets it: the menu's choice asks the portal (starting in the
    // downloads folder to open, the documents folder to save), and the
    // answer on the request imports the file, writes the export, or, closed
    // without a file, changes nothing and says nothing.
    void filesThroughTheSystemChooser_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<uint>("response");
        QTest::addColumn<QString>("chosen");  // under the home folder
        QTest::addColumn<QString>("summary"); // %1 the chosen file
        QTest::addColumn<int>("rows");
        QTest::addColumn<QByteArray>("written");
        const auto row = [](const char *tag, const char *button, uint response, const char *chosen,
                            const char *summary, int rows = 1, const QByteArray &written = {}) {
            QTest::newRow(tag) << button << response << chosen << summary << rows << written;
        };
        row("import", "btnImportFile", 0, "Downloads/Neue Karten #1.vcf",
            "1 added, 0 already there, 0 skipped", 2);
        row("import cancelled", "btnImportFile", 1, "", "");
        row("import, the chooser ends on its own", "btnImportFile", 2, "",
            "The file chooser closed without a file. Nothing was changed.");
        row("export cards", "btnExportVCards", 0, "Documents/Für Oma.vcf",
            "Birthdays saved: 1, in %1", 1, "BEGIN:VCARD\r\nVERSION:4.0\r\n");
        row("export calendar", "btnExportCalendar", 0, "Documents/birthdays.ics",
            "Birthdays saved: 1, in %1", 1, "BEGIN:VCALENDAR\r\n");
        row("export cancelled", "btnExportVCards", 1, "", "");
        row("export where no file can be", "btnExportVCards", 0, "Documents/cards.vcf/inside.vcf",
            "%1 could not be saved. A file already there is as it was.");
    }
    void filesThroughTheSystemChooser()
    {
        QFETCH(QString, button);
        QFETCH(uint, response);
        QFETCH(QString, chosen);
        QFETCH(QString, summary);
        QFETCH(int, rows);
        QFETCH(QByteArray, written);
        // What each button asks the portal for: its method, filter and
        // starting folder.
        static const QHash<QString, QStringList> asksFor{
            {u"btnImportFile"_qs, {"OpenFile", "vCard files", "Downloads"}},
            {u"btnExportVCards"_qs, {"SaveFile", "vCard files", "Documents"}},
            {u"btnExportCalendar"_qs, {"SaveFile", "iCalendar files", "Documents"}},
        };
        const QStringList asks = asksFor.value(button);
        const TemporaryHome home;
        QVERIFY(QDir().mkpath(home.filePath("Downloads")));
        // A file where an export would make a folder.
        const QString inTheWay = writeFile(home.filePath("Documents/cards.vcf"), "keep");
        const QString file = chosen.isEmpty() ? QString() : home.filePath(chosen);
        if (button == u"btnImportFile" && !file.isEmpty())
            writeFile(file, "BEGIN:VCARD\nFN:Jane\nBDAY:1985-03-12\nEND:VCARD\n");

        PortalStandIn portal;
        QVERIFY(portal.startBus("favorites"));
        PortalFileChooser chooser(portal.connection());
        QVERIFY(portal.startPortal(portal.connection()));
        const auto stop = qScopeGuard([&] { portal.stop(); });
        QSignalSpy answered(&chooser, &FileChooser::cancelled);
        QSignalSpy ended(&chooser, &FileChooser::failed);

        h->settings.set(favorites, Rows{{"Anna", "1 1 2000"}});
        start();
        h->session->fileChooser = &chooser;
        h->tap("btnImport");
        QTRY_VERIFY(h->opened("importMenu"));
        h->tap(button);
        QTRY_COMPARE_WITH_TIMEOUT(portal.asked().size(), 1, 20000);
        const QJsonObject asked = portal.asked().first().toObject();
        QCOMPARE(asked["method"].toString(), asks.value(0));
        QCOMPARE(asked["filters"].toArray().first().toArray().first().toString(), asks.value(1));
        QCOMPARE(asked["folder"].toString(),
                 (QFile::encodeName(home.filePath(asks.value(2))) + '\0').toHex());
        QVERIFY(!asked["title"].toString().isEmpty());
        QVERIFY(!asked["title"].toString().endsWith(u'…'));

        QVERIFY(portal.respond(
            response, file.isEmpty()
                          ? QStringList()
                          : QStringList{QString::fromUtf8(QUrl::fromLocalFile(file).toEncoded())}));
        if (summary.isEmpty()) {
            QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 1, 20000);
            QVERIFY(!h->opened("importSummary"));
            QCOMPARE(c->importSummary(), QString());
        } else {
            QTRY_VERIFY_WITH_TIMEOUT(h->opened("importSummary"), 20000);
            QCOMPARE(c->importSummary(), summary.arg(file));
        }
        QCOMPARE(stored().size(), rows);
        QTRY_COMPARE(count(), rows);
        QVERIFY(!h->window->findChild<QObject *>("fileDialog")->property("visible").toBool());
        // An export is the favorites; nothing else is touched.
        if (!written.isEmpty())
            QVERIFY(contentsOf(file).startsWith(written));
        else if (button != u"btnImportFile" && !file.isEmpty())
            QVERIFY(!QFile::exists(file));
        QCOMPARE(contentsOf(inTheWay), QByteArray("keep"));
        // No temporary file is left behind either.
        QStringList files = QDir(home.filePath("Documents")).entryList(QDir::Files);
        QStringList expected{"cards.vcf"};
        if (!written.isEmpty())
            expected.append(QFileInfo(file).fileName());
        files.sort();
        expected.sort();
        QCOMPARE(files, expected);
    }

    // Where no portal answers (none on the bus, or no system chooser at
    // all), Qt's own dialog asks, in the screen's colours, in one column
    // that fits a 360-px phone, in the interface language; its answer is
    // used as the portal's would be.
    void withoutAPortalQtsDialogAsks_data()
    {
        QTest::addColumn<bool>("bus");
        QTest::newRow("no portal on the bus") << true;
        QTest::newRow("no system chooser") << false;
    }
    void withoutAPortalQtsDialogAsks()
    {
        QFETCH(bool, bus);
        const TemporaryHome home;
        QVERIFY(QDir().mkpath(home.filePath("Documents")));

        PortalStandIn portal;
        std::optional<PortalFileChooser> chooser;
        if (bus) {
            QVERIFY(portal.startBus("favorites"));
            chooser.emplace(portal.connection());
        }
        const auto stop = qScopeGuard([&] {
            if (bus)
                portal.stopBus();
        });
        h->settings.set(favorites, Rows{{"Anna", "1 1 2000"}});
        start({"de-DE"});
        h->window->resize(360, 720);
        if (chooser)
            h->session->fileChooser = &*chooser;
        h->tap("btnImport");
        QTRY_VERIFY(h->opened("importMenu"));
        h->tap("btnExportVCards");

        QObject *dialog = h->window->findChild<QObject *>("fileDialog");
        QTRY_VERIFY_WITH_TIMEOUT(dialog->property("visible").toBool(), 20000);
        QCOMPARE(dialog->property("title").toString(), u"In eine vCard-Datei exportieren"_qs);
        QCOMPARE(dialog->property("nameFilters").toStringList(),
                 QStringList{u"vCard-Dateien (*.vcf *.vcard *.VCF)"_qs});
        QCOMPARE(dialog->property("currentFolder").toUrl(),
                 QUrl::fromLocalFile(home.filePath("Documents")));

        // Tavlo's look, not Qt's light default, and nothing cut at 360 px.
        QQuickItem *filter = nullptr;
        QTRY_VERIFY((filter = h->find("fileDialogFilter")) && filter->isVisible());
        // What is cut or narrow, once the layout has taken in the field for
        // the name: nothing.
        const auto misplaced = [&] {
            const QRectF inWindow(0, 0, 360, 720);
            QByteArrayList wrong;
            for (const char *name : {"fileDialogFilter", "fileDialogButtons", "fileDialogListView",
                                     "fileDialogFolder", "fileNameTextField"}) {
                QQuickItem *item = h->find(name);
                const QRectF box =
                    item && item->isVisible()
                        ? item->mapRectToScene(QRectF(0, 0, item->width(), item->height()))
                        : QRectF();
                if (!inWindow.contains(box) || box.width() < 280) {
                    wrong.append(QByteArray(name) + ' ' + QByteArray::number(box.x()) + ',' +
                                 QByteArray::number(box.y()) + ' ' +
                                 QByteArray::number(box.width()) + 'x' +
                                 QByteArray::number(box.height()));
                }
            }
            return wrong.join(", ");
        };
        QTRY_COMPARE(misplaced(), QByteArray());
        QCOMPARE(h->find("fileDialogFilter")->property("displayText").toString(),
                 u"vCard-Dateien (*.vcf *.vcard *.VCF)"_qs);
        QQuickItem *save = nullptr;
        for (QQuickItem *button : h->find("fileDialogButtons")->findChildren<QQuickItem *>()) {
            if (button->inherits("QQuickAbstractButton") &&
                button->property("text").toString() == u"Speichern")
                save = button;
        }
        QVERIFY(save);
        QCOMPARE(save->property("tint").value<QColor>(), c->theme()->labelColor());

        // The name offered; one typed without its ending is saved as a vCard
        // file.
        QQuickItem *name = h->find("fileNameTextField");
        QCOMPARE(name->property("text").toString(), u"birthdays.vcf"_qs);
        QMetaObject::invokeMethod(name, "clear");
        name->forceActiveFocus();
        // Typed as a keyboard would (QTest types only Latin-1 into a window).
        for (const QChar letter : u"Für Oma"_qs) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
            QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(letter));
            QGuiApplication::sendEvent(h->window, &press);
            QGuiApplication::sendEvent(h->window, &release);
        }
        QCOMPARE(name->property("text").toString(), u"Für Oma"_qs);
        h->tap(save);
        QTRY_VERIFY_WITH_TIMEOUT(h->opened("importSummary"), 20000);
        const QString file = home.filePath("Documents/Für Oma.vcf");
        QCOMPARE(c->importSummary(), u"Gespeicherte Geburtstage: 1, in "_qs + file);
        QVERIFY(contentsOf(file).contains("FN:Anna\r\n"));
    }

    // A name is shown on its card on one line: a line break in it becomes a
    // blank, and a long one shrinks only so far, is cut short, and is read
    // out whole.
    void namesKeepToOneReadableLine()
    {
        const QString longName = u"Maximilian Alexander Friedrich Wilhelm von und zu "
                                 u"Hohenlohe-Schillingsfürst Jr."_qs;
        h->settings.set(
            favorites,
            Rows{{"Anna\nMaria\n", "1 1 2000"}, {"Bob", "1 1 2000"}, {longName, "1 1 2000"}});
        h->settings.set(sort, 0);
        start();
        QCOMPARE(name(0), "Anna Maria");
        QQuickItem *plain = h->find("labelName", cell(1));
        QQuickItem *cut = h->find("labelName", cell(2));
        QCOMPARE(name(2), longName);
        QVERIFY(cut->property("truncated").toBool());
        // Drawn at three quarters of the full size or more.
        const qreal fullLine = plain->property("contentHeight").toReal();
        QVERIFY2(cut->property("contentHeight").toReal() >= 0.7 * fullLine,
                 qPrintable(QString::number(cut->property("contentHeight").toReal())));
        QVERIFY(cell(2)->property("spoken").toString().startsWith(longName));
        c->deleteRow(0);
        QCOMPARE(h->text("undoLabel"), "Deleted: Anna Maria");
    }

    // The edit dialog's day wheel shows the favorite's own day when the
    // dialog first opens, even in a month with fewer days than the one the
    // wheels stood on: what the person sees is what OK stores.
    void editDialogShowsTheDayOfAShorterMonth()
    {
        h->settings.set(favorites, Rows{{"Dora", "15 11 1990"}});
        start();
        QVERIFY(QMetaObject::invokeMethod(c, "longPressed", Q_ARG(int, 0)));
        QTRY_VERIFY(h->opened("editDialog"));
        QQuickItem *wheel = h->find("editDayWheel");
        // The label drawn at the wheel's middle.
        const auto shownDay = [&] {
            QString shown;
            qreal nearest = wheel->height();
            for (QList<QQuickItem *> scene{wheel}; !scene.isEmpty();) {
                QQuickItem *item = scene.takeLast();
                scene.append(item->childItems());
                const QString text = item->property("text").toString();
                if (!item->isVisible() || text.isEmpty() || !item->inherits("QQuickText"))
                    continue;
                const qreal apart =
                    std::abs(item->mapToItem(wheel, QPointF(0, item->height() / 2)).y() -
                             wheel->height() / 2);
                if (apart < nearest) {
                    nearest = apart;
                    shown = text;
                }
            }
            return shown;
        };
        QTRY_COMPARE(shownDay(), "15");
        QCOMPARE(wheel->property("currentIndex").toInt(), 14);
    }

    // Without a year: the day and month, no age, after everyone with an age;
    // the edit dialog's year wheel on "no year", where it can also be put,
    // and a year given later. The favorite stays itself throughout.
    void birthdayWithoutAYearInTheList()
    {
        h->settings.set(favorites, Rows{{"Dan", "23 11"}, {"Anna", "12 3 1985"}});
        h->settings.set(sort, 1);
        start();
        QCOMPARE(name(1), "Dan");
        QCOMPARE(h->text("labelBD", cell(1)), "November 23");
        QCOMPARE(h->text("labelAge", cell(1)), QString());
        const QString dan = storedId(1);
        const QString anna = storedId(0);

        openEditDialog(1);
        QCOMPARE(h->find("editYearWheel")->property("currentIndex").toInt(), 2200 - 1800 + 1);
        h->find("editYearWheel")->setProperty("currentIndex", 1990 - 1800);
        h->tap("editOkButton");
        QTRY_VERIFY(!h->opened("editDialog"));
        QCOMPARE(stored().at(1), (QStringList{"Dan", "23 11 1990"}));
        QTRY_COMPARE(h->text("labelAge", cell(1)), "35");

        openEditDialog(0);
        h->find("editYearWheel")->setProperty("currentIndex", 2200 - 1800 + 1);
        h->tap("editOkButton");
        QTRY_VERIFY(!h->opened("editDialog"));
        QCOMPARE(stored().at(0), (QStringList{"Anna", "12 3"}));
        QTRY_COMPARE(h->text("labelAge", cell(0)), QString());
        QCOMPARE(h->text("labelBD", cell(0)), "March 12");
        QCOMPARE(storedId(0), anna);
        QCOMPARE(storedId(1), dan);
    }

    // A birthday that cannot be read is listed as such, with no age or
    // sign, and a tap opens it to be fixed: the wheels start at today and
    // the fixed date is stored.
    void unreadableBirthdayIsListedToBeFixed()
    {
        h->settings.set(favorites, Rows{{"Anna", "12 3 1985"}, {"Bob", "soon"}});
        h->settings.set(sort, 1);
        start();
        QCOMPARE(name(1), "Bob");
        QCOMPARE(h->text("labelBD", cell(1)), "Unreadable birthday: soon");
        QCOMPARE(h->text("labelAge", cell(1)), QString());
        h->tap(cell(1));
        QTRY_VERIFY(h->opened("editDialog"));
        QCOMPARE(h->settings.value(handOverPending), false);
        QCOMPARE(h->find("editYearWheel")->property("currentIndex").toInt(), 2026 - 1800);
        h->find("editYearWheel")->setProperty("currentIndex", 1990 - 1800);
        h->tap("editOkButton");
        QTRY_VERIFY(!h->opened("editDialog"));
        QCOMPARE(stored().at(1), (QStringList{"Bob", "22 11 1990"}));
        QTRY_COMPARE(h->text("labelAge", cell(1)), "36");
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    TestFavoritesScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_favoritesscreen.moc"