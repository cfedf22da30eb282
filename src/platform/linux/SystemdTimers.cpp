// SPDX-License-Identifier: MIT
#include "platform/linux/SystemdTimers.h"

#include "platform/linux/PlatformFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString wantsFolder = u"timers.target.wants"_s;
const QString prefix = u"tavlo-"_s;

// A moment as systemd's OnCalendar reads it, in UTC so that no time zone
// table of the timer's side is needed.
QString calendarText(const QDateTime &moment)
{
    return moment.toUTC().toString(u"yyyy-MM-dd HH:mm:ss"_s) + u" UTC"_s;
}

// One word of a unit file's command line or assignment, in double quotes:
// backslashes and quotes escaped, "%" (specifiers) doubled, and in a
// command's arguments "$" (variables) doubled too; the program's own name
// is never expanded. Control characters (a folder's name may hold a line
// break or a carriage return) are written as C escapes, which systemd
// decodes inside quotes, so the word stays on its line.
QString quoted(const QString &word, bool command)
{
    QString result = u"\""_s;
    for (const QChar c : word) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'"')
            result += u'\\' + QString(c);
        else if (u == u'%')
            result += u"%%"_s;
        else if (u == u'$' && command)
            result += u"$$"_s;
        else if (u == u'\n')
            result += u"\\n"_s;
        else if (u == u'\r')
            result += u"\\r"_s;
        else if (u == u'\t')
            result += u"\\t"_s;
        else if (u < 0x20 || u == 0x7f)
            result += u"\\x%1"_s.arg(uint(u), 2, 16, QChar(u'0'));
        else
            result += c;
    }
    return result + u'"';
}

} // namespace

SystemdTimers::SystemdTimers(QString unitFolder, QString program, QStringList environment,
                             CommandRunner *manager, QObject *parent)
    : QObject(parent), m_folder(std::move(unitFolder)), m_program(std::move(program)),
      m_environment(std::move(environment)), m_manager(manager)
{}

QString SystemdTimers::defaultUnitFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/systemd/user"_s;
}

QString SystemdTimers::unitName(const QString &identifier)
{
    QString name = prefix;
    for (const char byte : identifier.toUtf8()) {
        const auto c = static_cast<unsigned char>(byte);
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
            c == ':' || c == '_' || c == '.')
            name += QChar(char16_t(c));
        else
            name += u"\\x%1"_s.arg(uint(c), 2, 16, QChar(u'0'));
    }
    return name;
}

bool SystemdTimers::wakeSystemAllowed(int systemdVersion)
{
    return systemdVersion >= 254;
}

int SystemdTimers::versionFrom(const QByteArray &versionOutput)
{
    static const QRegularExpression first(u"^systemd (\\d+)\\b"_s);
    const QRegularExpressionMatch match = first.match(QString::fromUtf8(versionOutput));
    return match.hasMatch() ? match.captured(1).toInt() : 0;
}

int SystemdTimers::installedVersion()
{
    QProcess systemctl;
    systemctl.start(u"systemctl"_s, {u"--version"_s});
    if (!systemctl.waitForFinished(5000) || systemctl.exitCode() != 0)
        return 0;
    return versionFrom(systemctl.readAllStandardOutput());
}

QByteArray SystemdTimers::timerUnit(const PendingReminder &reminder) const
{
    return (u"[Unit]\n"
            "Description=Tavlo birthday reminder\n"
            "\n"
            "[Timer]\n"
            "OnCalendar="_s +
            calendarText(reminder.fire) +
            u"\n"
            "Persistent=true\n"
            "AccuracySec=1s\n"_s +
            (m_wakeSystem ? u"WakeSystem=true\n"_s : QString()) +
            u"\n"
            "[Install]\n"
            "WantedBy=timers.target\n"_s)
        .toUtf8();
}

