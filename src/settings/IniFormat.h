// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QMap>
#include <QString>
#include <QVariant>

// The settings file's text: the INI dialect that Qt's QSettings reads and
// writes, so that files of earlier Tavlo versions read as they did, and
// QSettings (and they) can read ours.
//
//   [General]
//   color=3
//   Name=" Anna, jr."
//
//   [person]
//   1\1=Anna
//   1\2=12 3 1985
//   1\size=2
//   size=1
//
// Values are keyed by their full path ("color", "person/1/1"). A group that
// has the shape of a list (a "size" and the entries 1 to size, each a value
// or a list of its own) is held as one QVariantList under the group's name,
// so that a list of 10,000 favorites is one value, not 30,000.
//
// A group of rows that a crash, a sync tool or a hand edit damaged (its
// "size" missing, wrong or twice, an entry twice, a stray quote or a
// trailing backslash that swallowed the lines after it) is recovered rather
// than left as loose entries: every row whose entries can be found, read a
// line at a time, in file order; a row found twice (a group or entry
// repeated) is kept twice. Each repair is named in `problems`.
//
// Parsed values are QString, QStringList (a line with unquoted commas), an
// invalid QVariant ("@Invalid()") or, for the other typed forms QSettings
// writes ("@Variant(...)", "@ByteArray(...)"), a QByteArray with the text as
// it stood, written back unchanged. Written values may also be bool and
// integers.
namespace IniFormat {

using Values = QMap<QString, QVariant>;

Values parse(QByteArrayView text, QStringList *problems = nullptr);
QByteArray serialize(const Values &values);

} // namespace IniFormat
