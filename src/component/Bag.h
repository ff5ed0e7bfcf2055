#pragma once

#include "binding/PropertyBag.h"
#include "component/Handles.h"

#include <optional>

namespace zan::component {

using values::Variant;

/// A property bag by name.
class Bag : public Object
{
public:
    binding::PropertyBag& bag() noexcept { return m_bag; }
    const binding::MemberTable& members() const override;

    std::int32_t Count() const { return std::int32_t(m_bag.entries().size()); }
    /// Name of an entry, from 1, in the order in which they were written. Raises 9 for another.
    QString Key(std::int32_t index) const;
    bool Contains(const QString& name) const;
    Variant ReadProperty(const QString& name, const std::optional<Variant>& defaultValue) const;
    /// Without a default the value is stored whatever it is.
    void WriteProperty(const QString& name, const Variant& value, const std::optional<Variant>& defaultValue);
    void Clear() { m_bag.clear(); }

private:
    binding::PropertyBag m_bag;
};

} // namespace zan::component
