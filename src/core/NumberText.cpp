// SPDX-License-Identifier: MIT
#include "core/NumberText.h"

qint64 readDigitsOnly(QStringView text)
{
    QString digits;
    for (const QChar c : text) {
        if (c.isDigit())
            digits += QChar(u'0' + c.digitValue());
    }
    bool ok = false;
    const qint64 value = digits.toLongLong(&ok);
    return ok ? value : 0;
}
