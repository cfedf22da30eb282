// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QQuickWindow;

// `tavlo --screenshot FILE.png`: a picture of the window as it first shows,
// for the documentation and for checking the look by eye.
namespace Screenshot {

// Saves the window to `path` (making its folder) a moment after its first
// frame, once the pictures that load in the background are in, then ends
// the app.
void takeAfterFirstFrame(QQuickWindow &window, const QString &path);

} // namespace Screenshot
