// SPDX-License-Identifier: MIT
#include "core/OneLine.h"

QString oneLine(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\n')
            result += QStringLiteral("\\n");
        else if (u == u'\r')
            result += QStringLiteral("\\r");
        else if (u == u'\t')
            result += QStringLiteral("\\t");
        else if (u < 0x20 || (u >= 0x7F && u < 0xA0) || u == 0x2028 || u == 0x2029)
            result +=
                QStringLiteral("\\u") + QString::number(u, 16).toUpper().rightJustified(4, u'0');
        else
            result += c;
    }
    return result;
}

QString shownOnOneLine(const QString &text)
{
    const auto breaksLine = [](char16_t u) {
        return (u >= u'\n' && u <= u'\r') || u == 0x85 || u == 0x2028 || u == 0x2029;
    };
    QString result;
    result.reserve(text.size());
    bool inBreak = false;
    for (const QChar c : text) {
        if (breaksLine(c.unicode())) {
            if (!inBreak)
                result += u' ';
            inBreak = true;
        } else {
            result += c;
            inBreak = false;
        }
    }
    return result;
}
