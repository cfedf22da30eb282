// SPDX-License-Identifier: MIT
#include "settings/IniFormat.h"

#include "core/FatalError.h"

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVarLengthArray>
#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace IniFormat {
namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// ---- Reading --------------------------------------------------------------

// One logical line: a line break inside quotes or after a backslash belongs
// to the value; ';' outside quotes starts a comment.
struct Line
{
    QByteArrayView text;
    qsizetype equals = -1;
    // A line break inside quotes or after a backslash: fine for QSettings,
    // but Tavlo and QSettings never write one, so it may be damage.
    bool spansLines = false;
};

std::optional<Line> nextLine(QByteArrayView data, qsizetype &pos)
{
    const qsizetype size = data.size();
    for (;;) {
        while (pos < size && isBlank(data[pos]))
            ++pos;
        if (pos >= size)
            return std::nullopt;
        if (data[pos] != ';')
            break;
        while (pos < size && data[pos] != '\n' && data[pos] != '\r')
            ++pos;
    }

    // The characters that mean something in a line; runs of the others
    // (most of every line) are passed over at once.
    static constexpr std::array<bool, 256> meaningful = [] {
        std::array<bool, 256> table{};
        for (const char c : {'"', '\\', '\n', '\r', ';', '='})
            table[uchar(c)] = true;
        return table;
    }();
    Line line;
    const qsizetype start = pos;
    bool quoted = false;
    while (pos < size) {
        while (pos < size && !meaningful[uchar(data[pos])])
            ++pos;
        if (pos >= size)
            break;
        const char c = data[pos];
        if (c == '"') {
            quoted = !quoted;
        } else if (c == '\\') {
            ++pos;
            // An escaped line break continues the line; \r\n and \n\r count once.
            if (pos < size && (data[pos] == '\n' || data[pos] == '\r'))
                line.spansLines = true;
            if (pos + 1 < size) {
                const char a = data[pos];
                const char b = data[pos + 1];
                if ((a == '\n' && b == '\r') || (a == '\r' && b == '\n'))
                    ++pos;
            }
        } else if (!quoted && (c == '\n' || c == '\r' || c == ';')) {
            break;
        } else if (c == '\n' || c == '\r') {
            line.spansLines = true;
        } else if (c == '=' && !quoted && line.equals < 0) {
            line.equals = pos - start;
        }
        ++pos;
    }
    line.text = data.sliced(start, std::min(pos, size) - start);
    // What follows an unquoted ';' on the same line is a comment.
    while (pos < size && data[pos] != '\n' && data[pos] != '\r')
        ++pos;
    return line;
}

