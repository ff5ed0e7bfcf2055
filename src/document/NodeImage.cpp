#include "document/NodeImage.h"

#include "document/StoredDefault.h"
#include "document/XMLOps.h"

namespace zan::document {

using values::Name;

namespace {

/// The child element of this name, counted from 0 among those of one name; null when there is none.
Node childOf(const Node& element, Name name, std::size_t occurrence)
{
    for (Node child = element.firstChildElement(); child; child = child.nextSiblingElement()) {
        if (child.name() == name && occurrence-- == 0)
            return child;
    }
    return {};
}

} // namespace

NodeImage::NodeImage(const Node& element)
    : m_name(element.name())
    , m_xml(element.xml())
    , m_isDefault(isStoredDefault(element))
{
    for (Node child = element.firstChildElement(); child; child = child.nextSiblingElement())
        m_children.emplace_back(child);
    if (m_children.empty())
        m_text = element.text();
}

std::size_t NodeImage::occurrenceOf(const std::vector<NodeImage>& children, std::size_t place)
{
    std::size_t occurrence = 0;
    for (std::size_t before = 0; before < place; ++before)
        occurrence += children[before].m_name == children[place].m_name ? 1 : 0;
    return occurrence;
}

const NodeImage* NodeImage::find(Name name, std::size_t occurrence) const
{
    for (const NodeImage& child : m_children) {
        if (child.m_name == name && occurrence-- == 0)
            return &child;
    }
    return nullptr;
}

/// Marks, in an element that was made of this image, what reads had stored.
void NodeImage::restoreDefaults(const Node& element) const
{
    setStoredDefault(element, m_isDefault);
    Node child = element.firstChildElement();
    for (const NodeImage& image : m_children) {
        image.restoreDefaults(child);
        child = child.nextSiblingElement();
    }
}

void NodeImage::applyChange(const Node& element, const NodeImage& to) const
{
    if (*this == to || !element)
        return;
    if (m_children.empty() && to.m_children.empty()) {
        element.setText(to.m_text);
        setStoredDefault(element, to.m_isDefault);
        return;
    }
    if (m_children.empty() && !m_text.isEmpty())
        element.setText(QString());
    // From the last one back, so that a further child of one name is found before an earlier one is gone.
    for (std::size_t place = m_children.size(); place-- > 0;) {
        const std::size_t occurrence = occurrenceOf(m_children, place);
        if (!to.find(m_children[place].m_name, occurrence))
            element.removeChild(childOf(element, m_children[place].m_name, occurrence));
    }
    if (to.m_children.empty() && !to.m_text.isEmpty())
        element.setText(to.m_text);
    Node previous;
    for (std::size_t place = 0; place < to.m_children.size(); ++place) {
        const NodeImage& wanted = to.m_children[place];
        const std::size_t occurrence = occurrenceOf(to.m_children, place);
        Node child = childOf(element, wanted.m_name, occurrence);
        if (const NodeImage* had = find(wanted.m_name, occurrence); had && child) {
            had->applyChange(child, wanted);
        } else if (!child) {
            child = XMLOps::LoadDocument(wanted.m_xml);
            wanted.restoreDefaults(child);
            element.insertBefore(child, previous ? previous.nextSibling() : element.firstChild());
        }
        previous = child;
    }
}

} // namespace zan::document
