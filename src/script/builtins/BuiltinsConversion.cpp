#include "script/builtins/BuiltinSupport.h"

namespace zan::script {

namespace {

template <auto Convert>
Variant converted(Engine&, Arguments arguments)
{
    return Variant(Convert(arguments[0]));
}

constexpr Builtin Functions[] = {
    {"CBool", 1, 1, converted<values::toBoolean>}, {"CByte", 1, 1, converted<values::toByte>},
    {"CCur", 1, 1, converted<values::toCurrency>}, {"CDate", 1, 1, converted<values::toDate>},
    {"CDbl", 1, 1, converted<values::toDouble>},   {"CInt", 1, 1, converted<values::toInteger>},
    {"CLng", 1, 1, converted<values::toLong>},     {"CSng", 1, 1, converted<values::toSingle>},
    {"CStr", 1, 1, converted<values::toText>},
};

} // namespace

std::span<const Builtin> conversionFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
