// SPDX-License-Identifier: MIT
#include "app/StartupTrace.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

// The most memory the process has held, from the kernel's own count.
QByteArray peakResidentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return "unknown";
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0);
    }
    return "unknown";
}

// Processor time the whole process (every thread, those ended too) has
// used so far, as the scheduler counts it: what a slow or shared core has
// to give before the first frame.
double processorMilliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1000 + double(time.tv_nsec) / 1e6;
}

} // namespace

void StartupTrace::followFirstFrame(QQuickWindow &window, bool thenQuit)
{
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window,
        [&window, thenQuit] {
            std::printf("first-frame-epoch-ms %lld\n",
                        static_cast<long long>(QDateTime::currentMSecsSinceEpoch()));
            std::printf("first-frame-cpu-ms %.1f\n", processorMilliseconds());
            std::fflush(stdout);
            // For a profiler, the start alone: gone at once, nothing written.
            if (qgetenv("TAVLO_STARTUP_TRACE") == "exit")
                std::_Exit(0);
            if (thenQuit)
                QTimer::singleShot(1000, &window, &QCoreApplication::quit);
        },
        Qt::SingleShotConnection);
}

void StartupTrace::printPeakMemory()
{
    std::printf("peak-rss-kb %s\n", peakResidentKilobytes().constData());
}
