// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "core/DebugLog.h"
#include "mainScreen/ViewController.h"
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

const QDateTime launch = at(2026, 11, 22, 12);

QList<QStringList> threeFavorites()
{
    return {{"Anna.  ", "12 3 1985"}, {"Bob", "1 1 2000"}, {"...", "29 2 1996"}};
}

} // namespace

// The main screen as a user meets it: the real QML view over a controller
// with an in-memory settings store and a fixed clock.
class TestMainScreen : public QObject
{
    Q_OBJECT

    TimeZoneScope m_zone{"Europe/Berlin"};
    std::unique_ptr<MemorySettingsStore> m_settings;
    std::unique_ptr<FixedClock> m_clock;
    std::unique_ptr<Session> m_session;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    ViewController *m_controller = nullptr;
    QQuickItem *m_screen = nullptr;

    void start(const QStringList &preferred = {"en-US"}, Appearance appearance = Appearance::Dark)
    {
        m_session = std::make_unique<Session>(*m_settings, *m_clock, preferred, appearance);
        m_controller = new ViewController(*m_session, m_window.get());
        m_controller->viewDidLoad();
        QQmlComponent component(
            m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/Tavlo/mainScreen/MainScreen.qml")));
        QObject *screen = component.createWithInitialProperties(
            {{QStringLiteral("controller"), QVariant::fromValue(m_controller)}});
        QVERIFY2(screen, qPrintable(component.errorString()));
        m_screen = qobject_cast<QQuickItem *>(screen);
        m_screen->setParent(m_window.get());
        m_screen->setParentItem(m_window->contentItem());
        m_screen->setSize(m_window->size());
        connect(m_window.get(), &QQuickWindow::widthChanged, m_screen,
                [this](int width) { m_screen->setWidth(width); });
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    template <typename T = QQuickItem>
    T *find(const char *name) const
    {
        return m_screen->findChild<T *>(QLatin1String(name));
    }

    QString text(const char *name) const { return find(name)->property("text").toString(); }

    int wheelIndex(const char *name) const { return find(name)->property("currentIndex").toInt(); }

    // What the wheels report once the user has turned them to a date (real
    // drags are tested on their own below); the wheels then follow.
    void turnWheels(int day, int month, int year)
    {
        m_controller->pickDate(day, month, year);
        QTRY_COMPARE(wheelIndex("dayWheel"), day - 1);
        QCOMPARE(wheelIndex("monthWheel"), month - 1);
        QCOMPARE(wheelIndex("yearWheel"), year - 1800);
    }

    void tap(const char *name)
    {
        QQuickItem *item = find(name);
        QVERIFY2(item, name);
        const QPoint centre =
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre);
    }

    void swipe(int dx)
    {
        const QPoint from(195 - dx / 2, 200);
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            QTest::mouseMove(m_window.get(), from + QPoint(dx * step / 10, 0), 10);
        }
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, from + QPoint(dx, 0), 10);
    }

