#include "script/builtins/BuiltinSupport.h"

namespace zan::script {

namespace {

template <auto Convert>
Variant converted(Engine&, Arguments arguments)
{
    return Variant(Convert(arguments[0]));
}

template <auto Convert>
constexpr Builtin conversion(const char* name)
{
    Builtin function{name, 1, 1, converted<Convert>};
    function.onlyInExpressions = true;
    return function;
}

constexpr Builtin Functions[] = {
    conversion<values::toBoolean>("CBool"), conversion<values::toByte>("CByte"),
    conversion<values::toCurrency>("CCur"), conversion<values::toDate>("CDate"),
    conversion<values::toDouble>("CDbl"),   conversion<values::toInteger>("CInt"),
    conversion<values::toLong>("CLng"),     conversion<values::toSingle>("CSng"),
    conversion<values::toText>("CStr"),
};

} // namespace

std::span<const Builtin> conversionFunctions() noexcept
{
    return Functions;
}

} // namespace zan::script
