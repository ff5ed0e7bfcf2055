#pragma once

#include "binding/Object.h"
#include "values/Array.h"

#include <memory>
#include <optional>

namespace zan::script {

/// How far a For Each has come. An array is walked as it was when the loop began.
class EachState final : public values::AutomationObject
{
public:
    explicit EachState(values::Variant array)
        : m_array(std::move(array))
    {}
    explicit EachState(std::unique_ptr<binding::Enumerator> items)
        : m_items(std::move(items))
    {}

    QString typeName() const override { return QStringLiteral("Object"); }
    /// True for a collection of the host's, of which nobody knows how long a step takes.
    bool isOfHost() const noexcept { return m_items != nullptr; }
    std::optional<values::Variant> next()
    {
        if (m_items)
            return m_items->next();
        const std::vector<values::Variant>& elements = m_array.array().elements();
        return m_place < elements.size() ? std::optional(elements[m_place++]) : std::nullopt;
    }

private:
    values::Variant m_array;
    std::size_t m_place = 0;
    std::unique_ptr<binding::Enumerator> m_items;
};

} // namespace zan::script
