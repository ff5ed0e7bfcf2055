// Any format text: every kind of value is formatted under it or fails with an error of its own, and the text that
// comes out keeps to a length that the format text bounds.

#include "values/Format.h"
#include "values/RuntimeError.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

using namespace zan::values;

namespace {

void check(const Variant& value, const QString& formatText)
{
    try {
        const QString made = format(value, formatText, FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays);
        // 29 characters for six of the format (a long date), 22 for one (date and time), and the digits of a number.
        if (made.size() <= 22 * formatText.size() + 1000)
            return;
        std::fprintf(stderr, "too long: %lld characters\n", static_cast<long long>(made.size()));
        std::abort();
    } catch (const RuntimeError&) {
        return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString formatText = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const double number : {0.0, 1.0, -2.5, 1234567.891, 1e-300, -1.7976931348623157e308, 36526.75,
                                std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        check(number, formatText);
    check(0.1f, formatText);
    check(true, formatText);
    check(std::numeric_limits<std::int32_t>::min(), formatText);
    check(Currency{std::numeric_limits<std::int64_t>::min()}, formatText);
    check(Date{-1.25}, formatText);
    check(u"Weir 7", formatText);
    check(u"12.5", formatText);
    check(u"", formatText);
    check(Variant(), formatText);
    check(Variant::null(), formatText);
    return 0;
}
