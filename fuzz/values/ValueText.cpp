// Any text as a value: it is read as a number, a Boolean, a date or none of them; what is read has a text that reads
// back to the same, and a text that is a number in plain digits means the same to every reader.

#include "fuzz/support/Require.h"
#include "values/Arithmetic.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/DateText.h"
#include "values/NumberText.h"

#include <cmath>
#include <cstdint>

using namespace zan::values;
using zan::fuzz::require;

namespace {

void checkNumber(const QString& text)
{
    const double leading = val(text);
    require(!std::isnan(leading), "Val gives a number");
    if (std::isfinite(leading))
        require(val(documentText(leading)) == leading, "the document text reads back");

    const auto number = numberFromText(text);
    double converted = 0;
    const ErrorNumber error = tryToDouble(Variant(text), converted);
    require(number.has_value() == (error != ErrorNumber::TypeMismatch), "one rule for what is a number");
    if (number && std::isfinite(*number))
        require(converted == *number && compareWithNumber(text, *number) == Ordering::Equal, "one value");
}

void checkConversions(const Variant& value)
{
    bool boolean = false;
    std::uint8_t byte = 0;
    std::int16_t integer = 0;
    std::int32_t whole = 0;
    float single = 0;
    Currency currency;
    Date date;
    static_cast<void>(tryToBoolean(value, boolean));
    static_cast<void>(tryToSingle(value, single));
    if (tryToByte(value, byte) == ErrorNumber::None)
        require(tryToInteger(value, integer) == ErrorNumber::None && integer == byte, "a Byte is an Integer");
    if (tryToLong(value, whole) == ErrorNumber::None)
        require(toLong(toText(whole)) == whole, "a Long reads back");
    if (tryToCurrency(value, currency) == ErrorNumber::None)
        require(toCurrency(displayText(currency)) == currency, "a Currency reads back");
    static_cast<void>(tryToDate(value, date));
}

void checkDate(const QString& text)
{
    const auto date = dateFromText(text, 2026);
    if (!date)
        return;
    const QString shown = displayText(*date);
    const auto back = dateFromText(shown, 2026);
    require(back.has_value() && displayText(*back) == shown, "a date reads back");
}

void checkOperators(const Variant& value)
{
    for (const auto operation : {add, subtract, multiply, divide, integerDivide, modulo, power, concatenate,
                                 logicalAnd, logicalOr, logicalXor, logicalEqv, logicalImp}) {
        try {
            static_cast<void>(operation(value, 2.5));
            static_cast<void>(operation(Currency{25000}, value));
        } catch (const RuntimeError&) {
            continue;
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    checkNumber(text);
    checkConversions(text);
    checkDate(text);
    checkOperators(text);
    return 0;
}
