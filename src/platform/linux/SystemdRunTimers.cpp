#include "SystemdRunTimers.h"

#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace {

// A systemd unit name keeps letters, digits, ":", "_" and "."; anything else
// is written as \xhh, as systemd-escape does.
QString unitName(const QString &identifier)
{
    QString name = u"tavlo-"_s;
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

// A moment as systemd's OnCalendar reads it, in UTC so that no time zone
// table of the timer's side is needed.
QString calendarText(const QDateTime &moment)
{
    return moment.toUTC().toString(u"yyyy-MM-dd HH:mm:ss"_s) + u" UTC"_s;
}

} // namespace

SystemdRunTimers::SystemdRunTimers(CommandRunner &runner, QString program, QStringList environment,
                                   QObject *parent)
    : QObject(parent), m_runner(runner), m_program(std::move(program)),
      m_environment(std::move(environment))
{}

void SystemdRunTimers::arm(const QString &identifier, const QDateTime &fire,
                           NotificationCenter::AddHandler handler)
{
    const QString unit = unitName(identifier);
    // A timer of the same name is replaced: stopped (it may be gone already)
    // and made anew.
    enqueue({u"systemctl"_s,
             {u"--user"_s, u"stop"_s, unit + u".timer"_s, unit + u".service"_s},
             [](const CommandRunner::Result &) {}});
    QStringList arguments{u"--user"_s,
                          u"--unit="_s + unit,
                          u"--description=Tavlo birthday reminder "_s + identifier,
                          u"--collect"_s,
                          u"--on-calendar="_s + calendarText(fire),
                          u"--timer-property=AccuracySec=1s"_s};
    for (const QString &variable : m_environment)
        arguments.append(u"--setenv="_s + variable);
    arguments += {u"--"_s, m_program, u"deliver-reminder"_s, identifier};
    enqueue({u"systemd-run"_s, arguments, [handler](const CommandRunner::Result &result) {
                 if (!handler)
                     return;
                 if (!result.started) {
                     handler(NotificationError{u"TimerNotStarted"_s, result.errorOutput});
                 } else if (result.exitCode != 0) {
                     handler(NotificationError{
                         u"systemd-run exited with status %1"_s.arg(result.exitCode),
                         result.errorOutput});
                 } else {
                     handler(std::nullopt);
                 }
             }});
}

void SystemdRunTimers::rearmLost(const QList<PendingReminder> &waiting)
{
    if (waiting.isEmpty())
        return;
    QStringList arguments{u"--user"_s, u"is-active"_s};
    for (const PendingReminder &reminder : waiting)
        arguments.append(unitName(reminder.request.identifier) + u".timer"_s);
    // One answer line per timer, in order; transient timers do not outlive
    // the session, so after a restart they are all gone.
    enqueue({u"systemctl"_s, arguments,
             [self = QPointer(this), waiting](const CommandRunner::Result &result) {
                 if (!self || !result.started)
                     return;
                 const QStringList states = result.output.split(u'\n');
                 for (qsizetype i = 0; i < waiting.size(); ++i) {
                     if (states.value(i).trimmed() != u"active")
                         self->arm(waiting.at(i).request.identifier, waiting.at(i).fire, {});
                 }
             }});
}

void SystemdRunTimers::enqueue(Command command)
{
    m_commands.append(std::move(command));
    if (!m_commandRunning)
        runNextCommand();
}

void SystemdRunTimers::runNextCommand()
{
    if (m_commands.isEmpty()) {
        m_commandRunning = false;
        return;
    }
    m_commandRunning = true;
    Command command = m_commands.takeFirst();
    m_runner.run(command.program, command.arguments,
                 [self = QPointer(this), done = command.done](const CommandRunner::Result &result) {
                     if (!self)
                         return;
                     done(result);
                     self->runNextCommand();
                 });
}
