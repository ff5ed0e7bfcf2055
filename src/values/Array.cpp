#include "values/Array.h"

#include "values/RuntimeError.h"

namespace zan::values {

Array::Array(std::vector<Bound> bounds, bool fixedSize) : m_bounds(std::move(bounds)), m_fixedSize(fixedSize)
{
    std::int64_t total = 1;
    for (const Bound& bound : m_bounds) {
        if (bound.count() < 0)
            raise(ErrorNumber::SubscriptOutOfRange);
        total *= bound.count();
        if (total > MaximumElements)
            raise(ErrorNumber::OutOfMemory);
    }
    m_elements.resize(m_bounds.empty() ? 0 : std::size_t(total));
}

Array::~Array()
{
    bury(std::move(m_elements));
}

Ref<Array> Array::fromValues(std::vector<Variant> values)
{
    Ref<Array> array = make<Array>();
    array->m_bounds = {Bound{0, std::int32_t(values.size()) - 1}};
    array->m_elements = std::move(values);
    return array;
}

std::size_t Array::offset(std::span<const std::int32_t> indices) const
{
    if (indices.size() != m_bounds.size() || m_bounds.empty())
        raise(ErrorNumber::SubscriptOutOfRange);
    std::size_t place = 0;
    for (std::size_t dimension = m_bounds.size(); dimension-- > 0;) {
        const Bound& bound = m_bounds[dimension];
        if (indices[dimension] < bound.lower || indices[dimension] > bound.upper)
            raise(ErrorNumber::SubscriptOutOfRange);
        place = place * std::size_t(bound.count()) + std::size_t(std::int64_t(indices[dimension]) - bound.lower);
    }
    return place;
}

Ref<Array> Array::clone() const
{
    Ref<Array> copy = make<Array>();
    copy->m_bounds = m_bounds;
    copy->m_elements = m_elements;
    copy->m_fixedSize = m_fixedSize;
    return copy;
}

} // namespace zan::values
