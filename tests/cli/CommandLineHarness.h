// SPDX-License-Identifier: MIT
#pragma once

#include "LocalTime.h"
#include "TimeZoneScope.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "settings/MemorySettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

struct CommandRun
{
    int status = -1;
    QString out, err;
};

// The command line in process, in Berlin, with its settings in memory and
// a folder for the files it reads and writes.
class CommandLineHarness
{
public:
    TimeZoneScope zone{"Europe/Berlin"}; // before the clock's local time
    MemorySettingsStore settings;
    FixedClock clock;
    QStringList preferred{QStringLiteral("en-US")};
    std::function<NotificationCenter *()> notifications;
    PhoneContactsReader phoneContacts;
    QTemporaryDir files;

    explicit CommandLineHarness(const QDateTime &now) : clock(now) {}

    CommandRun run(const QStringList &arguments)
    {
        CommandRun run;
        QTextStream out(&run.out), err(&run.err);
        CommandContext context{settings, preferred, clock, out, err};
        context.notifications = notifications;
        context.phoneContacts = phoneContacts;
        run.status = runCommandLine(QStringList{QStringLiteral("tavlo")} + arguments, context);
        return run;
    }

    // A file of the folder, written with `contents`.
    QString file(const QString &name, const QByteArray &contents)
    {
        const QString path = files.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly) || out.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }
};
