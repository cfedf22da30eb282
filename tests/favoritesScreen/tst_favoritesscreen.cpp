// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/DebugLog.h"
#include "favoritesScreen/FavViewController.h"
#include "session/Session.h"
#include "settings/MemorySettingsStore.h"

#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <memory>

Q_IMPORT_QML_PLUGIN(TavloPlugin)

using namespace SettingsKeys;

namespace {

using Rows = QList<QStringList>;

const QDateTime now = at(2026, 11, 22, 12);

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

} // namespace

// The favorites screen as a user meets it, offscreen, through its items.
class TestFavoritesScreen : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    std::unique_ptr<MemorySettingsStore> m_settings;
    std::unique_ptr<FixedClock> m_clock;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    FavViewController *m_controller = nullptr;
    QQuickItem *m_screen = nullptr;

    void start(const QStringList &preferred = {"en-US"}, bool settle = true)
    {
        m_session = std::make_unique<Session>(*m_settings, *m_clock, preferred, Appearance::Dark);
        m_session->formatLocale = QLocale(QStringLiteral("en_US"));
        m_session->decideLanguage();
        m_session->favorites.load();
        m_controller = new FavViewController(*m_session, m_window.get());
        m_controller->viewDidLoad();
        QQmlComponent component(
            m_engine.get(),
            QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/favoritesScreen/FavoritesScreen.qml")));
        QObject *screen = component.createWithInitialProperties(
            {{QStringLiteral("controller"), QVariant::fromValue(m_controller)}});
        QVERIFY2(screen, qPrintable(component.errorString()));
        m_screen = qobject_cast<QQuickItem *>(screen);
        m_screen->setParent(m_window.get());
        m_screen->setParentItem(m_window->contentItem());
        m_screen->setSize(m_window->size());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QTRY_VERIFY(find("tableView")->property("count").toInt() == m_session->favorites.count());
        if (settle)
            waitForRowsInPlace();
    }

    // The rows fly in when the screen appears; a tap lands where they settle.
    void waitForRowsInPlace()
    {
        const int rows = std::min<int>(int(m_session->favorites.count()), 10);
        for (int row = 0; row < rows; ++row)
            QTRY_COMPARE_WITH_TIMEOUT(cell(row) ? cell(row)->y() : -1.0, row * 66.0, 4000);
    }

    template <typename T = QQuickItem>
    T *find(const QString &name) const
    {
        return m_screen->findChild<T *>(name);
    }

    QString text(QQuickItem *cell, const char *label) const
    {
        return cell->findChild<QQuickItem *>(QLatin1String(label))->property("text").toString();
    }

    QPoint centreOf(QQuickItem *item) const
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    // Cards belong to the list's content, not to the screen's object tree.
    QQuickItem *cell(int row) const
    {
        auto *content = find("tableView")->property("contentItem").value<QQuickItem *>();
        const QString name = u"cell"_qs + QString::number(row);
        for (QQuickItem *item : content->childItems()) {
            if (item->objectName() == name)
                return item;
        }
        return nullptr;
    }

    Rows stored() const { return m_settings->value(favorites).value_or(Rows{}); }

    // Drags a card to the left by `distance`, in `steps` moves `delay` ms apart.
    void swipeLeft(int row, int distance, int steps, int delay)
    {
        const QPoint from = centreOf(cell(row)) + QPoint(150, 0);
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= steps; ++step)
            QTest::mouseMove(m_window.get(), from - QPoint(distance * step / steps, 0), delay);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, from - QPoint(distance, 0), delay);
    }

    int openRow() const { return find("tableView")->property("openRow").toInt(); }

    bool deleteShown(int row) const
    {
        return cell(row)->findChild<QQuickItem *>(u"deleteAction"_qs)->isVisible();
    }

