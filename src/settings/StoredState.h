// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// How the settings file read when it was last read. A damaged file (cut
// short, a stray quote, a list's size missing or wrong, a group twice) is
// read as far as it goes and kept as it was, under another name, before it
// is first written again. One that cannot be read at all is never written:
// writing would put an empty list in place of the person's birthdays.
struct StoredState
{
    enum class Kind { Sound, Damaged, Unreadable };
    Kind kind = Kind::Sound;
    // The settings file.
    QString path;
    // What was wrong, in a few words: "[person]: its size is missing; 10
    // rows read", or why it could not be read: "Permission denied".
    QString problem;
    // Where the damaged file is kept, once it is.
    QString keptCopy;

    bool sound() const { return kind == Kind::Sound; }
};
