#pragma once

#include "values/Burial.h"
#include "values/Variant.h"

#include <span>
#include <vector>

namespace zan::values {

/// An array of Variants of any rank, first index fastest in memory. Variants share it and copy it on the first
/// write (Variant::arrayForWriting), so that assigning an array costs nothing until one side changes.
class Array : public Shared
{
public:
    struct Bound
    {
        std::int32_t lower = 0;
        std::int32_t upper = -1;
        std::int64_t count() const noexcept { return std::int64_t(upper) - lower + 1; }
    };
    /// Most elements that one array may have; more raises error 7.
    static constexpr std::int64_t MaximumElements = 64 * 1024 * 1024;

    /// An array without dimensions, as `Dim a()` declares it.
    Array() = default;
    /// Elements are Empty. Raises 9 for a bound whose upper end lies more than one below the lower, 7 when it
    /// would be too large.
    explicit Array(std::vector<Bound> bounds, bool fixedSize = false);
    ~Array() override;
    /// One dimension from 0 holding these values.
    static Ref<Array> fromValues(std::vector<Variant> values);

    std::size_t rank() const noexcept { return m_bounds.size(); }
    const Bound& bound(std::size_t dimension) const { return m_bounds.at(dimension); }
    const std::vector<Bound>& bounds() const noexcept { return m_bounds; }
    /// True for an array declared with its bounds, which ReDim must not touch (error 10).
    bool isFixedSize() const noexcept { return m_fixedSize; }
    void setFixedSize(bool fixedSize) noexcept { m_fixedSize = fixedSize; }

    std::vector<Variant>& elements() noexcept { return m_elements; }
    const std::vector<Variant>& elements() const noexcept { return m_elements; }
    /// Place in elements() of the element with these indices. Raises 9 for a wrong rank or an index outside.
    std::size_t offset(std::span<const std::int32_t> indices) const;
    Ref<Array> clone() const;
    /// Gives the last dimension another upper end and keeps the elements that are in both. Raises 9 and 7 as the
    /// constructor does, 9 for an array without dimensions.
    void resizeLast(std::int32_t upper);

private:
    std::vector<Bound> m_bounds;
    std::vector<Variant> m_elements;
    bool m_fixedSize = false;
};

} // namespace zan::values
