#include "script/compiler/Bytecode.h"

#include <algorithm>

namespace zan::script {

const Mark* Procedure::markAt(std::size_t place) const noexcept
{
    const auto after = std::upper_bound(marks.begin(), marks.end(), place,
                                        [](std::size_t wanted, const Mark& mark) { return wanted < mark.start; });
    return after == marks.begin() ? nullptr : &*std::prev(after);
}

std::optional<RunMode> runModeOf(values::Name name)
{
    static const std::pair<values::Name, RunMode> modes[] = {
        {values::Name("eval"), RunMode::Eval},
        {values::Name("execute"), RunMode::Execute},
        {values::Name("executeglobal"), RunMode::ExecuteGlobal},
    };
    for (const auto& [word, mode] : modes) {
        if (name.folded() == word)
            return mode;
    }
    return std::nullopt;
}

const ClassMember* ClassInfo::find(values::Name wanted) const noexcept
{
    const auto found = members.find(wanted.folded());
    return found == members.end() ? nullptr : &found->second;
}

} // namespace zan::script
