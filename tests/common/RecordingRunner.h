// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/CommandRunner.h"

#include <QList>
#include <QStringList>

// Records the commands; each ends only when the test says so.
class RecordingRunner final : public CommandRunner
{
public:
    QList<QStringList> commands; // program first
    QList<QStringList> detached;
    QList<Handler> waiting;
    void run(const QString &program, const QStringList &arguments, Handler done) override
    {
        commands.append(QStringList{program} + arguments);
        waiting.append(std::move(done));
    }
    bool startDetached(const QString &program, const QStringList &arguments) override
    {
        detached.append(QStringList{program} + arguments);
        return true;
    }
    void finishAll()
    {
        while (!waiting.isEmpty())
            waiting.takeFirst()({true, 0, {}, {}});
    }
};
