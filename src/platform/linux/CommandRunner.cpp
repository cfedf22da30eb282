// SPDX-License-Identifier: MIT
#include "platform/linux/CommandRunner.h"

#include <QProcess>

void ProcessRunner::run(const QString &program, const QStringList &arguments, Handler done)
{
    auto *process = new QProcess(this);
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    // Exactly one of the two ends a run: finished, or a failure to start.
    QObject::connect(process, &QProcess::finished, this,
                     [process, done](int exitCode, QProcess::ExitStatus status) {
                         Result result;
                         result.started = true;
                         result.exitCode = status == QProcess::NormalExit ? exitCode : -1;
                         result.output = QString::fromLocal8Bit(process->readAllStandardOutput());
                         result.errorOutput =
                             QString::fromLocal8Bit(process->readAllStandardError()).trimmed();
                         process->deleteLater();
                         done(result);
                     });
    QObject::connect(process, &QProcess::errorOccurred, this,
                     [process, done](QProcess::ProcessError error) {
                         if (error != QProcess::FailedToStart)
                             return;
                         Result result;
                         result.errorOutput = process->errorString();
                         process->deleteLater();
                         done(result);
                     });
    process->start(program, arguments);
}

bool CommandRunner::startDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(program, arguments);
}
