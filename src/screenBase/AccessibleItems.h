// SPDX-License-Identifier: MIT
#pragma once

// Fills two gaps of Qt Quick's accessibility on Qt 6.4, for every item the
// screens make:
// - a control that is disabled (the add button before a report) tells
//   assistive technology so, instead of reading as enabled;
// - a text item offers its words through the Text interface, so that a
//   screen reader can read a long report line by line and word by word;
// - a text field offers the text it holds (Qt 6.4 gives a screen reader
//   an empty one);
// - an item with an "accessibleText" property (a date wheel) offers that
//   text, which a screen reader reads in place of its number.
// Everything else is Qt's own. Install once, before the first window.
namespace AccessibleItems {
void install();
}
