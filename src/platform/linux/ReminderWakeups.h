// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/ReminderStore.h"

#include <QList>
#include <optional>

// What wakes Tavlo to deliver a pending reminder at its moment while the app
// is closed; one implementation per mechanism of the platform. It owns its
// state on disk alone: each call makes the disk match the reminders given,
// so no answer that comes later can bring back an older plan.
class ReminderWakeups
{
public:
    virtual ~ReminderWakeups() = default;
    // Makes the wake-ups match `waiting`: adds, rewrites and removes, and
    // leaves alone what already matches. Returns what could not be written.
    virtual std::optional<QString> apply(const QList<PendingReminder> &waiting) = 0;
    // `done` runs once the commands that apply() started have ended.
    virtual void whenIdle(std::function<void()> done) = 0;
};
