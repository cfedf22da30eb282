// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// The files Tavlo writes for the platform (timer units, the autostart entry,
// the notification icon) go through here, each replaced only by a complete
// new version, as the settings file is.
namespace PlatformFile {

// Writes `bytes` to `path`, making its folder. Returns "could not save PATH:
// REASON" when it could not; the old file then stays as it was.
std::optional<QString> write(const QString &path, const QByteArray &bytes);

// The file's bytes, or nothing when it cannot be read.
std::optional<QByteArray> read(const QString &path);

// Writes only when the bytes differ from what is there. `changed` learns
// whether it wrote.
std::optional<QString> update(const QString &path, const QByteArray &bytes, bool *changed);

} // namespace PlatformFile
