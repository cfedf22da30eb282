// SPDX-License-Identifier: MIT
#pragma once

#include "reminders/ReminderStore.h"

#include <QList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

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

// Several mechanisms at once: one that delivers (timers or the autostart
// entry) and one that wakes the phone for it.
class AllWakeups final : public ReminderWakeups
{
public:
    void add(std::unique_ptr<ReminderWakeups> wakeups) { m_parts.push_back(std::move(wakeups)); }

    std::optional<QString> apply(const QList<PendingReminder> &waiting) override
    {
        std::optional<QString> problem;
        for (const auto &part : m_parts) {
            if (std::optional<QString> error = part->apply(waiting); error && !problem)
                problem = error;
        }
        return problem;
    }
    void whenIdle(std::function<void()> done) override { idleFrom(0, std::move(done)); }

private:
    void idleFrom(size_t part, std::function<void()> done)
    {
        if (part == m_parts.size()) {
            done();
            return;
        }
        m_parts.at(part)->whenIdle(
            [this, part, done = std::move(done)] { idleFrom(part + 1, done); });
    }

    std::vector<std::unique_ptr<ReminderWakeups>> m_parts;
};