bool isPlainKeyChar(char c)
{
    static constexpr std::array<bool, 256> plain = [] {
        std::array<bool, 256> table{};
        for (int c = 0; c < 256; ++c) {
            table[size_t(c)] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                               (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.' ||
                               c == '\\';
        }
        return table;
    }();
    return plain[uchar(c)];
}

QString unescapedKey(QByteArrayView text)
{
    // Most keys ("1\\2", "color") have nothing to decode.
    if (std::all_of(text.begin(), text.end(), isPlainKeyChar))
        return QString::fromLatin1(text).replace(u'\\', u'/');
    const QString decoded = QString::fromUtf8(text);
    QString key;
    key.reserve(decoded.size());
    for (qsizetype i = 0; i < decoded.size(); ++i) {
        const QChar c = decoded.at(i);
        if (c == u'\\') {
            key += u'/';
            continue;
        }
        if (c == u'%' && i + 1 < decoded.size()) {
            const bool wide = decoded.at(i + 1) == u'U';
            const qsizetype digits = wide ? 4 : 2;
            const qsizetype first = i + (wide ? 2 : 1);
            if (first + digits <= decoded.size()) {
                bool ok = false;
                const ushort code = QStringView(decoded).sliced(first, digits).toUShort(&ok, 16);
                if (ok) {
                    key += QChar(code);
                    i = first + digits - 1;
                    continue;
                }
            }
        }
        key += c;
    }
    return key;
}

// The full key of an entry under `section` ("person/" + "1\\2"): a key with
// nothing to decode is made in one go, as 10,000 favorites have 40,000.
QString keyUnder(const QString &section, QByteArrayView text)
{
    if (!std::all_of(text.begin(), text.end(), isPlainKeyChar))
        return section + unescapedKey(text);
    QString key(section.size() + text.size(), Qt::Uninitialized);
    QChar *to = std::copy(section.cbegin(), section.cend(), key.data());
    for (const char c : text)
        *to++ = QLatin1Char(c == '\\' ? '/' : c);
    return key;
}

void chopTrailingBlanks(QString &text, qsizetype limit)
{
    qsizetype end = text.size();
    while (end > limit && (text.at(end - 1) == u' ' || text.at(end - 1) == u'\t'))
        --end;
    text.truncate(end);
}

// The text after '=': quotes, escapes, and unquoted commas that make a list.
QVariant unescapedValue(QByteArrayView text)
{
    // Most values ("Anna", "12 3 1985") are plain text between blanks, and
    // most of those plain ASCII, which needs no decoding.
    bool ascii = true;
    if (std::none_of(text.begin(), text.end(), [&ascii](char c) {
            ascii = ascii && uchar(c) < 0x80;
            return c == '\\' || c == '"' || c == ',';
        })) {
        const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
        qsizetype begin = 0;
        qsizetype end = text.size();
        while (begin < end && isBlank(text[begin]))
            ++begin;
        while (end > begin && isBlank(text[end - 1]))
            --end;
        const QByteArrayView plain = text.sliced(begin, end - begin);
        return ascii ? QString::fromLatin1(plain) : QString::fromUtf8(plain);
    }
    QString current;
    QStringList items;
    bool isList = false;
    bool inQuotes = false;
    bool wasQuoted = false;
    // Blanks up to here were escaped or quoted and stay.
    qsizetype keepUpTo = 0;
    qsizetype i = 0;
    const qsizetype size = text.size();
    const auto skipBlanks = [&] {
        while (i < size && (text[i] == ' ' || text[i] == '\t'))
            ++i;
    };
    skipBlanks();
    while (i < size) {
        const char c = text[i];
        if (c == '\\') {
            if (++i >= size)
                break;
            const char e = text[i++];
            switch (e) {
            case 'a':
                current += u'\a';
                break;
            case 'b':
                current += u'\b';
                break;
            case 'f':
                current += u'\f';
                break;
            case 'n':
                current += u'\n';
                break;
            case 'r':
                current += u'\r';
                break;
            case 't':
                current += u'\t';
                break;
            case 'v':
                current += u'\v';
                break;
            case '"':
            case '?':
            case '\'':
            case '\\':
                current += QLatin1Char(e);
                break;
            case 'x': {
                if (i < size && hexValue(text[i]) >= 0) {
                    char16_t code = 0;
                    while (i < size && hexValue(text[i]) >= 0)
                        code = char16_t((code << 4) + hexValue(text[i++]));
                    current += QChar(code);
                }
                break;
            }
            case '\n':
            case '\r':
                if (i < size && (text[i] == '\n' || text[i] == '\r') && text[i] != e)
                    ++i;
                break;
            default:
                if (e >= '0' && e <= '7') {
                    char16_t code = char16_t(e - '0');
                    while (i < size && text[i] >= '0' && text[i] <= '7')
                        code = char16_t((code << 3) + (text[i++] - '0'));
                    current += QChar(code);
                }
                // Any other escaped character is dropped.
                break;
            }
            keepUpTo = current.size();
        } else if (c == '"') {
            ++i;
            wasQuoted = true;
            inQuotes = !inQuotes;
            if (!inQuotes) {
                skipBlanks();
                keepUpTo = current.size();
            }
        } else if (c == ',' && !inQuotes) {
            if (!wasQuoted)
                chopTrailingBlanks(current, keepUpTo);
            items.append(current);
            current.clear();
            isList = true;
            wasQuoted = false;
            keepUpTo = 0;
            ++i;
            skipBlanks();
        } else {
            qsizetype end = i + 1;
            while (end < size && text[end] != '\\' && text[end] != '"' &&
                   (inQuotes || text[end] != ','))
                ++end;
            current += QString::fromUtf8(text.sliced(i, end - i));
            i = end;
        }
    }
    if (!wasQuoted)
        chopTrailingBlanks(current, keepUpTo);
    if (isList) {
        items.append(current);
        return items;
    }
    return current;
}

bool isTypedForm(const QString &text)
{
    static const char *const forms[] = {"@ByteArray(", "@Variant(", "@DateTime(",
                                        "@Rect(",      "@Size(",    "@Point("};
    if (!text.endsWith(u')'))
        return false;
    for (const char *form : forms) {
        if (text.startsWith(QLatin1StringView(form)))
            return true;
    }
    return false;
}

// QSettings' own markers: "@@" for a text that starts with '@', and the
// typed forms, which Tavlo keeps as they are (`raw`, blanks around it aside).
QVariant typedValue(QVariant unescaped, QByteArrayView raw)
{
    if (unescaped.typeId() == QMetaType::QStringList) {
        QStringList items = unescaped.toStringList();
        for (QString &item : items) {
            if (item.startsWith(u'@')) {
                if (!item.startsWith(u"@@"))
                    return raw.trimmed().toByteArray();
                item.remove(0, 1);
            }
        }
        return items;
    }
    if (unescaped.typeId() != QMetaType::QString)
        return unescaped;
    const QString &text = *static_cast<const QString *>(unescaped.constData());
    if (!text.startsWith(u'@'))
        return unescaped;
    if (text == u"@Invalid()")
        return {};
    if (text.startsWith(u"@String(") && text.endsWith(u')'))
        return text.sliced(8).chopped(1);
    if (isTypedForm(text))
        return raw.trimmed().toByteArray();
    if (text.startsWith(u"@@"))
        return text.sliced(1);
    return text;
}

// A group's entries as a tree, to find the lists among them. The nodes live
// in one array; a node's children are found by name, a view into the keys:
// by looking through a few, by hash when there are many (a list's items).
struct Node
{
    QVariant value;
    bool hasValue = false;
    std::vector<std::pair<QStringView, qsizetype>> children;
    QHash<QStringView, qsizetype> index;

    static constexpr size_t fewChildren = 8;

    std::optional<qsizetype> child(QStringView name) const
    {
        if (children.size() > fewChildren) {
            const auto found = index.constFind(name);
            return found == index.cend() ? std::nullopt : std::optional(*found);
        }
        for (const auto &[childName, at] : children) {
            if (childName == name)
                return at;
        }
        return std::nullopt;
    }
    void addChild(QStringView name, qsizetype at)
    {
        children.emplace_back(name, at);
        if (children.size() == fewChildren + 1) {
            index.reserve(qsizetype(children.size()) * 2);
            for (const auto &[childName, childAt] : children)
                index.insert(childName, childAt);
        } else if (children.size() > fewChildren + 1) {
            index.insert(name, at);
        }
    }
};
using Tree = std::vector<Node>;

// A list as QSettings' array reading sees one: a "size" of n >= 0, at least
// n other entries, and entries 1 to n, each a value or a list itself.
std::optional<QVariantList> asList(const Tree &tree, qsizetype at)
{
    const Node &group = tree[size_t(at)];
    const std::optional<qsizetype> sizeEntry = group.child(u"size");
    if (!sizeEntry)
        return std::nullopt;
    const Node &sizeNode = tree[size_t(*sizeEntry)];
    if (!sizeNode.hasValue || sizeNode.value.typeId() != QMetaType::QString)
        return std::nullopt;
    bool ok = false;
    const qint64 size = sizeNode.value.toString().toLongLong(&ok);
    if (!ok || size < 0 || size > qint64(group.children.size()) - 1)
        return std::nullopt;
    QVariantList list;
    list.reserve(size);
    for (qint64 i = 1; i <= size; ++i) {
        const QString name = QString::number(i);
        const std::optional<qsizetype> entry = group.child(name);
        if (!entry)
            return std::nullopt;
        const Node &node = tree[size_t(*entry)];
        if (node.hasValue) {
            if (!node.value.isValid())
                return std::nullopt;
            list.append(node.value);
        } else if (std::optional<QVariantList> inner = asList(tree, *entry)) {
            list.append(QVariant(std::move(*inner)));
        } else {
            return std::nullopt;
        }
    }
    return list;
}

// The entries of one top-level group in file order, full keys.
using Entries = QList<std::pair<QString, QVariant>>;

char16_t codeOf(QChar c)
{
    return c.unicode();
}

char16_t codeOf(char c)
{
    return char16_t(uchar(c));
}

// An index as QSettings writes one: digits without a leading zero, here at
// most `limit`. In a full key or as the file has it.
template <typename View>
std::optional<qsizetype> indexOf(View text, qsizetype limit)
{
    if (text.isEmpty() || text.size() > 9 || codeOf(text.front()) == u'0')
        return std::nullopt;
    qsizetype number = 0;
    for (const auto c : text) {
        const char16_t code = codeOf(c);
        if (code < u'0' || code > u'9')
            return std::nullopt;
        number = number * 10 + (code - u'0');
    }
    return number <= limit ? std::optional(number) : std::nullopt;
}

// An entry's path within its group comes two ways: from its full key, its
// parts between '/' ("1/2"), or as the file has it, between '\\' ("1\\2").
char separatorIn(QByteArrayView)
{
    return '\\';
}

char16_t separatorIn(QStringView)
{
    return u'/';
}

bool isSizeName(QByteArrayView name)
{
    return name == "size";
}

bool isSizeName(QStringView name)
{
    return name == u"size";
}

// The size entry of a list of `children` entries in all, if it is one.
std::optional<qsizetype> listSize(const QVariant *entry, qsizetype children)
{
    if (!entry || entry->typeId() != QMetaType::QString)
        return std::nullopt;
    bool ok = false;
    const qint64 size =
        QStringView(*static_cast<const QString *>(entry->constData())).toLongLong(&ok);
    if (!ok || size < 0 || size > children - 1)
        return std::nullopt;
    return size;
}

// The favorites' shape ("1/1", "1/2", "1/size" ... "size") read straight
// into rows: the answer the tree gives, without the tree. Nothing when the
// entries have another shape; then the tree decides. `pathOf` gives an
// entry's path within the group, `valueOf` its value.
template <typename Range, typename PathOf, typename ValueOf>
std::optional<std::optional<QVariantList>> asListOfRows(const Range &entries, PathOf pathOf,
                                                        ValueOf valueOf)
{
    // Rows are short; a longer one goes the general way.
    constexpr qsizetype longestRow = 64;
    // The entries stay where they are; a row points at its own. A favorite
    // has three texts (items 1 to 3; 0 is unused) and a size, which fit in
    // the row itself.
    struct Row
    {
        const QVariant *size = nullptr;
        QVarLengthArray<const QVariant *, 4> items;
        qsizetype itemCount = 0;
        bool seen = false;
    };
    std::vector<Row> rows;
    const QVariant *size = nullptr;
    qsizetype rowCount = 0;
    for (const auto &entry : entries) {
        const auto path = pathOf(entry);
        const QVariant &value = valueOf(entry);
        if (isSizeName(path)) {
            size = &value;
            continue;
        }
        const qsizetype slash = path.indexOf(separatorIn(path));
        const std::optional<qsizetype> row =
            slash < 0 ? std::nullopt : indexOf(path.first(slash), entries.size());
        if (!row)
            return std::nullopt;
        if (rows.size() <= size_t(*row))
            rows.resize(size_t(*row) + 1);
        Row &r = rows[size_t(*row)];
        if (!r.seen) {
            r.seen = true;
            ++rowCount;
        }
        const auto rest = path.sliced(slash + 1);
        if (isSizeName(rest)) {
            r.size = &value;
            continue;
        }
        const std::optional<qsizetype> item = indexOf(rest, longestRow);
        if (!item)
            return std::nullopt;
        if (r.items.size() <= *item)
            r.items.resize(*item + 1, nullptr);
        if (!r.items[*item])
            ++r.itemCount;
        r.items[*item] = &value;
    }
    const std::optional<qsizetype> count = listSize(size, rowCount + (size ? 1 : 0));
    if (!count)
        return std::optional<QVariantList>();
    QVariantList list;
    list.reserve(*count);
    for (qsizetype i = 1; i <= *count; ++i) {
        if (size_t(i) >= rows.size() || !rows[size_t(i)].seen)
            return std::optional<QVariantList>();
        const Row &r = rows[size_t(i)];
        const std::optional<qsizetype> length = listSize(r.size, r.itemCount + (r.size ? 1 : 0));
        if (!length)
            return std::optional<QVariantList>();
        QVariantList items;
        items.reserve(*length);
        for (qsizetype j = 1; j <= *length; ++j) {
            if (j >= r.items.size() || !r.items[j] || !r.items[j]->isValid())
                return std::optional<QVariantList>();
            items.append(*r.items[j]);
        }
        list.append(QVariant(std::move(items)));
    }
    return list;
}

QStringView pathInGroup(const QString &key)
{
    return QStringView(key).sliced(key.indexOf(u'/') + 1);
}

// The group as one list, if it is one: found by taking its entries' keys
// apart, the way any shape is found.
std::optional<QVariantList> asListOfTree(const Entries &entries)
{
    Tree tree(1);
    tree.reserve(size_t(entries.size()) * 2 + 1);
    for (const auto &[key, value] : entries) {
        qsizetype node = 0;
        for (const QStringView part : QStringView(key).sliced(key.indexOf(u'/') + 1).split(u'/')) {
            if (const std::optional<qsizetype> found = tree[size_t(node)].child(part)) {
                node = *found;
                continue;
            }
            tree.emplace_back();
            tree[size_t(node)].addChild(part, qsizetype(tree.size() - 1));
            node = qsizetype(tree.size() - 1);
        }
        tree[size_t(node)].value = value;
        tree[size_t(node)].hasValue = true;
    }
    return asList(tree, 0);
}

// The group as one list, if it is one.
std::optional<QVariantList> asList(const Entries &entries)
{
    const auto rows = asListOfRows(
        entries, [](const auto &entry) { return pathInGroup(entry.first); },
        [](const auto &entry) -> const QVariant & { return entry.second; });
    return rows ? *rows : asListOfTree(entries);
}

// "[name]" as the prefix of the keys under it: "" for [General].
QString sectionPrefix(QByteArrayView line)
{
    qsizetype close = line.indexOf(']');
    if (close < 0)
        close = line.size();
    const QByteArrayView name = line.sliced(1, close - 1).trimmed();
    if (name.compare("general", Qt::CaseInsensitive) == 0)
        return {};
    if (name.compare("%general", Qt::CaseInsensitive) == 0)
        return QString::fromLatin1(name.sliced(1)) + u'/';
    return unescapedKey(name) + u'/';
}

// An entry of a group as it was read. A key with nothing to decode in the
// group's own section keeps its path as the file has it ("12\\1"): the full
// key is made only when the group is not a list as Tavlo writes one, which
// saves a list of 10,000 favorites making 40,000 keys to take apart again.
struct GroupEntry
{
    QByteArrayView path;
    bool plain = false;
    QString key;
    QVariant value;
};

struct Group
{
    QString name;
    QList<GroupEntry> entries;

    // The entries with their full keys ("person/12/1"), in file order.
    Entries keyed() const
    {
        const QString section = name + u'/';
        Entries all;
        all.reserve(entries.size());
        for (const GroupEntry &entry : entries)
            all.append({entry.plain ? keyUnder(section, entry.path) : entry.key, entry.value});
        return all;
    }

    // The group as one list, if it is one; a list of rows straight from the
    // paths as read, when every key was plain.
    std::optional<QVariantList> asList() const
    {
        const bool allPlain = std::all_of(entries.cbegin(), entries.cend(),
                                          [](const GroupEntry &entry) { return entry.plain; });
        if (!allPlain)
            return IniFormat::asList(keyed());
        const auto rows = asListOfRows(
            entries, [](const GroupEntry &entry) { return entry.path; },
            [](const GroupEntry &entry) -> const QVariant & { return entry.value; });
        return rows ? *rows : asListOfTree(keyed());
    }
};

// ---- Recovering damaged lists of rows ---------------------------------------

// A row entry's place: "3/1" is row 3, item 1; "3/size" and "size" count
// the entries and have none. Nothing for a key of another shape.
struct RowPlace
{
    qsizetype row = 0;
    qsizetype item = 0;
};
constexpr qsizetype largestIndex = 999999999;

std::optional<std::optional<RowPlace>> rowPlace(QStringView path)
{
    if (path == u"size")
        return std::optional<RowPlace>();
    const qsizetype slash = path.indexOf(u'/');
    if (slash < 0)
        return std::nullopt;
    const std::optional<qsizetype> row = indexOf(path.first(slash), largestIndex);
    if (!row)
        return std::nullopt;
    const QStringView rest = path.sliced(slash + 1);
    if (rest == u"size")
        return std::optional<RowPlace>();
    const std::optional<qsizetype> item = indexOf(rest, largestIndex);
    if (!item)
        return std::nullopt;
    return std::optional(RowPlace{*row, *item});
}

// Whether every entry has a row's shape and at least one holds a row item.
bool isRowShaped(const Entries &entries)
{
    bool anyItem = false;
    for (const auto &[key, value] : entries) {
        const auto place = rowPlace(pathInGroup(key));
        if (!place)
            return false;
        anyItem = anyItem || place->has_value();
    }
    return anyItem;
}

// How many entries a list takes in the file: its size, and each item or,
// for a row, the row's own entries.
qsizetype entryCount(const QVariantList &list)
{
    qsizetype count = 1;
    for (const QVariant &item : list)
        count += item.typeId() == QMetaType::QVariantList ? entryCount(item.toList()) : 1;
    return count;
}

// What is wrong with a damaged group of rows, in a few words. `swallowed`:
// read a line at a time it has entries that the joined lines lost.
QString damageOf(const Entries &entries, bool swallowed)
{
    if (swallowed)
        return u"a quote or a backslash ran over the lines after it"_s;
    QSet<QStringView> seen;
    const QVariant *size = nullptr;
    for (const auto &[key, value] : entries) {
        const QStringView path = pathInGroup(key);
        if (seen.contains(path))
            return u"%1 is there twice"_s.arg(path.toString().replace(u'/', u'\\'));
        seen.insert(path);
        if (path == u"size")
            size = &value;
    }
    if (!size)
        return u"its size is missing"_s;
    return u"size=%1 does not fit its entries"_s.arg(oneLine(size->toString()));
}

// Every row found, in file order; a row whose entries come again starts
// again (a group or an entry repeated), so both are kept. An item that is
// missing in a row reads as an empty text.
QVariantList recoveredRows(const Entries &entries)
{
    std::vector<std::pair<std::pair<qsizetype, qsizetype>, QMap<qsizetype, QVariant>>> rows;
    QHash<qsizetype, size_t> rowAt;
    QSet<std::pair<qsizetype, qsizetype>> seen;
    qsizetype round = 0;
    for (const auto &[key, value] : entries) {
        const auto place = rowPlace(pathInGroup(key));
        if (!place || !*place)
            continue;
        const auto [row, item] = **place;
        if (seen.contains({row, item})) {
            ++round;
            seen.clear();
            rowAt.clear();
        }
        seen.insert({row, item});
        auto found = rowAt.constFind(row);
        if (found == rowAt.cend()) {
            found = rowAt.insert(row, rows.size());
            rows.push_back({{round, row}, {}});
        }
        // A typed value where a text belongs reads as its text.
        rows[*found].second.insert(item, value.toString());
    }
    std::stable_sort(rows.begin(), rows.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    QVariantList list;
    list.reserve(qsizetype(rows.size()));
    for (const auto &[where, items] : rows) {
        QVariantList texts;
        for (qsizetype item = 1; item <= items.lastKey(); ++item)
            texts.append(items.value(item, QString()));
        list.append(QVariant(texts));
    }
    return list;
}

// The groups of rows as the file says them a line at a time: a quote left
// open or a backslash at a line's end then takes nothing from the lines
// after it.
QHash<QString, Entries> rowGroupsLineByLine(QByteArrayView text)
{
    QHash<QString, Entries> groups;
    QString section;
    qsizetype pos = 0;
    while (pos < text.size()) {
        qsizetype end = pos;
        while (end < text.size() && text[end] != '\n' && text[end] != '\r')
            ++end;
        const QByteArrayView line = text.sliced(pos, end - pos).trimmed();
        pos = end + 1;
        if (line.startsWith('[')) {
            section = sectionPrefix(line);
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (section.isEmpty() || equals <= 0 || line.startsWith(';'))
            continue;
        const QString key = keyUnder(section, line.first(equals).trimmed());
        if (!rowPlace(pathInGroup(key)))
            continue;
        const QByteArrayView raw = line.sliced(equals + 1);
        groups[section.chopped(1)].append({key, typedValue(unescapedValue(raw), raw)});
    }
    for (auto it = groups.begin(); it != groups.end();) {
        if (isRowShaped(*it))
            ++it;
        else
            it = groups.erase(it);
    }
    return groups;
}

// ---- Writing --------------------------------------------------------------

void appendEscapedKey(QByteArray &out, QStringView key)
{
    static const char hex[] = "0123456789ABCDEF";
    for (const QChar qc : key) {
        const char16_t c = qc.unicode();
        if (c == u'/') {
            out += '\\';
        } else if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
                   (c >= u'0' && c <= u'9') || c == u'_' || c == u'-' || c == u'.') {
            out += char(c);
        } else if (c <= 0xFF) {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 0xF];
        } else {
            out += "%U";
            for (int shift = 12; shift >= 0; shift -= 4)
                out += hex[(c >> shift) & 0xF];
        }
    }
}

// A character written as it is: printable ASCII but the quote and the
// backslash, which are escaped.
bool isPlainAscii(char16_t c)
{
    return c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\';
}

void appendEscapedText(QByteArray &out, QStringView text)
{
    const qsizetype start = out.size();
    bool needsQuotes = false;
    // After a numeric escape a hex digit would be read as part of it.
    bool afterNumericEscape = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text.at(i).unicode();
        if (c == u';' || c == u',' || c == u'=')
            needsQuotes = true;
        if (afterNumericEscape && c < 0x80 && hexValue(char(c)) >= 0) {
            out += "\\x" + QByteArray::number(uint(c), 16);
            continue;
        }
        afterNumericEscape = false;
        if (isPlainAscii(c)) {
            // A run of them goes in at once: most texts are nothing else, and
            // the whole file is written again with each change.
            // Room for the rest of the text, one byte a character, cut back
            // to what the run took.
            const qsizetype written = out.size();
            out.resize(written + (text.size() - i));
            char *const from = out.data() + written;
            char *to = from;
            for (; i < text.size() && isPlainAscii(text.at(i).unicode()); ++i) {
                const char16_t plain = text.at(i).unicode();
                if (plain == u';' || plain == u',' || plain == u'=')
                    needsQuotes = true;
                *to++ = char(plain);
            }
            out.truncate(written + (to - from));
            --i;
            continue;
        }
        switch (c) {
        case u'\0':
            out += "\\0";
            afterNumericEscape = true;
            break;
        case u'\a':
            out += "\\a";
            break;
        case u'\b':
            out += "\\b";
            break;
        case u'\f':
            out += "\\f";
            break;
        case u'\n':
            out += "\\n";
            break;
        case u'\r':
            out += "\\r";
            break;
        case u'\t':
            out += "\\t";
            break;
        case u'\v':
            out += "\\v";
            break;
        case u'"':
            out += "\\\"";
            break;
        case u'\\':
            out += "\\\\";
            break;
        default:
            if (c <= 0x1F) {
                out += "\\x" + QByteArray::number(uint(c), 16);
                afterNumericEscape = true;
            } else if (c < 0x80) {
                out += char(c);
            } else if (QChar::isHighSurrogate(c) && i + 1 < text.size() &&
                       text.at(i + 1).isLowSurrogate()) {
                out += text.sliced(i, 2).toUtf8();
                ++i;
            } else if (QChar::isSurrogate(c)) {
                // Half a pair cannot be said in UTF-8: U+FFFD, as Qt writes it.
                out += "\xEF\xBF\xBD";
            } else {
                out += text.sliced(i, 1).toUtf8();
            }
        }
    }
    if (needsQuotes || (out.size() > start && (out.at(start) == ' ' || out.back() == ' '))) {
        out.insert(start, '"');
        out += '"';
    }
}

