// SPDX-License-Identifier: MIT
#include "sync/SyncLock.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

class TestSyncLock : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString path() const { return m_dir.filePath(u"sync-state.json.lock"_s); }

private slots:
    void init() { QFile::remove(path()); }

    void oneSyncAtATime()
    {
        SyncLock::Outcome outcome = SyncLock::Outcome::Failed;
        auto first = SyncLock::tryTake(path(), &outcome);
        QVERIFY(first);
        QCOMPARE(outcome, SyncLock::Outcome::Taken);
        QVERIFY(!SyncLock::tryTake(path(), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Held);
        first.reset();
        QVERIFY(SyncLock::tryTake(path(), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Taken);
    }

    // What a sync killed at some moment leaves, or an earlier version's
    // lock file: none of it holds the next sync up.
    void leftoversHoldNothing_data()
    {
        QTest::addColumn<QByteArray>("left");
        QTest::newRow("killed while making the file") << QByteArray("");
        QTest::newRow("names a process long gone") << QByteArray("999999\ntavlo\nhost\n");
        QTest::newRow("names a process that is running")
            << QByteArray::number(qint64(::getpid())) + "\ntavlo\nhost\n";
    }
    void leftoversHoldNothing()
    {
        QFETCH(QByteArray, left);
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(left);
        file.close();
        SyncLock::Outcome outcome = SyncLock::Outcome::Failed;
        QVERIFY(SyncLock::tryTake(path(), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Taken);
    }

    void freeOnceItsHolderIsKilled()
    {
        int ready[2];
        QCOMPARE(::pipe(ready), 0);
        const QString lockPath = path();
        const pid_t holder = ::fork();
        QVERIFY(holder >= 0);
        if (holder == 0) {
            SyncLock::Outcome outcome = SyncLock::Outcome::Failed;
            const auto lock = SyncLock::tryTake(lockPath, &outcome);
            const char taken = lock ? 'y' : 'n';
            [[maybe_unused]] const auto written = ::write(ready[1], &taken, 1);
            for (;;)
                ::pause();
        }
        char taken = 0;
        QCOMPARE(::read(ready[0], &taken, 1), ssize_t(1));
        QCOMPARE(taken, 'y');
        SyncLock::Outcome outcome = SyncLock::Outcome::Failed;
        QVERIFY(!SyncLock::tryTake(path(), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Held);
        ::kill(holder, SIGKILL);
        ::waitpid(holder, nullptr, 0);
        ::close(ready[0]);
        ::close(ready[1]);
        QVERIFY(SyncLock::tryTake(path(), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Taken);
    }

    void failsWhereNoFileCanBeMade()
    {
        SyncLock::Outcome outcome = SyncLock::Outcome::Taken;
        QVERIFY(!SyncLock::tryTake(m_dir.filePath(u"missing/folder/sync.lock"_s), &outcome));
        QCOMPARE(outcome, SyncLock::Outcome::Failed);
    }
};

QTEST_GUILESS_MAIN(TestSyncLock)
#include "tst_synclock.moc"
