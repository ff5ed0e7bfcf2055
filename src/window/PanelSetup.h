#pragma once

#include "wrappers/iBenchControl.h"

#include <memory>
#include <vector>

namespace zan::dialogs {
class SetupForm;
struct FormDescription;
} // namespace zan::dialogs

namespace zan::window {

class BenchWindow;

using values::Ref;

/// The setup forms of a panel and its controls. There is one form of a kind: opening it while it is open does nothing
/// to it. A form that is open closes when the panel goes.
class PanelSetup
{
public:
    explicit PanelSetup(BenchWindow& panel)
        : m_panel(panel)
    {}
    ~PanelSetup();
    PanelSetup(const PanelSetup&) = delete;
    PanelSetup& operator=(const PanelSetup&) = delete;

    /// Opens the form that sets a control up and returns when it is closed; nothing for a type without one. Raises what
    /// filling the form raises: it is not shown then. The panel may be gone afterwards.
    void edit(const Ref<wrappers::iBenchControl>& control);
    /// Opens the form of the panel's own properties, as edit() does one of a control.
    void editWindow();
    bool isOpen() const;

private:
    std::shared_ptr<dialogs::SetupForm> begin(const dialogs::FormDescription& description);

    BenchWindow& m_panel;
    std::vector<std::weak_ptr<dialogs::SetupForm>> m_open;
};

} // namespace zan::window
