// SPDX-License-Identifier: MIT
#include "contacts/VCardReader.h"

#include <QStringDecoder>

using namespace Qt::Literals::StringLiterals;

namespace {

bool equalsIgnoringCase(QByteArrayView a, QByteArrayView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && (text.front() == ' ' || text.front() == '\t'))
        text = text.sliced(1);
    while (!text.isEmpty() && (text.back() == ' ' || text.back() == '\t'))
        text.chop(1);
    return text;
}

// The physical lines of the text, without their line ends (CRLF, LF or a lone CR).
class LineSplitter
{
public:
    explicit LineSplitter(QByteArrayView data) : m_data(data) {}

    bool next(QByteArrayView &line)
    {
        if (m_pos >= m_data.size())
            return false;
        const char *begin = m_data.data() + m_pos;
        const qsizetype left = m_data.size() - m_pos;
        qsizetype length = 0;
        while (length < left && begin[length] != '\n' && begin[length] != '\r')
            ++length;
        line = QByteArrayView(begin, length);
        m_pos += length;
        if (m_pos < m_data.size() && m_data[m_pos] == '\r')
            ++m_pos;
        if (m_pos < m_data.size() && m_data[m_pos] == '\n')
            ++m_pos;
        return true;
    }

private:
    QByteArrayView m_data;
    qsizetype m_pos = 0;
};

// One content line, "group.NAME;PARAM=x;PARAM:value", split up.
struct ContentLine
{
    QByteArrayView name;
    QByteArrayView value;
    bool quotedPrintable = false;
    QByteArrayView charset;
    QByteArrayView valueType;
    // X-APPLE-OMIT-YEAR's value: the year that stands for "not known".
    QByteArrayView omitYear;
    // Tavlo's own export: the exact name, percent-encoded UTF-8.
    QByteArrayView exactName;
};

// The colon that ends the name and parameters; colons inside a quoted
// parameter value do not count.
qsizetype valueColon(QByteArrayView line)
{
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted)
            return i;
    }
    return -1;
}

void takeParameter(QByteArrayView parameter, ContentLine &line)
{
    parameter = trimmed(parameter);
    const qsizetype equals = parameter.indexOf('=');
    // vCard 2.1 writes some parameters bare: "BDAY;QUOTED-PRINTABLE:...".
    const QByteArrayView key = equals < 0 ? QByteArrayView() : trimmed(parameter.first(equals));
    QByteArrayView value = equals < 0 ? parameter : trimmed(parameter.sliced(equals + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.sliced(1, value.size() - 2);
    if (equalsIgnoringCase(key, "X-APPLE-OMIT-YEAR")) {
        line.omitYear = value;
    } else if (equalsIgnoringCase(key, "X-TAVLO-NAME")) {
        line.exactName = value;
    } else if (equalsIgnoringCase(key, "CHARSET")) {
        line.charset = value;
    } else if (equalsIgnoringCase(key, "VALUE")) {
        line.valueType = value;
    } else if (key.isEmpty() || equalsIgnoringCase(key, "ENCODING")) {
        if (equalsIgnoringCase(value, "QUOTED-PRINTABLE") || equalsIgnoringCase(value, "QP"))
            line.quotedPrintable = true;
    }
}

std::optional<ContentLine> parseContentLine(QByteArrayView text)
{
    const qsizetype colon = valueColon(text);
    if (colon < 0)
        return std::nullopt;
    ContentLine line;
    const QByteArrayView head = text.first(colon);
    line.value = text.sliced(colon + 1);
    qsizetype nameEnd = head.indexOf(';');
    if (nameEnd < 0)
        nameEnd = head.size();
    line.name = trimmed(head.first(nameEnd));
    // "item1.BDAY": the group is of no interest here.
    if (const qsizetype dot = line.name.lastIndexOf('.'); dot >= 0)
        line.name = line.name.sliced(dot + 1);
    qsizetype start = nameEnd + 1;
    bool quoted = false;
    for (qsizetype i = start; i <= head.size(); ++i) {
        if (i < head.size() && head[i] == '"')
            quoted = !quoted;
        if (i == head.size() || (head[i] == ';' && !quoted)) {
            if (i > start)
                takeParameter(head.sliced(start, i - start), line);
            start = i + 1;
        }
    }
    return line;
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

QByteArray decodeQuotedPrintable(QByteArrayView value)
{
    QByteArray bytes;
    bytes.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == '=' && i + 2 < value.size() && hexValue(value[i + 1]) >= 0 &&
            hexValue(value[i + 2]) >= 0) {
            bytes.append(char(hexValue(value[i + 1]) * 16 + hexValue(value[i + 2])));
            i += 2;
        } else if (value[i] == '=' && i + 1 == value.size()) {
            // A soft line break left at the very end.
        } else {
            bytes.append(value[i]);
        }
    }
    return bytes;
}

QString decodeValue(const ContentLine &line)
{
    const QByteArray bytes =
        line.quotedPrintable ? decodeQuotedPrintable(line.value) : line.value.toByteArray();
    if (!line.charset.isEmpty() && !equalsIgnoringCase(line.charset, "UTF-8") &&
        !equalsIgnoringCase(line.charset, "UTF8")) {
        QStringDecoder decoder(line.charset.toByteArray().constData());
        if (decoder.isValid()) {
            QString text = decoder(bytes);
            if (!decoder.hasError())
                return text;
        }
        // Address books that name a charset Qt does not know write Western
        // European text nearly always.
        if (equalsIgnoringCase(line.charset, "windows-1252") ||
            equalsIgnoringCase(line.charset, "ISO-8859-15"))
            return QString::fromLatin1(bytes);
    }
    return QString::fromUtf8(bytes);
}

// Backslash escapes of text values: \, \; \\ and \n or \N for a line break.
QString unescaped(QStringView text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\\' && i + 1 < text.size()) {
            const QChar next = text[++i];
            result.append(next == u'n' || next == u'N' ? QChar(u'\n') : next);
        } else {
            result.append(c);
        }
    }
    return result;
}

