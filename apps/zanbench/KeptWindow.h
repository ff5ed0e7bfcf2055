#pragma once

#include "document/Node.h"

#include <QString>

#include <vector>

namespace zan::host {

/// The document of a window as it stood before a panel left it. Leaving empties the tree: the controls are taken out
/// and the container falls back to the defaults, so that a scheme that is saved afterwards would hold an empty
/// window. restore() puts back what the panel has; channels and everything else of the window stay as they are.
class KeptWindow
{
public:
    /// Keeps what the window element holds now.
    explicit KeptWindow(const document::Node& window);

    const document::Node& window() const { return m_window; }
    void restore() const;

private:
    struct Child
    {
        document::Node node;
        QString xml; ///< of what a panel owns; empty for the rest
    };

    document::Node m_window;
    std::vector<Child> m_children; // in document order
};

} // namespace zan::host
