// SPDX-License-Identifier: MIT
#include "contacts/BirthdayCalendar.h"

#include "contacts/BirthdayExport.h"
#include "contacts/SavedFile.h"
#include "core/Clock.h"
#include "settings/SettingsStore.h"
#include "texts/Language.h"

#include <QFile>
#include <QMetaObject>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::Literals::StringLiterals;

BirthdayCalendar::Paths BirthdayCalendar::Paths::standard()
{
    return {QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                u"/tavlo/birthdays.ics"_s,
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                u"/evolution/sources/tavlo-birthdays.source"_s};
}

BirthdayCalendar::BirthdayCalendar(SettingsStore &settings, QStringList preferredLanguages,
                                   const Clock &clock, Paths paths)
    : m_settings(settings), m_preferredLanguages(std::move(preferredLanguages)), m_clock(clock),
      m_paths(std::move(paths))
{}

BirthdayCalendar::~BirthdayCalendar()
{
    if (!m_thread.joinable())
        return;
    waitForWrites();
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void BirthdayCalendar::writeInBackground(std::function<void(const QString &)> problems)
{
    if (m_home)
        return;
    m_tell = std::move(problems);
    m_home = std::make_unique<QObject>();
}

void BirthdayCalendar::waitForWrites()
{
    {
        std::unique_lock lock(m_mutex);
        m_idle.wait(lock, [this] { return !m_pending && !m_writing; });
    }
    tellProblems();
}

void BirthdayCalendar::tellProblems()
{
    QStringList problems;
    {
        const std::lock_guard lock(m_mutex);
        problems.swap(m_problems);
    }
    for (const QString &problem : std::as_const(problems)) {
        if (m_tell)
            m_tell(problem);
    }
}

void BirthdayCalendar::runWriter()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || m_pending; });
        if (!m_pending)
            return;
        const Contents contents = std::move(*m_pending);
        m_pending.reset();
        m_writing = true;
        lock.unlock();
        const QString problem = publish(contents);
        lock.lock();
        m_writing = false;
        if (!problem.isEmpty()) {
            m_problems.append(problem);
            QMetaObject::invokeMethod(
                m_home.get(), [this] { tellProblems(); }, Qt::QueuedConnection);
        }
        if (!m_pending)
            m_idle.notify_all();
    }
}

bool BirthdayCalendar::enabled() const
{
    return m_settings.value(SettingsKeys::birthdaysInCalendar);
}

QByteArray BirthdayCalendar::sourceText(const QString &calendarFile, const QString &displayName)
{
    // Key-file values: a line break would end the value.
    QString name = displayName;
    name.replace(u'\n', u' ');
    return (u"[Data Source]\n"
            u"DisplayName=%1\n"
            u"Enabled=true\n"
            u"Parent=local-stub\n"
            u"\n"
            u"[Calendar]\n"
            u"BackendName=local\n"
            u"Color=#e0457b\n"
            u"Selected=true\n"
            u"\n"
            u"[Local Backend]\n"
            u"CustomFile=%2\n"
            u"Writable=false\n"_s)
        .arg(name, QUrl::fromLocalFile(calendarFile).toString(QUrl::FullyEncoded))
        .toUtf8();
}

BirthdayCalendar::Contents BirthdayCalendar::contents(const QList<Favorite> &favorites) const
{
    return {favorites,
            decideLanguage(m_preferredLanguages, m_settings.value(SettingsKeys::preferredLanguage))
                .language,
            m_clock.now()};
}

QString BirthdayCalendar::publish(const Contents &contents) const
{
    UiStrings strings;
    strings.apply(contents.language);
    const QByteArray calendar =
        BirthdayExport::calendar(contents.favorites, strings, contents.stamp).text;
    if (QString problem = saveWholeFile(m_paths.calendarFile, calendar); !problem.isEmpty())
        return problem;
    const QByteArray source =
        sourceText(m_paths.calendarFile, u"Tavlo – "_s + strings[UiText::Favorites]);
    // Registered once: evolution-data-server watches the folder, and a
    // source rewritten for nothing would make it reload.
    QFile existing(m_paths.sourceFile);
    if (existing.open(QIODevice::ReadOnly) && existing.readAll() == source)
        return {};
    return saveWholeFile(m_paths.sourceFile, source);
}

QString BirthdayCalendar::setEnabled(bool on)
{
    // A calendar still on its way must not land after the switch.
    waitForWrites();
    m_settings.set(SettingsKeys::birthdaysInCalendar, on);
    if (on) {
        QList<Favorite> favorites;
        for (const QStringList &row :
             m_settings.value(SettingsKeys::favorites).value_or(QList<QStringList>())) {
            if (row.size() >= 2)
                favorites.append({row.at(0), row.at(1), row.value(2)});
        }
        return publish(contents(favorites));
    }
    QString problem;
    for (const QString &path : {m_paths.sourceFile, m_paths.calendarFile}) {
        QFile file(path);
        if (file.exists() && !file.remove() && problem.isEmpty())
            problem = u"could not remove %1: %2"_s.arg(path, file.errorString());
    }
    return problem;
}

QString BirthdayCalendar::update(const QList<Favorite> &favorites)
{
    if (!enabled())
        return {};
    if (!m_home)
        return publish(contents(favorites));
    {
        const std::lock_guard lock(m_mutex);
        m_pending = contents(favorites);
    }
    // Started by the first write, not at the app's start, which has
    // enough to do.
    if (!m_thread.joinable())
        m_thread = std::thread([this] { runWriter(); });
    m_wake.notify_one();
    return {};
}
