#include "wrappers/ControlType.h"

#include <algorithm>

namespace zan::wrappers {

namespace {

template <class Test>
const ControlType* firstOf(std::span<const ControlType> rows, Test test) noexcept
{
    const auto row = std::find_if(rows.begin(), rows.end(), test);
    return row == rows.end() ? nullptr : &*row;
}

} // namespace

const ControlType* ControlTypes::find(QStringView key) const noexcept
{
    return firstOf(m_rows, [key](const ControlType& type) { return type.key == key; });
}

const ControlType* ControlTypes::ofArray(QStringView name) const noexcept
{
    return firstOf(
        m_rows, [name](const ControlType& type) { return type.arrayName.compare(name, Qt::CaseInsensitive) == 0; });
}

} // namespace zan::wrappers
