#include "document/XmlReader.h"

#include "document/Record.h"
#include "document/XmlEncoding.h"
#include "document/XmlNames.h"

#include <QSet>

#include <pugixml.hpp>

#include <algorithm>
#include <cstring>
#include <utility>

namespace zan::document {

namespace {

constexpr qsizetype LongestName = 1024;
constexpr std::size_t FewAttributes = 16;

// What a byte of a piece of text needs more than being copied, by what the piece is.
constexpr std::uint8_t SpecialInText = 1;
constexpr std::uint8_t SpecialInAttribute = 2;
constexpr std::uint8_t SpecialInPlain = 4;

constexpr std::array<std::uint8_t, 256> makeSpecialBytes()
{
    std::array<std::uint8_t, 256> special{};
    special['\r'] = SpecialInText | SpecialInAttribute | SpecialInPlain;
    special['&'] = SpecialInText | SpecialInAttribute;
    special['>'] = SpecialInText; // where it ends a "]]>"
    special['<'] = special['\n'] = special['\t'] = SpecialInAttribute;
    for (std::size_t byte = 0x80; byte < special.size(); ++byte)
        special[byte] = SpecialInText | SpecialInAttribute | SpecialInPlain; // to be decoded
    return special;
}
constexpr std::array<std::uint8_t, 256> SpecialBytes = makeSpecialBytes();

bool hasSpecialBytes(const char* raw, qsizetype size, std::uint8_t special) noexcept
{
    std::uint8_t met = 0;
    for (qsizetype i = 0; i < size; ++i)
        met |= SpecialBytes[static_cast<unsigned char>(raw[i])];
    return (met & special) != 0;
}

bool isBlank(const char* raw) noexcept
{
    for (; *raw; ++raw) {
        if (!isXmlBlank(char16_t(static_cast<unsigned char>(*raw))))
            return false;
    }
    return true;
}

/// Why the parser stopped.
const char* messageFor(pugi::xml_parse_status status)
{
    switch (status) {
    case pugi::status_bad_pi:
        return "A processing instruction is not well formed; it ends with ?>.";
    case pugi::status_bad_comment:
        return "A comment is not closed with -->.";
    case pugi::status_bad_cdata:
        return "A CDATA section is not closed with ]]>.";
    case pugi::status_bad_doctype:
        return "A document type declaration is not allowed; remove the <!DOCTYPE ...>.";
    case pugi::status_bad_start_element:
        return "A start tag is not well formed.";
    case pugi::status_bad_attribute:
        return "An attribute is not well formed; it is written name=\"value\".";
    case pugi::status_bad_end_element:
        return "An end tag is not well formed.";
    case pugi::status_end_element_mismatch:
        return "The end tag does not close the element that is open here.";
    case pugi::status_out_of_memory:
        return "There is not enough memory for the document.";
    default:
        return "A < that starts no tag is written &lt;.";
    }
}

} // namespace

struct XmlReader::Level
{
    Node::Record* record;
    pugi::xml_node next; ///< the child to read next
    bool keepsBlanks;    ///< blanks between the children are text
    bool preserves;      ///< xml:space says so
};

struct XmlReader::Content
{
    explicit Content(const pugi::xml_node& node)
        : hasText(!isBlank(node.value()))
    {
        for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
            const pugi::xml_node_type type = child.type();
            if (type == pugi::node_cdata)
                hasText = true;
            else if (type != pugi::node_pcdata)
                hasMarkup = true;
            else if (!hasText)
                hasText = !isBlank(child.value());
        }
    }
    bool hasText;           ///< more than blanks
    bool hasMarkup = false; ///< elements, comments, instructions
};

XmlReader::XmlReader(const QByteArray& utf8, const ParseLimits& limits)
    : m_source(utf8)
    , m_buffer(utf8.constData(), std::size_t(utf8.size()))
    , m_limits(limits)
{}

XmlReader::~XmlReader() = default;

bool XmlReader::read(Node::Record* document)
{
    constexpr unsigned options = pugi::parse_pi | pugi::parse_comments | pugi::parse_cdata | pugi::parse_ws_pcdata |
                                 pugi::parse_declaration | pugi::parse_doctype | pugi::parse_fragment |
                                 pugi::parse_embed_pcdata;
    pugi::xml_document tree;
    // The closing zero of the buffer is handed over with it, so that the parser overwrites no character of the text.
    const pugi::xml_parse_result result =
        tree.load_buffer_inplace(m_buffer.data(), m_buffer.size() + 1, options, pugi::encoding_utf8);
    if (result.status != pugi::status_ok && result.status != pugi::status_no_document_element)
        return failParsing(result);
    return build(tree, document);
}

