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

    void remove(const QString &key) { erase(key); }

    // Writes made while a batch is open reach the disk together when the
    // last batch closes; see SettingsBatch.
    void beginBatch() { ++m_batchDepth; }
    void endBatch()
    {
        if (--m_batchDepth == 0)
            flush();
    }

protected:
    bool batching() const { return m_batchDepth > 0; }
    // Makes the writes so far durable; stores that write at once need not.
    virtual void flush() {}

    // The stored value: a scalar, or a QVariantList of strings or of string
    // lists. Invalid when absent.
    virtual QVariant read(const QString &key) const = 0;
    virtual void write(const QString &key, const QVariant &value) = 0;
    virtual void erase(const QString &key) = 0;

private:
    int m_batchDepth = 0;
};

// Groups a few writes that belong together (the picked day, month and year)
// into one write of the settings file.
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
