#include "zanbench/KeptWindow.h"

#include "document/Elements.h"
#include "document/XMLOps.h"

namespace zan::host {

using document::Node;

namespace {

bool belongsToPanel(const Node& node)
{
    return node.name() == document::element::Container || node.name() == document::element::Control;
}

} // namespace

KeptWindow::KeptWindow(const Node& window)
    : m_window(window)
{
    for (Node child = window.firstChild(); child; child = child.nextSibling())
        m_children.push_back({child, belongsToPanel(child) ? child.xml() : QString()});
}

void KeptWindow::restore() const
{
    // 1. What the panel has left behind goes.
    std::size_t count = 0;
    for (Node child = m_window.firstChild(); child;) {
        const Node next = child.nextSibling();
        if (belongsToPanel(child))
            m_window.removeChild(child);
        else
            ++count;
        child = next;
    }
    // 2. The kept children in their order, each of the panel's from its text: a script may still hold the element
    //    that was taken out, and go on writing to it.
    for (const Child& child : m_children) {
        if (child.xml.isEmpty()) {
            if (child.node.parent() == m_window) {
                m_window.appendChild(child.node);
                --count;
            }
            continue;
        }
        const Node copy = document::XMLOps::LoadDocument(child.xml);
        m_window.appendChild(copy ? copy : child.node);
    }
    // 3. What came meanwhile from elsewhere, a channel say, stands before all of them now and comes last.
    for (; count > 0; --count)
        m_window.appendChild(m_window.firstChild());
}

} // namespace zan::host
