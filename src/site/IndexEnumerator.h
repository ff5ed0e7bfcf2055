#pragma once

#include "binding/Object.h"

#include <cstdint>

namespace zan::site {

/// Walks a collection that has Count() and Item(index from 1). It looks the count up at every step, so a
/// collection that shrinks ends the walk early and one that grows is walked to its new end.
template <class Collection>
class IndexEnumerator : public binding::Enumerator
{
public:
    explicit IndexEnumerator(Collection& collection)
        : m_collection(&collection)
    {}

    std::optional<binding::Variant> next() override
    {
        if (m_place >= m_collection->Count())
            return std::nullopt;
        return binding::Variant(itemAt(++m_place));
    }

private:
    auto itemAt(std::int32_t place)
    {
        if constexpr (requires { m_collection->Item(place); })
            return m_collection->Item(place);
        else
            return m_collection->Item(binding::Variant(place));
    }

    binding::Ref<Collection> m_collection;
    std::int32_t m_place = 0;
};

} // namespace zan::site