// The parts of a structured value (N), split at semicolons that are not escaped.
QList<QString> components(QStringView text)
{
    QList<QString> parts;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == u';') {
            parts.append(unescaped(text.sliced(start, i - start)));
            start = i + 1;
        } else if (text[i] == u'\\') {
            ++i;
        }
    }
    return parts;
}

// The name Tavlo's export kept whole beside FN's text, when it decodes.
std::optional<QString> exactName(const ContentLine &line)
{
    if (line.exactName.isEmpty())
        return std::nullopt;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString name = utf8(QByteArray::fromPercentEncoding(line.exactName.toByteArray()));
    if (utf8.hasError())
        return std::nullopt;
    return name;
}

bool isBlank(const QString &text)
{
    return text.trimmed().isEmpty();
}

// One card being read.
struct CardBuilder
{
    std::optional<QString> formattedName;
    QString structuredName;
    VCardContact contact;
    bool hasBirthday = false;

    void take(const ContentLine &line)
    {
        if (equalsIgnoringCase(line.name, "FN")) {
            if (!formattedName || isBlank(*formattedName))
                formattedName = exactName(line).value_or(unescaped(decodeValue(line)));
        } else if (equalsIgnoringCase(line.name, "N")) {
            if (structuredName.isEmpty()) {
                const QList<QString> parts = components(decodeValue(line));
                const QString family = parts.value(0).trimmed();
                const QString given = parts.value(1).trimmed();
                structuredName =
                    given.isEmpty() || family.isEmpty() ? given + family : given + u' ' + family;
            }
        } else if (equalsIgnoringCase(line.name, "BDAY") && !hasBirthday) {
            hasBirthday = true;
            contact.birthday = unescaped(decodeValue(line)).trimmed();
            contact.birthdayIsText = equalsIgnoringCase(line.valueType, "text");
            if (!line.omitYear.isEmpty()) {
                bool ok = false;
                const int year = line.omitYear.toByteArray().toInt(&ok);
                // A mark without a year it names marks every year.
                contact.omittedYear = ok ? year : -1;
            }
        } else if (equalsIgnoringCase(line.name, "UID") && contact.uid.isEmpty()) {
            contact.uid = unescaped(decodeValue(line)).trimmed();
        }
    }