private slots:
    void init()
    {
        m_settings = std::make_unique<MemorySettingsStore>();
        m_settings->set(firstStartDone, true);
        m_clock = std::make_unique<FixedClock>(now);
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(390, 844);
    }

    void cleanup()
    {
        delete m_screen;
        m_screen = nullptr;
        m_window.reset();
        m_engine.reset();
        m_session.reset();
    }

    void emptyListCountsNoEntries()
    {
        start();
        QCOMPARE(find("tableView")->property("count").toInt(), 0);
        QTRY_VERIFY(find("footerCount")->isVisible());
        QCOMPARE(find("footerCount")->property("text").toString(), "Entries: 0");
        QCOMPARE(find("titleLabel")->property("text").toString(), "Favorites");
    }

    void cardsShowTheirFavorites()
    {
        m_settings->set(favorites, Rows{{"  Ann  ", "22 11 1985"}, {"   ", "21 11 1990"}});
        m_settings->set(star, true);
        m_settings->set(weekday, true);
        m_settings->set(sort, 0);
        start();
        // Plain code-point order: blanks come before letters.
        QQuickItem *ann = cell(1);
        QCOMPARE(ann->height(), 66.0);
        QCOMPARE(text(ann, "labelName"), "  Ann");
        QCOMPARE(text(ann, "labelBD"), "Friday, November 22, 1985");
        QCOMPARE(text(ann, "labelAge"), "41");
        QCOMPARE(text(ann, "labelStar"), "★");
        QQuickItem *blank = cell(0);
        QCOMPARE(blank->height(), 66.0);
        QCOMPARE(text(blank, "labelName"), "Unknown");
        QCOMPARE(text(blank, "labelAge"), "36");
        QCOMPARE(text(blank, "labelStar"), QString());
        QTRY_COMPARE(find("footerCount")->property("text").toString(), "Entries: 2");
    }

    void russianTextsWithTheDevicesMonthNames()
    {
        m_settings->set(favorites, Rows{{"Анна", "12 3 1985"}});
        start({"ru"});
        QCOMPARE(find("titleLabel")->property("text").toString(), "Избранные");
        QCOMPARE(find("btnSort")->property("text").toString(), "Сортировать");
        QCOMPARE(text(cell(0), "labelBD"), "12. March 1985");
        QTRY_COMPARE(find("footerCount")->property("text").toString(), "Записи: 1");
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
        m_settings->set(favorites, people());
        m_settings->set(sort, choice == 0 ? 1 : 0);
        start();
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(find("btnSort")));
        auto *menu = find<QObject>("sortMenu");
        QTRY_VERIFY(menu->property("opened").toBool());
        // Only Escape closes it without a choice, never a tap beside it.
        QCOMPARE(menu->property("closePolicy").toInt(), 0x10);
        QQuickItem *button = find(u"sortChoice"_qs + QString::number(choice));
        QVERIFY(button);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(button));
        QTRY_VERIFY(!menu->property("visible").toBool());
        QCOMPARE(m_settings->value(sort), choice);
        QCOMPARE(names(stored()), order);
        QTRY_COMPARE(text(cell(0), "labelName"), order.at(0));
        waitForRowsInPlace();
        QCOMPARE(text(cell(2), "labelName"), order.at(2));
    }

    void tappingAFavoriteHandsItToTheMainScreen()
    {
        m_settings->set(favorites, people());
        start();
        QSignalSpy requested(m_controller, &FavViewController::screenRequested);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(cell(1)));
        QTRY_COMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).toString(), "Main");
        QCOMPARE(m_settings->value(handOverPending), true);
        QCOMPARE(m_settings->value(handOverMovePicker), true);
        QCOMPARE(m_settings->value(handOverIndex), 1);
        QCOMPARE(m_settings->value(handOverName), stored().at(1).at(0));
        QCOMPARE(m_settings->value(handOverBirthday), stored().at(1).at(1));
        QVERIFY(find("dimOverlay")->isVisible());
    }

    void longPressEditsAndKeepsTheRow()
    {
        m_settings->set(favorites, Rows{{"Anna", "05 07 1985"}, {"Bob", "1 1 2000"}});
        m_settings->set(sort, 0);
        start();
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, centreOf(cell(0)));
        auto *dialog = find<QObject>("editDialog");
        QTRY_VERIFY(dialog->property("opened").toBool());
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, centreOf(cell(0)));
        QQuickItem *name = find(u"editNameField"_qs);
        QCOMPARE(name->property("text").toString(), "Anna");
        auto wheel = [&](const char *n) { return find(QLatin1String(n)); };
        QCOMPARE(wheel("editDayWheel")->property("currentIndex").toInt(), 4);
        QCOMPARE(wheel("editMonthWheel")->property("currentIndex").toInt(), 6);
        QCOMPARE(wheel("editYearWheel")->property("currentIndex").toInt(), 1985 - 1800);

        name->setProperty("text", QString());
        wheel("editYearWheel")->setProperty("currentIndex", 2001 - 1800);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(wheel("editOkButton")));
        QTRY_VERIFY(!dialog->property("visible").toBool());
        QCOMPARE(stored(), (Rows{{"", "5 7 2001"}, {"Bob", "1 1 2000"}}));
        QTRY_COMPARE(text(cell(0), "labelName"), "Unknown");
    }

    void longPressBelowTheRowsDoesNothing()
    {
        m_settings->set(favorites, people());
        start();
        const Rows before = stored();
        const QPoint below(195, 700);
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, below);
        QTest::qWait(1200);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, below);
        QVERIFY(!find<QObject>("editDialog")->property("visible").toBool());
        QCOMPARE(stored(), before);
    }

    void swipingDeletesTheLastFavorite()
    {
        m_settings->set(favorites, Rows{{"Anna", "12 3 1985"}});
        start();
        const QPoint from = centreOf(cell(0)) + QPoint(150, 0);
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 20; ++step)
            QTest::mouseMove(m_window.get(), from - QPoint(step * 20, 0), 10);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, from - QPoint(400, 0), 10);
        QTRY_COMPARE(find("tableView")->property("count").toInt(), 0);
        QCOMPARE(m_settings->value(favorites), Rows{});
        QTRY_COMPARE(find("footerCount")->property("text").toString(), "Entries: 0");
    }

    // Only a swipe past two thirds of the row deletes; anything shorter, at
    // whatever speed, shows the delete button or closes again.
    void swipeOutcomes_data()
    {
        QTest::addColumn<int>("distance");
        QTest::addColumn<int>("steps");
        QTest::addColumn<int>("delay");
        QTest::addColumn<bool>("open");
        QTest::addColumn<bool>("deleted");
        QTest::newRow("slow 45 px: opens") << 45 << 9 << 40 << true << false;
        QTest::newRow("quick flick of 150 px: opens") << 150 << 3 << 5 << true << false;
        QTest::newRow("a nudge: closes") << 25 << 5 << 20 << false << false;
        QTest::newRow("past two thirds: deletes") << 300 << 15 << 10 << false << true;
    }
    void swipeOutcomes()
    {
        QFETCH(int, distance);
        QFETCH(int, steps);
        QFETCH(int, delay);
        QFETCH(bool, open);
        QFETCH(bool, deleted);
        m_settings->set(favorites, people());
        start();
        const Rows before = stored();
        swipeLeft(0, distance, steps, delay);
        QTest::qWait(600);
        QCOMPARE(stored().size(), before.size() - (deleted ? 1 : 0));
        if (deleted) {
            QCOMPARE(stored(), before.mid(1));
            return;
        }
        QCOMPARE(openRow(), open ? 0 : -1);
        QCOMPARE(deleteShown(0), open);
    }

    void anOpenRowWaitsForATap()
    {
        m_settings->set(favorites, people());
        start();
        const Rows before = stored();
        QSignalSpy requested(m_controller, &FavViewController::screenRequested);
        swipeLeft(1, 60, 6, 30);
        QTest::qWait(1000);
        QVERIFY(deleteShown(1));
        // A tap elsewhere only closes it.
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(cell(0)));
        QTRY_VERIFY(!deleteShown(1));
        QCOMPARE(requested.count(), 0);
        QCOMPARE(stored(), before);
        // Open again, and a tap on the button deletes.
        swipeLeft(1, 60, 6, 30);
        QTRY_COMPARE(cell(1)->findChild<QQuickItem *>(u"deleteAction"_qs)->width(), 80.0);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {},
                          centreOf(cell(1)->findChild<QQuickItem *>(u"deleteAction"_qs)));
        QTRY_COMPARE(stored().size(), before.size() - 1);
        QCOMPARE(stored(), Rows({before.at(0), before.at(2)}));
    }

    // "Undo" puts the favorite back where it was, with one write each way.
    void undoPutsItBack_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<QString>("undo");
        QTest::addColumn<QString>("message");
        QTest::newRow("English") << QStringList{"en-US"} << "Undo"
                                 << "Deleted: Zoe";
        QTest::newRow("German") << QStringList{"de"} << "Rückgängig"
                                << "Gelöscht: Zoe";
        QTest::newRow("Russian") << QStringList{"ru"} << "Вернуть"
                                 << "Удалено: Zoe";
    }
    void undoPutsItBack()
    {
        QFETCH(QStringList, preferred);
        QFETCH(QString, undo);
        QFETCH(QString, message);
        m_settings->set(favorites, people());
        start(preferred);
        const Rows before = stored();
        QCOMPARE(names(before), (QStringList{"Anna", "Zoe", "bob"}));
        const quint64 writes = m_settings->changes();
        swipeLeft(1, 300, 15, 10);
        QTRY_COMPARE(stored(), Rows({before.at(0), before.at(2)}));
        QCOMPARE(m_settings->changes(), writes + 1);
        QTRY_VERIFY(find("undoBar")->isVisible());
        QCOMPARE(find("btnUndo")->property("text").toString(), undo);
        QCOMPARE(find("undoLabel")->property("text").toString(), message);
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(find("btnUndo")));
        QTRY_COMPARE(stored(), before);
        QCOMPARE(m_settings->changes(), writes + 2);
        QTRY_COMPARE(find("tableView")->property("count").toInt(), 3);
        QTRY_COMPARE(cell(1) ? text(cell(1), "labelName") : QString(), "Zoe");
        QTRY_VERIFY(!find("undoBar")->isVisible());
    }

    void undoGoesAfterFiveSeconds()
    {
        m_settings->set(favorites, people());
        start();
        m_controller->deleteRow(0);
        const Rows after = stored();
        QTest::qWait(FavViewController::undoMilliseconds - 600);
        QVERIFY(m_controller->undoVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!m_controller->undoVisible(), 1500);
        m_controller->undoDelete();
        QCOMPARE(stored(), after);
    }

    // Names that look like markup are shown as typed.
    void markupNamesAreText()
    {
        m_settings->set(favorites, Rows{{"<Mama>", "12 3 1985"}, {"<i>Anna</i>", "1 1 2000"}});
        start();
        for (int row = 0; row < 2; ++row) {
            QQuickItem *label = cell(row)->findChild<QQuickItem *>(u"labelName"_qs);
            QCOMPARE(label->property("textFormat").toInt(), 0); // Text.PlainText
            // As rich text "<Mama>" would draw nothing at all.
            QVERIFY(label->property("contentWidth").toReal() > 30);
        }
        QCOMPARE(text(cell(0), "labelName"), "<Mama>");
    }

    void orderedByBirthdayScrollsToTheNextOne_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<int>("target");
        QTest::newRow("late November: 1 December") << QDate(2026, 11, 22) << 22;
        QTest::newRow("all past: no scroll") << QDate(2026, 12, 31) << -1;
    }
    void orderedByBirthdayScrollsToTheNextOne()
    {
        QFETCH(QDate, today);
        QFETCH(int, target);
        Rows many;
        for (int i = 0; i < 24; ++i)
            many.append({u"P"_qs + QString::number(i),
                         QStringLiteral("%1 %2 1990").arg(1 + i % 2).arg(1 + i / 2)});
        m_settings->set(favorites, many);
        m_settings->set(sort, 2);
        m_clock->set(QDateTime(today, QTime(12, 0)));
        start({"en-US"}, false);
        QCOMPARE(m_controller->scrollTarget(), target);
        QQuickItem *list = find("tableView");
        if (target < 0) {
            QTest::qWait(1300);
            QCOMPARE(list->property("contentY").toReal(), 0.0);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(list->property("contentY").toReal() > 0, 3000);
        QTest::qWait(500);
        int top = -1;
        QMetaObject::invokeMethod(list, "indexAt", Q_RETURN_ARG(int, top), Q_ARG(qreal, 10),
                                  Q_ARG(qreal, list->property("contentY").toReal() + 10));
        // The row goes to the top, unless the list ends before that.
        QVERIFY2(top == target || list->property("atYEnd").toBool(),
                 qPrintable(QString::number(top)));
    }

    // The import button offers both imports; a file chosen in the dialog is
    // imported in one write, the new row shows, and the summary is in the
    // interface language, as is the reason a file is refused.
    void importsAFile_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("summary");
        QTest::addColumn<int>("rows");
        QTest::newRow("cards") << QByteArray("BEGIN:VCARD\nFN:Jane\nBDAY:1985-03-12\nEND:VCARD\n"
                                             "BEGIN:VCARD\nFN:Anna\nEND:VCARD\n")
                               << u"1 hinzugefügt, 0 schon vorhanden, 1 übersprungen (1 ohne "
                                  u"Geburtstag)"_qs
                               << 2;
        QTest::newRow("no vCard") << QByteArray("hello") << u"Diese Datei ist keine vCard-Datei."_qs
                                  << 1;
    }
    void importsAFile()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, summary);
        QFETCH(int, rows);
        m_settings->set(favorites, Rows{{"Anna", "1 1 2000"}});
        start({"de-DE"});
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centreOf(find("btnImport")));
        QTRY_VERIFY(m_window->findChild<QObject *>("importMenu")->property("opened").toBool());

        QTemporaryDir dir;
        QFile vcf(dir.filePath("contacts.vcf"));
        QVERIFY(vcf.open(QIODevice::WriteOnly) && vcf.write(file) == file.size());
        vcf.close();
        m_controller->importFile(QUrl::fromLocalFile(vcf.fileName()));
        QCOMPARE(m_controller->importSummary(), summary);
        QCOMPARE(stored().size(), rows);
        QTRY_COMPARE(find("tableView")->property("count").toInt(), rows);
        QTRY_VERIFY(m_window->findChild<QObject *>("importSummary")->property("opened").toBool());
    }

    void unreadableBirthdayStopsTheProgram()
    {
        QProcess child;
        QTemporaryDir runtime;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_RUNTIME_DIR"_qs, runtime.path());
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {u"--unreadable"_qs});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        const QByteArray err = child.readAllStandardError();
        QCOMPARE(err.count('\n'), 1);
        QVERIFY2(err.contains("ERROR: Date conversion failed due to mismatched format.") &&
                     err.contains("favorite 1"),
                 err.constData());
    }
};

// A child run with "--unreadable" shows a list whose second birthday is not a date.
static int showUnreadable()
{
    MemorySettingsStore settings;
    settings.set(favorites, Rows{{"Anna", "12 3 1985"}, {"Bob", "soon"}});
    FixedClock clock(now);
    Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
    session.favorites.load();
    FavViewController controller(session);
    controller.viewDidLoad();
    FavoritesModel *model = controller.model();
    for (int row = 0; row < model->rowCount(); ++row)
        model->data(model->index(row), FavoritesModel::NameRole);
    return 0;
}

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (argc == 2 && qstrcmp(argv[1], "--unreadable") == 0) {
        DebugLog::setSink([](const QString &) {});
        return showUnreadable();
    }
    TestFavoritesScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_favoritesscreen.moc"
