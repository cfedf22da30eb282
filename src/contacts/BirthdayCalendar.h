// SPDX-License-Identifier: MIT
#pragma once

#include "favorites/FavoritesStore.h"

#include <QList>
#include <QString>
#include <QStringList>

class Clock;
class SettingsStore;

// "Show birthdays in the calendar": while it is on, the favorites' birthdays
// are kept in an iCalendar file, rewritten after every change of the
// favorites, and that file is registered with evolution-data-server as a
// local calendar (a .source file), so GNOME Calendar on Phosh shows it.
// Turning it off removes both.
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

    bool enabled() const;
    // Stores the switch; on: writes the calendar of the stored favorites and
    // registers it; off: removes both. Returns the empty text, or what could
    // not be saved.
    QString setEnabled(bool on);
    // After a change of the favorites: rewrites the calendar when the switch
    // is on (and registers it again if its source went missing).
    QString update(const QList<Favorite> &favorites);

    const Paths &paths() const { return m_paths; }

    // The .source text for evolution-data-server: a local calendar backed by
    // `calendarFile`, named `displayName`.
    static QByteArray sourceText(const QString &calendarFile, const QString &displayName);

private:
    QString publish(const QList<Favorite> &favorites);

    SettingsStore &m_settings;
    QStringList m_preferredLanguages;
    const Clock &m_clock;
    Paths m_paths;
};
