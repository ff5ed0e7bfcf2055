#include "script/builtins/BuiltinSupport.h"

#include <unordered_map>
#include <vector>

namespace zan::script {

namespace {

struct Table
{
    std::vector<const Builtin*> functions;
    std::unordered_map<values::Name, int> numbers; ///< by folded name

    Table()
    {
        for (const std::span<const Builtin> group :
             {textFunctions(), listFunctions(), conversionFunctions(), numberFunctions(), dateFunctions(),
              formatFunctions(), informationFunctions(), hostFunctions()}) {
            for (const Builtin& function : group) {
                numbers.emplace(values::Name(function.name).folded(), int(functions.size()));
                functions.push_back(&function);
            }
        }
    }

    static const Table& instance()
    {
        static const Table table;
        return table;
    }
};

} // namespace

int findBuiltin(values::Name name) noexcept
{
    const auto& numbers = Table::instance().numbers;
    const auto found = numbers.find(name.folded());
    return found == numbers.end() ? -1 : found->second;
}

const Builtin& builtinAt(std::uint32_t number) noexcept
{
    return *Table::instance().functions[number];
}

std::uint32_t builtinCount() noexcept
{
    return std::uint32_t(Table::instance().functions.size());
}

} // namespace zan::script
