// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"
#include "texts/Language.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

class Clock;
class SettingsStore;

// "Show birthdays in the calendar": while it is on, the favorites' birthdays
// are kept in an iCalendar file, rewritten after every change of the
// favorites, and that file is registered with evolution-data-server as a
// local calendar (a .source file), so GNOME Calendar on Phosh shows it.
// Turning it off removes both.
//
// The app writes the calendar in the background (writeInBackground()): with
// 10,000 favorites making and writing it takes longer than a frame. A change
// hands the list over and returns; a thread of the calendar's own writes it
// with the same checked write, the newest list when several came meanwhile.
class BirthdayCalendar
{
public:
    struct Paths
    {
        // $XDG_DATA_HOME/tavlo/birthdays.ics
        QString calendarFile;
        // $XDG_CONFIG_HOME/evolution/sources/tavlo-birthdays.source
        QString sourceFile;

        static Paths standard();
    };

    BirthdayCalendar(SettingsStore &settings, QStringList preferredLanguages, const Clock &clock,
                     Paths paths = Paths::standard());
    ~BirthdayCalendar();
    BirthdayCalendar(const BirthdayCalendar &) = delete;
    BirthdayCalendar &operator=(const BirthdayCalendar &) = delete;

    bool enabled() const;
    // Stores the switch; on: writes the calendar of the stored favorites and
    // registers it; off: removes both. Returns the empty text, or what could
    // not be saved.
    QString setEnabled(bool on);
    // After a change of the favorites: rewrites the calendar when the switch
    // is on (and registers it again if its source went missing). In the
    // background it returns the empty text at once.
    QString update(const QList<Favorite> &favorites);

    // From now on update() hands the writing to the calendar's own thread;
    // what could not be saved reaches `problems` on this thread's event loop.
    void writeInBackground(std::function<void(const QString &)> problems);
    // Waits until the calendar handed over is written or has failed, and
    // tells the problems not yet told. The app calls it before it quits;
    // switching and the destructor do too.
    void waitForWrites();

    const Paths &paths() const { return m_paths; }

    // The .source text for evolution-data-server: a local calendar backed by
    // `calendarFile`, named `displayName`.
    static QByteArray sourceText(const QString &calendarFile, const QString &displayName);

private:
    // What a calendar is made of, taken on the thread that owns the store.
    struct Contents
    {
        QList<Favorite> favorites;
        Language language = Language::English;
        QDateTime stamp;
    };
    Contents contents(const QList<Favorite> &favorites) const;
    // Makes and saves the calendar, and registers it; on any thread.
    QString publish(const Contents &contents) const;
    void runWriter();
    void tellProblems();

    SettingsStore &m_settings;
    QStringList m_preferredLanguages;
    const Clock &m_clock;
    Paths m_paths;

    // What the writer thread shares, under m_mutex.
    std::mutex m_mutex;
    std::optional<Contents> m_pending;
    bool m_writing = false;
    bool m_stopping = false;
    QStringList m_problems;
    std::condition_variable m_wake;
    std::condition_variable m_idle;
    std::thread m_thread;
    // Lives on the thread that chose the background, and says that it was
    // chosen; problems are told there. The writer's thread starts with the
    // first write.
    std::unique_ptr<QObject> m_home;
    std::function<void(const QString &)> m_tell;
};
