#pragma once

#include "component/Handles.h"

#include <vector>

namespace zan::component {

using values::Variant;

/// A value that came from C. Raises for a kind that nobody knows, a number that is none, a text that is not UTF-8, and
/// a handle that no living object has.
Variant fromC(const ZanVariant& value);
std::vector<Variant> fromC(const ZanVariant* values, std::int32_t count);
/// A value for C, whose text or object its receiver gives back with clear(). Raises for what C has no kind for.
ZanVariant toC(const Variant& value);
/// Gives the text or the object back and empties the value. Raises for a text that is not ours.
void clear(ZanVariant& value);

/// A text of C, for an argument that names something. Raises as fromC().
QString textFromC(const char* text);

/// Values that are lent to a receiver in C.
class LentValues
{
public:
    LentValues() = default;
    LentValues(const LentValues&) = delete;
    LentValues& operator=(const LentValues&) = delete;
    ~LentValues();
    void add(const Variant& value) { m_values.push_back(toC(value)); }
    const ZanVariant* data() const noexcept { return m_values.data(); }
    std::int32_t count() const noexcept { return std::int32_t(m_values.size()); }

private:
    std::vector<ZanVariant> m_values;
};

} // namespace zan::component
