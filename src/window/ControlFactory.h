#pragma once

#include "site/Logger.h"
#include "surface/host/UsesForms.h"
#include "wrappers/BenchControl.h"
#include "wrappers/ControlType.h"
#include "wrappers/PanelWindow.h"

#include <set>
#include <vector>

namespace zan::surface {
class ControlArray;
class LiveControl;
class Surface;
} // namespace zan::surface

namespace zan::window {

using values::Ref;

/// One entry of the new-control menu.
struct NewControlMenuItem
{
    QStringView caption;
    QStringView typeKey;
};

/// Turns a type key into a live control on the surface and its wrapper: the first control of a type is the array's
/// design-time template, every later one a further element.
class ControlFactory
{
public:
    /// Makes the arrays of every type that can be placed, their templates hidden at their design rectangles.
    ControlFactory(surface::Surface& surface, wrappers::ControlTypes types, surface::FormsSource forms = {});

    wrappers::ControlTypes types() const noexcept { return m_types; }
    /// Nothing for a key that is not known. Raises what the control host raises when no further element can be
    /// loaded; nothing has changed then.
    /// The logger, if there is one, is for types that take it.
    Ref<wrappers::iBenchControl> CreateControl(const QString& type, bool positionsLocked,
                                               const Ref<site::Logger>& logger = {});
    /// Hides a template, unloads any other element; failures are ignored.
    void discard(const Ref<binding::Object>& control);
    /// Undoes that for a control that is put back: the template is shown again, any other element put back into its
    /// array. Raises 360 when another element has its place.
    void restore(const wrappers::PlacedControl& placed);
    /// Gives the templates of the plain controls the surface's font and colours.
    void restyleTemplates();
    /// Entries of the new-control menu: the types that can be placed, in the menu's order.
    const std::vector<NewControlMenuItem>& newControlMenu() const noexcept { return m_menu; }

private:
    void buildNewControlMenu();
    Ref<surface::LiveControl> liveControl(const wrappers::ControlType& type, surface::ControlArray& array);
    void style(surface::LiveControl& control, const wrappers::ControlType& type, bool positionsLocked);
    /// Gives a control those of the surface's font and colours that the styling names.
    bool hasSurfaceFont(surface::LiveControl& control) const;
    void dress(surface::LiveControl& control, unsigned styling);

    surface::Surface& m_surface;
    wrappers::ControlTypes m_types;
    surface::FormsSource m_forms;
    std::set<const surface::ControlArray*> m_templateInUse; // an array stays here once it has come here
    std::vector<NewControlMenuItem> m_menu;
};

} // namespace zan::window
