#include "settings/MemorySettingsStore.h"
#include "settings/QSettingsStore.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace SettingsKeys;

class TestSettingsStore : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    QString freshIniPath() { return m_dir.filePath(QStringLiteral("s%1.conf").arg(++m_files)); }

    std::unique_ptr<SettingsStore> makeStore(const QString &kind)
    {
        if (kind == u"memory")
            return std::make_unique<MemorySettingsStore>();
        return std::make_unique<QSettingsStore>(freshIniPath());
    }

    std::unique_ptr<QSettingsStore> storeWithFile(const QByteArray &contents)
    {
        const QString path = freshIniPath();
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        file.write(contents);
        file.close();
        return std::make_unique<QSettingsStore>(path);
    }

    static void addStoreKinds()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("memory") << "memory";
        QTest::newRow("file") << "file";
    }

private slots:
    void freshStoreReadsTypeDefaults_data() { addStoreKinds(); }
    void freshStoreReadsTypeDefaults()
    {
        QFETCH(QString, kind);
        const auto store = makeStore(kind);
        QCOMPARE(store->value(color), 0);
        QCOMPARE(store->value(sort), 0);
        QCOMPARE(store->value(preferredLanguage), 0);
        QCOMPARE(store->value(moreDetails), false);
        QCOMPARE(store->value(weekday), false);
        QCOMPARE(store->value(star), false);
        QCOMPARE(store->value(firstStartDone), false);
        QVERIFY(!store->value(backgroundImage));
        QVERIFY(!store->value(reviewedVersion));
        QVERIFY(!store->value(favorites));
        QVERIFY(!store->value(olderFavoriteNames));
        QVERIFY(!store->value(scheduledReminder(1)));
    }

    void valuesRoundTrip_data() { addStoreKinds(); }
    void valuesRoundTrip()
    {
        QFETCH(QString, kind);
        const auto store = makeStore(kind);
        const QList<QStringList> people = {
            {QStringLiteral(" Anna "), QStringLiteral("12 3 1985")},
            {QStringLiteral("Smith, John; \"Jr\" = #1"), QStringLiteral("1 1 2000")},
            {QStringLiteral("@Ольга\n😀"), QStringLiteral("")},
            {QStringLiteral("only one")},
        };
        store->set(color, 9);
        store->set(year, -44);
        store->set(appStarts, 1LL << 40);
        store->set(moreDetails, true);
        store->set(backgroundImage, QStringLiteral("space3"));
        store->set(handOverName, QStringLiteral("a, b"));
        store->set(favorites, people);
        store->set(olderFavoriteNames, {QStringLiteral("1. Ann"), QStringLiteral("Bob 2")});
        store->set(olderFavoriteBirthdays, QStringList{});

        QCOMPARE(store->value(color), 9);
        QCOMPARE(store->value(year), -44);
        QCOMPARE(store->value(appStarts), 1LL << 40);
        QCOMPARE(store->value(moreDetails), true);
        QCOMPARE(store->value(backgroundImage), QStringLiteral("space3"));
        QCOMPARE(store->value(handOverName), QStringLiteral("a, b"));
        QCOMPARE(store->value(favorites), people);
        QCOMPARE(store->value(olderFavoriteNames),
                 QStringList({QStringLiteral("1. Ann"), QStringLiteral("Bob 2")}));
        QCOMPARE(store->value(olderFavoriteBirthdays), QStringList());

        store->set(favorites, QList<QStringList>{});
        QCOMPARE(store->value(favorites), QList<QStringList>{});
        store->set(moreDetails, false);
        QCOMPARE(store->value(moreDetails), false);
        store->remove(color.name);
        QCOMPARE(store->value(color), 0);
    }

    void aShorterListReplacesALongerOne()
    {
        const QString path = freshIniPath();
        QSettingsStore store(path);
        store.set(favorites, {{QStringLiteral("a"), QStringLiteral("1 1 2000")},
                              {QStringLiteral("b"), QStringLiteral("2 2 2000")}});
        store.set(favorites, {{QStringLiteral("c"), QStringLiteral("3 3 2000")}});
        QCOMPARE(QSettingsStore(path).value(favorites),
                 QList<QStringList>({{QStringLiteral("c"), QStringLiteral("3 3 2000")}}));
    }

    void writesReachTheFileAtOnceAndStayReadable()
    {
        const QString path = freshIniPath();
        QSettingsStore writer(path);
        writer.set(favorites, {{QStringLiteral("Anna"), QStringLiteral("12 3 1985")}});
        writer.set(color, 4);

        QCOMPARE(QSettingsStore(path).value(color), 4);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QVERIFY2(text.contains("1\\1=Anna") && text.contains("1\\2=12 3 1985"), text.constData());
    }

    void aBatchReachesTheFileWhenItCloses()
    {
        const QString path = freshIniPath();
        QSettingsStore writer(path);
        writer.set(day, 1);
        {
            const SettingsBatch batch(writer);
            writer.set(day, 12);
            writer.set(month, 3);
            {
                const SettingsBatch inner(writer);
                writer.set(year, 1985);
            }
            // In one process QSettings shares its cache, so look at the file.
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray onDisk = file.readAll();
            QVERIFY2(onDisk.contains("day=1\n") && !onDisk.contains("year="), onDisk.constData());
            QCOMPARE(writer.value(day), 12);
        }
        const QSettingsStore reader(path);
        QCOMPARE(reader.value(day), 12);
        QCOMPARE(reader.value(month), 3);
        QCOMPARE(reader.value(year), 1985);
    }

    void wrongTypesReadAsDefaults_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<qint64>("asInteger");
        QTest::addColumn<bool>("asBoolean");
        QTest::addColumn<bool>("asStringPresent");
        QTest::addColumn<bool>("asListPresent");

        QTest::newRow("integer") << QVariant(7) << 7LL << false << false << false;
        QTest::newRow("integer as text")
            << QVariant(QStringLiteral("7")) << 7LL << false << true << false;
        QTest::newRow("negative text")
            << QVariant(QStringLiteral("-3")) << -3LL << false << true << false;
        QTest::newRow("word") << QVariant(QStringLiteral("abc")) << 0LL << false << true << false;
        QTest::newRow("fraction") << QVariant(QStringLiteral("1.5")) << 0LL << false << true
                                  << false;
        QTest::newRow("beyond 64 bits")
            << QVariant(QStringLiteral("99999999999999999999")) << 0LL << false << true << false;
        QTest::newRow("boolean") << QVariant(true) << 0LL << true << false << false;
        QTest::newRow("boolean as text")
            << QVariant(QStringLiteral("true")) << 0LL << true << true << false;
        QTest::newRow("double") << QVariant(2.5) << 0LL << false << false << false;
        QTest::newRow("string list")
            << QVariant(QVariantList{QStringLiteral("a")}) << 0LL << false << false << true;
        QTest::newRow("list with a number")
            << QVariant(QVariantList{QStringLiteral("a"), 5}) << 0LL << false << false << false;
    }
    void wrongTypesReadAsDefaults()
    {
        QFETCH(QVariant, stored);
        MemorySettingsStore store;
        for (const QString &key :
             {color.name, moreDetails.name, backgroundImage.name, olderFavoriteNames.name})
            store.setRaw(key, stored);
        QTEST(store.value(color), "asInteger");
        QTEST(store.value(moreDetails), "asBoolean");
        QTEST(store.value(backgroundImage).has_value(), "asStringPresent");
        QTEST(store.value(olderFavoriteNames).has_value(), "asListPresent");
    }

    void tableNeedsListsOfStrings()
    {
        MemorySettingsStore store;
        store.setRaw(favorites.name, QVariantList{QVariantList{QStringLiteral("a")}, 3});
        QVERIFY(!store.value(favorites));
        store.setRaw(favorites.name, QStringLiteral("Anna"));
        QVERIFY(!store.value(favorites));
    }

    void malformedFileContents_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<qint64>("color");
        QTest::addColumn<bool>("details");
        QTest::addColumn<bool>("favoritesPresent");

        QTest::newRow("well formed") << QByteArray("[General]\ncolor=3\nmoreDetails=true\n"
                                                   "[person]\nsize=1\n1\\size=2\n1\\1=A\n1\\2=B\n")
                                     << 3LL << true << true;
        QTest::newRow("garbage") << QByteArray("\x01\x02garbage\n=\n[[[\n") << 0LL << false
                                 << false;
        QTest::newRow("wrong types") << QByteArray("[General]\ncolor=blue\nmoreDetails=yes\n"
                                                   "person=Anna\n")
                                     << 0LL << false << false;
        QTest::newRow("huge number")
            << QByteArray("[General]\ncolor=123456789012345678901234\n") << 0LL << false << false;
        QTest::newRow("list longer than its entries")
            << QByteArray("[person]\nsize=1000000000\n1\\size=1\n1\\1=A\n") << 0LL << false
            << false;
        QTest::newRow("negative list size")
            << QByteArray("[person]\nsize=-1\n") << 0LL << false << false;
        QTest::newRow("truncated")
            << QByteArray("[General]\ncolor=5\nmoreDet") << 5LL << false << false;
    }
    void malformedFileContents()
    {
        QFETCH(QByteArray, contents);
        const auto store = storeWithFile(contents);
        QTEST(store->value(color), "color");
        QTEST(store->value(moreDetails), "details");
        QTEST(store->value(favorites).has_value(), "favoritesPresent");
    }

    void scheduledReminderKeys()
    {
        QCOMPARE(scheduledReminder(1).name, "selectetDate1");
        QCOMPARE(scheduledReminder(5).name, "selectetDate5");
    }
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "tst_settingsstore.moc"
