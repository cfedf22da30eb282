// SPDX-License-Identifier: MIT
#include "reminders/ReminderStore.h"

#include "settings/AtomicFileWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

// Long enough for another Tavlo to finish its change; the lock is held only
// for one read and one write.
constexpr int lockWaitMs = 10'000;

QJsonObject toJson(const PendingReminder &reminder)
{
    const NotificationRequest &r = reminder.request;
    const QDateTime fire = reminder.fire.toOffsetFromUtc(reminder.fire.offsetFromUtc());
    QJsonObject o{{u"identifier"_s, r.identifier},
                  {u"title"_s, r.title},
                  {u"body"_s, r.body},
                  {u"month"_s, r.trigger.month},
                  {u"day"_s, r.trigger.day},
                  {u"hour"_s, r.trigger.hour},
                  {u"minute"_s, r.trigger.minute},
                  {u"timeZone"_s, QString::fromUtf8(r.trigger.timeZone.id())},
                  {u"fire"_s, fire.toString(Qt::ISODate)}};
    if (!r.favoriteId.isEmpty())
        o.insert(u"favorite"_s, r.favoriteId);
    return o;
}

std::optional<PendingReminder> fromJson(const QJsonValue &value)
{
    const QJsonObject o = value.toObject();
    for (const QString &key : {u"identifier"_s, u"title"_s, u"body"_s, u"timeZone"_s, u"fire"_s}) {
        if (!o.value(key).isString())
            return std::nullopt;
    }
    for (const QString &key : {u"month"_s, u"day"_s, u"hour"_s, u"minute"_s}) {
        if (!o.value(key).isDouble())
            return std::nullopt;
    }
    PendingReminder reminder;
    NotificationRequest &r = reminder.request;
    r.identifier = o.value(u"identifier"_s).toString();
    r.title = o.value(u"title"_s).toString();
    r.body = o.value(u"body"_s).toString();
    // Absent in files of versions before it was kept.
    r.favoriteId = o.value(u"favorite"_s).toString();
    r.trigger.month = o.value(u"month"_s).toInt();
    r.trigger.day = o.value(u"day"_s).toInt();
    r.trigger.hour = o.value(u"hour"_s).toInt();
    r.trigger.minute = o.value(u"minute"_s).toInt();
    // A zone this system does not know (a TZ rule, say) reads as the local one.
    const QTimeZone zone(o.value(u"timeZone"_s).toString().toUtf8());
    if (zone.isValid())
        r.trigger.timeZone = zone;
    reminder.fire = QDateTime::fromString(o.value(u"fire"_s).toString(), Qt::ISODate);
    if (r.identifier.isEmpty() || !reminder.fire.isValid())
        return std::nullopt;
    return reminder;
}

} // namespace

ReminderStore::ReminderStore(QString filePath) : m_path(std::move(filePath)) {}

QString ReminderStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/tavlo/reminders.json"_s;
}

QString ReminderStore::runningLockPath() const
{
    return QFileInfo(m_path).absolutePath() + u"/running.lock"_s;
}

QList<PendingReminder> ReminderStore::pending() const
{
    QLockFile lock(m_path + u".lock"_s);
    if (!QFileInfo(m_path).exists())
        return {};
    lock.tryLock(lockWaitMs);
    return read();
}

std::optional<QString> ReminderStore::put(const PendingReminder &reminder)
{
    return modify([&](QList<PendingReminder> &reminders) {
        reminders.removeIf([&](const PendingReminder &r) {
            return r.request.identifier == reminder.request.identifier;
        });
        reminders.append(reminder);
    });
}

std::optional<PendingReminder>
ReminderStore::takeIf(const QString &identifier,
                      const std::function<bool(const PendingReminder &)> &take)
{
    std::optional<PendingReminder> taken;
    modify([&](QList<PendingReminder> &reminders) {
        for (qsizetype i = 0; i < reminders.size(); ++i) {
            if (reminders.at(i).request.identifier == identifier && take(reminders.at(i))) {
                taken = reminders.takeAt(i);
                return;
            }
        }
    });
    return taken;
}

QList<PendingReminder> ReminderStore::takeDue(const QDateTime &now)
{
    QList<PendingReminder> due;
    modify([&](QList<PendingReminder> &reminders) {
        for (qsizetype i = 0; i < reminders.size();) {
            if (reminders.at(i).fire <= now)
                due.append(reminders.takeAt(i));
            else
                ++i;
        }
    });
    return due;
}

std::optional<QString> ReminderStore::modify(const Change &change)
{
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath()))
        return u"cannot make the folder of %1"_s.arg(m_path);
    QLockFile lock(m_path + u".lock"_s);
    if (!lock.tryLock(lockWaitMs))
        return u"%1 is locked by another Tavlo"_s.arg(m_path);
    const QList<PendingReminder> before = read();
    QList<PendingReminder> after = before;
    change(after);
    if (after == before)
        return std::nullopt;
    return write(after);
}

QList<PendingReminder> ReminderStore::read() const
{
    QFile file(m_path);
    if (!file.exists())
        return {};
    QString problem;
    QList<PendingReminder> reminders;
    if (!file.open(QIODevice::ReadOnly)) {
        problem = file.errorString();
    } else {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
        file.close();
        const QJsonValue list = document.object().value(u"reminders"_s);
        if (error.error != QJsonParseError::NoError)
            problem = error.errorString();
        else if (!list.isArray())
            problem = u"no \"reminders\" list"_s;
        for (const QJsonValue &value : list.toArray()) {
            const std::optional<PendingReminder> reminder = fromJson(value);
            if (!reminder) {
                problem = u"an entry lacks a field or has one of the wrong kind"_s;
                break;
            }
            reminders.append(*reminder);
        }
    }
    if (problem.isEmpty())
        return reminders;

    // Kept as it was for the user to look at; the reminders start afresh.
    const QString kept = m_path + u".unreadable"_s;
    QFile::remove(kept);
    QFile::rename(m_path, kept);
    qWarning("tavlo: the reminders file %s cannot be read (%s); it is kept as %s and the "
             "pending reminders start empty",
             qPrintable(m_path), qPrintable(problem), qPrintable(kept));
    return {};
}

std::optional<QString> ReminderStore::write(const QList<PendingReminder> &reminders) const
{
    QJsonArray list;
    for (const PendingReminder &reminder : reminders)
        list.append(toJson(reminder));
    const WriteResult result = AtomicFileWriter().write(
        m_path, QJsonDocument(QJsonObject{{u"reminders"_s, list}}).toJson(QJsonDocument::Indented));
    if (!result)
        return result.message();
    return std::nullopt;
}
