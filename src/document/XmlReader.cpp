#include "document/XmlReader.h"

#include "document/TapeText.h"
#include "document/XmlBytes.h"
#include "document/XmlEncoding.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace zan::document {

using namespace xml;

namespace {

/// One part in so many of the entries may lie unused.
constexpr std::size_t SpareShare = 8;

constexpr const char* SectionBegin = "<![CDATA[";

bool startsCData(const char* at) noexcept
{
    return at[0] == '<' && at[1] == '!' && startsWith(at, SectionBegin);
}

} // namespace

XmlReader::XmlReader(const QByteArray& utf8, const ParseLimits& limits)
    : m_source(utf8)
    , m_limits(limits)
    , m_tape(std::make_unique<Tape>(utf8))
    , m_entries(m_tape->entries())
    , m_begin(m_tape->bytes())
    , m_end(m_begin + m_tape->size())
    , m_at(m_begin)
{}

XmlReader::~XmlReader() = default;

std::unique_ptr<Tape> XmlReader::read()
{
    if (m_source.size() >= qsizetype(std::numeric_limits<std::uint32_t>::max())) {
        fail(m_begin, "The text is too long.");
        return nullptr;
    }
    constexpr qsizetype BytesPerNode = 24; // of a window document; a guess that spares the entries from moving
    m_entries.reserve(std::size_t(m_source.size() / BytesPerNode) + 2);
    push(Tape::Kind::Document, m_begin, m_begin);
    if (!readAll())
        return nullptr;
    takeBlanksOut();
    m_entries.front().span = std::uint32_t(m_entries.size());
    if (const auto most = std::size_t(m_limits.elements) + 1; m_entries.size() > most) { // with the texts
        fail(m_begin + m_entries[most].begin, TooManyElements);
        return nullptr;
    }
    if (m_entries.capacity() - m_entries.size() > m_entries.size() / SpareShare)
        m_entries.shrink_to_fit(); // a move of it all
    return std::move(m_tape);
}

bool XmlReader::readAll()
{
    if (startsWith(m_at, "<?xml") && (classOf(m_at[5]) & ContinuesName) == 0 && !readDeclaration())
        return false;
    while (m_at != m_end) {
        readLikelyLeaves();
        const bool isMarkup = *m_at == '<' && !startsCData(m_at);
        if (!(isMarkup ? readMarkup() : readText()))
            return false;
    }
    if (!m_levels.empty())
        return fail(m_end, EndsEarly);
    return m_hasElement || fail(m_end, "The text holds no element.");
}

bool XmlReader::readMarkup()
{
    switch (m_at[1]) {
    case '/':
        return readEndTag();
    case '?':
        return readInstruction();
    case '!':
        if (startsWith(m_at, "<!--"))
            return readComment();
        if (startsWith(m_at, "<!DOCTYPE"))
            return fail(m_at, NoDoctype);
        break;
    default:
        if (classOf(m_at[1]) & StartsName)
            return readStartTag();
    }
    return fail(m_at, "A < that starts no tag is written &lt;.");
}

bool XmlReader::readDeclaration()
{
    const char* const place = m_at;
    for (m_at += 5;;) {
        const char* const before = m_at;
        skipBlanks();
        if (startsWith(m_at, "?>")) {
            m_at += 2;
            return true;
        }
        if ((classOf(*m_at) & StartsName) == 0)
            return fail(place, MalformedInstruction);
        if (before == m_at)
            return fail(m_at, MalformedAttribute);
        while (classOf(*m_at) & ContinuesName)
            ++m_at;
        const char* begin = nullptr;
        Met met = 0;
        if (!readValue(begin, met))
            return false;
    }
}

bool XmlReader::readEndTag()
{
    const char* const place = m_at;
    if (m_levels.empty())
        return fail(place, ClosesAnother);
    const QByteArrayView name = m_levels.back().name;
    m_at += 2;
    if (!standsAt(m_at, name))
        return m_at == m_end ? fail(m_end, EndsEarly) : fail(place, ClosesAnother);
    m_at += name.size();
    if (classOf(*m_at) & ContinuesName)
        return fail(place, ClosesAnother);
    skipBlanks();
    if (*m_at != '>')
        return fail(place, "An end tag is not well formed.");
    ++m_at;
    closeElement();
    return true;
}

void XmlReader::closeElement()
{
    Level level = m_levels.back();
    m_levels.pop_back();
    Tape::Entry& element = m_entries[level.entry];
    if (!level.hasMarkup && m_entries.back().kind == Tape::Kind::Text) {
        // An element that holds one text and nothing else is one entry.
        const Tape::Entry text = m_entries.back();
        m_entries.pop_back();
        element.begin = text.begin;
        element.size = text.size;
        element.marks = text.marks;
    } else if (level.hasMarkup && !level.hasText && !level.preserves) {
        level.dropped += std::uint32_t(m_blanks.size()) - level.blanks;
        m_dropped.insert(m_dropped.end(), m_blanks.begin() + level.blanks, m_blanks.end());
    }
    m_blanks.resize(level.blanks);
    element.span = std::uint32_t(m_entries.size()) - level.entry - level.dropped;
    if (!m_levels.empty())
        m_levels.back().dropped += level.dropped;
}

