// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingsKeys.h"
#include "settings/StoredState.h"
#include "settings/WriteResult.h"

#include <QList>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>

// Tavlo's key-value settings: typed reads and writes by exact key. A value of
// the wrong type reads as the type's default; a write takes effect at once
// and says whether it reached the disk (inside a batch, the batch's end says).
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    qint64 value(const IntegerKey &key) const;
    bool value(const BooleanKey &key) const;
    std::optional<QString> value(const StringKey &key) const;
    std::optional<QStringList> value(const StringListKey &key) const;
    std::optional<QList<QStringList>> value(const StringTableKey &key) const;
    // The value as stored, for a reader that keeps what it made of it: a
    // copy shares the stored data, so comparing it with the copy kept costs
    // nothing while neither has changed.
    QVariant stored(const StringTableKey &key) const { return read(key.name); }

    WriteResult set(const IntegerKey &key, qint64 value);
    WriteResult set(const BooleanKey &key, bool value);
    WriteResult set(const StringKey &key, const QString &value);
    WriteResult set(const StringListKey &key, const QStringList &value);
    WriteResult set(const StringTableKey &key, const QList<QStringList> &value);

    WriteResult remove(const QString &key);

    // Writes made while a batch is open reach the disk together when the
    // last batch closes; see SettingsBatch. A store that other processes
    // share keeps them out for as long as the batch is open, so that what a
    // batch reads and then writes is one step for every process.
    void beginBatch()
    {
        if (m_batchDepth++ == 0)
            beginExclusive();
    }
    // What the outermost batch's write achieved; inner batches report success.
    WriteResult endBatch();

    // Told of every write that failed, whoever made it: the app shows a
    // notice, wherever the change came from.
    using FailureHandler = std::function<void(const WriteResult &)>;
    void setFailureHandler(FailureHandler handler) { m_failureHandler = std::move(handler); }

    // Brings the reads up to date with what other processes wrote since.
    // Reads inside a batch are up to date already.
    virtual void refresh() {}

    // How a change of `key` made here is put together with changes that
    // another process made to the same key meanwhile: from the value before
    // our change, ours and theirs, the value to store. Without one, ours
    // stands. Stores that no other process shares need none.
    using Merge = QVariant (*)(const QVariant &base, const QVariant &ours, const QVariant &theirs);
    // A table as the store holds it, and back: for merges, which see stored
    // values. Nothing for a value that is no table.
    static std::optional<QList<QStringList>> tableOf(const QVariant &stored);
    static QVariant storedTable(const QList<QStringList> &table);
    virtual void setMerge(const QString &key, Merge merge)
    {
        Q_UNUSED(key);
        Q_UNUSED(merge);
    }

    // Waits, on whichever thread calls it, until the changes made here so
    // far have reached the disk, and says whether they did: for a file of
    // another kind that must never be ahead of the settings (the sync
    // state). Stores that write at once are there already.
    using WrittenCheck = std::function<WriteResult()>;
    virtual WrittenCheck untilWritten()
    {
        return [] { return WriteResult(); };
    }

    // How the stored settings read; a store without a file is always sound.
    virtual StoredState storedState() const { return {}; }

protected:
    // Tells the failure handler of a write that failed after its batch ended.
    void reportFailure(const WriteResult &failure)
    {
        if (m_failureHandler)
            m_failureHandler(failure);
    }
    bool batching() const { return m_batchDepth > 0; }
    // Makes the writes so far durable; stores that write at once need not.
    virtual WriteResult flush() { return {}; }
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
    WriteResult store(const QString &key, const QVariant &value);

    int m_batchDepth = 0;
    FailureHandler m_failureHandler;
};

// Groups a few writes that belong together (the picked day, month and year)
// into one write of the settings file, and a read with the writes that
// follow from it (a change to the favorites) into one step that no other
// process can come between.
class SettingsBatch
{
public:
    explicit SettingsBatch(SettingsStore &store) : m_store(store) { m_store.beginBatch(); }
    ~SettingsBatch()
    {
        if (!m_finished)
            m_store.endBatch();
    }
    SettingsBatch(const SettingsBatch &) = delete;
    SettingsBatch &operator=(const SettingsBatch &) = delete;

    // Ends the batch now and tells whether its writes reached the disk.
    WriteResult finish()
    {
        m_finished = true;
        return m_store.endBatch();
    }

private:
    SettingsStore &m_store;
    bool m_finished = false;
};
