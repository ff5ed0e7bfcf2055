#include "document/XmlWriter.h"

#include "document/XmlNames.h"

#include <QChar>
#include <QString>

#include <algorithm>
#include <cstring>

namespace zan::document {

namespace {

using Record = Node::Record;

constexpr qsizetype LongestPerUnit = 6; // "&quot;" is the longest that one UTF-16 unit becomes
constexpr qsizetype Chunk = 4096;       // units written at a time, so that the room asked for stays small
constexpr char32_t Replacement = 0xFFFD;

/// What an ASCII character is written as; null where it is written as it is.
const char* escapeOf(char16_t unit, bool inAttribute) noexcept
{
    switch (unit) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r': // readers make a line feed of it when it stands there plainly
        return "&#13;";
    case '"':
        return inAttribute ? "&quot;" : nullptr;
    case '\n': // readers make a blank of these in an attribute
        return inAttribute ? "&#10;" : nullptr;
    case '\t':
        return inAttribute ? "&#9;" : nullptr;
    default:
        return nullptr;
    }
}

const char* blankReference(char16_t blank) noexcept
{
    switch (blank) {
    case '\t':
        return "&#9;";
    case '\n':
        return "&#10;";
    case '\r':
        return "&#13;";
    default:
        return "&#32;";
    }
}

char* putUtf8(char* out, char32_t character) noexcept
{
    if (!isXmlCharacter(character))
        character = Replacement;
    if (character < 0x80) {
        *out++ = char(character);
        return out;
    }
    if (character < 0x800) {
        *out++ = char(0xC0 | (character >> 6));
    } else {
        if (character < 0x10000) {
            *out++ = char(0xE0 | (character >> 12));
        } else {
            *out++ = char(0xF0 | (character >> 18));
            *out++ = char(0x80 | ((character >> 12) & 0x3F));
        }
        *out++ = char(0x80 | ((character >> 6) & 0x3F));
    }
    *out++ = char(0x80 | (character & 0x3F));
    return out;
}

/// The value of xml:space: 1 preserve, -1 default, 0 not given.
int spaceRule(const Place& element)
{
    int rule = 0;
    element.forEachAttribute([&](const QString& name, const QString& value) {
        if (rule == 0 && name == u"xml:space")
            rule = value == u"preserve" ? 1 : -1;
    });
    return rule;
}

/// Line ends as readers hand them over, for nodes in which no reference can stand.
QString withPlainLineEnds(QString data)
{
    return data.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

} // namespace

QByteArray XmlWriter::write(Record* root)
{
    m_size = 0;
    if (m_layout == Layout::Indented)
        put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    put(Place(root), Level{m_layout == Layout::OneLine});
    if (m_layout == Layout::Indented)
        put("\n");
    m_bytes.truncate(m_size);
    return std::move(m_bytes);
}

// Recursion is safe: a tree has no more than Node::DeepestLevel levels.
void XmlWriter::put(const Place& place, const Level& level)
{
    switch (place.type()) {
    case NodeType::Element:
        putElement(place, level);
        break;
    case NodeType::Text:
        putText(place, level);
        break;
    case NodeType::Comment:
        putComment(place, level);
        break;
    case NodeType::ProcessingInstruction:
        putInstruction(place, level);
        break;
    case NodeType::Document:
        putChildren(place, level);
        break;
    case NodeType::None:
        break;
    }
}

void XmlWriter::putElement(const Place& element, const Level& level)
{
    newLine(level);
    put("<");
    putName(element);
    element.forEachAttribute([this](const QString& name, const QString& value) {
        put(" ");
        put(name, Where::Text);
        put("=\"");
        put(value, Where::Attribute);
        put("\"");
    });
    const bool hasChildren = element.hasChildren();
    if (!hasChildren && !element.hasOwnText()) {
        put("/>");
        return;
    }
    put(">");
    if (hasChildren) {
        const Level inner = levelIn(element, level);
        putChildren(element, inner);
        if (!inner.inOneLine)
            newLine(level);
    } else {
        putOwnText(element);
    }
    put("</");
    putName(element);
    put(">");
}

void XmlWriter::putChildren(const Place& place, const Level& level)
{
    place.forEachChild([&](const Place& child) {
        put(child, level);
        return true;
    });
}

XmlWriter::Level XmlWriter::levelIn(const Place& element, const Level& level) const
{
    Level inner = level;
    ++inner.depth;
    if (const int rule = spaceRule(element)) {
        inner.preserves = rule > 0;
        inner.inOneLine |= rule > 0;
    }
    bool hasText = false;
    const bool hasBlanksOnly = element.forEachChild([&](const Place& child) {
        if (child.type() != NodeType::Text || !child.hasOwnText())
            return true;
        hasText = true;
        return isXmlBlank(child.ownText());
    });
    inner.inOneLine |= hasText;
    inner.marksBlanks = hasBlanksOnly && !inner.preserves;
    return inner;
}

void XmlWriter::newLine(const Level& level)
{
    if (level.inOneLine)
        return;
    const qsizetype blanks = 2 * qsizetype(level.depth);
    char* out = room(blanks + 1);
    *out++ = '\n';
    std::memset(out, ' ', std::size_t(blanks));
    m_size += blanks + 1;
}

void XmlWriter::putName(const Place& place)
{
    if (const QByteArrayView bytes = place.plainName(); !bytes.isEmpty())
        put(bytes);
    else
        put(place.name().text(), Where::Text);
}

/// The text of a leaf: the bytes that were read, where nothing else would be written for them.
void XmlWriter::putOwnText(const Place& leaf)
{
    if (const QByteArrayView bytes = leaf.plainBytes(); !bytes.isEmpty())
        put(bytes);
    else
        put(leaf.ownText(), Where::Text);
}

void XmlWriter::putText(const Place& text, const Level& level)
{
    if (!level.marksBlanks || !text.hasOwnText()) {
        putOwnText(text);
        return;
    }
    // One blank that is written as a reference makes a text of all of them.
    const QString blanks = text.ownText();
    put(blankReference(blanks.front().unicode()));
    put(QStringView(blanks).sliced(1), Where::Text);
}

void XmlWriter::putComment(const Place& comment, const Level& level)
{
    QString data = withPlainLineEnds(comment.ownText());
    while (data.contains(QStringLiteral("--")))
        data.replace(QStringLiteral("--"), QStringLiteral("- -"));
    if (data.endsWith(u'-'))
        data += u' ';
    newLine(level);
    put("<!--");
    put(data, Where::Plain);
    put("-->");
}

void XmlWriter::putInstruction(const Place& instruction, const Level& level)
{
    // The declaration is the writer's own; a second one could not be read.
    if (instruction.name().text().compare(u"xml", Qt::CaseInsensitive) == 0)
        return;
    QString data = withPlainLineEnds(instruction.ownText());
    data.replace(QStringLiteral("?>"), QStringLiteral("? >"));
    newLine(level);
    put("<?");
    put(instruction.name().text(), Where::Plain);
    if (!data.isEmpty())
        put(" ");
    put(data, Where::Plain);
    put("?>");
}

void XmlWriter::put(QByteArrayView bytes)
{
    std::memcpy(room(bytes.size()), bytes.data(), std::size_t(bytes.size()));
    m_size += bytes.size();
}

void XmlWriter::put(QStringView text, Where where)
{
    while (!text.isEmpty()) {
        qsizetype count = std::min(text.size(), Chunk);
        if (count < text.size() && text[count - 1].isHighSurrogate())
            ++count; // a pair stays together
        put(text.first(count).utf16(), count, where);
        text = text.sliced(count);
    }
}

void XmlWriter::put(const char16_t* unit, qsizetype count, Where where)
{
    char* out = room(count * LongestPerUnit);
    const char* const start = out;
    for (const char16_t* const end = unit + count; unit != end; ++unit) {
        if (const char* escape = where == Where::Plain ? nullptr : escapeOf(*unit, where == Where::Attribute)) {
            while (*escape)
                *out++ = *escape++;
        } else if (*unit < 0x80 && *unit >= 0x20) {
            *out++ = char(*unit);
        } else if (QChar::isHighSurrogate(*unit) && unit + 1 != end && QChar::isLowSurrogate(unit[1])) {
            out = putUtf8(out, QChar::surrogateToUcs4(*unit, unit[1]));
            ++unit;
        } else {
            out = putUtf8(out, *unit); // half a pair is no character and gets replaced
        }
    }
    m_size += out - start;
}

char* XmlWriter::room(qsizetype bytes)
{
    if (m_bytes.size() - m_size < bytes)
        m_bytes.resize(std::max(m_bytes.size() * 2, m_size + bytes + 1024));
    return m_bytes.data() + m_size;
}

} // namespace zan::document
