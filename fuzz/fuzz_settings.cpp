// SPDX-License-Identifier: MIT
#include "FuzzCheck.h"
#include "core/DatePattern.h"
#include "core/DebugLog.h"
#include "favorites/FavoriteCard.h"
#include "favorites/FavoritesSorting.h"
#include "favorites/FavoritesStore.h"
#include "reminders/ReminderScheduler.h"
#include "settings/FileSettingsStore.h"
#include "settings/MemorySettingsStore.h"
#include "texts/Language.h"
#include "texts/UiStrings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdint>
#include <cstdlib>
#include <unistd.h>

// The settings reader: the input is the settings file. Every key is read
// through the typed reads, and the favorites through FavoritesStore and what
// shows them (cards, sorting, reminders), as far as the app goes without
// stopping: all() is fatal by design on a row with fewer than two texts, and
// a card or the sort by age on a birthday that does not read, so those are
// checked first. A list that reads is written to a file of its own and must
// read back the same.

namespace {

QString g_folder;

// QSettings keeps one cache per file name in a process, so every input gets
// a name of its own.
QString freshPath()
{
    static quint64 counter = 0;
    return g_folder + QStringLiteral("/%1.conf").arg(++counter);
}

void readEverything(SettingsStore &store)
{
    using namespace SettingsKeys;
    for (const IntegerKey *key :
         {&color, &sort, &day, &month, &year, &preferredLanguage, &handOverIndex, &appStarts})
        store.value(*key);
    for (const BooleanKey *key :
         {&moreDetails, &weekday, &star, &firstStartDone, &handOverPending, &handOverMovePicker})
        store.value(*key);
    for (const StringKey *key :
         {&backgroundImage, &handOverName, &handOverBirthday, &reviewedVersion})
        store.value(*key);
    for (int i = 1; i <= maxScheduledReminders; ++i)
        store.value(scheduledReminder(i));
    store.value(olderFavoriteNames);
    store.value(olderFavoriteBirthdays);
    decideLanguage({QStringLiteral("en-US")}, store.value(preferredLanguage));
}

void showFavorites(const QList<Favorite> &all)
{
    const QDateTime now(QDate(2026, 11, 22), QTime(12, 0));
    const DatePattern recordDate(u"dd MM yyyy");
    bool allDates = true;
    for (qsizetype i = 0; i < all.size(); ++i) {
        if (!recordDate.parse(all.at(i).birthday)) {
            allDates = false;
            continue;
        }
        FavoriteCards::card(all.at(i), i, now, Language::German, QLocale::c(), true, true);
    }
    FavoritesSorting::sorted(all, FavoritesSorting::Order::ByName);
    FavoritesSorting::sorted(all, FavoritesSorting::Order::ByBirthday);
    if (allDates)
        FavoritesSorting::sorted(all, FavoritesSorting::Order::ByAge);
    UiStrings strings;
    strings.apply(Language::Russian);
    Reminders::plan(now, all, strings);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    useBerlinTime();
    DebugLog::setSink([](const QString &) {});
    // In memory where there is such a folder: every write syncs the file.
    const QString base = QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                             ? QStringLiteral("/dev/shm")
                             : QDir::tempPath();
    g_folder = base + QStringLiteral("/tavlo-fuzz-settings-%1").arg(getpid());
    QDir().mkpath(g_folder);
    // Each input's files go as it ends; the folder goes with the process.
    static const QByteArray folder = QFile::encodeName(g_folder);
    std::atexit([] { ::rmdir(folder.constData()); });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = freshPath();
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return 0;
        file.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    std::optional<QList<QStringList>> table;
    {
        FileSettingsStore store(path);
        readEverything(store);
        table = store.value(SettingsKeys::favorites);
        FavoritesStore favorites(store);
        favorites.load();
        FUZZ_CHECK(favorites.count() == (table ? table->size() : 0));
        const bool wholeRows =
            table && std::all_of(table->cbegin(), table->cend(),
                                 [](const QStringList &row) { return row.size() >= 2; });
        if (wholeRows)
            showFavorites(favorites.all());

        // The conversion of an earlier version's two arrays, on a copy.
        const QStringList names =
            store.value(SettingsKeys::olderFavoriteNames).value_or(QStringList());
        const QStringList dates =
            store.value(SettingsKeys::olderFavoriteBirthdays).value_or(QStringList());
        if (names.size() <= dates.size()) {
            MemorySettingsStore copy;
            copy.set(SettingsKeys::olderFavoriteNames, names);
            copy.set(SettingsKeys::olderFavoriteBirthdays, dates);
            FavoritesStore converted(copy);
            FUZZ_CHECK(converted.convertOlderForm());
            FUZZ_CHECK(converted.count() == names.size());
        }
    }
    QFile::remove(path);

    if (table && !table->isEmpty()) {
        const QString again = freshPath();
        {
            FileSettingsStore writer(again);
            writer.set(SettingsKeys::favorites, *table);
        }
        const QString copy = freshPath();
        QFile::copy(again, copy);
        FUZZ_CHECK(FileSettingsStore(copy).value(SettingsKeys::favorites) == table);
        QFile::remove(again);
        QFile::remove(again + QStringLiteral(".update-lock"));
        QFile::remove(copy);
    }
    return 0;
}
