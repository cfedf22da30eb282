// SPDX-License-Identifier: MIT
#pragma once

class QQuickWindow;

// Measuring start-up (TAVLO_STARTUP_TRACE): one line on standard output when
// the window's first frame was drawn ("first-frame-epoch-ms N"), one with the
// processor time all its threads had used by then ("first-frame-cpu-ms N"),
// and one with the most memory the process held ("peak-rss-kb N") at the end.
// TAVLO_STARTUP_TRACE=exit ends the process at the first frame, writing
// nothing, so that a profiler sees the start alone.
namespace StartupTrace {

// Prints the first frame's moment once it is drawn; with `thenQuit`, the app
// settles for a second after it and ends.
void followFirstFrame(QQuickWindow &window, bool thenQuit);

void printPeakMemory();

} // namespace StartupTrace
