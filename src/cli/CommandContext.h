// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/PhoneContacts.h"
#include "favorites/FavoritesStore.h"

#include <QStringList>
#include <QTextStream>
#include <functional>

class Clock;
class WriteResult;
class NotificationCenter;
class PasswordVault;
class SettingsStore;

// What a command works with; the process entry passes the real ones, tests
// their own.
struct CommandContext
{
    SettingsStore &settings;
    // The device's preferred languages, most preferred first.
    QStringList preferredLanguages;
    const Clock &clock;
    QTextStream &out;
    QTextStream &err;
    // The platform's notification centre, for `reminders schedule`, made on
    // first use (the other commands leave the platform alone); none where
    // reminders cannot be scheduled.
    std::function<NotificationCenter *()> notifications = {};
    // Runs `done` once the centre's platform commands have ended.
    std::function<void(std::function<void()> done)> whenNotificationsIdle = {};
    // The phone's address books (`favorites import --contacts`); without
    // one, Plasma Mobile's address-book folder alone.
    PhoneContactsReader phoneContacts = {};
    // Where the sync password is kept, made on first use; none where no
    // Secret Service can be reached.
    std::function<PasswordVault *()> passwords = {};
    // The sync state file; empty for the one beside the settings.
    QString syncStatePath = {};
    // Told of every change a command makes to the favorites, as the app's
    // own store tells the birthdays calendar.
    FavoritesStore::ChangeListener favoritesChanged = {};
};

// Exit statuses of the command line.
namespace ExitStatus {
inline constexpr int ok = 0;
// A change that could not be stored, or a settings file that cannot be
// read; nothing was changed.
inline constexpr int notSaved = 1;
inline constexpr int usage = 2;
} // namespace ExitStatus

// Ends a command with one line on standard error ("tavlo <command>: <message>",
// control characters escaped) and the usage status.
int failCommand(CommandContext &context, const char *command, const QString &message);

// Ends a command whose change did not reach the disk: "tavlo: could not save
// FILE: REASON" on standard error and the status notSaved. A stored result
// gives ok.
int finishChange(CommandContext &context, const WriteResult &result);
// Writes `contents` to the file at `path`, whole or not at all, or to standard
// output for "-". Only a regular file (or a new one) is replaced; a link is
// followed as OutputTarget allows. A file that could not be saved, or a path
// that is no file: one line "tavlo: could not save PATH: REASON" on standard
// error and the status notSaved.
int writeOutputFile(CommandContext &context, const QString &path, const QByteArray &contents);
