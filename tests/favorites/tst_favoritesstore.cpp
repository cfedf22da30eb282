// SPDX-License-Identifier: MIT
#include "favorites/FavoritesStore.h"

#include "CapturedLog.h"
#include "WithoutIds.h"

#include "settings/FileSettingsStore.h"
#include "settings/MemorySettingsStore.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <algorithm>
#include <numeric>

using namespace SettingsKeys;
using Rows = QList<QStringList>;

namespace {

// Keeps every write in order, for the checks where the order matters.
class RecordingSettingsStore final : public SettingsStore
{
public:
    QList<std::pair<QString, QVariant>> writes;
    // Batches closed: each is one write of a settings file.
    int flushes = 0;
    QStringList writtenKeys() const
    {
        QStringList keys;
        for (const auto &[key, value] : writes)
            keys.append(key);
        return keys;
    }

protected:
    QVariant read(const QString &key) const override { return m_values.value(key); }
    void write(const QString &key, const QVariant &value) override
    {
        m_values.insert(key, value);
        writes.append({key, value});
    }
    void erase(const QString &key) override { m_values.remove(key); }
    WriteResult flush() override
    {
        ++flushes;
        return failure;
    }

public:
    // What every write reports; stored unless a test says otherwise.
    WriteResult failure;
    void setRaw(const QString &key, const QVariant &value) { m_values.insert(key, value); }

private:
    QHash<QString, QVariant> m_values;
};

// What is stored and read without the identities, where a check is about
// the names, birthdays and their order.
std::optional<Rows> plain(std::optional<Rows> rows)
{
    if (rows) {
        for (QStringList &row : *rows)
            row = row.mid(0, 2);
    }
    return rows;
}
Favorite plain(const Favorite &favorite)
{
    return withoutIds({favorite}).constFirst();
}
QList<Favorite> plain(const QList<Favorite> &favorites)
{
    return withoutIds(favorites);
}

const Rows threePeople = {{"Ann", "12 3 1985"}, {"Bob", "1 1 2000"}, {"Cy", "29 2 1996"}};

// The list the fatal cases start from: the row at index 1 is short.
const Rows withShortRow = {{"Ann", "12 3 1985"}, {"Bob"}, {"Cy", "1 1 2000"}};
const char fatalCaseArgument[] = "--fatal-case";

// Runs in a child process: one operation that must stop the program.
int runFatalCase(const QString &operation, qsizetype index, const QString &iniPath)
{
    FileSettingsStore settings(iniPath);
    FavoritesStore store(settings);
    store.load();
    if (operation == u"at")
        store.at(index);
    else if (operation == u"all")
        store.all();
    else if (operation == u"remove")
        store.remove(index);
    else if (operation == u"update")
        store.update(index, "Zed", "2 2 2002");
    else if (operation == u"select")
        store.select(index);
    else if (operation == u"convert")
        store.convertOlderForm();
    return 0;
}

} // namespace

class TestFavoritesStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void reorderWritesOnlyWhatChanges_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QList<qsizetype>>("order");
        QTest::addColumn<QList<Favorite>>("reordered");
        QTest::addColumn<int>("writes");
        const QVariantList three{QVariantList{"Ann", "1 1 2000"}, QVariantList{"Bob", "2 2 2002"},
                                 QVariantList{"Cy", "3 3 2003"}};
        const Favorite ann{"Ann", "1 1 2000"}, bob{"Bob", "2 2 2002"}, cy{"Cy", "3 3 2003"};
        QTest::newRow("same order again")
            << QVariant(three) << QList<qsizetype>{0, 1, 2} << QList<Favorite>{ann, bob, cy} << 0;
        QTest::newRow("new order")
            << QVariant(three) << QList<qsizetype>{2, 0, 1} << QList<Favorite>{cy, ann, bob} << 1;
        QTest::newRow("empty list, nothing stored yet")
            << QVariant() << QList<qsizetype>{} << QList<Favorite>{} << 1;
        QTest::newRow("empty list already stored")
            << QVariant(QVariantList{}) << QList<qsizetype>{} << QList<Favorite>{} << 0;
    }
    void reorderWritesOnlyWhatChanges()
    {
        QFETCH(QVariant, stored);
        QFETCH(QList<qsizetype>, order);
        QFETCH(QList<Favorite>, reordered);
        QFETCH(int, writes);
        MemorySettingsStore settings;
        if (stored.isValid())
            settings.setRaw(SettingsKeys::favorites.name, stored);
        FavoritesStore store(settings);
        store.load();
        store.reorder(order);
        QCOMPARE(settings.writeCount(), writes);
        QCOMPARE(settings.value(SettingsKeys::favorites).has_value(), true);
        QCOMPARE(plain(store.all()), reordered);
        store.load();
        QCOMPARE(plain(store.all()), reordered);
    }

    void missingOrMistypedListLoadsEmpty_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("missing") << QVariant();
        QTest::newRow("empty array") << QVariant(QVariantList());
        // Other types are the settings store's to tell apart.
        QTest::newRow("a string") << QVariant("Ann");
    }
    void missingOrMistypedListLoadsEmpty()
    {
        QFETCH(QVariant, stored);
        MemorySettingsStore settings;
        FavoritesStore store(settings);
        store.appendMany({{"Old", "1 1 1990"}});
        if (stored.isValid())
            settings.setRaw("person", stored);
        else
            settings.remove("person");

        store.load();
        QCOMPARE(store.count(), 0);
        QCOMPARE(plain(store.all()), QList<Favorite>());
    }

    // Rows are kept as stored: an extra text, a birthday that is no date,
    // and a row cut short in a damaged file, which is a favorite whose
    // birthday cannot be read, listed with what it has, written back as it
    // was.
    void rowsAreKeptAsStored()
    {
        const Rows stored = {{"Ann", "12 3 1985", "extra"}, {"Bob"}, {"Cy", "not a date"}};
        MemorySettingsStore settings;
        settings.set(favorites, stored);
        FavoritesStore store(settings);
        store.load();

        QCOMPARE(store.count(), 3);
        QCOMPARE(store.all().size(), 3);
        QCOMPARE(plain(store.at(0)), (Favorite{"Ann", "12 3 1985"}));
        QCOMPARE(plain(store.at(1)), (Favorite{"Bob", QString()}));
        QCOMPARE(plain(store.at(2)), (Favorite{"Cy", "not a date"}));
        QVERIFY(store.dayOfBirth(0));
        QVERIFY(!store.dayOfBirth(1));
        store.remove(2);
        QCOMPARE(settings.value(favorites), stored.first(2));
    }

    // Each favorite keeps one identity. A row of an earlier version gets the
    // UID that exports gave it then (these UIDs were written by them), the
    // second of two equal rows its own; a new favorite a new random one;
    // renames, date changes, sorting and an undone delete keep it. A
    // placeholder year is read as no year, the identity still that of the
    // row as it was stored.
    void everyFavoriteKeepsItsIdentity()
    {
        MemorySettingsStore settings;
        settings.set(favorites, Rows{{"Anna", "12 3 1985"},
                                     {"Anna", "12 3 1985"},
                                     {"Eve", "2 3 1604"},
                                     {"Di", "1 1 2000", "own-id"}});
        FavoritesStore store(settings);
        store.load();
        const QStringList earlier = {"d7205800-7c45-5da4-9d62-ca9bfcc7ad11",
                                     "36d5f0e6-1c74-5267-9459-ac834b2e4561",
                                     "0c3075e5-25b7-5c3e-81e2-5f53ed3f74ce", "own-id"};
        const auto ids = [&] {
            QStringList result;
            for (const Favorite &favorite : store.all())
                result.append(favorite.id);
            return result;
        };
        QCOMPARE(ids(), earlier);
        QCOMPARE(store.at(2).birthday, "2 3");
        QVERIFY(!store.dayOfBirth(2)->hasYear());

        QVERIFY(store.append("Bo", 7, 8, std::nullopt));
        QVERIFY(store.append("Bo", 7, 8, std::nullopt));
        const QString bo = store.at(4).id;
        QVERIFY(!QUuid::fromString(bo).isNull());
        QVERIFY(store.at(5).id != bo);
        QCOMPARE(store.at(4).birthday, "7 8");

        QVERIFY(store.update(0, "Anne", "13 3 1985"));
        QVERIFY(store.reorder({5, 4, 3, 2, 1, 0}));
        const Favorite removed = store.at(2);
        QVERIFY(store.remove(2));
        QVERIFY(store.insert(2, removed));
        const QStringList now = ids();
        QCOMPARE(now.mid(2), (QStringList{earlier[3], earlier[2], earlier[1], earlier[0]}));
        QCOMPARE(store.at(5).name, "Anne");

        // As stored, and as another process reads it.
        FavoritesStore elsewhere(settings);
        elsewhere.load();
        QCOMPARE(elsewhere.all(), store.all());
        QCOMPARE(settings.value(favorites)->at(5), (QStringList{"Anne", "13 3 1985", earlier[0]}));
    }

    void append_data()
    {
        QTest::addColumn<QString>("fieldText");
        QTest::addColumn<QString>("name");
        QTest::newRow("empty") << ""
                               << "Unknown";
        QTest::newRow("blanks, tabs, no-break and ideographic spaces")
            << QStringLiteral(" \t\u00A0\u3000") << "Unknown";
        QTest::newRow("a line feed is text") << "\n"
                                             << "\n";
        QTest::newRow("blanks around kept") << "\tAnn Lee "
                                            << "\tAnn Lee ";
    }
    void append()
    {
        QFETCH(QString, fieldText);
        QFETCH(QString, name);
        MemorySettingsStore settings;
        settings.set(favorites, Rows{{"First", "2 2 2002"}});
        FavoritesStore store(settings);
        store.load();
        store.append(fieldText, 5, 1, 2000);
        QCOMPARE(plain(store.at(1)), (Favorite{name, "5 1 2000"}));
        QCOMPARE(plain(settings.value(favorites)),
                 (Rows{{"First", "2 2 2002"}, {name, "5 1 2000"}}));
    }

    // An import is one write of the list, whatever its size; nothing to add
    // writes nothing.
    void appendManyIsOneWrite()
    {
        RecordingSettingsStore settings;
        settings.set(favorites, Rows{{"First", "2 2 2002"}});
        FavoritesStore store(settings);
        store.load();
        settings.writes.clear();
        settings.flushes = 0;

        store.appendMany({});
        QCOMPARE(settings.writes.size(), 0);
        store.appendMany({{"  ", "1 1 2000"}, {"Bo", "12 3 1985"}, {"Bo", "12 3 1985"}});
        QCOMPARE(settings.flushes, 1);
        QCOMPARE(settings.writtenKeys(), QStringList{favorites.name});
        QCOMPARE(plain(settings.value(favorites)), (Rows{{"First", "2 2 2002"},
                                                         {"  ", "1 1 2000"},
                                                         {"Bo", "12 3 1985"},
                                                         {"Bo", "12 3 1985"}}));
        QCOMPARE(store.count(), 4);
    }

    // Each change writes the whole list. Another process (the command line)
    // may change it between our load() and our change; ours is merged into
    // what is stored then.
    void changesMergeWithAnotherProcess_data()
    {
        QTest::addColumn<QString>("theirs");
        QTest::addColumn<QString>("ours");
        QTest::addColumn<Rows>("stored");

        // What "append NAME" adds.
        const QStringList dan{"Dan", "1 1 2000"};
        const QStringList eve{"Eve", "1 1 2000"};
        const QStringList &ann = threePeople[0];
        const QStringList &bob = threePeople[1];
        const QStringList &cy = threePeople[2];
        const auto row = [](const char *tag, const char *theirs, const char *ours,
                            const Rows &stored) { QTest::newRow(tag) << theirs << ours << stored; };
        row("alone: remove the first", "", "remove 0", {bob, cy});
        row("alone: remove the last", "", "remove 2", {ann, bob});
        row("alone: rename", "", "update 1", {ann, {"Zed", "1 1 2000"}, cy});
        row("alone: sort", "", "reverse", {cy, bob, ann});
        row("alone: put back in the middle", "", "insert 1", {ann, {"Zed", "5 5 1955"}, bob, cy});
        row("alone: put back past the end", "", "insert 7", {ann, bob, cy, {"Zed", "5 5 1955"}});
        row("both add", "append Dan", "append Eve", {ann, bob, cy, eve, dan});
        row("they add, we remove", "append Dan", "remove 1", {ann, cy, dan});
        row("they add, we rename", "append Dan", "update 0", {{"Zed", "12 3 1985"}, bob, cy, dan});
        row("they add, we sort", "append Dan", "reverse", {cy, bob, ann, dan});
        row("they remove an earlier row, we rename a later one", "remove 0", "update 2",
            {bob, {"Zed", "29 2 1996"}});
        row("we both remove the same row", "remove 1", "remove 1", {ann, cy});
        row("they remove, we sort", "remove 1", "reverse", {cy, ann});
        row("they remove the row we rename: ours comes back", "remove 0", "update 0",
            {{"Zed", "12 3 1985"}, bob, cy});
        row("we both rename the same row: both names stay", "update 0", "update 0",
            {{"Zed", "12 3 1985"}, bob, cy, {"Zed", "1 1 1900"}});
        row("they add, we put one back", "append Dan", "insert 1",
            {ann, {"Zed", "5 5 1955"}, bob, cy, dan});
        row("they leave no list, we remove", "garble", "remove 0", {bob, cy});
    }
    void changesMergeWithAnotherProcess()
    {
        QFETCH(QString, theirs);
        QFETCH(QString, ours);
        QFETCH(Rows, stored);
        MemorySettingsStore settings;
        settings.set(favorites, threePeople);
        FavoritesStore mine(settings);
        mine.load();
        FavoritesStore other(settings);
        other.load();

        const auto run = [&](FavoritesStore &store, const QString &change, const QString &name,
                             const QString &birthday) {
            const QStringList words = change.split(u' ');
            if (words[0] == u"garble") {
                settings.setRaw(favorites.name, QStringLiteral("Anna"));
            } else if (words[0] == u"append") {
                store.append(words[1], 1, 1, 2000);
            } else if (words[0] == u"remove") {
                store.remove(words[1].toLongLong());
            } else if (words[0] == u"insert") {
                store.insert(words[1].toLongLong(), {name, u"5 5 1955"_qs});
            } else if (words[0] == u"update") {
                const qsizetype index = words[1].toLongLong();
                store.update(index, name, birthday.isEmpty() ? store.at(index).birthday : birthday);
            } else if (words[0] == u"reverse") {
                QList<qsizetype> reversed(store.count());
                std::iota(reversed.rbegin(), reversed.rend(), 0);
                store.reorder(reversed);
            }
        };
        run(other, theirs, "Zed", "1 1 1900");
        run(mine, ours, "Zed", QString());

        QCOMPARE(plain(settings.value(favorites)), stored);
        // Until load() our indexes keep their rows: the list in memory has
        // only our own change.
        const bool added = ours.startsWith(u"append") || ours.startsWith(u"insert");
        QCOMPARE(mine.count(), threePeople.size() + (added ? 1 : 0) - ours.startsWith(u"remove"));
        if (ours.startsWith(u"update"))
            QCOMPARE(mine.at(ours.section(u' ', 1).toLongLong()).name, "Zed");
        mine.load();
        QCOMPARE(mine.count(), stored.size());
    }

    // The list stays as the user left it, and the caller learns why it was
    // not saved.
    void aChangeThatWasNotSavedIsReportedAndKept()
    {
        RecordingSettingsStore settings;
        settings.set(favorites, threePeople);
        FavoritesStore store(settings);
        store.load();
        settings.failure = WriteResult::failed("/x/tavlo.conf", "No space left on device");

        QCOMPARE(store.remove(0).reason(), "No space left on device");
        QCOMPARE(store.count(), 2);
        QCOMPARE(store.append("Dee", 1, 2, 2003).path(), "/x/tavlo.conf");
        QCOMPARE(plain(store.at(2)), (Favorite{"Dee", "1 2 2003"}));
        QVERIFY(!store.select(0).ok());
        settings.failure = {};
        QVERIFY(store.update(0, "Bo", "1 1 2000").ok());
    }

    // One write, so that no interruption leaves half a hand-over.
    void selectHandsOverInOneWrite()
    {
        RecordingSettingsStore settings;
        settings.set(favorites, Rows{{"Ann", "12 3 1985"}, {" Cy. ", "3.3."}});
        FavoritesStore store(settings);
        store.load();
        settings.flushes = 0;
        store.select(1);
        QCOMPARE(settings.flushes, 1);
        QCOMPARE(settings.value(handOverName), " Cy. ");
        QCOMPARE(settings.value(handOverBirthday), "3.3.");
        QCOMPARE(settings.value(handOverIndex), 1);
    }

    void conversion_data()
    {
        QTest::addColumn<QVariant>("names");
        QTest::addColumn<QVariant>("dates");
        QTest::addColumn<Rows>("expected"); // none: the list stays as it was
        QTest::addColumn<QString>("line");

        // The number goes from both ends, then trailing blanks; the blank
        // between the number and the name stays.
        QTest::newRow("running numbers")
            << QVariant(QStringList{"1. Ann", "Bob 2", "3.3."})
            << QVariant(QStringList{"12 3 1985", "1 1 2000", "7 1 2001"})
            << Rows{{" Ann", "12 3 1985"}, {"Bob", "1 1 2000"}, {"", "7 1 2001"}}
            << R"(name: ["1. Ann", "Bob 2", "3.3."]  -   bd: ["12 3 1985", "1 1 2000", "7 1 2001"])";
        QTest::newRow("only trailing blanks, only ASCII digits")
            << QVariant(QStringList{"  Kim 10.  ", "Lee\t", "12 Ann 3", "R2D2",
                                    QStringLiteral("Ann ١٢")})
            << QVariant(QStringList{"a", "b", "c", "d", "e"})
            << Rows{{"  Kim 10.", "a"},
                    {"Lee\t", "b"},
                    {" Ann", "c"},
                    {"R2D", "d"},
                    {QStringLiteral("Ann ١٢"), "e"}}
            << QStringLiteral(
                   "name: [\"  Kim 10.  \", \"Lee\\t\", \"12 Ann 3\", \"R2D2\", \"Ann ١٢\"]"
                   "  -   bd: [\"a\", \"b\", \"c\", \"d\", \"e\"]");
        QTest::newRow("dates verbatim, extra dates ignored")
            << QVariant(QStringList{"Eve"}) << QVariant(QStringList{"07.03.1990", "1 1 2000"})
            << Rows{{"Eve", "07.03.1990"}}
            << R"(name: ["Eve"]  -   bd: ["07.03.1990", "1 1 2000"])";
        QTest::newRow("quote and line feed printed escaped")
            << QVariant(QStringList{"Ann \"Jr\"\nX"}) << QVariant(QStringList{"1 1 2000"})
            << Rows{{"Ann \"Jr\"\nX", "1 1 2000"}}
            << "name: [\"Ann \\\"Jr\\\"\\nX\"]  -   bd: [\"1 1 2000\"]";
        QTest::newRow("both missing")
            << QVariant() << QVariant() << Rows() << "name: []  -   bd: []";
        QTest::newRow("empty names")
            << QVariant(QVariantList()) << QVariant(QVariantList{"1 1 2000"}) << Rows()
            << R"(name: []  -   bd: ["1 1 2000"])";
        QTest::newRow("names not an array")
            << QVariant("1. Ann") << QVariant(QVariantList{"1 1 2000"}) << Rows()
            << R"(name: []  -   bd: ["1 1 2000"])";
    }
    void conversion()
    {
        QFETCH(QVariant, names);
        QFETCH(QVariant, dates);
        QFETCH(Rows, expected);
        QFETCH(QString, line);
        RecordingSettingsStore settings;
        settings.set(favorites, threePeople);
        if (names.isValid())
            settings.setRaw("arrayName", names);
        if (dates.isValid())
            settings.setRaw("arrayBD", dates);
        settings.writes.clear();
        FavoritesStore store(settings);

        CapturedLog log;
        QVERIFY(store.convertOlderForm());
        QCOMPARE(log.lines, QStringList{line});
        QCOMPARE(settings.value(firstStartDone), true);
        const Rows after = expected.isEmpty() ? threePeople : expected;
        QCOMPARE(plain(settings.value(favorites)), after);
        QCOMPARE(store.count(), after.size());

        // "person" after each element, so an interruption leaves a valid prefix.
        QStringList keys = settings.writtenKeys();
        QCOMPARE(keys.takeFirst(), QString("firstStart2"));
        QCOMPARE(keys, QStringList(expected.size(), QString("person")));
        for (qsizetype i = 1; i < settings.writes.size(); ++i)
            QCOMPARE(settings.writes[i].second.toList().size(), i);

        // The next start leaves it all alone.
        settings.writes.clear();
        log.lines.clear();
        QVERIFY(!FavoritesStore(settings).convertOlderForm());
        QCOMPARE(settings.writes.size(), 0);
        QCOMPARE(log.lines, QStringList());
    }

    // Each case runs in a child process, which must abort after one line on
    // standard error and leave the stored data as it was.
    void fatalCases_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<qsizetype>("index");
        QTest::addColumn<QString>("message");
        QTest::newRow("at past the end")
            << "at" << qsizetype(3) << "favorite 3 does not exist (the list has 3)";
        QTest::newRow("at negative") << "at" << qsizetype(-1) << "favorite -1 does not exist";
        QTest::newRow("remove past the end") << "remove" << qsizetype(3) << "favorite 3 ";
        QTest::newRow("update past the end") << "update" << qsizetype(7) << "favorite 7 ";
        QTest::newRow("select past the end") << "select" << qsizetype(4) << "favorite 4 ";
        QTest::newRow("conversion short of dates")
            << "convert" << qsizetype(0) << "older favorites: 3 names but 2 birth dates";
    }
    void fatalCases()
    {
        QFETCH(QString, operation);
        QFETCH(qsizetype, index);
        QFETCH(QString, message);
        const QString path = m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".conf");
        {
            FileSettingsStore settings(path);
            settings.set(favorites, withShortRow);
            settings.set(olderFavoriteNames, QStringList{"1. Ann", "2. Bob", "3. Cy"});
            settings.set(olderFavoriteBirthdays, QStringList{"12 3 1985", "1 1 2000"});
        }

        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {fatalCaseArgument, operation, QString::number(index), path});
        QVERIFY(child.waitForFinished(30000));
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        const QString err = QString::fromUtf8(child.readAllStandardError());
        QCOMPARE(err.count(u'\n'), 1);
        QVERIFY2(err.endsWith(u'\n') && err.contains(message), qPrintable(err));

        FileSettingsStore settings(path);
        QCOMPARE(plain(settings.value(favorites)), withShortRow);
        QCOMPARE(settings.value(handOverPending), false);
        QVERIFY(!settings.value(handOverName));
    }
};

int main(int argc, char *argv[])
{
    if (argc == 5 && qstrcmp(argv[1], fatalCaseArgument) == 0)
        return runFatalCase(QString::fromLocal8Bit(argv[2]), QByteArray(argv[3]).toLongLong(),
                            QString::fromLocal8Bit(argv[4]));
    QCoreApplication app(argc, argv);
    TestFavoritesStore test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_favoritesstore.moc"
