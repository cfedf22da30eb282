// SPDX-License-Identifier: MIT
// Timings of the reminder planning over many favorites: the plan alone, and
// a whole scheduling run as the main screen starts it (favorites read from
// the store, "selectetDate" lines written, requests handed to a centre that
// keeps nothing). Everything runs in Europe/Berlin.

#include "core/Clock.h"
#include "favorites/FavoritesStore.h"
#include "reminders/ReminderScheduler.h"
#include "settings/MemorySettingsStore.h"
#include "texts/UiStrings.h"

#include <QRandomGenerator>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <ctime>

namespace {

constexpr quint32 seed = 20260301;

// Birth dates spread over the year, so that the days ahead find plenty.
QList<QStringList> randomFavorites(qsizetype count)
{
    QRandomGenerator rng(seed);
    QList<QStringList> rows;
    rows.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const QDate birth = QDate(1930, 1, 1).addDays(rng.bounded(365 * 90));
        rows.append(
            {QStringLiteral("Friend %1").arg(i),
             QStringLiteral("%1 %2 %3").arg(birth.day()).arg(birth.month()).arg(birth.year())});
    }
    return rows;
}

const QDateTime now(QDate(2026, 3, 1), QTime(10, 0));

void BM_PlanReminders(benchmark::State &state)
{
    QList<Favorite> favorites;
    for (const QStringList &row : randomFavorites(state.range(0)))
        favorites.append({row.at(0), row.at(1)});
    const UiStrings strings;
    for (auto _ : state) {
        QList<PlannedReminder> planned = Reminders::plan(now, favorites, strings);
        benchmark::DoNotOptimize(planned);
    }
}
BENCHMARK(BM_PlanReminders)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

class DiscardingCenter final : public NotificationCenter
{
public:
    void getAuthorizationStatus(StatusHandler handler) override
    {
        handler(AuthorizationStatus::Authorized);
    }
    void requestAuthorization(AuthorizationOptions, AuthorizationHandler handler) override
    {
        handler(true, std::nullopt);
    }
    void add(const NotificationRequest &, AddHandler handler) override { handler(std::nullopt); }
};

void BM_SchedulingRun(benchmark::State &state)
{
    MemorySettingsStore settings;
    settings.set(SettingsKeys::favorites, randomFavorites(state.range(0)));
    FavoritesStore favorites(settings);
    favorites.load();
    const FixedClock clock(now);
    const UiStrings strings;
    DiscardingCenter center;
    ReminderScheduler scheduler(center, settings, clock, favorites, strings);
    for (auto _ : state)
        scheduler.checkNotificationPermission();
}
BENCHMARK(BM_SchedulingRun)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    setenv("TZ", "Europe/Berlin", 1);
    tzset();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
