// SPDX-License-Identifier: MIT
#pragma once

#include <future>

// What the first frame needs that the window's own thread need not do: Qt's
// list of the system's fonts (every face fontconfig knows, a few thousand on
// a desktop) and the reader of the symbols' pictures (a plugin). Made on a
// thread of its own while the engine reads the window's QML; a text or
// picture that comes first waits for it, as Qt locks both. After
// QGuiApplication and the bundled fonts; waited for when it goes.
class StartupPreload
{
public:
    StartupPreload();
    ~StartupPreload();
    StartupPreload(const StartupPreload &) = delete;
    StartupPreload &operator=(const StartupPreload &) = delete;

private:
    std::future<void> m_done;
};
