// SPDX-License-Identifier: MIT
// Timings of the age report and of the calendar arithmetic under it, with
// ICU's calendar alongside ours on the same pairs so the ratio can be read
// from one run. Everything runs in Europe/Berlin.

#include "core/BirthDateResults.h"
#include "core/CalendarDifference.h"
#include "core/ChineseZodiac.h"
#include "core/DebugLog.h"
#include "report/ReportComposer.h"
#include "texts/UiStrings.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <benchmark/benchmark.h>
#include <unicode/calendar.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace {

constexpr const char *zone = "Europe/Berlin";
constexpr quint32 seed = 20240615;
constexpr size_t sampleCount = 1024; // a power of two, so that `i & mask` cycles
constexpr size_t mask = sampleCount - 1;

QDateTime local(int year, int month, int day, int hour, int minute)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), Qt::LocalTime);
}

QDateTime randomMoment(QRandomGenerator &rng, QDate from, QDate to)
{
    const QDate date = from.addDays(rng.bounded(from.daysTo(to) + 1));
    const qint64 msOfDay = rng.bounded(Q_INT64_C(86'400'000));
    const qint64 instant =
        QDateTime(date, QTime(0, 0), Qt::LocalTime).toMSecsSinceEpoch() + msOfDay;
    return QDateTime::fromMSecsSinceEpoch(instant, Qt::LocalTime);
}

struct Pair
{
    QDateTime birth;
    QDateTime now;
    UDate birthMs;
    UDate nowMs;
};

// Both difference benchmarks run over these very pairs.
const std::vector<Pair> &pairs()
{
    static const std::vector<Pair> result = [] {
        QRandomGenerator rng(seed);
        std::vector<Pair> drawn;
        drawn.reserve(sampleCount);
        while (drawn.size() < sampleCount) {
            const QDateTime birth = randomMoment(rng, QDate(1900, 1, 1), QDate(2024, 12, 31));
            const QDateTime now = randomMoment(rng, birth.date(), QDate(2030, 12, 31));
            if (birth < now)
                drawn.push_back(
                    {birth, now, UDate(birth.toMSecsSinceEpoch()), UDate(now.toMSecsSinceEpoch())});
        }
        return drawn;
    }();
    return result;
}

void BM_FullComposition(benchmark::State &state)
{
    // Births in different Chinese years and signs, one in a gap of the New
    // Year table, one on 29 February, so each lookup takes more than one path.
    const std::array births = {
        local(1987, 7, 14, 9, 30),  local(1958, 2, 1, 6, 0),   local(2000, 2, 29, 23, 45),
        local(1912, 12, 31, 12, 0), local(2043, 3, 21, 0, 15), local(1969, 10, 27, 2, 30),
        local(2019, 1, 20, 18, 5),  local(1999, 11, 22, 7, 7),
    };
    const QDateTime now = local(2024, 6, 15, 12, 0);
    const QString person = QStringLiteral("Alex");
    const UiStrings strings;
    BirthDateResults results;
    ReportComposer composer(strings, results);
    size_t i = 0;
    for (auto _ : state) {
        AgeReport report =
            composer.compose(births[i++ % births.size()], now, person, Language::English);
        benchmark::DoNotOptimize(report);
    }
}
BENCHMARK(BM_FullComposition);

void BM_ChineseLookup(benchmark::State &state)
{
    QRandomGenerator rng(seed);
    std::vector<QDateTime> births;
    births.reserve(sampleCount);
    for (size_t k = 0; k < sampleCount; ++k)
        births.push_back(randomMoment(rng, QDate(1900, 1, 1), QDate(2044, 12, 31)));
    size_t i = 0;
    for (auto _ : state) {
        std::optional<int> year = ChineseZodiac::yearOf(births[i++ & mask]);
        benchmark::DoNotOptimize(year);
    }
}
BENCHMARK(BM_ChineseLookup);

void BM_OurDifference(benchmark::State &state)
{
    const std::vector<Pair> &samples = pairs();
    size_t i = 0;
    for (auto _ : state) {
        const Pair &p = samples[i++ & mask];
        YearsMonthsDays age = CalendarDifference::yearsMonthsDays(p.birth, p.now);
        benchmark::DoNotOptimize(age);
    }
}
BENCHMARK(BM_OurDifference);

void BM_IcuDifference(benchmark::State &state)
{
    const std::vector<Pair> &samples = pairs();
    UErrorCode status = U_ZERO_ERROR;
    icu::GregorianCalendar calendar(status);
    if (U_FAILURE(status)) {
        state.SkipWithError(u_errorName(status));
        return;
    }
    size_t i = 0;
    for (auto _ : state) {
        const Pair &p = samples[i++ & mask];
        calendar.setTime(p.birthMs, status);
        int32_t years = calendar.fieldDifference(p.nowMs, UCAL_YEAR, status);
        int32_t months = calendar.fieldDifference(p.nowMs, UCAL_MONTH, status);
        int32_t days = calendar.fieldDifference(p.nowMs, UCAL_DATE, status);
        benchmark::DoNotOptimize(years);
        benchmark::DoNotOptimize(months);
        benchmark::DoNotOptimize(days);
    }
    if (U_FAILURE(status))
        state.SkipWithError(u_errorName(status));
}
BENCHMARK(BM_IcuDifference);

} // namespace

int main(int argc, char **argv)
{
    // Both the process and ICU, which caches its default zone, must be in the
    // zone before anything reads the time.
    setenv("TZ", zone, 1);
    tzset();
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)));
    // A sign lookup that finds nothing would print a line each iteration.
    DebugLog::setSink([](const QString &) {});

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
