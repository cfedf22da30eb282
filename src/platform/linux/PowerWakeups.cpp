// SPDX-License-Identifier: MIT
#include "platform/linux/PowerWakeups.h"

#include "core/Clock.h"
#include "platform/linux/PlatformFile.h"

#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString interfaceName = u"org.kde.Solid.PowerManagement"_s;

} // namespace

PowerWakeups::PowerWakeups(QDBusConnection bus, const Clock &clock, QString statePath,
                           QObject *parent)
    : QObject(parent), m_bus(std::move(bus)), m_clock(clock), m_statePath(std::move(statePath))
{
    if (!m_bus.isConnected())
        return;
    // The service restarts with the session's power management, and forgets.
    m_watcher =
        new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &PowerWakeups::ownerChanged);
}

PowerWakeups::~PowerWakeups() = default;

QString PowerWakeups::statePathBeside(const QString &remindersPath)
{
    return QFileInfo(remindersPath).absolutePath() + u"/wakeups.json"_s;
}

std::optional<QString> PowerWakeups::apply(const QList<PendingReminder> &waiting)
{
    const qint64 now = m_clock.now().toSecsSinceEpoch();
    m_wanted.clear();
    for (const PendingReminder &reminder : waiting) {
        const qint64 moment = reminder.fire.toSecsSinceEpoch() - secondsEarly;
        if (moment > now)
            m_wanted.append({reminder.request.identifier, moment});
    }
    if (m_syncing)
        m_again = true;
    else
        sync();
    return std::nullopt;
}

void PowerWakeups::whenIdle(std::function<void()> done)
{
    if (!m_syncing)
        done();
    else
        m_whenIdle.append(std::move(done));
}

bool PowerWakeups::answerCallbacks(std::function<void()> woken)
{
    m_woken = std::move(woken);
    return m_bus.isConnected() &&
           m_bus.registerObject(callbackPath, this, QDBusConnection::ExportScriptableSlots) &&
           m_bus.registerService(callbackService);
}

void PowerWakeups::wakeupCallback(int cookie)
{
    // Only a wake-up of ours, from the service that handed it out; the
    // service has taken it off its list.
    const QString caller = calledFromDBus() ? message().service() : QString();
    const auto ours = std::find_if(m_registered.cbegin(), m_registered.cend(),
                                   [&](const Registered &r) { return int(r.cookie) == cookie; });
    if (ours == m_registered.cend() || caller != m_owner)
        return;
    m_registered.erase(ours);
    save();
    if (m_woken)
        m_woken();
}

void PowerWakeups::ownerChanged(const QString &, const QString &, const QString &)
{
    if (m_syncing)
        m_again = true;
    else
        sync();
}

void PowerWakeups::load()
{
    m_owner.clear();
    m_registered.clear();
    const std::optional<QByteArray> bytes = PlatformFile::read(m_statePath);
    if (!bytes)
        return;
    // A file that cannot be read holds nothing usable: its cookies are lost,
    // and the wake-ups are asked for again.
    const QJsonObject state = QJsonDocument::fromJson(*bytes).object();
    m_owner = state.value(u"owner"_s).toString();
    for (const QJsonValue &value : state.value(u"wakeups"_s).toArray()) {
        const QJsonObject o = value.toObject();
        m_registered.append({o.value(u"identifier"_s).toString(),
                             qint64(o.value(u"moment"_s).toDouble()),
                             uint(o.value(u"cookie"_s).toDouble())});
    }
}

void PowerWakeups::save()
{
    if (m_registered.isEmpty()) {
        if (QFileInfo::exists(m_statePath) && !QFile::remove(m_statePath))
            qWarning("tavlo: could not remove %s", qPrintable(m_statePath));
        return;
    }
    QJsonArray list;
    for (const Registered &r : std::as_const(m_registered)) {
        list.append(QJsonObject{{u"identifier"_s, r.identifier},
                                {u"moment"_s, double(r.moment)},
                                {u"cookie"_s, double(r.cookie)}});
    }
    bool changed = false;
    const QByteArray bytes =
        QJsonDocument(QJsonObject{{u"owner"_s, m_owner}, {u"wakeups"_s, list}}).toJson();
    if (const std::optional<QString> error = PlatformFile::update(m_statePath, bytes, &changed))
        qWarning("tavlo: %s", qPrintable(*error));
}

void PowerWakeups::sync()
{
    m_syncing = true;
    m_again = false;
    // Read afresh: another Tavlo (the command line, the login entry) may have
    // asked for wake-ups since.
    load();
    const QString owner =
        m_bus.isConnected() ? m_bus.interface()->serviceOwner(service).value() : QString();
    if (owner != m_owner) {
        // A new service (or none) knows nothing of the old cookies.
        m_registered.clear();
        m_owner = owner;
    }
    if (!m_loginEntryPath.isEmpty()) {
        bool changed = false;
        if (m_wanted.isEmpty()) {
            QFile::remove(m_loginEntryPath);
        } else if (!owner.isEmpty()) {
            if (const auto error = PlatformFile::update(m_loginEntryPath, m_loginEntry, &changed))
                qWarning("tavlo: %s", qPrintable(*error));
        }
    }
    if (owner.isEmpty()) {
        save();
        finishSync();
        return;
    }

    const auto same = [](const auto &a, const auto &b) {
        return a.identifier == b.identifier && a.moment == b.moment;
    };
    for (qsizetype i = 0; i < m_registered.size();) {
        const Registered &r = m_registered.at(i);
        if (std::any_of(m_wanted.cbegin(), m_wanted.cend(),
                        [&](const Wanted &w) { return same(w, r); })) {
            ++i;
            continue;
        }
        QDBusMessage clear =
            QDBusMessage::createMethodCall(service, path, interfaceName, u"clearWakeup"_s);
        clear << int(r.cookie);
        m_bus.asyncCall(clear);
        m_registered.removeAt(i);
    }
    save();

    m_missing.clear();
    for (const Wanted &w : std::as_const(m_wanted)) {
        if (std::none_of(m_registered.cbegin(), m_registered.cend(),
                         [&](const Registered &r) { return same(w, r); }))
            m_missing.append(w);
    }
    askNext();
}

// One question at a time, so that the cookies come back in order and a new
// plan or a new owner can cut the round short.
void PowerWakeups::askNext()
{
    if (m_missing.isEmpty() || m_again) {
        finishSync();
        return;
    }
    const Wanted wanted = m_missing.takeFirst();
    QDBusMessage ask =
        QDBusMessage::createMethodCall(service, path, interfaceName, u"scheduleWakeup"_s);
    ask << callbackService << QVariant::fromValue(QDBusObjectPath(callbackPath))
        << quint64(wanted.moment);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(ask), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, wanted, owner = m_owner](QDBusPendingCallWatcher *w) {
                w->deleteLater();
                const QDBusPendingReply<uint> reply = *w;
                if (reply.isError()) {
                    qWarning("tavlo: the power management service would not wake the phone "
                             "for %s: %s",
                             qPrintable(wanted.identifier), qPrintable(reply.error().message()));
                } else if (owner == m_owner) {
                    m_registered.append({wanted.identifier, wanted.moment, reply.value()});
                    save();
                }
                askNext();
            });
}

void PowerWakeups::finishSync()
{
    if (m_again) {
        sync();
        return;
    }
    m_syncing = false;
    for (const auto &done : std::exchange(m_whenIdle, {}))
        done();
}
