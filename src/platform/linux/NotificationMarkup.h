// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// What a notification server is sent as the summary and the body. A server
// that announces "body-markup" reads the body as a small subset of XML
// markup, so a name such as "<b>Anna</b> & co" must arrive escaped there
// to be shown as typed, and a link or picture in a name must not come
// alive. The summary is plain text by the protocol, but servers that do
// markup (dunst, some shells) build it into the same markup as the body:
// it is escaped for them too. A server without "body-markup" gets both as
// they are.
namespace NotificationMarkup {

// The capability in GetCapabilities' answer that makes the body markup.
inline constexpr char16_t bodyMarkupCapability[] = u"body-markup";

// `text` with &, < and > written as entities. Quotes stay: they only need
// escaping inside an attribute, and the entity &apos; is not understood by
// every server's markup reader.
QString escaped(const QString &text);

// `text` as a server with or without markup should receive it.
inline QString forServer(const QString &text, bool serverDoesMarkup)
{
    return serverDoesMarkup ? escaped(text) : text;
}

} // namespace NotificationMarkup