// A text that starts with '@' would read as one of QSettings' markers.
void appendText(QByteArray &out, const QString &text)
{
    if (text.startsWith(u'@'))
        appendEscapedText(out, QString(u'@' + text));
    else
        appendEscapedText(out, text);
}

void appendValue(QByteArray &out, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        out += "@Invalid()";
        break;
    case QMetaType::QByteArray:
        out += value.toByteArray();
        break;
    case QMetaType::QStringList: {
        const QStringList items = value.toStringList();
        if (items.isEmpty())
            out += "@Invalid()";
        for (qsizetype i = 0; i < items.size(); ++i) {
            if (i > 0)
                out += ", ";
            appendText(out, items.at(i));
        }
        break;
    }
    case QMetaType::Bool:
        out += value.toBool() ? "true" : "false";
        break;
    default:
        appendText(out, value.toString());
    }
}

void appendEntry(QByteArray &out, QStringView key, const QVariant &value)
{
    appendEscapedKey(out, key);
    out += '=';
    appendValue(out, value);
    out += '\n';
}

// Entries 1 to n in order, then "size", as QSettings lays out an array.
// `prefix` is the escaped key of the list inside its section, with its
// trailing backslash, or empty for the section's own list.
void appendNumber(QByteArray &out, qsizetype number)
{
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(digits, end - digits);
}

