#include "document/XmlReader.h"

#include "document/Record.h"
#include "document/TapeText.h"
#include "document/XmlEncoding.h"
#include "document/XmlNames.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace zan::document {

namespace {

constexpr qsizetype LongestName = 1024;
constexpr const char* SectionBegin = "<![CDATA[";

constexpr const char* ClosesAnother = "The end tag does not close the element that is open here.";
constexpr const char* EndsEarly = "The text ends before every element is closed.";
constexpr const char* MalformedAttribute = "An attribute is not well formed; it is written name=\"value\".";
constexpr const char* MalformedInstruction = "A processing instruction is not well formed; it ends with ?>.";
constexpr const char* NoDoctype = "A document type declaration is not allowed; remove the <!DOCTYPE ...>.";
constexpr const char* MalformedStartTag = "A start tag is not well formed.";
constexpr const char* OutsideElement = "Text stands outside the outermost element.";
constexpr const char* TooManyElements = "The document has too many elements.";

// What a byte is to the reader.
constexpr std::uint8_t Halts = 1;      // a text cannot be passed over without looking at it
constexpr std::uint8_t HaltsValue = 2; // nor can an attribute's value
constexpr std::uint8_t IsCoded = 4;
constexpr std::uint8_t IsWide = 8;
constexpr std::uint8_t IsBlank = 16;
constexpr std::uint8_t IsOther = 32; // no blank
constexpr std::uint8_t StartsName = 64;
constexpr std::uint8_t ContinuesName = 128;
constexpr std::uint16_t HasAngle = 256; // met a > in a text

constexpr std::array<std::uint8_t, 256> makeByteClasses()
{
    std::array<std::uint8_t, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        std::uint8_t is = IsOther;
        if (byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r')
            is = IsBlank;
        if (byte == '\r')
            is |= IsCoded;
        if (byte == 0 || byte == '<' || byte == '&' || byte == '>')
            is |= Halts;
        if (byte == 0 || byte == '<' || byte == '&' || byte == '"' || byte == '\'')
            is |= HaltsValue;
        if (byte >= 0x80)
            is |= IsWide;
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        if (isLetter || byte == '_' || byte == ':' || byte >= 0x80)
            is |= StartsName | ContinuesName;
        if ((byte >= '0' && byte <= '9') || byte == '-' || byte == '.')
            is |= ContinuesName;
        classes[std::size_t(byte)] = is;
    }
    return classes;
}
constexpr std::array<std::uint8_t, 256> ByteClasses = makeByteClasses();

std::uint8_t classOf(char byte) noexcept
{
    return ByteClasses[static_cast<unsigned char>(byte)];
}

std::uint8_t marksOf(std::uint16_t met) noexcept
{
    return std::uint8_t(((met & IsCoded) ? Tape::Coded : 0) | ((met & IsWide) ? Tape::Wide : 0) |
                        ((met & HasAngle) ? Tape::Angle : 0));
}

bool startsWith(const char* at, const char* text) noexcept
{
    return std::strncmp(at, text, std::strlen(text)) == 0;
}

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
    push(Tape::Kind::Document, m_begin, m_begin);
    if (!readAll())
        return nullptr;
    m_entries.front().span = std::uint32_t(m_entries.size());
    if (m_dropsBlanks)
        dropBlanks();
    if (const auto most = std::size_t(m_limits.elements) + 1; m_entries.size() > most) { // with the texts
        fail(m_begin + m_entries[most].begin, TooManyElements);
        return nullptr;
    }
    m_entries.shrink_to_fit();
    return std::move(m_tape);
}

bool XmlReader::readAll()
{
    if (startsWith(m_at, "<?xml") && (classOf(m_at[5]) & ContinuesName) == 0 && !readDeclaration())
        return false;
    while (m_at != m_end) {
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
        skipBlanks();
        if (startsWith(m_at, "?>")) {
            m_at += 2;
            return true;
        }
        if ((classOf(*m_at) & StartsName) == 0)
            return fail(place, MalformedInstruction);
        while (classOf(*m_at) & ContinuesName)
            ++m_at;
        const char* begin = nullptr;
        Met met = 0;
        if (!readValue(begin, met))
            return false;
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
    if (isEmpty)
        m_entries[entry].span = std::uint32_t(m_entries.size()) - entry;
    else
        m_levels.push_back({entry, raw, preserves});
    return true;
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

bool XmlReader::readEndTag()
{
    const char* const place = m_at;
    if (m_levels.empty())
        return fail(place, ClosesAnother);
    const QByteArrayView name = m_levels.back().name;
    m_at += 2;
    if (std::strncmp(m_at, name.data(), std::size_t(name.size())) != 0)
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
    const Level level = m_levels.back();
    m_levels.pop_back();
    Tape::Entry& element = m_entries[level.entry];
    if (!level.hasMarkup && m_entries.back().kind == Tape::Kind::Text) {
        // An element that holds one text and nothing else is one entry.
        const Tape::Entry text = m_entries.back();
        m_entries.pop_back();
        element.begin = text.begin;
        element.size = text.size;
        element.marks = text.marks & std::uint8_t(~Tape::Blank);
    } else if (level.hasMarkup && level.hasBlanks && !level.hasText && !level.preserves) {
        element.marks = Tape::Blank; // to be dropped below it
        m_dropsBlanks = true;
    }
    element.span = std::uint32_t(m_entries.size()) - level.entry;
}

/// Takes the blanks out of the elements that hold nothing but blanks and markup.
void XmlReader::dropBlanks()
{
    struct Open
    {
        std::uint32_t oldEnd;
        std::uint32_t entry;
        bool drops;
    };
    std::vector<Open> open;
    std::uint32_t kept = 0;
    const auto oldSize = std::uint32_t(m_entries.size());
    const auto closeUntil = [&](std::uint32_t read) {
        for (; !open.empty() && open.back().oldEnd == read; open.pop_back())
            m_entries[open.back().entry].span = kept - open.back().entry;
    };
    for (std::uint32_t read = 0; read != oldSize; ++read) {
        closeUntil(read);
        Tape::Entry entry = m_entries[read];
        const bool isBlank = (entry.marks & Tape::Blank) != 0;
        if (entry.kind == Tape::Kind::Text && isBlank && open.back().drops)
            continue;
        if (entry.span > 1)
            open.push_back({read + entry.span, kept, entry.kind == Tape::Kind::Element && isBlank});
        if (entry.kind == Tape::Kind::Element)
            entry.marks &= std::uint8_t(~Tape::Blank);
        m_entries[kept++] = entry;
    }
    closeUntil(oldSize);
    m_entries.resize(kept);
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
    level.hasBlanks = level.hasBlanks || isBlank;
    if (!isEmpty)
        push(Tape::Kind::Text, begin, m_at,
             std::uint8_t(marksOf(met) | (hasCData ? Tape::Coded : 0) | (isBlank ? Tape::Blank : 0)));
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

bool XmlReader::readName(std::uint16_t& name, QByteArrayView& raw)
{
    const char* const begin = m_at;
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
    m_names.insert(raw, name);
    return true;
}

void XmlReader::skipBlanks() noexcept
{
    while (classOf(*m_at) & IsBlank)
        ++m_at;
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
