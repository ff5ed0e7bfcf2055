#pragma once

#include "script/compiler/Bytecode.h"
#include "script/compiler/SlotArena.h"
#include "values/Name.h"

#include <unordered_map>
#include <vector>

namespace zan::script {

/// What a global name stands for at the moment.
struct Symbol
{
    enum class Kind : std::uint8_t {
        Undefined, ///< only mentioned so far
        Variable,
        Constant,
        Procedure,
        Class,
        HostItem,
    };
    values::Name name; ///< as first written
    Kind kind = Kind::Undefined;
    const Procedure* procedure = nullptr;
    const ClassInfo* classInfo = nullptr;
};

/// The global names of one engine. Each has a number, which is also the place of its value.
class Symbols
{
public:
    static constexpr std::uint32_t Maximum = 1 << 18;
    /// The values must be a row of Maximum.
    explicit Symbols(SlotArena& values)
        : m_values(values)
    {}

    /// The number of a name; added when it is new. Raises error 7 when there are too many.
    std::uint32_t intern(values::Name name);
    /// The symbol of a name, null when it was never mentioned. Good until the next intern.
    Symbol* find(values::Name name) noexcept;
    Symbol& at(std::uint32_t number) noexcept { return m_symbols[number]; }
    const Symbol& at(std::uint32_t number) const noexcept { return m_symbols[number]; }
    std::uint32_t count() const noexcept { return std::uint32_t(m_symbols.size()); }
    std::uint32_t numberOf(const Symbol& symbol) const noexcept { return m_numbers.at(symbol.name.folded()); }

    values::Variant& value(std::uint32_t number) noexcept { return slots()[number].value(); }
    /// Where the values lie; they never move, and none of them is the way to another.
    Slot* slots() noexcept { return m_values.begin(); }

private:
    std::vector<Symbol> m_symbols;
    std::unordered_map<values::Name, std::uint32_t> m_numbers; ///< by folded name
    SlotArena& m_values;
};

} // namespace zan::script