private slots:
    void init()
    {
        m_settings = std::make_unique<MemorySettingsStore>();
        m_clock = std::make_unique<FixedClock>(launch);
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

    void freshInstall()
    {
        start();
        QCOMPARE(text("lblDisplay"), "Select your date of birth");
        QCOMPARE(text("labelWeekDay"), QString());
        QCOMPARE(wheelIndex("dayWheel"), 5);
        QCOMPARE(wheelIndex("monthWheel"), 1);
        QCOMPARE(wheelIndex("yearWheel"), 1977 - 1800);
        QCOMPARE(find("btnPlus")->isEnabled(), false);
        QCOMPARE(m_settings->value(backgroundImage), QStringLiteral("space"));
        QCOMPARE(m_settings->value(firstStartDone), true);
        QCOMPARE(m_settings->value(moreDetails), true);
        QCOMPARE(m_settings->value(star), true);
        QCOMPARE(text("titleLabel"), "Tavlo");
    }

    void wheelsFollowTheLanguage_data()
    {
        QTest::addColumn<QStringList>("preferred");
        QTest::addColumn<QString>("march");
        QTest::addColumn<bool>("dayFirst");
        QTest::newRow("en-US") << QStringList{"en-US"} << "March" << false;
        QTest::newRow("de-DE") << QStringList{"de-DE"} << "März" << true;
        QTest::newRow("ru") << QStringList{"ru"} << "марта" << true;
    }
    void wheelsFollowTheLanguage()
    {
        QFETCH(QStringList, preferred);
        QFETCH(QString, march);
        QFETCH(bool, dayFirst);
        start(preferred);
        QCOMPARE(m_controller->monthNames().at(2), march);
        QCOMPARE(find("dayWheel")->x() < find("monthWheel")->x(), dayFirst);
        QVERIFY(find("monthWheel")->x() < find("yearWheel")->x());
        QCOMPARE(find("yearWheel")->property("count").toInt(), 2200 - 1800 + 1);
    }

    void handOver_data()
    {
        QTest::addColumn<bool>("move");
        QTest::addColumn<QString>("startsWith");
        QTest::addColumn<int>("year");
        QTest::newRow("move to the chosen favorite") << true << "Anna's age is: 41 Years," << 1985;
        QTest::newRow("stay on the saved date") << false << "Your age is: 36 Years," << 1990;
    }
    void handOver()
    {
        QFETCH(bool, move);
        QFETCH(QString, startsWith);
        QFETCH(int, year);
        m_settings->set(handOverPending, true);
        m_settings->set(handOverMovePicker, move);
        m_settings->set(handOverName, QStringLiteral("Anna. "));
        m_settings->set(handOverBirthday, QStringLiteral("12 3 1985"));
        m_settings->set(day, 5);
        m_settings->set(month, 11);
        m_settings->set(SettingsKeys::year, 1990);
        start();
        QVERIFY2(text("lblDisplay").startsWith(startsWith), qPrintable(text("lblDisplay")));
        QCOMPARE(wheelIndex("yearWheel"), year - 1800);
        QCOMPARE(m_settings->value(handOverPending), false);
        QCOMPARE(m_settings->value(handOverMovePicker), false);
        QCOMPARE(find("btnPlus")->isEnabled(), false);
        QCOMPARE(m_settings->value(SettingsKeys::year), year);
    }

    void dateChangeRule_data()
    {
        QTest::addColumn<QDate>("picked");
        QTest::addColumn<QString>("startsWith");
        QTest::addColumn<bool>("plus");
        QTest::addColumn<QString>("weekday");
        QTest::newRow("past") << QDate(1985, 3, 12) << "Your age is: 41 Years," << true
                              << "Tuesday";
        QTest::newRow("earlier today")
            << QDate(2026, 11, 22) << "Your age is: 0 Years," << true << "Sunday";
        QTest::newRow("tomorrow") << QDate(2026, 11, 23) << "Select your date of birth" << false
                                  << "";
        QTest::newRow("far future")
            << QDate(2150, 1, 1) << "Select your date of birth" << false << "";
    }
    void dateChangeRule()
    {
        QFETCH(QDate, picked);
        QFETCH(QString, startsWith);
        QFETCH(bool, plus);
        QFETCH(QString, weekday);
        start();
        turnWheels(picked.day(), picked.month(), picked.year());
        QVERIFY2(text("lblDisplay").startsWith(startsWith), qPrintable(text("lblDisplay")));
        QCOMPARE(find("btnPlus")->isEnabled(), plus);
        QCOMPARE(text("labelWeekDay"), weekday);
        if (plus)
            QCOMPARE(m_settings->value(SettingsKeys::year), picked.year());
    }

    void draggingAWheelPicksADate_data()
    {
        QTest::addColumn<QByteArray>("wheel");
        QTest::newRow("day") << QByteArray("dayWheel");
        QTest::newRow("month") << QByteArray("monthWheel");
        QTest::newRow("year") << QByteArray("yearWheel");
    }
    void draggingAWheelPicksADate()
    {
        QFETCH(QByteArray, wheel);
        start();
        QQuickItem *item = find(wheel.constData());
        const QPoint centre =
            item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        QTest::mousePress(m_window.get(), Qt::LeftButton, {}, centre);
        for (int step = 1; step <= 12; ++step)
            QTest::mouseMove(m_window.get(), centre - QPoint(0, step * 5), 16);
        QTest::mouseRelease(m_window.get(), Qt::LeftButton, {}, centre - QPoint(0, 60), 16);
        // Dragged up, the wheel moves on to a later value and the report follows.
        QTRY_VERIFY(text("lblDisplay").startsWith(u"Your age is: "));
        const QDate picked = m_controller->pickerDate().date();
        QVERIFY2(picked > QDate(1977, 2, 6), qPrintable(picked.toString()));
        QCOMPARE(item->property("currentIndex").toInt(), wheel == "dayWheel" ? picked.day() - 1
                                                         : wheel == "monthWheel"
                                                             ? picked.month() - 1
                                                             : picked.year() - 1800);
        QCOMPARE(m_settings->value(SettingsKeys::day), picked.day());
        // Turning the month or the year keeps the day.
        if (wheel != "dayWheel")
            QCOMPARE(picked.day(), 6);
    }

    void resetReturnsToTheStartOfTheRun()
    {
        m_clock->set(at(2026, 11, 22, 23, 50));
        start();
        m_clock->set(at(2026, 11, 23, 0, 10));
        tap("btnReset");
        QCOMPARE(m_controller->pickerDate(), at(2026, 11, 22, 23, 50));
        QCOMPARE(m_settings->value(day), 22);
        QCOMPARE(wheelIndex("dayWheel"), 21);
        QVERIFY(text("lblDisplay").startsWith(u"Your age is: 0 Years,\n 0 Months & 0 Days"));
    }

    void swipes_data()
    {
        QTest::addColumn<qint64>("index");
        QTest::addColumn<int>("dx");
        QTest::addColumn<QString>("startsWith");
        QTest::newRow("right at the first") << 0LL << 150 << "Anna's age is: 41";
        QTest::newRow("left at the last") << 2LL << -150 << "Unknown's age is: 30";
        QTest::newRow("left from the first") << 0LL << -150 << "Bob's age is: 26";
        QTest::newRow("right from the last") << 2LL << 150 << "Bob's age is: 26";
        QTest::newRow("not browsing") << 5000LL << -150 << "Select your date of birth";
        QTest::newRow("too short to be a swipe") << 0LL << -30 << "Select your date of birth";
    }
    void swipes()
    {
        QFETCH(qint64, index);
        QFETCH(int, dx);
        QFETCH(QString, startsWith);
        m_settings->set(favorites, threeFavorites());
        m_settings->set(handOverIndex, index);
        start();
        swipe(dx);
        QVERIFY2(text("lblDisplay").startsWith(startsWith), qPrintable(text("lblDisplay")));
    }

    void russianNamesTakeNoPossessive()
    {
        m_settings->set(favorites, threeFavorites());
        start({"ru"});
        swipe(150);
        QVERIFY2(text("lblDisplay").startsWith(u"Anna\n Возраст: 41 год,"),
                 qPrintable(text("lblDisplay")));
    }

    void unusualNamesStayInsideTheReport_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("emoji") << QString::fromUtf8("Zoë 🎂👩‍👩‍👧");
        QTest::newRow("right to left") << QString::fromUtf8("שרה بنت");
        QTest::newRow("line feeds") << "Anna\nMaria\nLouise";
        QTest::newRow("10,000 characters") << QString(10000, u'W');
    }
    void unusualNamesStayInsideTheReport()
    {
        QFETCH(QString, name);
        m_settings->set(favorites, {{name, "12 3 1985"}});
        start();
        swipe(150);
        QQuickItem *label = find("lblDisplay");
        QVERIFY(text("lblDisplay").startsWith(name.left(100)));
        QTRY_VERIFY(label->property("contentHeight").toReal() <= label->height());
        QVERIFY(label->property("contentWidth").toReal() <= label->width() + 1);
        QCOMPARE(m_settings->value(favorites)->at(0).at(0), name);
    }

    void greetingMilestones_data()
    {
        QTest::addColumn<QDate>("birth");
        QTest::addColumn<QString>("greeting");
        const QDate today(2026, 11, 22);
        QTest::newRow("days") << today.addDays(-1000) << "Kim is now 1000 days old!\n\n";
        QTest::newRow("months") << today.addMonths(-100) << "Kim is now 100 months old!\n\n";
        QTest::newRow("weeks") << today.addDays(-3500) << "Kim is now 500 weeks old!\n\n";
        QTest::newRow("none") << today.addDays(-1001) << "Select your date of birth";
    }
    void greetingMilestones()
    {
        QFETCH(QDate, birth);
        QFETCH(QString, greeting);
        const QString record =
            QStringLiteral("%1 %2 %3").arg(birth.day()).arg(birth.month()).arg(birth.year());
        m_settings->set(favorites, {{"Ann", "2 1 1990"}, {"Kim", record}});
        start();
        QCOMPARE(text("lblDisplay"), greeting);
        QCOMPARE(find("btnPlus")->isEnabled(), false);
        // The date the load leaves stored is the last favorite's.
        QCOMPARE(QDate(m_settings->value(year), m_settings->value(month), m_settings->value(day)),
                 birth);
    }

    void themesInTheView_data()
    {
        QTest::addColumn<int>("color");
        QTest::addColumn<Appearance>("appearance");
        for (int c = 0; c < 10; ++c) {
            QTest::addRow("%d dark", c) << c << Appearance::Dark;
            QTest::addRow("%d light", c) << c << Appearance::Light;
        }
    }
    void themesInTheView()
    {
        QFETCH(int, color);
        QFETCH(Appearance, appearance);
        m_settings->set(SettingsKeys::color, color);
        start({"en-US"}, appearance);
        for (int width : {360, 700, 390}) {
            m_window->resize(width, 844);
            QTest::qWait(5);
        }
        QCOMPARE(find("blurredEffectView1")->isVisible(), color <= 4);
        QCOMPARE(m_screen->findChildren<QQuickItem *>(u"gradientLayer"_qs).size(), 1);
        QCOMPARE(find("gradientLayer")->isVisible(), color >= 5 && color <= 8);
        const QColor background = find("ImgViewBackground")->property("color").value<QColor>();
        QCOMPARE(background.alpha() == 0, color <= 4);
        if (color == 9)
            QCOMPARE(background,
                     appearance == Appearance::Dark ? QColor(Qt::black) : QColor(Qt::white));
        QCOMPARE(m_controller->theme()->backgroundImage().fileName(),
                 color <= 4 ? QStringLiteral("space%1.svg").arg(color) : u"space.svg"_qs);
    }

    void blurStaysGoneForThisScreen()
    {
        m_settings->set(SettingsKeys::color, 6);
        start();
        m_settings->set(SettingsKeys::color, 0);
        m_window->resize(400, 844);
        QTRY_COMPARE(m_controller->theme()->accentColor(), QColor::fromRgbF(0.5875715f, 0, 1));
        QCOMPARE(find("blurredEffectView1")->isVisible(), false);
    }

    void addDialog_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("confirm");
        QTest::addColumn<QList<QStringList>>("stored");
        QTest::newRow("three blanks")
            << "   " << true << QList<QStringList>{{"Unknown", "12 3 1985"}};
        QTest::newRow("blanks around a name kept")
            << " Anna " << true << QList<QStringList>{{" Anna ", "12 3 1985"}};
        QTest::newRow("nothing typed")
            << "" << true << QList<QStringList>{{"Unknown", "12 3 1985"}};
        QTest::newRow("cancel") << "Anna" << false << QList<QStringList>{};
    }
    void addDialog()
    {
        QFETCH(QString, typed);
        QFETCH(bool, confirm);
        QFETCH(QList<QStringList>, stored);
        start();
        QSignalSpy reminders(m_controller, &ViewController::notificationPermissionCheckRequested);
        turnWheels(12, 3, 1985);
        QVERIFY(find("btnPlus")->isEnabled());
        tap("btnPlus");
        auto *dialog = find<QObject>("addDialog");
        QTRY_VERIFY(dialog->property("opened").toBool());
        QCOMPARE(dialog->property("title").toString(), "Enter a Name");
        QCOMPARE(text("addDialogMessage"), "Add this birthday to favorites");
        QCOMPARE(find("addNameField")->property("placeholderText").toString(),
                 "Name for this birthday: 12.03.1985");
        QCOMPARE(text("addCancelButton"), "Cancel");
        QCOMPARE(text("addOkButton"), "OK");
        for (const QChar c : typed)
            QTest::keyClick(m_window.get(), c.toLatin1());
        tap(confirm ? "addOkButton" : "addCancelButton");
        QTRY_VERIFY(!dialog->property("visible").toBool());
        QCOMPARE(m_settings->value(favorites).value_or(QList<QStringList>{}), stored);
        QCOMPARE(reminders.count(), confirm ? 1 : 0);
    }

    // A name that looks like markup is shown as typed, and the report keeps
    // its line breaks.
    void markupInANameIsText_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("tags") << "<i>Anna</i>";
        QTest::newRow("one tag") << "<Mama>";
        QTest::newRow("an entity") << "Tom &amp; Jerry<br>";
    }
    void markupInANameIsText()
    {
        QFETCH(QString, name);
        m_settings->set(moreDetails, true);
        m_settings->set(handOverPending, true);
        m_settings->set(handOverMovePicker, true);
        m_settings->set(handOverName, name);
        m_settings->set(handOverBirthday, QStringLiteral("12 3 1985"));
        start();
        QQuickItem *display = find("lblDisplay");
        QVERIFY(text("lblDisplay").startsWith(name + QStringLiteral("'s age is: ")));
        QCOMPARE(display->property("textFormat").toInt(), 0); // Text.PlainText
        // Rich text would fold the report onto one run of lines.
        QVERIFY(display->property("lineCount").toInt() >= text("lblDisplay").count(u'\n') + 1);
    }

    // The name field: a clear button while something is typed, and capitals
    // asked for where a word begins.
    void nameFieldClearsAndCapitalises()
    {
        start();
        turnWheels(12, 3, 1985);
        tap("btnPlus");
        QTRY_VERIFY(find<QObject>("addDialog")->property("opened").toBool());
        QQuickItem *field = find("addNameField");
        const auto hints = [&] { return field->property("inputMethodHints").toInt(); };
        QCOMPARE(hints() & Qt::ImhNoAutoUppercase, 0);
        QCOMPARE(hints() & Qt::ImhPreferUppercase, int(Qt::ImhPreferUppercase));
        QCOMPARE(find("addNameFieldClear")->isVisible(), false);
        for (const char c : QByteArray("ann"))
            QTest::keyClick(m_window.get(), c);
        QCOMPARE(hints() & Qt::ImhPreferUppercase, 0);
        QTest::keyClick(m_window.get(), ' ');
        QCOMPARE(hints() & Qt::ImhPreferUppercase, int(Qt::ImhPreferUppercase));
        QTRY_VERIFY(find("addNameFieldClear")->isVisible());
        tap("addNameFieldClear");
        QCOMPARE(field->property("text").toString(), QString());
        QVERIFY(field->hasActiveFocus());
        QCOMPARE(find("addNameFieldClear")->isVisible(), false);
    }

    void addDialogButtonsUseTheLabelColour()
    {
        m_settings->set(color, 7);
        start();
        turnWheels(12, 3, 1985);
        tap("btnPlus");
        QTRY_VERIFY(find<QObject>("addDialog")->property("opened").toBool());
        for (const char *button : {"addOkButton", "addCancelButton"})
            QCOMPARE(find(button)->property("tint").value<QColor>(),
                     m_controller->theme()->labelColor());
    }

    void ratingAskedOnTheThirteenthStart()
    {
        QStringList lines;
        const DebugLog::Sink previous = DebugLog::setSink([&](const QString &l) { lines << l; });
        m_settings->set(favorites, threeFavorites() + QList<QStringList>{{"Dan", "2 2 1990"}});
        m_settings->set(appStarts, 12);
        start();
        DebugLog::setSink(previous);
        QVERIFY(lines.contains(u"CANCEL"_qs));
        QCOMPARE(m_settings->value(appStarts), 0);
        QCOMPARE(m_settings->value(reviewedVersion), QStringLiteral(TAVLO_VERSION));
    }

    void otherScreensAreRequestedUnderADim_data()
    {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QString>("identifier");
        QTest::newRow("favorites") << QByteArray("btnFav") << "Fav";
        QTest::newRow("settings") << QByteArray("btnSet") << "Set";
    }
    void otherScreensAreRequestedUnderADim()
    {
        QFETCH(QByteArray, button);
        QFETCH(QString, identifier);
        start();
        QSignalSpy requested(m_controller, &ViewController::screenRequested);
        QCOMPARE(find("dimOverlay")->isVisible(), false);
        tap(button.constData());
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.at(0).at(0).toString(), identifier);
        QCOMPARE(find("dimOverlay")->isVisible(), true);
    }

    void damagedSettingsStopTheProgram_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("named");
        QTest::newRow("color 12") << "color"
                                  << "\"color\"";
        QTest::newRow("indexCount beyond the list") << "indexCount"
                                                    << "\"indexCount\"";
    }
    void damagedSettingsStopTheProgram()
    {
        QFETCH(QString, fault);
        QFETCH(QString, named);
        QProcess child;
        QTemporaryDir runtime;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_RUNTIME_DIR"_qs, runtime.path());
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {u"--fault"_qs, fault});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        const QByteArray err = child.readAllStandardError();
        QCOMPARE(err.count('\n'), 1);
        QVERIFY2(err.contains(named.toUtf8()), err.constData());
    }
};

// A child run with "--fault NAME" loads the main screen over a damaged
// setting, which must stop it.
static int runFault(const QString &fault)
{
    MemorySettingsStore settings;
    FixedClock clock(launch);
    if (fault == u"color") {
        settings.set(SettingsKeys::color, 12);
    } else {
        settings.set(favorites, threeFavorites());
        settings.set(handOverIndex, 7);
    }
    Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
    ViewController controller(session);
    controller.viewDidLoad();
    controller.handleGesture(ViewController::Swipe::Left);
    return 0;
}

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--fault") == 0) {
        DebugLog::setSink([](const QString &) {});
        return runFault(QString::fromLatin1(argv[2]));
    }
    TestMainScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainscreen.moc"
