// SPDX-License-Identifier: MIT
#include "contacts/BirthdayCalendar.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

class TestBirthdayCalendar : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    MemorySettingsStore m_settings;
    FixedClock m_clock{QDateTime(QDate(2026, 11, 22), QTime(12, 0))};

    BirthdayCalendar::Paths paths() const
    {
        return {m_dir.filePath("data/tavlo/birthdays.ics"),
                m_dir.filePath("config/evolution/sources/tavlo-birthdays.source")};
    }

private slots:
    // Off: changes of the favorites write nothing. On: the calendar of the
    // stored favorites and its source; each change rewrites the calendar in
    // the interface language; off again removes both.
    void followsTheSwitchAndTheFavorites()
    {
        m_settings.set(SettingsKeys::favorites, QList<QStringList>{{"Anna", "12 3 1985"}});
        m_settings.set(SettingsKeys::preferredLanguage, 1);
        BirthdayCalendar calendar(m_settings, {"en-US"}, m_clock, paths());
        FavoritesStore favorites(m_settings);
        FavoritesStore::setChangeListener(
            [&](const QList<Favorite> &list) { QCOMPARE(calendar.update(list), QString()); });

        favorites.load();
        favorites.append("Bob", 1, 1, 2000);
        QVERIFY(!QFile::exists(paths().calendarFile));

        QCOMPARE(calendar.setEnabled(true), QString());
        QVERIFY(calendar.enabled());
        QVERIFY(contents(paths().calendarFile).contains("SUMMARY:Geburtstag von Bob\r\n"));
        const QByteArray source = contents(paths().sourceFile);
        QVERIFY(source.contains("[Calendar]\nBackendName=local\n"));
        QVERIFY(source.contains("Parent=local-stub\n"));
        QVERIFY(source.contains("CustomFile=file://" + paths().calendarFile.toUtf8() + "\n"));

        favorites.append("Cleo", 29, 2, 1984);
        QCOMPARE(contents(paths().calendarFile).count("BEGIN:VEVENT"), 3);
        QVERIFY(contents(paths().calendarFile).contains("RRULE:FREQ=YEARLY;BYYEARDAY=60\r\n"));
        QCOMPARE(contents(paths().sourceFile), source);

        QCOMPARE(calendar.setEnabled(false), QString());
        QVERIFY(!QFile::exists(paths().calendarFile));
        QVERIFY(!QFile::exists(paths().sourceFile));
        favorites.remove(0);
        QVERIFY(!QFile::exists(paths().calendarFile));
        FavoritesStore::setChangeListener({});
    }

    // As the app has it: a change returns at once, the newest list reaches
    // the file, and what could not be saved is told later on this thread.
    void writesInTheBackground()
    {
        m_settings.set(SettingsKeys::birthdaysInCalendar, true);
        QStringList problems;
        const auto tell = [&](const QString &problem) { problems.append(problem); };
        BirthdayCalendar calendar(m_settings, {"en-US"}, m_clock, paths());
        calendar.writeInBackground(tell);
        QCOMPARE(calendar.update({{"Bob", "1 1 2000"}}), QString());
        QCOMPARE(calendar.update({{"Bob", "1 1 2000"}, {"Cy", "2 2 2002"}}), QString());
        calendar.waitForWrites();
        QCOMPARE(contents(paths().calendarFile).count("BEGIN:VEVENT"), 2);

        BirthdayCalendar broken(m_settings, {"en-US"}, m_clock,
                                {"/dev/null/birthdays.ics", m_dir.filePath("x.source")});
        broken.writeInBackground(tell);
        QCOMPARE(broken.update({{"Bob", "1 1 2000"}}), QString());
        QTRY_COMPARE(problems.size(), 1);
        QVERIFY(problems[0].startsWith("could not save /dev/null/birthdays.ics: "));
    }

    void saysWhatCouldNotBeSaved()
    {
        BirthdayCalendar calendar(m_settings, {"en-US"}, m_clock,
                                  {"/dev/null/birthdays.ics", m_dir.filePath("x.source")});
        QVERIFY(calendar.setEnabled(true).startsWith("could not save /dev/null/birthdays.ics: "));
    }
};

QTEST_GUILESS_MAIN(TestBirthdayCalendar)
#include "tst_birthdaycalendar.moc"
