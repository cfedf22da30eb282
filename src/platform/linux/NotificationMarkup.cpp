// SPDX-License-Identifier: MIT
#include "platform/linux/NotificationMarkup.h"

using namespace Qt::Literals::StringLiterals;

QString NotificationMarkup::escaped(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c == u'&')
            result += u"&amp;"_s;
        else if (c == u'<')
            result += u"&lt;"_s;
        else if (c == u'>')
            result += u"&gt;"_s;
        else
            result += c;
    }
    return result;
}
