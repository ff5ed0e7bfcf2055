#pragma once

#include "display/ControlWidget.h"
#include "display/SiteMapControl.h"

namespace zan::display {

/// The site map as a widget, for a host that has no panel. Everything but the events is at control(). Places of mouse
/// events are twips; events of labels and boxes do not come.
class SiteMap : public ControlWidget, private SiteMapControl::Host
{
    Q_OBJECT
public:
    explicit SiteMap(QWidget* parent = nullptr);
    ~SiteMap() override;
    SiteMapControl& control() const noexcept { return static_cast<SiteMapControl&>(liveControl()); }

Q_SIGNALS:
    /// A site was chosen; the text is its scheme.
    void LoadScheme(const QString& Site);
    /// PopupMenu was called with these arguments; those left out are missing. The container has the menus.
    void PopupMenuWanted(const zan::values::Variant& menu, const zan::values::Variant& flags,
                         const zan::values::Variant& x, const zan::values::Variant& y,
                         const zan::values::Variant& defaultMenu);

private:
    void loadScheme(const QString& site) override;
    void propertyChanged(binding::Name name) override;
    void popupMenu(const Variant& menu, const std::optional<Variant>& flags, const std::optional<Variant>& x,
                   const std::optional<Variant>& y, const std::optional<Variant>& defaultMenu) override;
};

} // namespace zan::display
