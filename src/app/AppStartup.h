// SPDX-License-Identifier: MIT
#pragma once

#include "themes/Themes.h"

#include <QString>

class QGuiApplication;

// Starts the app: the settings file, the clock, the shared session, the
// bundled fonts, and the QML engine with its window.
class AppStartup
{
public:
    struct Options
    {
        // Save a picture of the window once it is drawn, then quit.
        QString screenshotPath;
        // Print when the first frame was drawn, end a second later, and
        // print the peak memory.
        bool traceStartup = false;
    };

    int run(QGuiApplication &app, const Options &options);

    // Dark or light, from the platform's palette; TAVLO_APPEARANCE=dark|light
    // overrides it.
    static Appearance appearance();
};
