#pragma once

#include "SettingsStore.h"

#include <QSettings>

// The settings store on disk, through QSettings. On Linux that is the INI
// file $XDG_CONFIG_HOME/tavlo/tavlo.conf. Lists are kept as numbered entries
// with a size, so the favorites stay readable in the file:
//
//   [person]
//   1\1=Anna
//   1\2=12 3 1985
//   1\size=2
//   size=1
//
// Every write is synced at once (a batch syncs once at its end); QSettings
// replaces the file atomically.
class QSettingsStore final : public SettingsStore
{
public:
    QSettingsStore();
    explicit QSettingsStore(const QString &iniFilePath);

    QString fileName() const { return m_settings.fileName(); }

protected:
    QVariant read(const QString &key) const override;
    void write(const QString &key, const QVariant &value) override;
    void erase(const QString &key) override;
    void flush() override { m_settings.sync(); }

private:
    QVariant readList(const QString &key) const;
    void writeList(const QString &key, const QVariantList &list);

    mutable QSettings m_settings;
};
