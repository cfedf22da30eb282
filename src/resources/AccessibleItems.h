// SPDX-License-Identifier: MIT
#pragma once

// Fills two gaps of Qt Quick's accessibility on Qt 6.4, for every item the
// screens make:
// - a control that is disabled (the add button before a report) tells
//   assistive technology so, instead of reading as enabled;
// - a text item offers its words through the Text interface, so that a
//   screen reader can read a long report line by line and word by word.
// Everything else is Qt's own. Install once, before the first window.
namespace AccessibleItems {
void install();
}
