#pragma once

#include "SettingsKeys.h"

#include <QList>
#include <QStringList>
#include <QVariant>
#include <optional>

// Tavlo's key-value settings: typed reads and writes by exact key. A value of
// the wrong type reads as the type's default; a write takes effect at once.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    qint64 value(const IntegerKey &key) const;
    bool value(const BooleanKey &key) const;
    std::optional<QString> value(const StringKey &key) const;
    std::optional<QStringList> value(const StringListKey &key) const;
    std::optional<QList<QStringList>> value(const StringTableKey &key) const;

    void set(const IntegerKey &key, qint64 value);
    void set(const BooleanKey &key, bool value);
    void set(const StringKey &key, const QString &value);
    void set(const StringListKey &key, const QStringList &value);
    void set(const StringTableKey &key, const QList<QStringList> &value);

    void remove(const QString &key)
    {
        noteChange();
        erase(key);
    }

    // Writes made while a batch is open reach the disk together when the
    // last batch closes; see SettingsBatch. A store that other processes
    // share keeps them out for as long as the batch is open, so that what a
    // batch reads and then writes is one step for every process.
    void beginBatch()
    {
        if (m_batchDepth++ == 0)
            beginExclusive();
    }
    void endBatch()
    {
        if (--m_batchDepth == 0) {
            flush();
            endExclusive();
        }
    }

    // Brings the reads up to date with what other processes wrote since.
    // Reads inside a batch are up to date already.
    virtual void refresh() {}

    // Counts the changes: our own writes, and those of other processes as a
    // batch finds them when it begins. While the count stays, inside a batch,
    // what was read before still holds.
    quint64 changes() const { return m_changes; }

protected:
    void noteChange() { ++m_changes; }
    bool batching() const { return m_batchDepth > 0; }
    // Makes the writes so far durable; stores that write at once need not.
    virtual void flush() {}
    // Around the outermost batch: take and release the lock that the
    // processes sharing the store agree on, reading the latest on taking it.
    virtual void beginExclusive() {}
    virtual void endExclusive() {}

    // The stored value: a scalar, or a QVariantList of strings or of string
    // lists. Invalid when absent.
    virtual QVariant read(const QString &key) const = 0;
    virtual void write(const QString &key, const QVariant &value) = 0;
    virtual void erase(const QString &key) = 0;

private:
    void store(const QString &key, const QVariant &value);

    int m_batchDepth = 0;
    quint64 m_changes = 0;
};

// Groups a few writes that belong together (the picked day, month and year)
// into one write of the settings file, and a read with the writes that
// follow from it (a change to the favorites) into one step that no other
// process can come between.
class SettingsBatch
{
public:
    explicit SettingsBatch(SettingsStore &store) : m_store(store) { m_store.beginBatch(); }
    ~SettingsBatch() { m_store.endBatch(); }
    SettingsBatch(const SettingsBatch &) = delete;
    SettingsBatch &operator=(const SettingsBatch &) = delete;

private:
    SettingsStore &m_store;
};
