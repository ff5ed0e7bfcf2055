#pragma once

#include "binding/Object.h"
#include "surface/forms/RecordingForms.h"

#include <memory>

namespace zan::host {

using binding::Ref;

class OpenMenu;

/// One entry of a menu that a panel has opened.
class OpenMenuItem : public binding::Object
{
public:
    /// The entry is one of the menu's; the forms outlive every run.
    OpenMenuItem(surface::RecordingForms& forms, std::shared_ptr<surface::PopupMenu> menu, std::size_t place)
        : m_forms(forms)
        , m_menu(std::move(menu))
        , m_place(place)
    {}
    /// With its '&'; empty for a separator.
    QString Caption() const { return item().caption; }
    bool Checked() const { return item().checked; }
    bool Enabled() const { return item().enabled; }
    /// The further menu that the entry opens; Nothing for any other entry.
    Ref<binding::Object> Menu() const;
    /// Does what the entry does and closes the menu. Raises 5 for one that cannot be chosen.
    void Choose();

    const binding::MemberTable& members() const override;

private:
    const surface::MenuItem& item() const { return m_menu->items[m_place]; }

    surface::RecordingForms& m_forms;
    std::shared_ptr<surface::PopupMenu> m_menu;
    std::size_t m_place;
};

/// A menu that a panel has opened, or a further one inside it.
class OpenMenu : public binding::Object
{
public:
    OpenMenu(surface::RecordingForms& forms, std::shared_ptr<surface::PopupMenu> menu)
        : m_forms(forms)
        , m_menu(std::move(menu))
    {}
    /// Separators included.
    std::int32_t Count() const { return std::int32_t(m_menu->items.size()); }
    /// Entry by place from 1; raises 9 outside.
    Ref<OpenMenuItem> Item(std::int32_t place) const;
    const binding::MemberTable& members() const override;

private:
    surface::RecordingForms& m_forms;
    std::shared_ptr<surface::PopupMenu> m_menu;
};

} // namespace zan::host