bool XmlReader::failParsing(const pugi::xml_parse_result& result)
{
    const qsizetype stop = std::clamp<qsizetype>(result.offset, 0, m_source.size());
    const auto before = [&](const char* opening) {
        return std::max<qsizetype>(0, m_source.lastIndexOf(opening, stop));
    };
    switch (result.status) {
    case pugi::status_bad_attribute:
        return failAt(stop, messageFor(result.status));
    case pugi::status_bad_comment:
        return failAt(before("<!--"), messageFor(result.status));
    case pugi::status_bad_cdata:
        return failAt(before("<![CDATA["), messageFor(result.status));
    case pugi::status_bad_doctype:
        return failAt(before("<!DOCTYPE"), messageFor(result.status));
    case pugi::status_bad_pi:
        return failAt(before("<?"), messageFor(result.status));
    case pugi::status_end_element_mismatch:
        if (stop + 1 >= m_source.size())
            return failAt(m_source.size(), "The text ends before every element is closed.");
        break;
    default:
        break;
    }
    return failAt(before("<"), messageFor(result.status));
}

bool XmlReader::build(const pugi::xml_node& tree, Node::Record* document)
{
    m_levels.push_back({document, tree.first_child(), false, false});
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        const pugi::xml_node node = level.next;
        if (!node) {
            m_levels.pop_back();
            continue;
        }
        level.next = node.next_sibling();
        if (!addNode(level, node))
            return false;
    }
    return m_hasElement || failAt(m_source.size(), "The text holds no element.");
}

bool XmlReader::addNode(Level& level, const pugi::xml_node& node)
{
    switch (node.type()) {
    case pugi::node_element:
        return addElement(level, node);
    case pugi::node_pcdata:
        return addText(level, node.value(), false);
    case pugi::node_cdata:
        return addText(level, node.value(), true);
    case pugi::node_comment:
        return addComment(level, node);
    case pugi::node_pi:
        return addInstruction(level, node);
    case pugi::node_declaration:
        // "<?xml" at the very start and nowhere else
        if (node.name() == m_buffer.data() + 2 && std::strcmp(node.name(), "xml") == 0)
            return true;
        return fail(node.name() - 2, "An XML declaration stands at the start of the text only.");
    default:
        return failAt(m_source.lastIndexOf('<', node.value() - m_buffer.data()),
                      messageFor(pugi::status_bad_doctype));
    }
}

bool XmlReader::addElement(const Level& level, const pugi::xml_node& node)
{
    const char* const rawName = node.name();
    const char* const place = rawName - 1;
    if (!count(place))
        return false;
    if (int(m_levels.size()) > m_limits.depth)
        return fail(place, "The elements are nested too deeply.");
    Node::Record* const parent = level.record;
    if (parent->type == NodeType::Document && std::exchange(m_hasElement, true))
        return fail(place, "A document has one outermost element; this is a second one.");
    Name name;
    if (!readName(rawName, name))
        return false;
    Node::Record* const element = add(parent, NodeType::Element, name);
    if (node.first_attribute() && !addAttributes(element, node))
        return false;
    if (!node.first_child()) // most elements hold one text, or nothing
        return readText(node.value(), Where::Text, element->text);
    const Content content(node);
    if (!content.hasMarkup)
        return addLeafText(element, node);
    bool preserves = level.preserves;
    if (element->attributes) {
        for (const Node::Attribute& attribute : *element->attributes) {
            if (attribute.name == u"xml:space")
                preserves = attribute.value == u"preserve";
        }
    }
    m_levels.push_back({element, node.first_child(), content.hasText || preserves, preserves});
    return addText(m_levels.back(), node.value(), false);
}

