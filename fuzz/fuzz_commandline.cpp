// SPDX-License-Identifier: MIT
#include "FuzzCheck.h"
#include "cli/CommandLine.h"
#include "core/Clock.h"
#include "core/DebugLog.h"
#include "settings/MemorySettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QTextStream>
#include <cstdint>

// The command line's argument and date parsing: the input is the argument
// list, the arguments separated by NUL (so that one may hold a line break);
// the first one picks the command. It runs against settings in memory that
// hold a few good favorites, and a fixed clock, so none of the fatal paths
// (a stored favorite that does not read) is reachable.
//
// Beyond not crashing, what the command line promises: status 0, or status 2
// with one line on standard error and nothing on standard output; and
// nothing changed in the settings on status 2.

namespace {

const QStringList commands[] = {
    {QStringLiteral("report")},
    {QStringLiteral("favorites"), QStringLiteral("list")},
    {QStringLiteral("reminders")},
    {QStringLiteral("favorites"), QStringLiteral("add")},
    {QStringLiteral("favorites"), QStringLiteral("remove")},
    {QStringLiteral("favorites")},
    {},
};

const QList<QStringList> goodFavorites = {
    {QStringLiteral("Anna"), QStringLiteral("12 3 1985")},
    {QStringLiteral("Bob"), QStringLiteral("29 2 2000")},
    {QStringLiteral(" "), QStringLiteral("23 11 1900")},
    {QStringLiteral("Ольга"), QStringLiteral("1 1 2026")},
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    useBerlinTime();
    DebugLog::setSink([](const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const uchar selector = data[0];
    const QByteArray rest(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    QStringList arguments{QStringLiteral("tavlo")};
    arguments += commands[selector % std::size(commands)];
    if (!rest.isEmpty()) {
        for (const QByteArray &argument : rest.split('\0'))
            arguments.append(QString::fromUtf8(argument));
    }

    MemorySettingsStore settings;
    settings.set(SettingsKeys::favorites, goodFavorites);
    settings.set(SettingsKeys::preferredLanguage, (selector / 8) % 4);
    settings.set(SettingsKeys::moreDetails, (selector & 0x20) != 0);
    const qsizetype writesBefore = settings.writeCount();
    FixedClock clock(QDateTime(QDate(2026, 11, 22), QTime(12, 0)));
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    CommandContext context{settings, {QStringLiteral("de-DE")}, clock, outStream, errStream};

    const int status = runCommandLine(arguments, context);
    outStream.flush();
    errStream.flush();
    FUZZ_CHECK(status == ExitStatus::ok || status == ExitStatus::usage);
    if (status == ExitStatus::usage) {
        FUZZ_CHECK(out.isEmpty());
        FUZZ_CHECK(err.count(u'\n') == 1 && err.endsWith(u'\n'));
        FUZZ_CHECK(settings.writeCount() == writesBefore);
    } else {
        FUZZ_CHECK(err.isEmpty());
    }
    return 0;
}
