// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/AddressBookSource.h"
#include "favorites/FavoritesStore.h"
#include "texts/UiStrings.h"

#include <QDate>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

// Keeps the favorites in step with the phone's address books while
// "followContacts" is on (ContactsFollow::follow()): at start, and whenever a
// source tells of a change. The favorites and what is remembered of the
// contacts ("followedContacts") are written in one step, so they always
// agree; a step that could not be stored is made again with the next change.
// Everything runs on the thread that made it, in short steps between events.
class ContactsFollower : public QObject
{
    Q_OBJECT

public:
    ContactsFollower(SettingsStore &settings, FavoritesStore &favorites, const UiStrings &strings,
                     std::function<QDate()> today, QObject *parent = nullptr);

    // The follower starts and watches its sources only while on.
    void addSource(AddressBookSource *source);

    bool enabled() const;
    // Turning it off leaves the favorites as they are.
    WriteResult setEnabled(bool on);
    // Starts following when the setting is on.
    void start();

    // One plain line on how following goes, in the interface language:
    // what is wrong, or how many favorites follow contacts; empty when off.
    QString status() const;
    // The same in English, for the log.
    QString statusInEnglish() const;

    // Follows at once (otherwise a moment after the last change).
    void followNow();

signals:
    void statusChanged();
    // The favorites were changed and stored by following.
    void favoritesChanged();
    // A step was made and stored: the time since its source told of a change.
    void stepStored(qint64 elapsedMs);

private:
    QString statusText(const UiStrings &strings) const;

    SettingsStore &m_settings;
    FavoritesStore &m_favorites;
    const UiStrings &m_strings;
    std::function<QDate()> m_today;
    QList<AddressBookSource *> m_sources;
    bool m_started = false;
    QTimer m_soon;
    QElapsedTimer m_sinceChange;
    QStringList m_unreadable;
    qsizetype m_following = 0;
    QString m_lastLogged;
};
