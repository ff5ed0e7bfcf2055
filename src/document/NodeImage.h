#pragma once

#include "document/Node.h"

#include <QString>

#include <vector>

namespace zan::document {

/// What an element holds at one moment, kept apart from the tree: for comparing, and for putting it back later.
/// Elements only; comments and the like are nobody's business here.
class NodeImage
{
public:
    NodeImage() = default;
    explicit NodeImage(const Node& element);

    bool operator==(const NodeImage& other) const { return m_name == other.m_name && m_xml == other.m_xml; }

    /// Makes of an element that held this image one that holds the other. Only what differs between the two is
    /// touched, so that whatever has changed meanwhile in other places of the element stays, and so do the nodes of
    /// children that remain. A child that comes back stands where it stood.
    void applyChange(const Node& element, const NodeImage& to) const;

private:
    void restoreDefaults(const Node& element) const;
    const NodeImage* find(values::Name name, std::size_t occurrence) const;
    static std::size_t occurrenceOf(const std::vector<NodeImage>& children, std::size_t place);

    values::Name m_name;
    QString m_xml;            ///< the whole element
    bool m_isDefault = false; ///< stored by a read
    QString m_text;           ///< of an element without elements
    std::vector<NodeImage> m_children;
};

} // namespace zan::document