bool XmlReader::addAttributes(Node::Record* element, const pugi::xml_node& node)
{
    QSet<QString> seen;
    for (pugi::xml_attribute attribute = node.first_attribute(); attribute;
         attribute = attribute.next_attribute()) {
        if (!count(attribute.name()))
            return false;
        if (!element->attributes)
            element->attributes = std::make_unique<std::vector<Node::Attribute>>();
        auto& all = *element->attributes;
        Node::Attribute read;
        Name name;
        if (!readName(attribute.name(), name) || !readText(attribute.value(), Where::Attribute, read.value))
            return false;
        read.name = name.text();
        bool isDouble = false;
        if (all.size() < FewAttributes) {
            isDouble = std::any_of(all.begin(), all.end(),
                                   [&](const Node::Attribute& other) { return other.name == read.name; });
        } else {
            if (seen.isEmpty()) {
                for (const Node::Attribute& other : all)
                    seen.insert(other.name);
            }
            isDouble = seen.contains(read.name);
            seen.insert(read.name);
        }
        if (isDouble)
            return fail(attribute.name(), "The element has this attribute already.");
        all.push_back(std::move(read));
    }
    return true;
}

bool XmlReader::addText(const Level& level, const char* raw, bool isCData)
{
    if (!*raw)
        return true;
    if (level.record->type == NodeType::Document)
        return (!isCData && isBlank(raw)) || fail(raw, "Text stands outside the outermost element.");
    if (!level.keepsBlanks) // then every text is blank
        return true;
    QString text;
    if (!readText(raw, isCData ? Where::Plain : Where::Text, text))
        return false;
    if (level.record->last && level.record->last->type == NodeType::Text) {
        level.record->last->text += text;
        return true;
    }
    if (!count(raw))
        return false;
    add(level.record, NodeType::Text)->text = text;
    return true;
}

bool XmlReader::addLeafText(Node::Record* element, const pugi::xml_node& node)
{
    if (!readText(node.value(), Where::Text, element->text))
        return false;
    for (pugi::xml_node child = node.first_child(); child; child = child.next_sibling()) {
        QString text;
        if (!readText(child.value(), child.type() == pugi::node_cdata ? Where::Plain : Where::Text, text))
            return false;
        element->text += text;
    }
    return true;
}

bool XmlReader::addComment(const Level& level, const pugi::xml_node& node)
{
    const char* const raw = node.value();
    if (!count(raw))
        return false;
    const char* const dashes = std::strstr(raw, "--");
    const std::size_t size = std::strlen(raw);
    if (dashes || (size > 0 && raw[size - 1] == '-'))
        return fail(dashes ? dashes : raw + size - 1, "A comment cannot hold --.");
    return readText(raw, Where::Plain, add(level.record, NodeType::Comment)->text);
}

bool XmlReader::addInstruction(const Level& level, const pugi::xml_node& node)
{
    Name target;
    if (!count(node.name()) || !readName(node.name(), target))
        return false;
    return readText(node.value(), Where::Plain, add(level.record, NodeType::ProcessingInstruction, target)->text);
}

Node::Record* XmlReader::add(Node::Record* parent, NodeType type, Name name)
{
    Node::Record* const record = m_pool.make(type, name);
    parent->link(record);
    return record;
}

bool XmlReader::count(const char* place)
{
    return ++m_nodes <= m_limits.elements || fail(place, "The document has too many elements.");
}

bool XmlReader::readName(const char* raw, Name& name)
{
    const std::size_t size = std::strlen(raw);
    const auto byte = [&](std::size_t place) { return std::size_t(static_cast<unsigned char>(raw[place])); };
    const std::size_t mixed = size == 0 ? 0 : size + 5 * byte(0) + 19 * byte(size / 2) + 71 * byte(size - 1);
    KnownName& known = m_knownNames[mixed % m_knownNames.size()];
    if (known.bytes && known.size == size && std::memcmp(known.bytes, raw, size) == 0) {
        name = known.name;
        return true;
    }
    if (!readNewName({raw, qsizetype(size)}, name))
        return false;
    known = {raw, size, name};
    return true;
}

bool XmlReader::readNewName(QByteArrayView bytes, Name& name)
{
    if (const auto known = m_names.constFind(bytes); known != m_names.constEnd()) {
        name = *known;
        return true;
    }
    const QString text = fromUtf8(bytes);
    if (!isXmlName(text))
        return fail(bytes.data(), "The name is not one that XML allows.");
    if (bytes.size() > LongestName)
        return fail(bytes.data(), "The name is too long.");
    // Names live as long as the process, so that their number is not the document's to choose.
    if (m_names.size() >= m_limits.names)
        return fail(bytes.data(), "The document has too many different names.");
    name = Name(text);
    m_names.insert(bytes, name);
    return true;
}

