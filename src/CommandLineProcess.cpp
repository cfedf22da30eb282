// SPDX-License-Identifier: MIT
#include "CommandLineProcess.h"

#include "cli/CommandLine.h"
#include "contacts/BirthdayCalendar.h"
#include "core/Clock.h"
#include "core/OneLine.h"
#include "platform/linux/EvolutionAddressBooks.h"
#include "platform/linux/LinuxReminders.h"
#include "platform/linux/SecretServiceVault.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QTextStream>
#include <optional>

namespace {

// "Tavlo process 1234 (stopped)", as far as it can be told.
QString describeProcess(qint64 pid)
{
    if (pid <= 0)
        return QStringLiteral("another Tavlo");
    QString text = QStringLiteral("Tavlo process %1").arg(pid);
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (stat.open(QIODevice::ReadOnly)) {
        // The state follows the command's name in parentheses.
        const QByteArray line = stat.readAll();
        const qsizetype close = line.lastIndexOf(')');
        if (close > 0 && close + 2 < line.size() &&
            (line.at(close + 2) == 'T' || line.at(close + 2) == 't'))
            text += QStringLiteral(" (stopped)");
    }
    return text;
}

} // namespace

int runCommandLineProcess()
{
    FileSettingsStore settings;
    SystemClock clock;
    QTextStream out(stdout);
    QTextStream err(stderr);
    std::optional<LinuxReminders> platform;
    CommandContext context{settings, QLocale::system().uiLanguages(), clock, out, err};
    // A change waits for one that another Tavlo is making, for as long as
    // that process lives; after a few seconds the person learns why.
    settings.setLockWaitNotice([&](qint64 holder) {
        err << "tavlo: waiting for " << describeProcess(holder) << " to finish changing "
            << oneLine(settings.fileName()) << " (Ctrl-C gives up, changing nothing)\n";
        err.flush();
    });
    context.notifications = [&]() -> NotificationCenter * {
        if (!platform)
            platform.emplace(clock);
        return &platform->center;
    };
    context.whenNotificationsIdle = [&platform](std::function<void()> done) {
        if (platform)
            platform->center.whenIdle(std::move(done));
        else
            done();
    };
    context.phoneContacts = EvolutionAddressBooks::readAll;
    std::optional<SecretServiceVault> vault;
    context.passwords = [&vault]() -> PasswordVault * {
        if (!vault)
            vault.emplace();
        return &*vault;
    };
    // A change made here updates the birthdays calendar as the app would.
    BirthdayCalendar calendar(settings, context.preferredLanguages, clock);
    context.favoritesChanged = [&](const QList<Favorite> &list) {
        if (const QString problem = calendar.update(list); !problem.isEmpty())
            err << "tavlo: " << problem << '\n';
    };
    return runCommandLine(QCoreApplication::arguments(), context);
}
