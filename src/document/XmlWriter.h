#pragma once

#include "document/Node.h"

#include <QByteArray>
#include <QStringView>

#include <vector>

namespace zan::document {

/// Writes a node and everything below it as UTF-8. Whatever the tree holds, the text is well formed and reads back
/// as the same tree; characters that XML cannot hold become U+FFFD.
class XmlWriter
{
public:
    enum class Layout {
        OneLine, ///< nothing but the nodes themselves
        Indented ///< each node on a line of its own, two blanks per level, where no text stands beside it
    };
    explicit XmlWriter(Layout layout)
        : m_layout(layout)
    {}

    /// The text of the node; an indented one starts with a declaration and ends with a line feed.
    QByteArray write(Node::Record* root);

private:
    enum class Where { Text, Attribute, Plain };
    /// How the content of an element that is open is written.
    struct Level
    {
        bool inOneLine;   ///< it holds text, so that no blank may be added
        bool preserves;   ///< xml:space says that readers keep its blanks
        bool marksBlanks; ///< it holds no text but blanks, which a reader would drop if they stood there plainly
    };

    void begin(const Node::Record* record);
    void beginElement(const Node::Record* element);
    void enter(const Node::Record* record);
    void end(const Node::Record* record);
    void newLine();
    void putText(const Node::Record* text);
    void putComment(const Node::Record* comment);
    void putInstruction(const Node::Record* instruction);

    void put(const char* ascii);
    void put(QStringView text, Where where);
    void put(const char16_t* units, qsizetype count, Where where);
    /// Room for that many bytes at the end.
    char* room(qsizetype bytes);

    Layout m_layout;
    QByteArray m_bytes; // longer than what is written
    qsizetype m_size = 0;
    std::vector<Level> m_levels;
};

} // namespace zan::document
