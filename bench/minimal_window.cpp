// SPDX-License-Identifier: MIT
// The floor for start-up: a bare Qt Quick Controls window with what the
// main screen needs at the least, one text and three wheels, on the same
// machine and renderer as Tavlo. Prints the moment of its first frame, the
// processor time used by then, and its peak memory as the app does with
// TAVLO_STARTUP_TRACE, then quits (at once with TAVLO_STARTUP_TRACE=exit).
#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <ctime>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QQmlApplicationEngine engine;
    engine.loadData(R"(
        import QtQuick
        import QtQuick.Controls
        Window {
            width: 390; height: 844; visible: true
            Text { y: 40; width: parent.width; horizontalAlignment: Text.AlignHCenter
                   text: "Select your date of birth"; font.pixelSize: 26 }
            Row {
                anchors.bottom: parent.bottom; anchors.horizontalCenter: parent.horizontalCenter
                Tumbler { model: 31 }
                Tumbler { model: 12 }
                Tumbler { model: 200 }
            }
        })");
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &app,
        [] {
            std::printf("first-frame-epoch-ms %lld\n",
                        static_cast<long long>(QDateTime::currentMSecsSinceEpoch()));
            timespec cpu{};
            clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu);
            std::printf("first-frame-cpu-ms %.1f\n",
                        double(cpu.tv_sec) * 1000 + double(cpu.tv_nsec) / 1e6);
            std::fflush(stdout);
            if (qgetenv("TAVLO_STARTUP_TRACE") == "exit")
                std::_Exit(0);
            QTimer::singleShot(1000, &QCoreApplication::quit);
        },
        Qt::SingleShotConnection);
    const int status = app.exec();
    QFile proc(QStringLiteral("/proc/self/status"));
    if (proc.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : proc.readAll().split('\n')) {
            if (line.startsWith("VmHWM:"))
                std::printf("peak-rss-kb %s\n",
                            line.mid(6).trimmed().split(' ').value(0).constData());
        }
    }
    return status;
}
