// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

// Runs an external program with its arguments as a list, never through a
// shell, and reports how it ended. Tests put a recording runner in its place.
class CommandRunner
{
public:
    struct Result
    {
        // False when the program could not be started at all.
        bool started = false;
        int exitCode = -1;
        QString output;
        QString errorOutput;
    };
    using Handler = std::function<void(const Result &)>;

    virtual ~CommandRunner() = default;
    // `done` is called later, on the caller's thread, once the program ended.
    virtual void run(const QString &program, const QStringList &arguments, Handler done) = 0;
    // Starts a program that lives on by itself; false when it could not start.
    virtual bool startDetached(const QString &program, const QStringList &arguments);
};

// The real runner: a QProcess per command, waited for by the event loop.
class ProcessRunner final : public QObject, public CommandRunner
{
public:
    using QObject::QObject;
    void run(const QString &program, const QStringList &arguments, Handler done) override;
};
