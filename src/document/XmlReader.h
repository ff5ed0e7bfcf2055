#pragma once

#include "document/RecordPool.h"
#include "document/XmlText.h"

#include <QByteArray>
#include <QHash>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace pugi {
class xml_node;
struct xml_parse_result;
} // namespace pugi

namespace zan::document {

/// Builds a document out of a sound UTF-8 text. The text is taken apart by pugixml, in place and undecoded; what
/// that parser lets pass is checked here, where the place of every piece in the text is known.
class XmlReader
{
public:
    XmlReader(const QByteArray& utf8, const ParseLimits& limits);
    ~XmlReader();

    /// Fills the document. After false it is incomplete and error() says why.
    bool read(Node::Record* document);
    const ParseError& error() const noexcept { return m_error; }

private:
    /// An element whose children are being read.
    struct Level;
    /// What an element holds, which decides about the blanks in it.
    struct Content;
    enum class Where { Text, Attribute, Plain };

    bool build(const pugi::xml_node& tree, Node::Record* document);
    bool addNode(Level& level, const pugi::xml_node& node);
    bool addElement(const Level& level, const pugi::xml_node& node);
    bool addAttributes(Node::Record* element, const pugi::xml_node& node);
    bool addText(const Level& level, const char* raw, bool isCData);
    bool addComment(const Level& level, const pugi::xml_node& node);
    bool addInstruction(const Level& level, const pugi::xml_node& node);
    bool addLeafText(Node::Record* element, const pugi::xml_node& node);
    Node::Record* add(Node::Record* parent, NodeType type, Name name = {});

    bool count(const char* place);
    bool readName(const char* raw, Name& name);
    bool readNewName(QByteArrayView bytes, Name& name);
    bool readText(const char* raw, Where where, QString& text);
    bool readLongText(const char* raw, qsizetype size, Where where, QString& text);
    bool readReference(const char*& at, QString& text);

    bool failParsing(const pugi::xml_parse_result& result);
    bool fail(const char* place, const char* message);
    bool failAt(qsizetype offset, const char* message);

    const QByteArray& m_source; ///< untouched, for the places of errors
    std::string m_buffer;       ///< the parser's own, with a zero after every piece
    ParseLimits m_limits;
    ParseError m_error;
    std::int64_t m_nodes = 0;
    bool m_hasElement = false; ///< the outermost element has been met
    std::vector<Level> m_levels;
    RecordPool m_pool;
    QHash<QByteArrayView, Name> m_names; ///< every name met, by its bytes in the buffer

    /// Names met lately, found without hashing all of their bytes: a document has few, over and over.
    struct KnownName
    {
        const char* bytes = nullptr;
        std::size_t size = 0;
        Name name;
    };
    std::array<KnownName, 256> m_knownNames;

    /// Texts read lately, so that the "-1" of ten thousand elements is one.
    struct ShortText
    {
        std::uint64_t bytes[2] = {};
        QString text;
    };
    std::array<ShortText, 512> m_shortTexts;
};

} // namespace zan::document
