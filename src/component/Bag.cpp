#include "component/Bag.h"

#include "binding/MemberTable.h"

namespace zan::component {

using values::Name;

const binding::MemberTable& Bag::members() const
{
    using binding::method;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("PropertyBag", nullptr,
                                    {
                                        readOnly<&Bag::Count>("Count"),
                                        readOnly<&Bag::Key>("Key"),
                                        method<&Bag::Contains>("Contains"),
                                        method<&Bag::ReadProperty>("ReadProperty"),
                                        method<&Bag::WriteProperty>("WriteProperty"),
                                        method<&Bag::Clear>("Clear"),
                                    });
    });
}

QString Bag::Key(std::int32_t index) const
{
    if (index < 1 || index > Count())
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return m_bag.entries()[std::size_t(index) - 1].name.text();
}

bool Bag::Contains(const QString& name) const
{
    return m_bag.contains(Name(name));
}

Variant Bag::ReadProperty(const QString& name, const std::optional<Variant>& defaultValue) const
{
    return m_bag.ReadProperty(Name(name), defaultValue.value_or(Variant()));
}

void Bag::WriteProperty(const QString& name, const Variant& value, const std::optional<Variant>& defaultValue)
{
    if (defaultValue)
        m_bag.WriteProperty(Name(name), value, *defaultValue);
    else
        m_bag.WriteProperty(Name(name), value);
}

} // namespace zan::component