    VCardContact finish()
    {
        contact.name = formattedName && !isBlank(*formattedName) ? *formattedName : structuredName;
        return std::move(contact);
    }
};

// Finds the end of a logical line's name and parameters while the line is
// still being gathered, looking at each byte once: a value with many soft line
// breaks after a long parameter part stays linear to read.
class LineHead
{
public:
    // `text` is the line gathered so far; it only grows at its end until the
    // colon is found.
    void scan(QByteArrayView text)
    {
        for (; m_colon < 0 && m_scanned < text.size(); ++m_scanned) {
            if (text[m_scanned] == '"') {
                m_quoted = !m_quoted;
            } else if (text[m_scanned] == ':' && !m_quoted) {
                m_colon = m_scanned;
                const std::optional<ContentLine> line = parseContentLine(text.first(m_colon + 1));
                m_quotedPrintable = line && line->quotedPrintable;
            }
        }
    }
    // Whether the parameters, once complete, ask for quoted-printable.
    bool quotedPrintable() const { return m_colon >= 0 && m_quotedPrintable; }

private:
    qsizetype m_scanned = 0;
    qsizetype m_colon = -1;
    bool m_quoted = false;
    bool m_quotedPrintable = false;
};

} // namespace

VCardReader::Result VCardReader::read(const QByteArray &data)
{
    Result result;
    if (data.size() > maxBytes) {
        result.error = Error::TooLarge;
        return result;
    }
    LineSplitter lines(data);
    // A logical line is a physical line with its folded continuations; it is
    // gathered here only when it had any, else it is a view into the data.
    QByteArray joined;
    QByteArrayView current;
    bool haveCurrent = false;
    bool sawBegin = false;
    int depth = 0;
    std::optional<CardBuilder> card;

    const auto process = [&](QByteArrayView text) {
        const std::optional<ContentLine> line = parseContentLine(text);
        if (!line)
            return;
        if (equalsIgnoringCase(line->name, "BEGIN") &&
            equalsIgnoringCase(trimmed(line->value), "VCARD")) {
            sawBegin = true;
            // A card inside a card (2.1's AGENT) is read past, not taken.
            if (depth++ == 0)
                card.emplace();
            return;
        }
        if (equalsIgnoringCase(line->name, "END") &&
            equalsIgnoringCase(trimmed(line->value), "VCARD")) {
            if (depth > 0 && --depth == 0) {
                result.contacts.append(card->finish());
                card.reset();
            }
            return;
        }
        if (depth == 1)
            card->take(*line);
    };

    QByteArrayView physical;
    bool more = lines.next(physical);
    while (more) {
        current = physical;
        haveCurrent = true;
        joined.clear();
        bool usesJoined = false;
        LineHead head;
        while ((more = lines.next(physical))) {
            const QByteArrayView text = usesJoined ? QByteArrayView(joined) : current;
            head.scan(text);
            if (!physical.isEmpty() && (physical.front() == ' ' || physical.front() == '\t')) {
                if (!usesJoined) {
                    joined = current.toByteArray();
                    usesJoined = true;
                }
                joined.append(physical.sliced(1));
            } else if (text.endsWith('=') && head.quotedPrintable()) {
                // 2.1's soft line break: the value goes on in the next line.
                if (!usesJoined) {
                    joined = current.toByteArray();
                    usesJoined = true;
                }
                joined.chop(1);
                joined.append(physical);
            } else {
                break;
            }
        }
        if (haveCurrent)
            process(usesJoined ? QByteArrayView(joined) : current);
        haveCurrent = false;
    }

    if (!sawBegin)
        result.error = Error::NotVCard;
    else if (depth > 0)
        result.error = Error::Truncated;
    if (result.error != Error::None)
        result.contacts.clear();
    return result;
}

QString VCardReader::errorText(Error error)
{
    switch (error) {
    case Error::None:
        return {};
    case Error::NotVCard:
        return u"not a vCard file (no BEGIN:VCARD)"_s;
    case Error::Truncated:
        return u"the file ends inside a card (cut off?)"_s;
    case Error::TooLarge:
        return u"larger than %1 MB"_s.arg(maxBytes / (1024 * 1024));
    }
    return {};
}
