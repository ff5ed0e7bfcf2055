#pragma once

#include "values/Name.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zan::document {

using values::Name;

class ChangeCounter;

enum class NodeType : unsigned char { None, Document, Element, Text, Comment, ProcessingInstruction };

/// Handle to a node of a document tree.
///
/// A handle keeps the whole tree that its node stands in alive, up to the document; a node that is taken out of its
/// tree goes on living, with everything below it, as long as anybody holds a handle into it, and remembers the
/// document that it belongs to. A null handle is safe for every call: it reads as nothing and writes nowhere. A
/// constant handle says that it stays with its node, not that the node stays as it is.
///
/// The text of an element is the text of everything below it, comments and instructions left out. An element that
/// holds nothing but one text keeps it in its own record, so that the common case costs one record: it has no
/// children then, and its text becomes a child of its own only once another child joins it.
class Node
{
public:
    struct Record;

    /// Levels of elements that a tree may have, the document element being the first: what is built can be saved and
    /// read again.
    static constexpr int DeepestLevel = 256;

    Node() noexcept = default;
    Node(const Node& other) noexcept;
    Node(Node&& other) noexcept;
    ~Node();
    Node& operator=(Node other) noexcept;

    explicit operator bool() const noexcept { return m_record != nullptr; }
    friend bool operator==(const Node& a, const Node& b) noexcept { return a.m_record == b.m_record; }

    NodeType type() const noexcept;
    bool isElement() const noexcept { return type() == NodeType::Element; }
    /// Element name, or target of a processing instruction; empty for other nodes.
    Name name() const noexcept;

    /// Text of the node and of everything below it; for comments and instructions their data.
    QString text() const;
    /// Replaces all content by this text; children that somebody holds live on detached. Nothing on a document or a
    /// null handle.
    void setText(const QString& text) const;

    Node parent() const noexcept;
    /// The document the node belongs to, attached or not; null for a null handle.
    Node ownerDocument() const noexcept;
    /// The first element directly below a document.
    Node documentElement() const noexcept;

    Node firstChild() const noexcept;
    Node nextSibling() const noexcept;
    Node lastChild() const noexcept;
    Node previousSibling() const noexcept;
    Node firstChildElement() const noexcept;
    Node nextSiblingElement() const noexcept;

    /// The first child element of this name (case counts); null when there is none. Costs a pointer comparison per
    /// sibling passed over and counts no references on the way.
    Node child(Name name) const noexcept;
    /// Every child element of this name, in document order.
    std::vector<Node> children(Name name) const;
    std::size_t childElementCount() const noexcept;
    /// Text of the child element of this name without making a handle to it; false when there is none.
    bool childText(Name name, QString& text) const;
    /// The number that the text of the child element of this name begins with, 0 without one; nothing without the child.
    std::optional<double> childNumber(Name name) const;
    /// Whether there is a child element of this name with this text.
    bool isChildText(Name name, QStringView text) const;

    /// Moves the node to the end of this one, out of wherever it stood, from another document too. Returns false
    /// and changes nothing when either is null, this one cannot have such a child (a document has one element and no
    /// text), it stands inside the node, or the tree would be deeper than DeepestLevel.
    bool appendChild(const Node& child) const;
    /// The same, with the node moved to the place right before a child of this one; to the end for a null `before`.
    /// False, with nothing changed, for a `before` that is no child of this one.
    bool insertBefore(const Node& child, const Node& before) const;
    /// Takes a child out of this node. Returns false when it is not a child of it.
    bool removeChild(const Node& child) const;

    /// A new detached element of this node's document; null on a null handle and for a name that XML does not allow.
    Node createElement(Name name, const QString& text = {}) const;

    /// The node and everything below it as XML text without a declaration, in one line.
    QString xml() const;

    // XML attributes: the window document uses none, but foreign elements may carry them and keep them.
    struct Attribute
    {
        QString name;
        QString value;
    };
    const std::vector<Attribute>& attributes() const noexcept;
    /// Nothing on what is no element and for a name that XML does not allow.
    void setAttribute(const QString& name, const QString& value) const;

    static Node newDocument();

    /// Marks the node for a reader that keeps something derived from it: from now on a change of its text, of its
    /// attributes, of its list of children or of its place in its parent is counted by the reader's counter. What
    /// happens deeper down is not. Nothing on a null handle; there is no way back, and a mark costs nothing. A
    /// ReadRecorder marks what is read by itself.
    void watch(const ChangeCounter& counter) const noexcept;

    /// For the parser and the writer: they build and read records.
    Record* record() const noexcept { return m_record; }
    explicit Node(Record* record) noexcept;

private:
    /// Calls `plain` with the place of a child that is a plain leaf of a tape, or `any` with the text of any other child
    /// of this name, and returns what that returns; false when there is none.
    template <class Plain, class Any>
    bool readChild(Name name, Plain&& plain, Any&& any) const;
    Record* m_record = nullptr;
};

} // namespace zan::document
