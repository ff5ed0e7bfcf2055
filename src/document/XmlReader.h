#pragma once

#include "document/TagEnd.h"
#include "document/Tape.h"
#include "document/XmlText.h"

#include <QByteArrayView>
#include <QHash>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace zan::document {

/// Reads a text of sound UTF-8 onto a tape, in one pass, and checks everything that XML asks of it on the way: what
/// is on the tape afterwards is well formed and within the limits.
class XmlReader
{
public:
    XmlReader(const QByteArray& utf8, const ParseLimits& limits);
    ~XmlReader();

    /// The tape; nothing when the text was refused, and error() says why.
    std::unique_ptr<Tape> read();
    const ParseError& error() const noexcept { return m_error; }

private:
    using Met = std::uint16_t; ///< kinds of bytes that a text holds
    /// An element whose content is being read.
    struct Level
    {
        std::uint32_t entry;
        QByteArrayView name;
        bool preserves;            ///< xml:space says that blanks are text
        bool hasText = false;      ///< more than blanks
        bool hasMarkup = false;    ///< elements, comments, instructions
        std::uint32_t blanks = 0;  ///< where its texts of blanks begin in the list of those
        std::uint32_t dropped = 0; ///< entries below it that will go
    };

    bool readAll();
    bool readMarkup();
    bool readDeclaration();
    void readLikelyLeaves();
    bool readStartTag();
    bool readLeaf(Tape::Entry& element, QByteArrayView name);
    bool readAttributes(std::uint32_t element, bool& preserves);
    bool readAttribute(std::uint32_t element, bool& preserves);
    bool readValue(const char*& begin, Met& met);
    bool readEndTag();
    bool readComment();
    bool readInstruction();
    bool readText();
    bool readPlainText(Met& met);
    bool readCData(Met& met, bool& isEmpty);
    bool readName(std::uint16_t& name, QByteArrayView& raw);
    bool addName(QByteArrayView raw, std::uint16_t& name);
    bool checkReference();
    void skipBlanks() noexcept;
    bool standsAt(const char* at, QByteArrayView bytes) const noexcept;

    std::uint32_t push(Tape::Kind kind, const char* begin, const char* end, std::uint8_t marks = 0);
    bool count(const char* place);
    void noteMarkup() noexcept;
    void closeElement();
    void takeBlanksOut();

    bool fail(const char* place, const char* message);

    const QByteArray& m_source;
    ParseLimits m_limits;
    ParseError m_error;
    std::unique_ptr<Tape> m_tape;
    std::vector<Tape::Entry>& m_entries;
    const char* m_begin;
    const char* m_end; ///< a zero stands here, and nowhere before
    const char* m_at;
    std::vector<Level> m_levels;
    std::int64_t m_nodes = 0;
    bool m_hasElement = false;            ///< the outermost element has been met
    std::vector<std::uint32_t> m_blanks;  ///< entries of blanks in the open elements, which may have to stay
    std::vector<std::uint32_t> m_dropped; ///< entries of blanks that will go
    QHash<QByteArrayView, std::uint16_t> m_names; ///< every name met, by its bytes
    std::vector<std::uint32_t> m_attributeOf;     ///< by name, the element that had an attribute of it last

    std::vector<std::uint16_t> m_followers; ///< by name, the one that came after it last
    std::vector<TagEnd> m_tagEnds;          ///< by name, what follows the < or the </ of a tag
    std::uint16_t m_lastName = 0;

    /// Names met lately, found without hashing all of their bytes: a document has few, over and over.
    struct KnownName
    {
        QByteArrayView raw;
        std::uint16_t name = 0;
    };
    std::array<KnownName, 256> m_knownNames;
};

} // namespace zan::document
