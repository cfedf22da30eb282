// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingsStore.h"

#include <QHash>

// A settings store that lives in memory only, for tests and previews.
class MemorySettingsStore final : public SettingsStore
{
public:
    // Puts any value under a key, bypassing the typed writes: lets a test
    // store a value of the wrong type.
    void setRaw(const QString &key, const QVariant &value) { m_values.insert(key, value); }
    qsizetype writeCount() const { return m_writes; }
    // How the store says it was read, as a file store would.
    void setStoredState(StoredState state) { m_state = std::move(state); }
    StoredState storedState() const override { return m_state; }

protected:
    QVariant read(const QString &key) const override { return m_values.value(key); }
    void write(const QString &key, const QVariant &value) override
    {
        m_values.insert(key, value);
        ++m_writes;
    }
    void erase(const QString &key) override { m_values.remove(key); }

private:
    QHash<QString, QVariant> m_values;
    qsizetype m_writes = 0;
    StoredState m_state;
};
