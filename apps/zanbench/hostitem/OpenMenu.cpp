#include "zanbench/hostitem/OpenMenu.h"

#include "binding/MemberTable.h"

namespace zan::host {

using values::ErrorNumber;

Ref<binding::Object> OpenMenuItem::Menu() const
{
    if (!item().menu)
        return {};
    return values::make<OpenMenu>(m_forms, item().menu);
}

void OpenMenuItem::Choose()
{
    if (!item().enabled || !item().choose)
        values::raise(ErrorNumber::InvalidCall,
                      QStringLiteral("The menu entry '%1' cannot be chosen.").arg(item().caption));
    const std::shared_ptr<surface::PopupMenu> held = m_menu;
    m_forms.closeMenu();
    item().choose();
}

const binding::MemberTable& OpenMenuItem::members() const
{
    using C = OpenMenuItem;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("MenuItem", nullptr,
                                    {
                                        readOnly<&C::Caption>("Caption").asDefault(),
                                        readOnly<&C::Checked>("Checked"),
                                        readOnly<&C::Enabled>("Enabled"),
                                        readOnly<&C::Menu>("Menu"),
                                        binding::method<&C::Choose>("Choose"),
                                    });
    });
}

Ref<OpenMenuItem> OpenMenu::Item(std::int32_t place) const
{
    if (place < 1 || place > Count())
        values::raise(ErrorNumber::SubscriptOutOfRange);
    return values::make<OpenMenuItem>(m_forms, m_menu, std::size_t(place) - 1);
}

const binding::MemberTable& OpenMenu::members() const
{
    using C = OpenMenu;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Menu", nullptr,
                                    {readOnly<&C::Count>("Count"), readOnly<&C::Item>("Item").asDefault()});
    });
}

} // namespace zan::host
