// SPDX-License-Identifier: MIT
// One change to a long favorites list, as the favorites screen makes it,
// with the settings file written, flushed and synced to the disk before the
// change counts as done: add, rename, delete and a new sort order, with
// 0, 1,000 and 10,000 favorites. The file lives in the build folder, on the
// same disk as the user's settings would. The second argument 1 writes in
// the background, as the app does: then the time is what the change takes
// of the screen's thread, and each change waits (untimed) for the write
// before it, as changes a person makes one after another would. An add is
// also timed with the birthdays calendar on.
//   build/bench/bench_favoritechanges --benchmark_repetitions=5

#include "contacts/BirthdayCalendar.h"
#include "core/Clock.h"
#include "favorites/FavoritesSorting.h"
#include "favorites/FavoritesStore.h"
#include "settings/FileSettingsStore.h"
#include "settings/IniFormat.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QList<QStringList> randomFavorites(qsizetype count)
{
    QRandomGenerator rng(20261123);
    QList<QStringList> rows;
    for (qsizetype i = 0; i < count; ++i) {
        const QDate birth = QDate(1930, 1, 1).addDays(rng.bounded(365 * 90));
        rows.append(
            {QStringLiteral("Friend %1").arg(rng.bounded(100000)),
             QStringLiteral("%1 %2 %3").arg(birth.day()).arg(birth.month()).arg(birth.year())});
    }
    return rows;
}

struct Fixture
{
    explicit Fixture(const benchmark::State &state, qsizetype extra = 0)
        : dir(QDir::currentPath() + QStringLiteral("/bench-XXXXXX")),
          settings(dir.filePath(QStringLiteral("tavlo.conf"))), favorites(settings)
    {
        settings.set(SettingsKeys::favorites, randomFavorites(state.range(0) + extra));
        favorites.load();
        if (state.range(1))
            settings.writeInBackground();
    }
    // Untimed: the write of the change before.
    void settle(benchmark::State &state)
    {
        state.PauseTiming();
        settings.waitForWrites();
        state.ResumeTiming();
    }
    QTemporaryDir dir;
    FileSettingsStore settings;
    FavoritesStore favorites;
};

void checked(benchmark::State &state, const WriteResult &result)
{
    if (!result)
        state.SkipWithError(qPrintable(result.message()));
}

void checkedText(benchmark::State &state, const QString &problem)
{
    if (!problem.isEmpty())
        state.SkipWithError(qPrintable(problem));
}

void BM_Add(benchmark::State &state)
{
    Fixture f(state);
    for (auto _ : state) {
        checked(state, f.favorites.append(QStringLiteral("Zoe"), 5, 7, 2001));
        state.PauseTiming();
        f.settings.waitForWrites();
        checked(state, f.favorites.remove(f.favorites.count() - 1));
        f.settings.waitForWrites();
        state.ResumeTiming();
    }
}

void BM_Rename(benchmark::State &state)
{
    Fixture f(state, 1);
    int n = 0;
    for (auto _ : state) {
        f.settle(state);
        checked(state, f.favorites.update(0, QStringLiteral("Name %1").arg(++n),
                                          QStringLiteral("1 1 2000")));
    }
}

void BM_Delete(benchmark::State &state)
{
    Fixture f(state, 1);
    for (auto _ : state) {
        checked(state, f.favorites.remove(0));
        state.PauseTiming();
        f.settings.waitForWrites();
        checked(state, f.favorites.append(QStringLiteral("Zoe"), 5, 7, 2001));
        f.settings.waitForWrites();
        state.ResumeTiming();
    }
}

// A sort menu choice: sorted, then written back in the new order.
void BM_Sort(benchmark::State &state)
{
    Fixture f(state);
    int order = 0;
    for (auto _ : state) {
        f.settle(state);
        const auto sortOrder = static_cast<FavoritesSorting::Order>(order++ % 3);
        checked(state,
                f.favorites.reorder(FavoritesSorting::ordering(f.favorites.all(), sortOrder)));
    }
}

// An add with "Show birthdays in the calendar" on: the calendar file is
// written again after the settings file, at once or (background:1, as the
// app does) by the calendar's own thread.
void BM_AddWithCalendar(benchmark::State &state)
{
    Fixture f(state);
    SystemClock clock;
    BirthdayCalendar calendar(f.settings, {QStringLiteral("en-US")}, clock,
                              {f.dir.filePath(QStringLiteral("birthdays.ics")),
                               f.dir.filePath(QStringLiteral("tavlo-birthdays.source"))});
    calendar.setEnabled(true);
    if (state.range(1))
        calendar.writeInBackground([&](const QString &problem) { checkedText(state, problem); });
    f.settings.waitForWrites();
    f.favorites.setChangeListener(
        [&](const QList<Favorite> &list) { checkedText(state, calendar.update(list)); });
    for (auto _ : state) {
        checked(state, f.favorites.append(QStringLiteral("Zoe"), 5, 7, 2001));
        state.PauseTiming();
        f.settings.waitForWrites();
        calendar.waitForWrites();
        checked(state, f.favorites.remove(f.favorites.count() - 1));
        f.settings.waitForWrites();
        calendar.waitForWrites();
        state.ResumeTiming();
    }
    f.favorites.setChangeListener({});
}

// The settings file's text with N favorites: read at every start, written
// with every change.
IniFormat::Values valuesWith(qsizetype count)
{
    IniFormat::Values values;
    values.insert(QStringLiteral("firstStart2"), true);
    values.insert(QStringLiteral("day"), 12);
    QVariantList rows;
    for (const QStringList &row : randomFavorites(count))
        rows.append(QVariant(QVariantList{row.at(0), row.at(1)}));
    values.insert(QStringLiteral("person"), rows);
    return values;
}

void BM_ParseFile(benchmark::State &state)
{
    const QByteArray text = IniFormat::serialize(valuesWith(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(IniFormat::parse(text));
}

void BM_SerializeFile(benchmark::State &state)
{
    const IniFormat::Values values = valuesWith(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(IniFormat::serialize(values));
}

} // namespace

BENCHMARK(BM_ParseFile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SerializeFile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
#define TAVLO_CHANGE_BENCHMARK(name)                                                               \
    BENCHMARK(name)                                                                                \
        ->ArgsProduct({{0, 1000, 10000}, {0, 1}})                                                  \
        ->ArgNames({"favorites", "background"})                                                    \
        ->Unit(benchmark::kMillisecond)
TAVLO_CHANGE_BENCHMARK(BM_Add);
TAVLO_CHANGE_BENCHMARK(BM_Rename);
TAVLO_CHANGE_BENCHMARK(BM_Delete);
TAVLO_CHANGE_BENCHMARK(BM_Sort);
BENCHMARK(BM_AddWithCalendar)
    ->ArgsProduct({{1000, 10000}, {0, 1}})
    ->ArgNames({"favorites", "background"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
