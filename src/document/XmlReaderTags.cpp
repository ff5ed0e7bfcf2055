// The reader's part that knows tags: names, attributes, and the elements that are read in one go.

#include "document/PlainBytes.h"
#include "document/XmlBytes.h"
#include "document/XmlEncoding.h"
#include "document/XmlNames.h"
#include "document/XmlReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zan::document {

using namespace xml;

namespace {

constexpr qsizetype LongestName = 1024;

} // namespace

/// Elements follow each other in the same order over and over, and most hold one short and plain text: such elements
/// are read here, a few words at a time, until another kind of markup stands there. Of that nothing is read.
void XmlReader::readLikelyLeaves()
{
    // How far a look at a text, at an end tag behind it and at a name reaches.
    constexpr std::ptrdiff_t Reach = PlainBlock + 2 + TagEnd::Longest;
    if (m_levels.empty() || int(m_levels.size()) >= m_limits.depth)
        return;
    for (; m_end - m_at > Reach && *m_at == '<' && m_nodes < m_limits.elements; ++m_nodes) {
        const std::uint16_t name = m_followers[m_lastName];
        const TagEnd& tagEnd = m_tagEnds[name];
        if (!tagEnd.standsAt(m_at + 1))
            return;
        const char* const text = m_at + 1 + tagEnd.size();
        const char* end = text;
        for (std::size_t plain = PlainBlock; plain == PlainBlock; end += plain) {
            if (m_end - end <= Reach)
                return;
            plain = plainBytes(end);
        }
        if (end[0] != '<' || end[1] != '/' || !tagEnd.standsAt(end + 2))
            return;
        m_levels.back().hasMarkup = true;
        Tape::Entry element;
        element.begin = std::uint32_t(text - m_begin);
        element.size = std::uint32_t(end - text);
        element.name = name;
        element.kind = Tape::Kind::Element;
        m_entries.push_back(element);
        m_lastName = name;
        m_at = end + 2 + tagEnd.size();
    }
}

bool XmlReader::readStartTag()
{
    const char* const place = m_at++;
    if (!count(place))
        return false;
    if (int(m_levels.size()) >= m_limits.depth)
        return fail(place, "The elements are nested too deeply.");
    if (m_levels.empty() && std::exchange(m_hasElement, true))
        return fail(place, "A document has one outermost element; this is a second one.");
    noteMarkup();
    const std::uint32_t entry = push(Tape::Kind::Element, m_at, m_at);
    std::uint16_t name = 0;
    QByteArrayView raw;
    if (!readName(name, raw))
        return false;
    m_entries[entry].name = name;
    bool preserves = !m_levels.empty() && m_levels.back().preserves;
    if (*m_at != '>' && *m_at != '/' && !readAttributes(entry, preserves))
        return false;
    const bool isEmpty = *m_at == '/';
    m_at += isEmpty;
    if (*m_at != '>')
        return fail(place, MalformedStartTag);
    ++m_at;
    if (isEmpty || readLeaf(m_entries[entry], raw))
        m_entries[entry].span = std::uint32_t(m_entries.size()) - entry;
    else
        m_levels.push_back({entry, raw, preserves, false, false, std::uint32_t(m_blanks.size())});
    return true;
}

/// Most elements hold one text without anything odd in it, or nothing, and are read in one go. False for any other,
/// of which nothing is read then.
bool XmlReader::readLeaf(Tape::Entry& element, QByteArrayView name)
{
    Met met = 0;
    const char* end = m_at;
    for (std::uint8_t is = 0; ((is = classOf(*end)) & Halts) == 0; ++end)
        met |= is;
    if (end[0] != '<' || end[1] != '/' || !standsAt(end + 2, name) || end[2 + name.size()] != '>')
        return false;
    if (end != m_at) {
        element.begin = std::uint32_t(m_at - m_begin);
        element.size = std::uint32_t(end - m_at);
        element.marks = marksOf(met);
    }
    m_at = end + 3 + name.size();
    return true;
}

/// Whether these bytes stand at this place.
bool XmlReader::standsAt(const char* at, QByteArrayView bytes) const noexcept
{
    return m_end - at >= bytes.size() && std::memcmp(at, bytes.data(), std::size_t(bytes.size())) == 0;
}

/// Reads on until what follows is no attribute.
bool XmlReader::readAttributes(std::uint32_t element, bool& preserves)
{
    const char* const place = m_begin + m_entries[element].begin - 1;
    for (bool isFirst = true;; isFirst = false) {
        const char* const before = m_at;
        skipBlanks();
        if (*m_at == '>' || *m_at == '/')
            return true;
        if ((classOf(*m_at) & StartsName) == 0)
            return fail(place, MalformedStartTag);
        if (!isFirst && before == m_at)
            return fail(m_at, MalformedAttribute);
        if (!readAttribute(element, preserves))
            return false;
    }
}

