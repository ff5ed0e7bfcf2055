#include "values/Array.h"

#include "values/RuntimeError.h"

#include <iterator>

namespace zan::values {

Array::Array(std::vector<Bound> bounds, bool fixedSize)
    : m_bounds(std::move(bounds))
    , m_fixedSize(fixedSize)
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

void Array::resizeLast(std::int32_t upper)
{
    if (m_bounds.empty())
        raise(ErrorNumber::SubscriptOutOfRange);
    const Bound last{m_bounds.back().lower, upper};
    if (last.count() < 0)
        raise(ErrorNumber::SubscriptOutOfRange);
    std::int64_t total = last.count();
    for (std::size_t dimension = 0; dimension + 1 < m_bounds.size(); ++dimension) {
        total *= m_bounds[dimension].count();
        if (total > MaximumElements)
            raise(ErrorNumber::OutOfMemory);
    }
    if (total > MaximumElements)
        raise(ErrorNumber::OutOfMemory);
    // What goes is taken out first: its end may run code that looks at this array.
    std::vector<Variant> removed;
    if (std::size_t(total) < m_elements.size())
        removed.assign(std::make_move_iterator(m_elements.begin() + total),
                       std::make_move_iterator(m_elements.end()));
    m_elements.resize(std::size_t(total));
    m_bounds.back() = last;
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