bool XmlReader::readText(const char* raw, Where where, QString& text)
{
    const std::size_t size = std::strlen(raw);
    if (size == 0) {
        text = QString();
        return true;
    }
    if (size >= sizeof(ShortText::bytes) || where != Where::Text)
        return readLongText(raw, qsizetype(size), where, text);
    std::uint64_t bytes[2] = {};
    std::memcpy(bytes, raw, size);
    const std::uint64_t mixed = (bytes[0] ^ (bytes[1] * 0x9E3779B97F4A7C15u)) * 0xD6E8FEB86659FD93u;
    ShortText& known = m_shortTexts[(mixed >> 32) % m_shortTexts.size()];
    if (known.bytes[0] != bytes[0] || known.bytes[1] != bytes[1]) {
        QString read;
        if (!readLongText(raw, qsizetype(size), where, read))
            return false;
        known.text = read;
        std::memcpy(known.bytes, bytes, sizeof bytes);
    }
    text = known.text;
    return true;
}

bool XmlReader::readLongText(const char* raw, qsizetype size, Where where, QString& text)
{
    const std::uint8_t special = where == Where::Text        ? SpecialInText
                                 : where == Where::Attribute ? SpecialInAttribute
                                                             : SpecialInPlain;
    if (!hasSpecialBytes(raw, size, special)) {
        text = QString::fromLatin1(raw, size);
        return true;
    }
    const char* const end = raw + size;
    const char* plain = raw; // start of what is taken as it stands
    text = QString();
    const auto takePlain = [&](const char* until) {
        if (until != plain)
            text += fromUtf8({plain, until - plain});
    };
    for (const char* at = raw; at != end;) {
        const char byte = *at;
        if (byte == '\r') {
            takePlain(at);
            text += where == Where::Attribute ? u' ' : u'\n';
            at += at[1] == '\n' ? 2 : 1;
            plain = at;
        } else if (byte == '&' && where != Where::Plain) {
            takePlain(at);
            if (!readReference(at, text))
                return false;
            plain = at;
        } else if (where == Where::Attribute && (byte == '\n' || byte == '\t')) {
            takePlain(at);
            text += u' ';
            plain = ++at;
        } else if (where == Where::Attribute && byte == '<') {
            return fail(at, "A < in an attribute is written &lt;.");
        } else if (where == Where::Text && byte == '>' && at - raw >= 2 && at[-1] == ']' && at[-2] == ']') {
            return fail(at - 2, "The characters ]]> cannot stand in a text; write ]]&gt;.");
        } else {
            ++at;
        }
    }
    if (plain == raw)
        text = fromUtf8({raw, size});
    else
        takePlain(end);
    return true;
}

bool XmlReader::readReference(const char*& at, QString& text)
{
    struct Entity
    {
        const char* name;
        char16_t character;
    };
    static constexpr Entity Entities[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const Entity& entity : Entities) {
        if (const std::size_t size = std::strlen(entity.name); std::strncmp(at, entity.name, size) == 0) {
            text += QChar(entity.character);
            at += size;
            return true;
        }
    }
    if (at[1] != '#')
        return fail(at, "The reference is not known; a plain & is written &amp;.");
    const bool isHex = at[2] == 'x';
    const char* digit = at + (isHex ? 3 : 2);
    const char* const first = digit;
    char32_t character = 0;
    for (; character <= 0x10FFFF; ++digit) {
        const char c = *digit;
        if (c >= '0' && c <= '9')
            character = character * (isHex ? 16 : 10) + char32_t(c - '0');
        else if (isHex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')))
            character = character * 16 + char32_t((c | 0x20) - 'a' + 10);
        else
            break;
    }
    if (digit == first || *digit != ';' || !isXmlCharacter(character))
        return fail(at, "The reference names no character that XML allows.");
    text += QStringView(QChar::fromUcs4(character));
    at = digit + 1;
    return true;
}

bool XmlReader::fail(const char* place, const char* message)
{
    return failAt(place - m_buffer.data(), message);
}

bool XmlReader::failAt(qsizetype offset, const char* message)
{
    m_error = errorAt(m_source, offset, QString::fromLatin1(message));
    return false;
}

} // namespace zan::document
