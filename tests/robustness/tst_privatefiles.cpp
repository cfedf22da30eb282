// SPDX-License-Identifier: MIT
#include "LocalTime.h"
#include "cli/CommandLine.h"
#include "contacts/BirthdayCalendar.h"
#include "core/Clock.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/SystemdTimers.h"
#include "reminders/ReminderStore.h"
#include "settings/FileSettingsStore.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The permission bits of the file at `path`, or -1 without one.
int modeOf(const QString &path)
{
    struct stat info
    {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
}

const QDateTime fire = at(2026, 3, 14, 7, 30);
const PendingReminder anna{
    {u"birthdayReminder1"_s, u"Birthday Reminder"_s, u"Anna"_s, CalendarTrigger::at(fire), {}},
    fire};

} // namespace

// Files that hold names and birth dates are Tavlo's own and only its owner
// reads them, whatever the umask; a file the person names follows the umask
// as any file they make would.
class TestPrivateFiles : public QObject
{
    Q_OBJECT

    mode_t m_umask = 0;
    std::unique_ptr<QTemporaryDir> m_dir;

    QString path(const QString &name) const { return m_dir->filePath(name); }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_umask = ::umask(022);
        ::umask(m_umask);
    }
    void cleanup() { ::umask(m_umask); }

    void tavloFilesAreTheOwnersAlone_data()
    {
        QTest::addColumn<int>("umask");
        QTest::newRow("umask 022") << 022;
        QTest::newRow("umask 000") << 0;
    }
    void tavloFilesAreTheOwnersAlone()
    {
        QFETCH(int, umask);
        ::umask(mode_t(umask));
        const FixedClock clock(at(2026, 3, 1, 10));

        FileSettingsStore settings(path(u"config/tavlo/tavlo.conf"_s));
        FavoritesStore favorites(settings);
        QVERIFY(favorites.append(u"Anna"_s, 14, 3, 1985).ok());
        ReminderStore reminders(path(u"data/tavlo/reminders.json"_s));
        QVERIFY(!reminders.put(anna));
        BirthdayCalendar calendar(settings, {u"en"_s}, clock,
                                  {path(u"data/tavlo/birthdays.ics"_s),
                                   path(u"config/evolution/sources/tavlo-birthdays.source"_s)});
        QCOMPARE(calendar.setEnabled(true), QString());
        QVERIFY(!SystemdTimers(path(u"config/systemd/user"_s), u"/usr/bin/tavlo"_s, {}, nullptr)
                     .apply({anna}));
        QVERIFY(!AutostartEntry(path(u"config/autostart"_s), u"/usr/bin/tavlo"_s, {},
                                path(u"background.lock"_s), nullptr)
                     .apply({anna}));

        for (const QString &file :
             {u"config/tavlo/tavlo.conf"_s, u"data/tavlo/reminders.json"_s,
              u"data/tavlo/birthdays.ics"_s, u"config/evolution/sources/tavlo-birthdays.source"_s,
              u"config/systemd/user/tavlo-birthdayReminder1.timer"_s,
              u"config/systemd/user/tavlo-birthdayReminder1.service"_s,
              u"config/autostart/io.github.tavlo.Tavlo-reminders.desktop"_s})
            QVERIFY2(modeOf(path(file)) == 0600, qPrintable(file));

        // Exports: a new file as the umask says, an existing one keeps its
        // permissions.
        const QString kept = path(u"kept.ics"_s);
        QFile old(kept);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();
        QVERIFY(::chmod(QFile::encodeName(kept).constData(), 0640) == 0);
        QString out, err;
        QTextStream outStream(&out), errStream(&err);
        CommandContext context{settings, {u"en"_s}, clock, outStream, errStream};
        for (const QString &file : {path(u"new.ics"_s), kept})
            QCOMPARE(runCommandLine({u"tavlo"_s, u"calendar"_s, u"export"_s, file}, context), 0);
        QCOMPARE(modeOf(path(u"new.ics"_s)), 0666 & ~umask);
        QCOMPARE(modeOf(kept), 0640);
    }

    // A settings file an older Tavlo left readable to all becomes private
    // with its next write.
    void anOlderOpenFileBecomesPrivate()
    {
        const QString conf = path(u"tavlo.conf"_s);
        QFile old(conf);
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();
        QVERIFY(::chmod(QFile::encodeName(conf).constData(), 0644) == 0);
        FileSettingsStore settings(conf);
        QVERIFY(FavoritesStore(settings).append(u"Anna"_s, 14, 3, 1985).ok());
        QCOMPARE(modeOf(conf), 0600);
    }
};

QTEST_GUILESS_MAIN(TestPrivateFiles)
#include "tst_privatefiles.moc"
