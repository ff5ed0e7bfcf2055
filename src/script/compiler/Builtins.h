#pragma once

#include "binding/Object.h"
#include "values/Name.h"

#include <cstdint>

namespace zan::script {

class Engine;

using binding::Arguments;
using values::Variant;

/// A function of the language. Arguments are values, never references; one left out is Variant::missing().
struct Builtin
{
    using Function = Variant (*)(Engine& engine, Arguments arguments);
    /// What a call takes time for: reading its arguments through, as most do, or no more than making its result.
    enum class Cost : std::uint8_t { Reading, Result };
    const char* name;
    std::uint8_t requiredArguments;
    std::uint8_t allowedArguments;
    Function function;
    Cost cost = Cost::Reading;
    bool onlyInExpressions = false; ///< called as a statement it raises 458
};

/// Number of the built-in function of this name, or -1. The number is good for builtinAt.
int findBuiltin(values::Name name) noexcept;
const Builtin& builtinAt(std::uint32_t number) noexcept;
std::uint32_t builtinCount() noexcept;

/// Value of the built-in constant of this name (vbCrLf, vbYesNo ...), or null.
const Variant* findConstant(values::Name name) noexcept;

} // namespace zan::script
