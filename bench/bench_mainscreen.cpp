// SPDX-License-Identifier: MIT
// How long the main screen takes to answer a turn of the date wheels: the
// report composed and the picked date written to the settings file, as the
// app does it. Runs in Europe/Berlin with a settings file in a temporary folder.

#include "core/Clock.h"
#include "core/DebugLog.h"
#include "mainScreen/MainScreenController.h"
#include "session/Session.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <ctime>

namespace {

void BM_WheelChange(benchmark::State &state)
{
    QTemporaryDir dir;
    FileSettingsStore settings(dir.filePath(QStringLiteral("tavlo.conf")));
    FixedClock clock(QDateTime(QDate(2026, 11, 22), QTime(12, 0)));
    Session session(settings, clock, {QStringLiteral("en-US")}, Appearance::Dark);
    MainScreenController controller(session);
    controller.viewDidLoad();
    int day = 1;
    for (auto _ : state) {
        controller.pickDate(day, 3, 1985);
        benchmark::DoNotOptimize(controller.displayText());
        day = day % 28 + 1;
    }
}
BENCHMARK(BM_WheelChange)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    setenv("TZ", "Europe/Berlin", 1);
    tzset();
    QCoreApplication app(argc, argv);
    DebugLog::setSink([](const QString &) {});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
