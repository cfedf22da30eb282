// SPDX-License-Identifier: MIT
#include "DiskFaults.h"
#include "core/Clock.h"
#include "core/DebugLog.h"
#include "session/Session.h"
#include "settings/FileSettingsStore.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

// Whatever screen makes a change that cannot be saved, the session's notice
// says so in the interface language, and the debug line says which file.
class TestSaveNotice : public QObject
{
    Q_OBJECT

private slots:
    void aFailedWriteShowsTheNotice_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("English") << "en-GB"
                                 << "Your change could not be saved: Read-only file system";
        QTest::newRow("German") << "de-DE"
                                << "Ihre Änderung konnte nicht gespeichert werden: Read-only "
                                   "file system";
        QTest::newRow("Russian") << "ru-RU"
                                 << "Не удалось сохранить изменение: Read-only file system";
    }
    void aFailedWriteShowsTheNotice()
    {
        QFETCH(QString, language);
        QFETCH(QString, text);
        QTemporaryDir dir;
        const QString path = dir.filePath("tavlo.conf");
        FileSettingsStore settings(path, failingWriter(AtomicFileWriter::Step::Open, EROFS));
        FixedClock clock(QDateTime(QDate(2026, 11, 23), QTime(9, 0)));
        Session session(settings, clock, {language}, Appearance::Dark);
        session.decideLanguage();
        QStringList lines;
        const DebugLog::Sink previous =
            DebugLog::setSink([&](const QString &line) { lines.append(line); });
        QSignalSpy changed(&session.saveNotice, &SaveNotice::changed);

        QVERIFY(!session.saveNotice.shown());
        QVERIFY(!session.favorites.append("Anna", 12, 3, 1985).ok());
        DebugLog::setSink(previous);

        QVERIFY(session.saveNotice.shown());
        QCOMPARE(session.saveNotice.text(), text);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(lines, QStringList{"could not save " + path + ": Read-only file system"});
        // The list stays as the user left it.
        QCOMPARE(session.favorites.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestSaveNotice)
#include "tst_savenotice.moc"
