#include "document/XmlWriter.h"

#include "document/Record.h"
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
int spaceRule(const Record* element)
{
    if (!element->attributes)
        return 0;
    for (const Node::Attribute& attribute : *element->attributes) {
        if (attribute.name == u"xml:space")
            return attribute.value == u"preserve" ? 1 : -1;
    }
    return 0;
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
    m_levels.clear();
    if (m_layout == Layout::Indented)
        put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    const Record* record = root;
    for (;;) {
        begin(record);
        if (record->first) {
            enter(record);
            record = record->first;
            continue;
        }
        while (record != root && !record->next) {
            record = record->up;
            end(record);
        }
        if (record == root)
            break;
        record = record->next;
    }
    if (m_layout == Layout::Indented)
        put("\n");
    m_bytes.truncate(m_size);
    return std::move(m_bytes);
}

void XmlWriter::begin(const Record* record)
{
    switch (record->type) {
    case NodeType::Element:
        beginElement(record);
        break;
    case NodeType::Text:
        putText(record);
        break;
    case NodeType::Comment:
        putComment(record);
        break;
    case NodeType::ProcessingInstruction:
        putInstruction(record);
        break;
    case NodeType::Document:
    case NodeType::None:
        break;
    }
}

void XmlWriter::beginElement(const Record* element)
{
    newLine();
    put("<");
    put(element->name.text(), Where::Text);
    if (element->attributes) {
        for (const Node::Attribute& attribute : *element->attributes) {
            put(" ");
            put(attribute.name, Where::Text);
            put("=\"");
            put(attribute.value, Where::Attribute);
            put("\"");
        }
    }
    if (element->first) {
        put(">");
    } else if (element->text.isEmpty()) {
        put("/>");
    } else {
        put(">");
        put(element->text, Where::Text);
        put("</");
        put(element->name.text(), Where::Text);
        put(">");
    }
}

void XmlWriter::enter(const Record* record)
{
    Level level{m_layout == Layout::OneLine, false, false};
    if (!m_levels.empty())
        level = m_levels.back();
    if (record->type == NodeType::Element) {
        if (const int rule = spaceRule(record)) {
            level.preserves = rule > 0;
            level.inOneLine |= rule > 0;
        }
        bool hasText = false;
        bool hasMoreThanBlanks = false;
        for (const Record* child = record->first; child && !hasMoreThanBlanks; child = child->next) {
            if (child->type == NodeType::Text && !child->text.isEmpty()) {
                hasText = true;
                hasMoreThanBlanks = !isXmlBlank(child->text);
            }
        }
        level.inOneLine |= hasText;
        level.marksBlanks = !hasMoreThanBlanks && !level.preserves;
    }
    m_levels.push_back(level);
}

void XmlWriter::end(const Record* record)
{
    const bool inOneLine = m_levels.back().inOneLine;
    m_levels.pop_back();
    if (record->type != NodeType::Element)
        return;
    if (!inOneLine)
        newLine();
    put("</");
    put(record->name.text(), Where::Text);
    put(">");
}

void XmlWriter::newLine()
{
    if (m_layout == Layout::OneLine || (!m_levels.empty() && m_levels.back().inOneLine))
        return;
    // The level of the document itself is not indented.
    const qsizetype blanks = 2 * std::max<qsizetype>(0, qsizetype(m_levels.size()) - 1);
    char* out = room(blanks + 1);
    *out++ = '\n';
    std::memset(out, ' ', std::size_t(blanks));
    m_size += blanks + 1;
}

void XmlWriter::putText(const Record* text)
{
    QStringView rest = text->text;
    if (!m_levels.empty() && m_levels.back().marksBlanks && !rest.isEmpty()) {
        // One blank that is written as a reference makes a text of all of them.
        put(blankReference(rest.front().unicode()));
        rest = rest.sliced(1);
    }
    put(rest, Where::Text);
}

void XmlWriter::putComment(const Record* comment)
{
    QString data = withPlainLineEnds(comment->text);
    while (data.contains(QStringLiteral("--")))
        data.replace(QStringLiteral("--"), QStringLiteral("- -"));
    if (data.endsWith(u'-'))
        data += u' ';
    newLine();
    put("<!--");
    put(data, Where::Plain);
    put("-->");
}

void XmlWriter::putInstruction(const Record* instruction)
{
    // The declaration is the writer's own; a second one could not be read.
    if (instruction->name.text().compare(u"xml", Qt::CaseInsensitive) == 0)
        return;
    QString data = withPlainLineEnds(instruction->text);
    data.replace(QStringLiteral("?>"), QStringLiteral("? >"));
    newLine();
    put("<?");
    put(instruction->name.text(), Where::Plain);
    if (!data.isEmpty())
        put(" ");
    put(data, Where::Plain);
    put("?>");
}

void XmlWriter::put(const char* ascii)
{
    const qsizetype size = qsizetype(std::strlen(ascii));
    std::memcpy(room(size), ascii, std::size_t(size));
    m_size += size;
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