/// Takes out the blanks of the elements that hold nothing but blanks and markup. The spans leave them out already.
void XmlReader::takeBlanksOut()
{
    if (m_dropped.empty())
        return;
    std::sort(m_dropped.begin(), m_dropped.end());
    const auto first = m_entries.begin();
    auto kept = first + m_dropped.front();
    m_dropped.push_back(std::uint32_t(m_entries.size()));
    for (std::size_t i = 0; i + 1 < m_dropped.size(); ++i)
        kept = std::copy(first + m_dropped[i] + 1, first + m_dropped[i + 1], kept);
    m_entries.resize(std::size_t(kept - first));
}

bool XmlReader::readComment()
{
    const char* const place = m_at;
    if (!count(place))
        return false;
    const char* const begin = m_at + 4;
    const char* const end = std::strstr(begin, "-->");
    if (!end)
        return fail(place, "A comment is not closed with -->.");
    if (const char* dashes = std::strstr(begin, "--"); dashes != end)
        return fail(dashes, "A comment cannot hold --.");
    if (end != begin && end[-1] == '-')
        return fail(end - 1, "A comment cannot hold --.");
    noteMarkup();
    push(Tape::Kind::Comment, begin, end, Tape::Coded);
    m_at = end + 3;
    return true;
}

bool XmlReader::readInstruction()
{
    const char* const place = m_at;
    m_at += 2;
    if (!count(place))
        return false;
    if ((classOf(*m_at) & StartsName) == 0)
        return fail(place, MalformedInstruction);
    std::uint16_t name = 0;
    QByteArrayView raw;
    if (!readName(name, raw))
        return false;
    const char* const end = std::strstr(m_at, "?>");
    if (!end || (m_at != end && (classOf(*m_at) & IsBlank) == 0))
        return fail(place, MalformedInstruction);
    if (raw.size() == 3 && qstrnicmp(raw.data(), "xml", 3) == 0)
        return fail(place, m_levels.empty() ? "An XML declaration stands at the start of the text only."
                                            : MalformedInstruction);
    skipBlanks();
    noteMarkup();
    const std::uint32_t entry = push(Tape::Kind::Instruction, std::min(m_at, end), end, Tape::Coded);
    m_entries[entry].name = name;
    m_at = end + 2;
    return true;
}

/// A text with the CDATA sections in it, up to the next piece of markup.
bool XmlReader::readText()
{
    const char* const begin = m_at;
    Met met = 0;
    bool hasCData = false;
    bool isEmpty = true;
    while (m_at != m_end && (*m_at != '<' || startsCData(m_at))) {
        const bool isCData = *m_at == '<';
        hasCData |= isCData;
        if (m_levels.empty() && isCData)
            return fail((met & IsOther) ? begin : m_at + std::strlen(SectionBegin), OutsideElement);
        if (!(isCData ? readCData(met, isEmpty) : readPlainText(met)))
            return false;
        isEmpty = isEmpty && isCData;
    }
    const bool isBlank = !hasCData && (met & IsOther) == 0;
    if (m_levels.empty())
        return isBlank || fail(begin, OutsideElement);
    Level& level = m_levels.back();
    level.hasText = level.hasText || !isBlank;
    if (isEmpty)
        return true;
    const std::uint32_t entry =
        push(Tape::Kind::Text, begin, m_at, std::uint8_t(marksOf(met) | (hasCData ? Tape::Coded : 0)));
    if (isBlank)
        m_blanks.push_back(entry);
    return true;
}

bool XmlReader::readPlainText(Met& met)
{
    const char* const begin = m_at;
    for (;;) {
        std::uint8_t is = 0;
        while (((is = classOf(*m_at)) & Halts) == 0) {
            met |= is;
            ++m_at;
        }
        if (*m_at == '<' || m_at == m_end)
            return true;
        met |= IsOther;
        if (*m_at == '&') {
            met |= IsCoded;
            if (!checkReference())
                return false;
            continue;
        }
        if (m_at - begin >= 2 && m_at[-1] == ']' && m_at[-2] == ']')
            return fail(m_at - 2, "The characters ]]> cannot stand in a text; write ]]&gt;.");
        met |= HasAngle;
        ++m_at;
    }
}

bool XmlReader::readCData(Met& met, bool& isEmpty)
{
    const char* const begin = m_at + std::strlen(SectionBegin);
    const char* const end = std::strstr(begin, "]]>");
    if (!end)
        return fail(m_at, "A CDATA section is not closed with ]]>.");
    met |= IsOther;
    isEmpty = isEmpty && begin == end;
    m_at = end + 3;
    return true;
}

bool XmlReader::checkReference()
{
    switch (readReference(m_at)) {
    case 0:
        return fail(m_at, "The reference is not known; a plain & is written &amp;.");
    case 0xFFFF:
        return fail(m_at, "The reference names no character that XML allows.");
    default:
        return true;
    }
}

std::uint32_t XmlReader::push(Tape::Kind kind, const char* begin, const char* end, std::uint8_t marks)
{
    Tape::Entry& entry = m_entries.emplace_back();
    entry.begin = std::uint32_t(begin - m_begin);
    entry.size = std::uint32_t(end - begin);
    entry.kind = kind;
    entry.marks = marks;
    return std::uint32_t(m_entries.size() - 1);
}

bool XmlReader::count(const char* place)
{
    return ++m_nodes <= m_limits.elements || fail(place, TooManyElements);
}

void XmlReader::noteMarkup() noexcept
{
    if (!m_levels.empty())
        m_levels.back().hasMarkup = true;
}

bool XmlReader::fail(const char* place, const char* message)
{
    m_error = errorAt(m_source, place - m_begin, QString::fromLatin1(message));
    return false;
}

} // namespace zan::document
