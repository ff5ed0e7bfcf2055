#pragma once

#include "document/Place.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QStringView>

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

    /// The text of the node, which stays as folded as it is; an indented one starts with a declaration and ends with a line feed.
    QByteArray write(Node::Record* root);

private:
    enum class Where { Text, Attribute, Plain };
    /// How the content of an element that is open is written.
    struct Level
    {
        bool inOneLine = false;   ///< it holds text, so that no blank may be added
        bool preserves = false;   ///< xml:space says that readers keep its blanks
        bool marksBlanks = false; ///< it holds no text but blanks, which a reader would drop if they stood plainly
        int depth = 0;            ///< of the nodes in it
    };

    void put(const Place& place, const Level& level);
    void putElement(const Place& element, const Level& level);
    void putChildren(const Place& place, const Level& level);
    Level levelIn(const Place& element, const Level& level) const;
    void putName(const Place& place);
    void putOwnText(const Place& leaf);
    void putText(const Place& text, const Level& level);
    void putComment(const Place& comment, const Level& level);
    void putInstruction(const Place& instruction, const Level& level);
    void newLine(const Level& level);

    void put(QByteArrayView bytes);
    void put(QStringView text, Where where);
    void put(const char16_t* units, qsizetype count, Where where);
    /// Room for that many bytes at the end.
    char* room(qsizetype bytes);

    Layout m_layout;
    QByteArray m_bytes; // longer than what is written
    qsizetype m_size = 0;
};

} // namespace zan::document
