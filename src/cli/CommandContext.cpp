// SPDX-License-Identifier: MIT
#include "cli/CommandContext.h"

#include "cli/OutputTarget.h"
#include "core/OneLine.h"
#include "settings/AtomicFileWriter.h"
#include "settings/WriteResult.h"

int failCommand(CommandContext &context, const char *command, const QString &message)
{
    context.err << "tavlo " << command << ": " << oneLine(message) << '\n';
    context.err.flush();
    return ExitStatus::usage;
}

int finishChange(CommandContext &context, const WriteResult &result)
{
    if (result)
        return ExitStatus::ok;
    context.err << "tavlo: " << oneLine(result.message()) << '\n';
    context.err.flush();
    return ExitStatus::notSaved;
}

int writeOutputFile(CommandContext &context, const QString &path, const QByteArray &contents)
{
    if (path == u"-") {
        context.out << QString::fromUtf8(contents);
        context.out.flush();
        return ExitStatus::ok;
    }
    const OutputTarget target = OutputTarget::of(path);
    if (target.refused()) {
        context.err << "tavlo: " << oneLine(WriteResult::failed(path, target.refusal()).message())
                    << '\n';
        context.err.flush();
        return ExitStatus::notSaved;
    }
    // The person's own file: as their umask says, like any file they make.
    return finishChange(
        context,
        AtomicFileWriter(AtomicFileWriter::Access::FollowUmask).write(target.filePath(), contents));
}
