#include "LinuxNotificationCenter.h"

#include "core/Clock.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString objectPath = u"/org/freedesktop/Notifications"_s;
const QString interfaceName = u"org.freedesktop.Notifications"_s;
const QString appName = u"Tavlo"_s;

// The longest the running app sleeps between looks at the clock: a
// suspended machine does not count its sleep in timer intervals.
constexpr int longestWaitMs = 60'000;
// A timer may wake a moment before the reminder's second.
constexpr int earlyWakeSecs = 60;

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

QDBusMessage notifyMessage(const NotificationRequest &request, PresentationOptions options,
                           const QString &iconPath)
{
    QVariantMap hints;
    // Desktops group the reminders under the app and its notification settings.
    hints.insert(u"desktop-entry"_s, u"io.github.tavlo.Tavlo"_s);
    hints.insert(u"urgency"_s, QVariant::fromValue(uchar(1)));
    // A banner alone leaves nothing in the notification list.
    hints.insert(u"transient"_s, !options.testFlag(PresentationOption::List));
    hints.insert(u"suppress-sound"_s, !options.testFlag(PresentationOption::Sound));
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, objectPath, interfaceName, u"Notify"_s);
    message << appName << uint(0) << iconPath << request.title << request.body << QStringList()
            << hints << int(-1);
    return message;
}

bool shownToday(const PendingReminder &reminder, const QDateTime &now)
{
    return reminder.fire.toLocalTime().date() == now.toLocalTime().date();
}

// A reminder shown while no screen is there to ask: what its content says,
// a banner that stays in the list, without sound.
const PresentationOptions backgroundPresentation{PresentationOption::Banner,
                                                 PresentationOption::List};

} // namespace

LinuxNotificationCenter::LinuxNotificationCenter(ReminderStore &store, const Clock &clock,
                                                 Options options, QObject *parent)
    : QObject(parent), m_store(store), m_clock(clock), m_options(std::move(options))
{
    m_tick.setSingleShot(true);
    QObject::connect(&m_tick, &QTimer::timeout, this, &LinuxNotificationCenter::deliverDue);
}

LinuxNotificationCenter::~LinuxNotificationCenter() = default;

void LinuxNotificationCenter::probeService(std::function<void(bool answered)> handler)
{
    if (!m_options.bus.isConnected()) {
        QTimer::singleShot(0, this, [handler] { handler(false); });
        return;
    }
    const QDBusMessage question = QDBusMessage::createMethodCall(service, objectPath, interfaceName,
                                                                 u"GetServerInformation"_s);
    auto *watcher = new QDBusPendingCallWatcher(m_options.bus.asyncCall(question), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [handler](QDBusPendingCallWatcher *w) {
                         w->deleteLater();
                         handler(!w->isError());
                     });
}

void LinuxNotificationCenter::getAuthorizationStatus(StatusHandler handler)
{
    probeService([handler](bool answered) {
        handler(answered ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied);
    });
}

void LinuxNotificationCenter::requestAuthorization(AuthorizationOptions,
                                                   AuthorizationHandler handler)
{
    // There is nobody to ask: a notification service that answers is the
    // permission.
    probeService([handler](bool answered) { handler(answered, std::nullopt); });
}

void LinuxNotificationCenter::add(const NotificationRequest &request, AddHandler handler)
{
    const auto finish = [this, handler](std::optional<NotificationError> error) {
        QTimer::singleShot(0, this, [handler, error] {
            if (handler)
                handler(error);
        });
    };
    const std::optional<QDateTime> fire = request.trigger.nextFireAfter(m_clock.now());
    if (!fire) {
        finish(NotificationError{u"InvalidTrigger"_s,
                                 u"the trigger's month, day, hour and minute name no moment"_s});
        return;
    }
    if (const std::optional<QString> error = m_store.put({request, *fire})) {
        finish(NotificationError{u"StoreNotWritten"_s, *error});
        return;
    }
    scheduleTick();
    if (!m_options.timers) {
        finish(std::nullopt);
        return;
    }
    armTimer(request.identifier, *fire, handler);
}

void LinuxNotificationCenter::armTimer(const QString &identifier, const QDateTime &fire,
                                       AddHandler handler)
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
    for (const QString &variable : m_options.timerEnvironment)
        arguments.append(u"--setenv="_s + variable);
    arguments += {u"--"_s, m_options.program, u"deliver-reminder"_s, identifier};
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

void LinuxNotificationCenter::rearmLostTimers()
{
    const QDateTime now = m_clock.now();
    QList<PendingReminder> waiting;
    for (const PendingReminder &reminder : m_store.pending()) {
        if (reminder.fire > now)
            waiting.append(reminder);
    }
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
                         self->armTimer(waiting.at(i).request.identifier, waiting.at(i).fire, {});
                 }
             }});
}

