// SPDX-License-Identifier: MIT
#include "DiskFaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <cerrno>
#include <cstring>

using Step = AtomicFileWriter::Step;

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

QString reasonFor(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

class TestAtomicFileWriter : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_folders = 0;

    QString freshFolder() { return m_dir.filePath(QString::number(++m_folders)); }

private slots:
    void writesAndReplaces()
    {
        const QString path = freshFolder() + "/deeper/file.conf";
        QVERIFY(AtomicFileWriter().write(path, "first\n").ok());
        QVERIFY(AtomicFileWriter().write(path, "second\n").ok());
        QCOMPARE(contentsOf(path), "second\n");
        QCOMPARE(QDir(QFileInfo(path).path()).entryList(QDir::Files), QStringList{"file.conf"});
    }

    void aFailedStepLeavesTheOldFile_data()
    {
        QTest::addColumn<Step>("step");
        QTest::addColumn<int>("error");
        QTest::newRow("open, no permission") << Step::Open << EACCES;
        QTest::newRow("write, disk full") << Step::Write << ENOSPC;
        QTest::newRow("flush, disk full") << Step::Flush << ENOSPC;
        QTest::newRow("flush, quota") << Step::Flush << EDQUOT;
        QTest::newRow("sync, i/o error") << Step::Sync << EIO;
        QTest::newRow("rename, read-only") << Step::Rename << EROFS;
    }
    void aFailedStepLeavesTheOldFile()
    {
        QFETCH(Step, step);
        QFETCH(int, error);
        const QString folder = freshFolder();
        const QString path = folder + "/tavlo.conf";
        const QByteArray old = "[person]\n1\\1=Anna\n1\\2=12 3 1985\n1\\size=2\nsize=1\n";
        QVERIFY(AtomicFileWriter().write(path, old).ok());

        const WriteResult result = failingWriter(step, error).write(path, QByteArray(5000, 'x'));
        QVERIFY(!result.ok());
        QCOMPARE(result.path(), path);
        QCOMPARE(result.reason(), reasonFor(error));
        QCOMPARE(result.message(), "could not save " + path + ": " + reasonFor(error));
        QCOMPARE(contentsOf(path), old);
        // No temporary file stays behind.
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"tavlo.conf"});

        // A new file that could not be written is not there at all.
        const QString fresh = folder + "/new.conf";
        QVERIFY(!failingWriter(step, error).write(fresh, "x").ok());
        QVERIFY(!QFile::exists(fresh));
    }

    // After the rename there is nothing to go back to: the new file is in
    // place, complete, and the caller still learns that it may not last.
    void aFailedFolderSyncIsReported()
    {
        const QString path = freshFolder() + "/tavlo.conf";
        QVERIFY(AtomicFileWriter().write(path, "old").ok());
        const WriteResult result = failingWriter(Step::SyncFolder, EIO).write(path, "new");
        QCOMPARE(result.reason(), reasonFor(EIO));
        QCOMPARE(contentsOf(path), "new");
    }
};

QTEST_GUILESS_MAIN(TestAtomicFileWriter)
#include "tst_atomicfilewriter.moc"
