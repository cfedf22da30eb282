// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

// Writes a whole file of Tavlo's own, readable by its owner alone, so that it
// is either the old one or the new one: a temporary file beside it, flushed
// and synced, then renamed over it. Makes the folder when missing. Returns the empty text, or
// "could not save PATH: REASON".
QString saveWholeFile(const QString &path, const QByteArray &contents);