void LinuxNotificationCenter::enqueue(Command command)
{
    m_commands.append(std::move(command));
    if (!m_commandRunning)
        runNextCommand();
}

void LinuxNotificationCenter::runNextCommand()
{
    if (m_commands.isEmpty()) {
        m_commandRunning = false;
        return;
    }
    m_commandRunning = true;
    Command command = m_commands.takeFirst();
    m_options.timers->run(
        command.program, command.arguments,
        [self = QPointer(this), done = command.done](const CommandRunner::Result &result) {
            if (!self)
                return;
            done(result);
            self->runNextCommand();
        });
}

void LinuxNotificationCenter::start()
{
    m_running = std::make_unique<QLockFile>(m_store.runningLockPath());
    QDir().mkpath(QFileInfo(m_store.runningLockPath()).absolutePath());
    m_running->tryLock(0);
    if (m_options.timers)
        rearmLostTimers();
    // After the first screen has loaded and become the delegate.
    m_tick.start(0);
}

void LinuxNotificationCenter::deliverDue()
{
    // Another Tavlo may have been running when this one started.
    if (m_running && !m_running->isLocked())
        m_running->tryLock(0);
    const QDateTime now = m_clock.now();
    for (const PendingReminder &reminder : m_store.takeDue(now)) {
        if (shownToday(reminder, now))
            present(reminder.request);
    }
    scheduleTick();
}

void LinuxNotificationCenter::scheduleTick()
{
    const QDateTime now = m_clock.now();
    std::optional<qint64> wait;
    for (const PendingReminder &reminder : m_store.pending()) {
        const qint64 until = std::max<qint64>(0, now.msecsTo(reminder.fire));
        wait = std::min(wait.value_or(until), until);
    }
    if (!wait) {
        m_tick.stop();
        return;
    }
    m_tick.start(int(std::min<qint64>(*wait, longestWaitMs)));
}

void LinuxNotificationCenter::present(const NotificationRequest &request)
{
    const PresentationOptions options =
        delegate() ? delegate()->willPresent(request) : backgroundPresentation;
    if (!options.testFlag(PresentationOption::Banner) &&
        !options.testFlag(PresentationOption::List))
        return;
    if (!m_options.bus.isConnected()) {
        qWarning("tavlo: the reminder %s cannot be shown: no session bus",
                 qPrintable(request.identifier));
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(
        m_options.bus.asyncCall(notifyMessage(request, options, m_options.iconPath)), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this,
                     [identifier = request.identifier](QDBusPendingCallWatcher *w) {
                         w->deleteLater();
                         if (w->isError()) {
                             qWarning("tavlo: the reminder %s could not be shown: %s",
                                      qPrintable(identifier), qPrintable(w->error().message()));
                         }
                     });
}

bool LinuxNotificationCenter::hasSystemdUserSession()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QFileInfo(u"/run/systemd/system"_s).isDir() && !runtime.isEmpty() &&
           QFileInfo::exists(runtime + u"/systemd/private"_s);
}

QString LinuxNotificationCenter::installIcon(const QString &folder)
{
    QFile source(u":/tavlo/notification/tavlo.svg"_s);
    if (!source.open(QIODevice::ReadOnly))
        return {};
    const QByteArray picture = source.readAll();
    const QString path = QDir(folder).absoluteFilePath(u"tavlo.svg"_s);
    QFile existing(path);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == picture)
        return path;
    QDir().mkpath(folder);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(picture) != picture.size() || !file.commit())
        return {};
    return path;
}

int LinuxNotificationCenter::deliverFromTimer(const QString &identifier, ReminderStore &store,
                                              const Clock &clock, QDBusConnection bus,
                                              const QString &iconPath)
{
    // A running Tavlo shows it in the foreground manner when its time comes.
    QLockFile running(store.runningLockPath());
    if (QFileInfo::exists(store.runningLockPath()) && !running.tryLock(0))
        return 0;
    running.unlock();

    const QDateTime now = clock.now();
    const std::optional<PendingReminder> taken =
        store.takeIf(identifier, [&](const PendingReminder &reminder) {
            return reminder.fire <= now.addSecs(earlyWakeSecs);
        });
    // Not pending (shown already, or replaced by a later one), or missed on
    // an earlier day.
    if (!taken || !shownToday(*taken, now))
        return 0;

    const QDBusMessage reply = bus.call(
        notifyMessage(taken->request, backgroundPresentation, iconPath), QDBus::Block, 10'000);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        // Back in the list, for the app to show when it starts today.
        store.put(*taken);
        std::fprintf(stderr, "tavlo deliver-reminder: %s could not be shown: %s\n",
                     qPrintable(identifier), qPrintable(reply.errorMessage()));
        return 1;
    }
    return 0;
}
