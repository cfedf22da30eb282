// SPDX-License-Identifier: MIT
#include "RecordingNotificationCenter.h"
#include "ScreenHarness.h"
#include "WithoutIds.h"
#include "mainScreen/MainScreenController.h"
#include "reminders/ReminderScheduler.h"

#include <QSignalSpy>
#include <QWheelEvent>
#include <algorithm>
#include <optional>

using namespace SettingsKeys;

class TestMainScreen : public QObject
{
    Q_OBJECT

    std::optional<ScreenHarness> h;
    MainScreenController *c = nullptr;

    void start(const QStringList &preferred = {"en-US"}, Appearance appearance = Appearance::Dark)
    {
        c = h->show<MainScreenController>("mainScreen/MainScreen.qml", preferred, appearance);
    }

    QString display() const { return h->text("lblDisplay"); }
    int wheelIndex(const QString &name) const
    {
        return h->find(name)->property("currentIndex").toInt();
    }

    // What the wheels report once the user has turned them to a date (real
    // drags are tested on their own below); the wheels then follow.
    void turnWheels(int day, int month, int year)
    {
        c->pickDate(day, month, year);
        QTRY_COMPARE(wheelIndex("dayWheel"), day - 1);
        QCOMPARE(wheelIndex("monthWheel"), month - 1);
        QCOMPARE(wheelIndex("yearWheel"), year - 1800);
    }

    void swipe(int dx) { h->drag(QPoint(195 - dx / 2, 200), QPoint(dx, 0)); }

    // What the rows in sight on `wheel` read, top to bottom, against the
    // wheel's entries around its chosen one: the labels are handed on from
    // row to row as it turns, and each must say its own entry.
    QByteArray misreadRows(const QString &wheel) const
    {
        QQuickItem *list = nullptr;
        for (QQuickItem *item : h->find(wheel)->findChildren<QQuickItem *>()) {
            if (item->inherits("QQuickListView"))
                list = item;
        }
        const QRectF view = list->mapRectToScene(QRectF(0, 0, list->width(), list->height()));
        QList<QQuickItem *> rows;
        for (QQuickItem *row : list->property("contentItem").value<QQuickItem *>()->childItems()) {
            if (row->isVisible() && row->inherits("QQuickText") &&
                view.contains(row->mapRectToScene(row->boundingRect()).center()))
                rows.append(row);
        }
        std::sort(rows.begin(), rows.end(), [](QQuickItem *a, QQuickItem *b) {
            return a->mapToScene({}).y() < b->mapToScene({}).y();
        });
        const QVariant model = h->find(wheel)->property("model");
        const int entries =
            model.typeId() == QMetaType::Int ? model.toInt() : int(model.toStringList().size());
        const int chosen = wheelIndex(wheel);
        // The chosen entry stands in the middle row; the wheel's ends have
        // fewer rows beside it.
        qsizetype middle = 0;
        for (qsizetype i = 1; i < rows.size(); ++i) {
            const auto off = [&](qsizetype r) {
                return qAbs(rows.at(r)->mapRectToScene(rows.at(r)->boundingRect()).center().y() -
                            view.center().y());
            };
            if (off(i) < off(middle))
                middle = i;
        }
        QByteArrayList wrong;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const int entry = chosen + int(i - middle);
            const QString expected = model.typeId() == QMetaType::Int
                                         ? QString::number(entry + 1)
                                         : model.toStringList().value(entry);
            const QString shown = rows.at(i)->property("text").toString();
            if (shown != expected)
                wrong.append(shown.toUtf8() + " for " + expected.toUtf8());
        }
        const int reachable = std::min(chosen + 2, entries - 1) - std::max(chosen - 2, 0) + 1;
        if (rows.size() != reachable)
            wrong.append(QByteArray::number(rows.size()) + " rows");
        return wrong.join(", ");
    }

    void openAddDialog()
    {
        turnWheels(12, 3, 1985);
        h->tap("btnPlus");
        QTRY_VERIFY(h->opened("addDialog"));
    }