QByteArray SystemdTimers::serviceUnit(const PendingReminder &reminder) const
{
    QString text = u"[Unit]\n"
                   "Description=Tavlo birthday reminder\n"
                   "CollectMode=inactive-or-failed\n"
                   "\n"
                   "[Service]\n"
                   "Type=exec\n"
                   "ExecStart="_s +
                   quoted(m_program, false) + u" deliver-reminder "_s +
                   quoted(reminder.request.identifier, true) + u'\n';
    for (const QString &variable : m_environment)
        text += u"Environment="_s + quoted(variable, false) + u'\n';
    return text.toUtf8();
}

std::optional<QString> SystemdTimers::apply(const QList<PendingReminder> &waiting)
{
    const QDir folder(m_folder);
    QStringList changedTimers;
    QSet<QString> wanted;
    std::optional<QString> problem;
    for (const PendingReminder &reminder : waiting) {
        const QString unit = unitName(reminder.request.identifier);
        const QString timer = unit + u".timer"_s;
        wanted << timer << unit + u".service"_s;
        bool timerChanged = false;
        bool serviceChanged = false;
        if (auto error = PlatformFile::update(folder.filePath(unit + u".service"_s),
                                              serviceUnit(reminder), &serviceChanged))
            problem = problem.value_or(*error);
        if (auto error =
                PlatformFile::update(folder.filePath(timer), timerUnit(reminder), &timerChanged))
            problem = problem.value_or(*error);
        // Enabled as `systemctl enable` does it, by a link.
        const QString link = folder.filePath(wantsFolder + u'/' + timer);
        if (QFileInfo(link).symLinkTarget() != folder.absoluteFilePath(timer)) {
            QDir().mkpath(folder.filePath(wantsFolder));
            QFile::remove(link);
            if (!QFile::link(folder.absoluteFilePath(timer), link))
                problem = problem.value_or(u"could not save %1"_s.arg(link));
            timerChanged = true;
        }
        if (timerChanged || serviceChanged)
            changedTimers.append(timer);
    }

    // Units of reminders no longer pending go, with their links.
    QStringList removedTimers;
    const QStringList ours =
        folder.entryList({prefix + u"*.timer"_s, prefix + u"*.service"_s}, QDir::Files);
    for (const QString &file : ours) {
        if (wanted.contains(file))
            continue;
        QFile::remove(folder.filePath(file));
        if (file.endsWith(u".timer"_s)) {
            QFile::remove(folder.filePath(wantsFolder + u'/' + file));
            removedTimers.append(file);
        }
    }

    if ((changedTimers.isEmpty() && removedTimers.isEmpty()) || !m_manager)
        return problem;
    if (!removedTimers.isEmpty())
        enqueue(QStringList{u"stop"_s} + removedTimers);
    enqueue({u"daemon-reload"_s});
    // Restarting a timer makes it read its moment afresh.
    if (!changedTimers.isEmpty())
        enqueue(QStringList{u"restart"_s} + changedTimers);
    return problem;
}

void SystemdTimers::whenIdle(std::function<void()> done)
{
    if (!m_commandRunning)
        done();
    else
        m_whenIdle.append(std::move(done));
}

void SystemdTimers::enqueue(QStringList arguments)
{
    m_commands.append(QStringList{u"--user"_s} + arguments);
    if (!m_commandRunning)
        runNextCommand();
}

void SystemdTimers::runNextCommand()
{
    if (m_commands.isEmpty()) {
        m_commandRunning = false;
        for (const auto &done : std::exchange(m_whenIdle, {}))
            done();
        return;
    }
    m_commandRunning = true;
    const QStringList arguments = m_commands.takeFirst();
    m_manager->run(u"systemctl"_s, arguments,
                   [self = QPointer(this), arguments](const CommandRunner::Result &result) {
                       if (!self)
                           return;
                       if (!result.started || result.exitCode != 0) {
                           qWarning("tavlo: systemctl %s failed: %s",
                                    qPrintable(arguments.join(u' ')),
                                    qPrintable(result.errorOutput));
                       }
                       self->runNextCommand();
                   });
}