bool XmlReader::readAttribute(std::uint32_t element, bool& preserves)
{
    const char* const place = m_at;
    std::uint16_t name = 0;
    QByteArrayView raw;
    const char* begin = nullptr;
    Met met = 0;
    if (!count(place) || !readName(name, raw) || !readValue(begin, met))
        return false;
    m_attributeOf.resize(std::max(m_attributeOf.size(), m_tape->nameCount()));
    if (std::exchange(m_attributeOf[name], element) == element)
        return fail(place, "The element has this attribute already.");
    const std::uint32_t entry = push(Tape::Kind::Attribute, begin, m_at - 1, marksOf(met));
    m_entries[entry].name = name;
    if (raw == QByteArrayView("xml:space"))
        preserves = m_tape->text(entry) == u"preserve";
    return true;
}

/// What stands between an attribute's name and whatever follows its value.
bool XmlReader::readValue(const char*& begin, Met& met)
{
    skipBlanks();
    if (*m_at != '=')
        return fail(m_at + 1, MalformedAttribute);
    ++m_at;
    skipBlanks();
    const char quote = *m_at;
    if (quote != '"' && quote != '\'')
        return fail(m_at, MalformedAttribute);
    begin = ++m_at;
    for (;;) {
        const std::uint8_t is = classOf(*m_at);
        met |= is;
        if ((is & HaltsValue) == 0) {
            met |= (is & IsBlank) && *m_at != ' ' ? IsCoded : 0; // becomes a space
            ++m_at;
        } else if (*m_at == quote) {
            ++m_at;
            return true;
        } else if (*m_at == '&') {
            met |= IsCoded;
            if (!checkReference())
                return false;
        } else if (*m_at == '<') {
            return fail(m_at, "A < in an attribute is written &lt;.");
        } else if (m_at == m_end) {
            return fail(begin - 1, MalformedAttribute);
        } else {
            ++m_at; // the other quote
        }
    }
}

bool XmlReader::readName(std::uint16_t& name, QByteArrayView& raw)
{
    const char* const begin = m_at;
    // Elements follow each other in the same order over and over.
    if (!m_followers.empty()) {
        const std::uint16_t likely = m_followers[m_lastName];
        const QByteArrayView bytes = m_tape->rawNameAt(likely);
        if (standsAt(m_at, bytes) && (classOf(m_at[bytes.size()]) & ContinuesName) == 0) {
            m_at += bytes.size();
            raw = {begin, bytes.size()};
            name = m_lastName = likely;
            return true;
        }
    }
    while (classOf(*m_at) & ContinuesName)
        ++m_at;
    raw = {begin, m_at - begin};
    const auto size = std::size_t(raw.size());
    const auto byte = [&](std::size_t place) { return std::size_t(static_cast<unsigned char>(begin[place])); };
    const std::size_t mixed = size + 5 * byte(0) + 19 * byte(size / 2) + 71 * byte(size - 1);
    KnownName& known = m_knownNames[mixed % m_knownNames.size()];
    if (std::size_t(known.raw.size()) != size || std::memcmp(known.raw.data(), begin, size) != 0) {
        std::uint16_t found = 0;
        if (!addName(raw, found))
            return false;
        known = {raw, found};
    }
    name = known.name;
    m_followers.resize(m_tape->nameCount());
    m_followers[m_lastName] = name;
    m_lastName = name;
    return true;
}

bool XmlReader::addName(QByteArrayView raw, std::uint16_t& name)
{
    if (const auto known = m_names.constFind(raw); known != m_names.constEnd()) {
        name = *known;
        return true;
    }
    const QString text = fromUtf8(raw);
    if (!isXmlName(text))
        return fail(raw.data(), "The name is not one that XML allows.");
    if (raw.size() > LongestName)
        return fail(raw.data(), "The name is too long.");
    // Names live as long as the process, so that their number is not the document's to choose.
    if (m_names.size() >= std::min<std::int64_t>(m_limits.names, Tape::MostNames))
        return fail(raw.data(), "The document has too many different names.");
    name = m_tape->addName(Name(text), raw);
    m_tagEnds.emplace_back(raw);
    m_names.insert(raw, name);
    return true;
}

void XmlReader::skipBlanks() noexcept
{
    while (classOf(*m_at) & IsBlank)
        ++m_at;
}

} // namespace zan::document