void appendList(QByteArray &out, QByteArray &prefix, const QVariantList &list)
{
    const qsizetype prefixLength = prefix.size();
    for (qsizetype i = 0; i < list.size(); ++i) {
        prefix.truncate(prefixLength);
        appendNumber(prefix, i + 1);
        const QVariant &item = list.at(i);
        if (item.typeId() == QMetaType::QVariantList) {
            prefix += '\\';
            appendList(out, prefix, item.toList());
            continue;
        }
        out += prefix;
        out += '=';
        appendValue(out, item);
        out += '\n';
    }
    prefix.truncate(prefixLength);
    out += prefix;
    out += "size=";
    appendNumber(out, list.size());
    out += '\n';
}

void appendSectionHeader(QByteArray &out, const QString &section)
{
    if (!out.isEmpty())
        out += '\n';
    QByteArray name;
    appendEscapedKey(name, section);
    if (name.isEmpty())
        out += "[General]\n";
    else if (name.compare("general", Qt::CaseInsensitive) == 0)
        out += "[%" + name + "]\n";
    else
        out += '[' + name + "]\n";
}

} // namespace

Values parse(QByteArrayView text, QStringList *problems)
{
    if (text.startsWith("\xef\xbb\xbf"))
        text = text.sliced(3);
    Values values;
    // Entries under a group ("person/1/1"), by group, to find the lists.
    QHash<QString, qsizetype> groupIndex;
    QList<Group> groups;
    qsizetype lastGroup = -1;
    QString section;
    // The section is one group's own ("[person]"): its plain keys are paths
    // within the group as they stand.
    bool groupSection = false;
    // Where that section's group stands in `groups`, once known.
    qsizetype sectionGroup = -1;
    bool spansLines = false;
    qsizetype pos = 0;
    while (const std::optional<Line> line = nextLine(text, pos)) {
        spansLines = spansLines || line->spansLines;
        if (line->text.startsWith('[')) {
            section = sectionPrefix(line->text);
            groupSection = !section.isEmpty() && section.indexOf(u'/') == section.size() - 1;
            sectionGroup = -1;
            continue;
        }
        if (line->equals < 0)
            continue;
        const QByteArrayView keyText = line->text.first(line->equals).trimmed();
        const QByteArrayView raw = line->text.sliced(line->equals + 1);
        QVariant value = typedValue(unescapedValue(raw), raw);
        GroupEntry entry;
        QStringView group;
        if (groupSection && std::all_of(keyText.begin(), keyText.end(), isPlainKeyChar)) {
            entry.path = keyText;
            entry.plain = true;
            group = QStringView(section).chopped(1);
        } else {
            entry.key = keyUnder(section, keyText);
            const qsizetype slash = entry.key.indexOf(u'/');
            if (slash < 0) {
                values.insert(entry.key, value);
                continue;
            }
            group = QStringView(entry.key).first(slash);
        }
        entry.value = std::move(value);
        // Entries of a group mostly follow one another: the last one's place
        // is looked up again only when the group changes. A section's own
        // keys are all of its group.
        if (entry.plain && sectionGroup >= 0) {
            lastGroup = sectionGroup;
        } else if (lastGroup < 0 || group != groups.at(lastGroup).name) {
            const QString name = group.toString();
            auto found = groupIndex.constFind(name);
            if (found == groupIndex.cend()) {
                found = groupIndex.insert(name, groups.size());
                groups.append({name, {}});
            }
            lastGroup = *found;
        }
        if (entry.plain)
            sectionGroup = lastGroup;
        groups[lastGroup].entries.append(std::move(entry));
    }
    // A line that swallowed the lines after it may have taken rows, or a
    // whole group of them, along: those read a line at a time.
    QHash<QString, Entries> lineByLine;
    if (spansLines) {
        lineByLine = rowGroupsLineByLine(text);
        for (auto it = lineByLine.cbegin(); it != lineByLine.cend(); ++it) {
            if (!groupIndex.contains(it.key())) {
                groupIndex.insert(it.key(), groups.size());
                groups.append({it.key(), {}});
            }
        }
    }
    for (const Group &group : std::as_const(groups)) {
        const QString &name = group.name;
        // A value under the group's own name is what a read of it finds.
        if (values.contains(name)) {
            for (const auto &[key, value] : group.keyed())
                values.insert(key, value);
            continue;
        }
        const auto lines = lineByLine.constFind(name);
        const qsizetype count = group.entries.size();
        const bool swallowed = lines != lineByLine.cend() && lines->size() != count;
        std::optional<QVariantList> list = count == 0 ? std::nullopt : group.asList();
        // Every entry used once: nothing left over, nothing twice.
        if (list && !swallowed && count == entryCount(*list)) {
            values.insert(name, QVariant(std::move(*list)));
            continue;
        }
        const Entries entries = group.keyed();
        const Entries &found = swallowed ? *lines : entries;
        if (isRowShaped(found)) {
            const QVariantList rows = recoveredRows(found);
            if (problems)
                problems->append(u"[%1]: %2; %3 rows read"_s.arg(name, damageOf(found, swallowed))
                                     .arg(rows.size()));
            values.insert(name, rows);
            continue;
        }
        if (list) {
            values.insert(name, QVariant(std::move(*list)));
            continue;
        }
        for (const auto &[key, value] : entries)
            values.insert(key, value);
    }
    return values;
}

QByteArray serialize(const Values &values)
{
    // Section name ("" for [General]) -> its values, in key order.
    QMap<QString, QList<Values::const_iterator>> sections;
    qsizetype estimate = 64;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        const QString &key = it.key();
        const bool isList = it.value().typeId() == QMetaType::QVariantList;
        const qsizetype slash = isList ? -1 : key.indexOf(u'/');
        sections[isList ? key : slash < 0 ? QString() : key.first(slash)].append(it);
        // A favorite takes about sixty bytes.
        estimate += isList ? 64 * it.value().toList().size() : 32;
    }

    QByteArray out;
    out.reserve(estimate);
    for (auto section = sections.cbegin(); section != sections.cend(); ++section) {
        appendSectionHeader(out, section.key());
        for (const Values::const_iterator &it : *section) {
            if (it.value().typeId() == QMetaType::QVariantList) {
                QByteArray prefix;
                appendList(out, prefix, it.value().toList());
                continue;
            }
            const QStringView key = section.key().isEmpty()
                                        ? QStringView(it.key())
                                        : QStringView(it.key()).sliced(section.key().size() + 1);
            appendEntry(out, key, it.value());
        }
    }
    return out;
}

} // namespace IniFormat
