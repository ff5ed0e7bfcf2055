#pragma once

#include "trellis/SchemeFile.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace zan::host {

/// Tells changes that a user would miss from what a panel writes by itself while it is loaded, locked, unlocked and
/// runs: keys and defaults filled in at loading, the mark that has a check box skip a scan, what a light hides. All of
/// them set the scheme's CHANGED; only the former are worth a question before they are lost, and a save.
class ChangeWatch
{
public:
    explicit ChangeWatch(values::Ref<trellis::SchemeFile> scheme);

    /// The tree as it is now counts as unchanged: just opened, just saved, or a panel has just been loaded from it.
    void settle();
    /// The same for one window alone, which was unchanged before a panel was loaded from it.
    void settle(const document::Node& window);
    /// Whether a window differs in substance from what it was when it settled.
    bool isChanged(const document::Node& window);
    /// Whether the tree differs in substance from what it was when it settled. Cheap unless CHANGED has been set
    /// since the last call.
    bool isChanged();
    /// The tree has edits that its file does not hold, or a panel has edits that it has not stored in the tree: counts
    /// as changed until it is compared.
    void suspect() { m_changed = true; }
    /// The tree was never what the file holds: it counts as changed until it settles.
    void neverSettled();
    /// The same, whatever CHANGED says: taking an element away does not set it. Costs a walk through the tree.
    bool compare();

private:
    /// A child of the document element, and a hash of its substance; empty when it has none.
    struct Part
    {
        document::Node element;
        QByteArray substance;
    };
    using Parts = std::vector<Part>;

    void clearMark();
    Parts parts() const;
    Part* settledPart(const document::Node& element);

    values::Ref<trellis::SchemeFile> m_scheme;
    std::optional<Parts> m_settled;
    bool m_changed = false;
};

} // namespace zan::host
