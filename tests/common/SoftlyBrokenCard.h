// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// A vCard 2.1 card of about `bytes`: half of it a long parameter part, the
// other half a quoted-printable name broken softly ("=" at a line's end)
// every six bytes. Its name is "J" once per soft break, then "ane".
inline QByteArray softlyBrokenCard(qsizetype bytes, qsizetype *breaks = nullptr)
{
    const qsizetype lines = bytes / 2 / 6;
    if (breaks)
        *breaks = lines;
    return "BEGIN:VCARD\r\nVERSION:2.1\r\nFN;CHARSET=UTF-8;X-NOTE=" + QByteArray(bytes / 2, 'x') +
           ";ENCODING=QUOTED-PRINTABLE:" + QByteArray("=4A=\r\n").repeated(lines) +
           "ane\r\nBDAY:19850312\r\nEND:VCARD\r\n";
}
