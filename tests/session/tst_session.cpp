// SPDX-License-Identifier: MIT
#include "CapturedLog.h"
#include "DiskFaults.h"
#include "core/Clock.h"
#include "session/RatingRule.h"
#include "session/Session.h"
#include "settings/FileSettingsStore.h"
#include "settings/MemorySettingsStore.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace SettingsKeys;

Q_DECLARE_METATYPE(StoredState)

class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void oneStart_data()
    {
        // A null stored version means the key is absent.
        QTest::addColumn<qint64>("starts");
        QTest::addColumn<QString>("storedVersion");
        QTest::addColumn<int>("favoriteCount");
        QTest::addColumn<QString>("current");
        QTest::addColumn<bool>("ask");
        QTest::addColumn<qint64>("startsAfter");
        QTest::addColumn<QString>("versionAfter");

        const QString none;
        QTest::newRow("13th start asks") << 12LL << none << 10 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("12th start counts") << 11LL << none << 10 << "2.1" << false << 12LL << none;
        QTest::newRow("four favorites suffice")
            << 12LL << none << 4 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("three favorites count on")
            << 12LL << none << 3 << "2.1" << false << 13LL << none;
        QTest::newRow("asked for this version")
            << 40LL << "2.1" << 10 << "2.1" << false << 40LL << "2.1";
        QTest::newRow("asked for an older version")
            << 12LL << "2.0" << 10 << "2.1" << true << 0LL << "2.1";
        QTest::newRow("older version, first start")
            << 0LL << "2.0" << 10 << "2.1" << false << 1LL << "2.0";
    }
    void oneStart()
    {
        QFETCH(qint64, starts);
        QFETCH(QString, storedVersion);
        QFETCH(int, favoriteCount);
        QFETCH(QString, current);
        MemorySettingsStore store;
        store.set(appStarts, starts);
        if (!storedVersion.isNull())
            store.set(reviewedVersion, storedVersion);

        const RatingDecision decision = applyRatingRule(store, favoriteCount, current);
        QTEST(decision.askForRating, "ask");
        QCOMPARE(decision.askedVersion, storedVersion.isNull() ? "0.0" : storedVersion);
        QTEST(store.value(appStarts), "startsAfter");
        QTEST(store.value(reviewedVersion).value_or(QString()), "versionAfter");
    }

    void absentVersionReadsAsZeroZero()
    {
        MemorySettingsStore store;
        for (int start = 0; start < 20; ++start)
            QVERIFY(!applyRatingRule(store, 10, QStringLiteral("0.0")).askForRating);
        QCOMPARE(store.writeCount(), 0);
        QCOMPARE(store.value(appStarts), 0);
    }

    // Whatever screen makes a change that cannot be saved, the session's notice
    // says so in the interface language, and the debug line says which file.
    void aFailedWriteShowsTheNotice_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("English") << "en-GB"
                                 << "Your change could not be saved: Read-only file system";
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
        const CapturedLog log;
        QSignalSpy changed(&session.saveNotice, &SaveNotice::changed);

        QVERIFY(!session.saveNotice.shown());
        QVERIFY(!session.favorites.append("Anna", 12, 3, 1985).ok());

        QVERIFY(session.saveNotice.shown());
        QCOMPARE(session.saveNotice.text(), text);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(log.lines, QStringList{"could not save " + path + ": Read-only file system"});
        // The list stays as the user left it.
        QCOMPARE(session.favorites.count(), 1);
    }

    // What was wrong with the settings file is told once a run, when the
    // first main screen comes, in the interface language; a sound file
    // says nothing.
    void storedProblemsAreToldOnce_data()
    {
        QTest::addColumn<StoredState>("state");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("line");
        QTest::newRow("sound") << StoredState{} << QString() << QString();
        QTest::newRow("damaged")
            << StoredState{StoredState::Kind::Damaged,
                           "/c/tavlo.conf",
                           "[person]: its size is missing",
                           {}}
            << "Die gespeicherten Einstellungen waren beschädigt. Tavlo hat jeden lesbaren "
               "Favoriten behalten und bewahrt eine Kopie der beschädigten Datei auf."
            << "/c/tavlo.conf is damaged: [person]: its size is missing";
        QTest::newRow("unreadable")
            << StoredState{StoredState::Kind::Unreadable, "/c/tavlo.conf", "Permission denied", {}}
            << "Ihre gespeicherten Geburtstage können nicht gelesen werden (Permission denied). "
               "Bis das behoben ist, wird nichts gespeichert."
            << "cannot read /c/tavlo.conf: Permission denied";
    }
    void storedProblemsAreToldOnce()
    {
        QFETCH(StoredState, state);
        QFETCH(QString, text);
        QFETCH(QString, line);
        MemorySettingsStore settings;
        settings.setStoredState(state);
        FixedClock clock(QDateTime(QDate(2026, 11, 23), QTime(9, 0)));
        Session session(settings, clock, {"de-DE"}, Appearance::Dark);
        const CapturedLog log;
        for (int screen = 0; screen < 3; ++screen)
            session.prepareMainScreen();
        QCOMPARE(session.saveNotice.shown(), !text.isEmpty());
        QCOMPARE(session.saveNotice.text(), text);
        QCOMPARE(log.lines, line.isEmpty() ? QStringList() : QStringList{line});
    }
};

QTEST_GUILESS_MAIN(TestSession)
#include "tst_session.moc"