private slots:
    void init() { h.emplace(); }
    void cleanup() { h.reset(); }

    void freshInstall()
    {
        start();
        QCOMPARE(display(), "Select your date of birth");
        QCOMPARE(h->text("labelWeekDay"), QString());
        QCOMPARE(wheelIndex("dayWheel"), 5);
        QCOMPARE(wheelIndex("monthWheel"), 1);
        QCOMPARE(wheelIndex("yearWheel"), 1977 - 1800);
        QCOMPARE(h->find("btnPlus")->isEnabled(), false);
        QCOMPARE(h->settings.value(backgroundImage), QStringLiteral("space"));
        QCOMPARE(h->settings.value(firstStartDone), true);
        QCOMPARE(h->settings.value(moreDetails), true);
        QCOMPARE(h->settings.value(star), true);
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
        QCOMPARE(c->wheels()->monthNames().at(2), march);
        QCOMPARE(h->find("dayWheel")->x() < h->find("monthWheel")->x(), dayFirst);
        QVERIFY(h->find("monthWheel")->x() < h->find("yearWheel")->x());
        // 1800 to 2200, then "no year".
        QCOMPARE(h->find("yearWheel")->property("count").toInt(), 2200 - 1800 + 2);
    }

    // A favorite chosen in the list: the report on it, or on the saved date.
    // A name that looks like markup is shown as typed, and the report keeps
    // its line breaks.
    void handOver_data()
    {
        QTest::addColumn<bool>("move");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("startsWith");
        QTest::addColumn<int>("year");
        QTest::newRow("move to the chosen favorite") << true << "Anna. "
                                                     << "Anna's age is: 41 Years," << 1985;
        QTest::newRow("stay on the saved date") << false << "Anna. "
                                                << "Your age is: 36 Years," << 1990;
        for (const char *name : {"<i>Anna</i>", "<Mama>", "Tom &amp; Jerry<br>"})
            QTest::newRow(name) << true << name << name + u"'s age is: 41 Years,"_qs << 1985;
    }
    void handOver()
    {
        QFETCH(bool, move);
        QFETCH(QString, name);
        QFETCH(QString, startsWith);
        QFETCH(int, year);
        h->settings.set(handOverPending, true);
        h->settings.set(handOverMovePicker, move);
        h->settings.set(handOverName, name);
        h->settings.set(handOverBirthday, QStringLiteral("12 3 1985"));
        h->settings.set(day, 5);
        h->settings.set(month, 11);
        h->settings.set(SettingsKeys::year, 1990);
        start();
        QVERIFY2(display().startsWith(startsWith), qPrintable(display()));
        QCOMPARE(wheelIndex("yearWheel"), year - 1800);
        QCOMPARE(h->settings.value(handOverPending), false);
        QCOMPARE(h->settings.value(handOverMovePicker), false);
        QCOMPARE(h->find("btnPlus")->isEnabled(), false);
        QCOMPARE(h->settings.value(SettingsKeys::year), year);
        QCOMPARE(h->find("lblDisplay")->property("textFormat").toInt(), 0); // Text.PlainText
        // Rich text would fold the report onto one run of lines.
        QVERIFY(h->find("lblDisplay")->property("lineCount").toInt() > display().count(u'\n'));
    }

    void dateChangeRule_data()
    {
        QTest::addColumn<QDate>("picked");
        QTest::addColumn<QString>("startsWith");
        QTest::addColumn<QString>("weekday");
        QTest::newRow("past") << QDate(1985, 3, 12) << "Your age is: 41 Years,"
                              << "Tuesday";
        QTest::newRow("earlier today") << QDate(2026, 11, 22) << "Your age is: 0 Years,"
                                       << "Sunday";
        QTest::newRow("tomorrow") << QDate(2026, 11, 23) << "Select your date of birth"
                                  << "";
    }
    void dateChangeRule()
    {
        QFETCH(QDate, picked);
        QFETCH(QString, startsWith);
        QFETCH(QString, weekday);
        start();
        turnWheels(picked.day(), picked.month(), picked.year());
        QVERIFY2(display().startsWith(startsWith), qPrintable(display()));
        const bool plus = !weekday.isEmpty();
        QCOMPARE(h->find("btnPlus")->isEnabled(), plus);
        QCOMPARE(h->text("labelWeekDay"), weekday);
        if (plus)
            QCOMPARE(h->settings.value(SettingsKeys::year), picked.year());
    }

    void draggingAWheelPicksADate_data()
    {
        QTest::addColumn<QString>("wheel");
        QTest::newRow("day") << "dayWheel";
        QTest::newRow("month") << "monthWheel";
        QTest::newRow("year") << "yearWheel";
    }
    void draggingAWheelPicksADate()
    {
        QFETCH(QString, wheel);
        start();
        h->drag(h->centre(h->find(wheel)), QPoint(0, -60), 12, 16);
        // Dragged up, the wheel moves on to a later value and the report follows.
        QTRY_VERIFY(display().startsWith(u"Your age is: "));
        const QDate picked = c->pickerDate().date();
        QVERIFY2(picked > QDate(1977, 2, 6), qPrintable(picked.toString()));
        QCOMPARE(wheelIndex(wheel), wheel == "dayWheel"     ? picked.day() - 1
                                    : wheel == "monthWheel" ? picked.month() - 1
                                                            : picked.year() - 1800);
        QCOMPARE(h->settings.value(SettingsKeys::day), picked.day());
        // Turning the month or the year keeps the day.
        if (wheel != "dayWheel")
            QCOMPARE(picked.day(), 6);
        QTRY_COMPARE(misreadRows(wheel), QByteArray());
        // A jump far along (the year by decades) shows the rows there.
        turnWheels(23, 11, 1990);
        QTRY_COMPARE(misreadRows(wheel), QByteArray());
    }

    // The mouse wheel turns a wheel one entry a notch: away from you to the
    // entries above, towards you to those below; a touchpad's small steps
    // add up to a notch.
    void scrollWheelTurnsAWheel_data()
    {
        QTest::addColumn<QString>("wheel");
        QTest::addColumn<QList<int>>("deltas");
        QTest::addColumn<QDate>("picked");
        QTest::newRow("day, two notches towards you")
            << "dayWheel" << QList<int>{-120, -120} << QDate(1977, 2, 8);
        QTest::newRow("month, a notch away")
            << "monthWheel" << QList<int>{120} << QDate(1977, 1, 6);
        QTest::newRow("year, a touchpad's small steps")
            << "yearWheel" << QList<int>{-40, -40, -40, -30} << QDate(1978, 2, 6);
        QTest::newRow("day, less than a notch")
            << "dayWheel" << QList<int>{-100} << QDate(1977, 2, 6);
    }
    void scrollWheelTurnsAWheel()
    {
        QFETCH(QString, wheel);
        QFETCH(QList<int>, deltas);
        QFETCH(QDate, picked);
        start();
        QCOMPARE(c->pickerDate().date(), QDate(1977, 2, 6));
        const QPointF at = h->centre(h->find(wheel));
        for (const int delta : deltas) {
            QWheelEvent event(at, h->window->mapToGlobal(at), {}, {0, delta}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(h->window, &event);
        }
        QTRY_COMPARE(c->pickerDate().date(), picked);
        QTest::qWait(300);
        QCOMPARE(c->pickerDate().date(), picked);
        if (picked != QDate(1977, 2, 6))
            QVERIFY(display().startsWith(u"Your age is: "));
    }

    void resetReturnsToTheStartOfTheRun()
    {
        h->clock.set(at(2026, 11, 22, 23, 50));
        start();
        h->clock.set(at(2026, 11, 23, 0, 10));
        h->tap("btnReset");
        QCOMPARE(c->pickerDate(), at(2026, 11, 22, 23, 50));
        QCOMPARE(h->settings.value(day), 22);
        QCOMPARE(wheelIndex("dayWheel"), 21);
        QVERIFY(display().startsWith(u"Your age is: 0 Years,\n 0 Months & 0 Days"));
    }

    // A swipe steps through the favorites; whatever the name, the report
    // stays inside its label.
    void swipes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("dx");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("startsWith");
        const auto row = [](const char *tag, const QString &name, int dx, const char *language,
                            const QString &startsWith) {
            QTest::newRow(tag) << name << dx << language << startsWith;
        };
        row("right at the first", "Anna.  ", 150, "en-US", "Anna's age is: 41");
        row("left from the first", "Anna.  ", -150, "en-US", "Bob's age is: 26");
        row("too short to be a swipe", "Anna.  ", -30, "en-US", "Select your date of birth");
        row("Russian names take no possessive", "Anna.  ", 150, "ru", "Anna\n Возраст: 41 год,");
        for (const QString &name : {u"Zoë 🎂👩‍👩‍👧"_qs, u"שרה بنت"_qs,
                                    u"Anna\nMaria\nLouise"_qs, QString(10000, u'W')})
            // A line break in a name would split the sentence: a blank.
            row(qPrintable(name.left(20)), name, 150, "en-US",
                QString(name).replace(u'\n', u' ').left(100));
    }
    void swipes()
    {
        QFETCH(QString, name);
        QFETCH(int, dx);
        QFETCH(QString, language);
        QFETCH(QString, startsWith);
        const QList<QStringList> favorites = {
            {name, "12 3 1985"}, {"Bob", "1 1 2000"}, {"...", "29 2 1996"}};
        h->settings.set(SettingsKeys::favorites, favorites);
        h->settings.set(handOverIndex, 0);
        start({language});
        swipe(dx);
        QVERIFY2(display().startsWith(startsWith), qPrintable(display()));
        QQuickItem *label = h->find("lblDisplay");
        QTRY_VERIFY(label->property("contentHeight").toReal() <= label->height());
        QVERIFY(label->property("contentWidth").toReal() <= label->width() + 1);
        QCOMPARE(h->settings.value(SettingsKeys::favorites), favorites);
    }

    // A favorite without a year: the facts that need none, and the year
    // wheel on "no year"; "+" saves it so, and a year turned to gives the
    // whole report again. On the birthday itself the greeting names it.
    void birthdayWithoutAYear_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("greeting");
        QTest::newRow("en") << "en-US"
                            << u"Dan's birthday: November 23\nThe year of birth is not known.\n\n"
                               "Zodiac sign: Sagittarius \u2650\uFE0E\nnext birthday: in 1 day"_qs
                            << "Eve has a birthday today";
        QTest::newRow("de")
            << "de-DE"
            << u"Dan's Geburtstag: 23. November\nDas Geburtsjahr ist nicht bekannt."
               "\n\nSternzeichen: Schütze \u2650\uFE0E\nnächster Geburtstag: in 1 Tag"_qs
            << "Eve hat heute Geburtstag";
        QTest::newRow("ru") << "ru"
                            << u"Dan\nДень рождения: 23. ноября\nГод рождения неизвестен.\n\n"
                               "Знак зодиака: Стрелец \u2650\uFE0E\nдень рождения через 1 день"_qs
                            << "Eve";
    }
    void birthdayWithoutAYear()
    {
        QFETCH(QString, language);
        QFETCH(QString, report);
        QFETCH(QString, greeting);
        h->settings.set(SettingsKeys::favorites,
                        QList<QStringList>{{"Eve", "22 11"}, {"Dan", "23 11"}});
        h->settings.set(SettingsKeys::year, 1990);
        start({language});
        QVERIFY2(display().startsWith(greeting), qPrintable(display()));
        swipe(-150);
        QCOMPARE(display(), report);
        QCOMPARE(h->text("labelWeekDay"), QString());
        QCOMPARE(wheelIndex("yearWheel"), 2200 - 1800 + 1);
        QCOMPARE(h->find("yearWheel")->property("currentText").toString(),
                 h->session->strings[UiText::NoYear]);
        QCOMPARE(wheelIndex("monthWheel"), 10);
        QTRY_COMPARE(wheelIndex("dayWheel"), 22);
        QCOMPARE(h->settings.value(SettingsKeys::year), 1990);

        h->tap("btnPlus");
        QTRY_VERIFY(h->opened("addDialog"));
        QVERIFY(
            h->find("addNameField")->property("placeholderText").toString().endsWith(" 23.11."));
        QTest::keyClick(h->window, 'X');
        h->tap("addOkButton");
        QTRY_COMPARE(h->settings.value(SettingsKeys::favorites)->size(), 3);
        QCOMPARE(h->settings.value(SettingsKeys::favorites)->at(2).mid(0, 2),
                 (QStringList{"X", "23 11"}));

        // From the keyboard: Home and End reach the wheel's ends.
        h->find("yearWheelStepper")->forceActiveFocus();
        QTest::keyClick(h->window, Qt::Key_Home);
        QTRY_COMPARE(wheelIndex("yearWheel"), 0);
        QVERIFY(!display().contains(h->session->strings[UiText::BirthYearUnknown]));
        QTest::keyClick(h->window, Qt::Key_End);
        QTRY_COMPARE(wheelIndex("yearWheel"), 2200 - 1800 + 1);
        QVERIFY2(display().startsWith(h->session->strings[UiText::BirthdayWithoutYear].arg(
                     h->session->strings[UiText::ReportYour], QString())),
                 qPrintable(display()));

        turnWheels(23, 11, 1990);
        QVERIFY2(display().contains(u": 35 "_qs), qPrintable(display()));
        QVERIFY(!h->text("labelWeekDay").isEmpty());
    }

    // The keyboard's swipes, Page Up and Page Down, step through the
    // favorites too, and a screen reader is told the new report at once;
    // so is "back to today".
    void pageKeysStepAndAreAnnounced()
    {
        h->settings.set(SettingsKeys::favorites,
                        QList<QStringList>{{"Anna", "12 3 1985"}, {"Bob", "1 1 2000"}});
        start();
        QQuickItem *announcer = h->find("announcer");
        QTest::keyClick(h->window, Qt::Key_PageDown);
        QVERIFY2(display().startsWith(u"Bob's age is: 26"_qs), qPrintable(display()));
        QCOMPARE(announcer->property("text").toString(), c->spokenReport());
        QVERIFY(c->spokenReport().startsWith(u"Bob's age is: 26 Years, 10 Months & 21 Days"_qs));
        QVERIFY(announcer->isVisible());
        QTest::keyClick(h->window, Qt::Key_PageUp);
        QVERIFY2(display().startsWith(u"Anna's age is: 41"_qs), qPrintable(display()));
        QCOMPARE(announcer->property("text").toString(), c->spokenReport());
        h->tap("btnReset");
        QTRY_VERIFY2(announcer->property("text").toString().contains(u"age is: 0 Years"_qs),
                     qPrintable(announcer->property("text").toString()));
    }

    void greetingMilestones_data()
    {
        QTest::addColumn<QDate>("birth");
        QTest::addColumn<QString>("greeting");
        const QDate today(2026, 11, 22);
        QTest::newRow("days") << today.addDays(-1000) << "Kim is now 1000 days old!\n\n";
        QTest::newRow("none") << today.addDays(-1001) << "Select your date of birth";
    }
    void greetingMilestones()
    {
        QFETCH(QDate, birth);
        QFETCH(QString, greeting);
        h->settings.set(favorites, {{"Ann", "2 1 1990"}, {"Kim", birth.toString("d M yyyy")}});
        start();
        QCOMPARE(display(), greeting);
        QCOMPARE(h->find("btnPlus")->isEnabled(), false);
        // The date the load leaves stored is the last favorite's.
        QCOMPARE(QDate(h->settings.value(year), h->settings.value(month), h->settings.value(day)),
                 birth);

        // Another process reorders the list while another screen is shown:
        // the way back reads it as it is now.
        h->settings.set(favorites, {{"Kim", birth.toString("d M yyyy")}, {"Ann", "2 1 1990"}});
        MainScreenController back(*h->session);
        back.viewDidLoad();
        QCOMPARE(back.displayText(), greeting);
        QCOMPARE(QDate(h->settings.value(year), h->settings.value(month), h->settings.value(day)),
                 QDate(1990, 1, 2));
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
        h->settings.set(SettingsKeys::color, color);
        start({"en-US"}, appearance);
        for (int width : {360, 700, 390}) {
            h->window->resize(width, 844);
            QTest::qWait(5);
        }
        QCOMPARE(h->find("blurredEffectView1")->isVisible(), color <= 4);
        QCOMPARE(h->screen->findChildren<QQuickItem *>(u"gradientLayer"_qs).size(), 1);
        QCOMPARE(h->find("gradientLayer")->isVisible(), color >= 5 && color <= 8);
        const QColor background = h->find("ImgViewBackground")->property("color").value<QColor>();
        QCOMPARE(background.alpha() == 0, color <= 4);
        if (color == 9)
            QCOMPARE(background,
                     appearance == Appearance::Dark ? QColor(Qt::black) : QColor(Qt::white));
        QCOMPARE(c->theme()->backgroundImage().fileName(),
                 color <= 4 ? QStringLiteral("space%1.svg").arg(color) : u"space.svg"_qs);
    }

    void blurStaysGoneForThisScreen()
    {
        h->settings.set(SettingsKeys::color, 6);
        start();
        const QColor before = c->theme()->accentColor();
        h->settings.set(SettingsKeys::color, 0);
        h->window->resize(400, 844);
        QTRY_VERIFY(c->theme()->accentColor() != before);
        QCOMPARE(h->find("blurredEffectView1")->isVisible(), false);
    }

    void addDialog_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("confirm");
        QTest::addColumn<QList<QStringList>>("stored");
        QTest::newRow("blanks around a name kept")
            << " Anna " << true << QList<QStringList>{{" Anna ", "12 3 1985"}};
        QTest::newRow("cancel") << "Anna" << false << QList<QStringList>{};
    }
    void addDialog()
    {
        QFETCH(QString, typed);
        QFETCH(bool, confirm);
        QFETCH(QList<QStringList>, stored);
        h->settings.set(color, 7);
        start();
        QSignalSpy reminders(c, &MainScreenController::notificationPermissionCheckRequested);
        openAddDialog();
        auto *dialog = h->window->findChild<QObject *>("addDialog");
        QCOMPARE(dialog->property("title").toString(), "Enter a Name");
        QCOMPARE(h->text("addDialogMessage"), "Add this birthday to favorites");
        QCOMPARE(h->find("addNameField")->property("placeholderText").toString(),
                 "Name for this birthday: 12.03.1985");
        QCOMPARE(h->text("addCancelButton"), "Cancel");
        QCOMPARE(h->text("addOkButton"), "OK");
        for (const QChar ch : typed)
            QTest::keyClick(h->window, ch.toLatin1());
        h->tap(confirm ? "addOkButton" : "addCancelButton");
        QTRY_VERIFY(!dialog->property("visible").toBool());
        QCOMPARE(namesAndBirthdays(h->settings.value(favorites)), stored);
        QCOMPARE(reminders.count(), confirm ? 1 : 0);
    }

    // A button's focus ring shows when the keyboard brought it there, not
    // after a tap or where a screen placed the focus; a tap takes the
    // keyboard, so that a dialog it opened hands it back.
    void focusRingOnlyFromTheKeyboard_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<bool>("ring");
        QTest::newRow("Tab") << int(Qt::TabFocusReason) << true;
        QTest::newRow("Shift+Tab") << int(Qt::BacktabFocusReason) << true;
        QTest::newRow("placed by the screen") << int(Qt::OtherFocusReason) << false;
        QTest::newRow("tap") << int(Qt::MouseFocusReason) << false;
    }
    void focusRingOnlyFromTheKeyboard()
    {
        QFETCH(int, reason);
        QFETCH(bool, ring);
        start();
        QQuickItem *button = h->find("btnReset");
        if (reason == Qt::MouseFocusReason)
            h->tap(button);
        else
            button->forceActiveFocus(Qt::FocusReason(reason));
        QTRY_VERIFY(button->hasActiveFocus());
        QCOMPARE(button->property("visualFocus").toBool(), ring);
        // Focus elsewhere takes the ring away.
        h->find("dayWheelStepper")->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!button->property("visualFocus").toBool());
    }
    void dialogHandsTheKeyboardBackToTheTappedButton()
    {
        start();
        openAddDialog();
        QVERIFY(h->find("mainView")->property("covered").toBool());
        h->tap("addCancelButton");
        QTRY_VERIFY(h->find("btnPlus")->hasActiveFocus());
        QVERIFY(!h->find("btnPlus")->property("visualFocus").toBool());
        QVERIFY(!h->find("mainView")->property("covered").toBool());
    }

    // The name field: a clear button while something is typed, and capitals
    // asked for where a word begins.
    void nameFieldClearsAndCapitalises()
    {
        start();
        openAddDialog();
        QQuickItem *field = h->find("addNameField");
        const auto hints = [&] { return field->property("inputMethodHints").toInt(); };
        QCOMPARE(hints() & Qt::ImhNoAutoUppercase, 0);
        QCOMPARE(hints() & Qt::ImhPreferUppercase, int(Qt::ImhPreferUppercase));
        QCOMPARE(h->shows("addNameFieldClear"), false);
        for (const char ch : {'a', 'n', 'n'})
            QTest::keyClick(h->window, ch);
        QCOMPARE(hints() & Qt::ImhPreferUppercase, 0);
        QTest::keyClick(h->window, ' ');
        QCOMPARE(hints() & Qt::ImhPreferUppercase, int(Qt::ImhPreferUppercase));
        QTRY_VERIFY(h->shows("addNameFieldClear"));
        h->tap("addNameFieldClear");
        QCOMPARE(field->property("text").toString(), QString());
        QVERIFY(field->hasActiveFocus());
        QCOMPARE(h->shows("addNameFieldClear"), false);
    }

    void ratingAskedOnTheThirteenthStart()
    {
        h->settings.set(
            favorites,
            {{"Ann", "1 1 2000"}, {"Bob", "1 1 2000"}, {"Kim", "1 1 2000"}, {"Dan", "2 2 1990"}});
        h->settings.set(appStarts, 12);
        start();
        QVERIFY(h->log.contains(u"CANCEL"_qs));
        QCOMPARE(h->settings.value(appStarts), 0);
        QCOMPARE(h->settings.value(reviewedVersion), QStringLiteral(TAVLO_VERSION));
    }

    // The reminders are planned again at the load and after an add, not
    // when a favorite is handed over; the screen shown answers for reminders
    // shown while it is there.
    void remindersFollowTheScreen()
    {
        RecordingNotificationCenter center;
        h->settings.set(favorites, {{"Anna", "23 11 1985"}});
        Session session(h->settings, h->clock, {"en-US"}, Appearance::Dark);
        ReminderScheduler scheduler(center, h->settings, h->clock, session.favorites,
                                    session.strings);
        session.reminders = &scheduler;
        auto first = std::make_unique<MainScreenController>(session);
        first->viewDidLoad();
        QCOMPARE(center.added.size(), 1);
        QCOMPARE(center.added[0].body, "Anna has a birthday today!");
        QCOMPARE(center.delegate()->willPresent({}),
                 PresentationOptions(PresentationOption::Banner));
        first->pickDate(24, 11, 1990);
        first->addFavorite("Bo");
        QCOMPARE(center.statusQueries, 2);
        QCOMPARE(center.added.size(), 3);
        QCOMPARE(center.added[2].identifier, "birthdayReminder2");
        QCOMPARE(center.added[2].body, "Bo has a birthday today!");

        h->settings.set(handOverPending, true);
        auto second = std::make_unique<MainScreenController>(session);
        second->viewDidLoad();
        QCOMPARE(center.statusQueries, 2);
        // The new screen took over; the old one going leaves it in place.
        NotificationCenterDelegate *answering = center.delegate();
        first.reset();
        QCOMPARE(center.delegate(), answering);
        second.reset();
        QCOMPARE(center.delegate(), nullptr);
    }

    // What a damaged file or a hand edit leaves in the settings never stops
    // the main screen: a row beyond the list goes on from its end, a
    // birthday that cannot be read is stepped over and told of once, a
    // hand-over without its name is dropped and told of, a theme beyond
    // the ten is the first.
    void storedDataNeverStopsTheScreen_data()
    {
        QTest::addColumn<QList<QStringList>>("favorites");
        QTest::addColumn<qint64>("index");
        QTest::addColumn<bool>("handOver");
        QTest::addColumn<qint64>("theme");
        QTest::addColumn<QString>("startsWith");
        QTest::addColumn<QString>("notice");
        const QList<QStringList> two = {{"Anna", "12 3 1985"}, {"Bob", "1 1 2000"}};
        QTest::newRow("row beyond the list") << two << 7LL << false << 0LL << "Bob's age is: 26"
                                             << "";
        QTest::newRow("unreadable birthday stepped over")
            << QList<QStringList>{{"Anna", "12 3 1985"}, {"Bob", "31 2 x"}, {"Cy", "1 1 2000"}}
            << 0LL << false << 0LL << "Cy's age is: 26"
            << "Birthdays that cannot be read: 1. Fix or delete them in your favorites.";
        QTest::newRow("every birthday unreadable")
            << QList<QStringList>{{"Anna"}, {"Bob", ""}} << 0LL << false << 0LL
            << "Select your date of birth"
            << "Birthdays that cannot be read: 2. Fix or delete them in your favorites.";
        QTest::newRow("hand-over without its name")
            << two << 0LL << true << 0LL << "Bob's age is: 26"
            << "A favorite chosen for the main screen was incomplete and is not shown.";
        QTest::newRow("theme beyond the ten") << two << 0LL << false << 42LL << "Bob's age is: 26"
                                              << "";
    }
    void storedDataNeverStopsTheScreen()
    {
        QFETCH(QList<QStringList>, favorites);
        QFETCH(qint64, index);
        QFETCH(bool, handOver);
        QFETCH(qint64, theme);
        QFETCH(QString, startsWith);
        QFETCH(QString, notice);
        h->settings.set(SettingsKeys::favorites, favorites);
        h->settings.set(handOverIndex, index);
        h->settings.set(color, theme);
        if (handOver) {
            h->settings.set(handOverPending, true);
            h->settings.set(handOverMovePicker, true);
            h->settings.set(handOverBirthday, u"12 3 1985"_qs);
        }
        start();
        QCOMPARE(h->session->saveNotice.text(), notice);
        QCOMPARE(h->settings.value(handOverPending), false);
        swipe(-150);
        QVERIFY2(display().startsWith(startsWith), qPrintable(display()));
        QCOMPARE(h->settings.value(SettingsKeys::favorites), favorites);
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    TestMainScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_mainscreen.moc"
