// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QStringList>

// The installed program as a person's shell starts it: in Berlin, in
// `language`, with its settings under `configHome`, its data under `dataHome`
// (where given) and `bus` for its session bus (by default none, so that
// nothing reaches the machine's own services).
inline QProcessEnvironment tavloEnvironment(const QString &configHome, const QString &dataHome = {},
                                            const QString &bus = u"unix:path=/nonexistent"_qs,
                                            const QString &language = u"en_US.UTF-8"_qs)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"TZ"_qs, u"Europe/Berlin"_qs);
    env.insert(u"XDG_CONFIG_HOME"_qs, configHome);
    if (!dataHome.isEmpty())
        env.insert(u"XDG_DATA_HOME"_qs, dataHome);
    env.insert(u"DBUS_SESSION_BUS_ADDRESS"_qs, bus);
    for (const QString &name : {u"LANGUAGE"_qs, u"LC_ALL"_qs, u"LC_MESSAGES"_qs})
        env.remove(name);
    env.insert(u"LANG"_qs, language);
    return env;
}

// What a finished run printed; status -1 where it crashed.
struct TavloRun
{
    int status = -1;
    QByteArray out, err;
};

// Runs the program to its end; `wrapper` (setpriv and its options) runs it
// where given.
inline TavloRun runTavlo(const QProcessEnvironment &env, const QStringList &arguments,
                         const QStringList &wrapper = {})
{
    QProcess process;
    process.setProcessEnvironment(env);
    const QStringList command = wrapper + QStringList{QStringLiteral(TAVLO_EXECUTABLE)} + arguments;
    process.start(command.first(), command.mid(1));
    if (!process.waitForFinished(30000))
        qFatal("tavlo %s did not finish", qPrintable(arguments.join(u' ')));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}
