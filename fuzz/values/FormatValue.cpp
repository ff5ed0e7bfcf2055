// Any value under any format text: the input holds a kind, eight bytes of payload, the settings of the week, and a
// format text; for a text value, the value and the format text share what is left.

#include "values/Format.h"
#include "values/RuntimeError.h"

#include <cstdint>
#include <cstring>

using namespace zan::values;

namespace {

constexpr std::size_t HeaderSize = 10;

Variant valueOf(std::uint8_t kind, std::uint64_t bits)
{
    double real = 0;
    float single = 0;
    std::memcpy(&real, &bits, sizeof real);
    std::memcpy(&single, &bits, sizeof single);
    switch (kind % 10) {
    case 0:
        return real;
    case 1:
        return single;
    case 2:
        return std::int16_t(bits);
    case 3:
        return std::int32_t(bits);
    case 4:
        return Currency{std::int64_t(bits)};
    case 5:
        return Date{real};
    case 6:
        return Date{double(std::int64_t(bits) % 3'000'000'000) / 1000};
    case 7:
        return (bits & 1) != 0;
    case 8:
        return std::uint8_t(bits);
    default:
        return Variant();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < HeaderSize)
        return 0;
    std::uint64_t bits = 0;
    std::memcpy(&bits, data + 1, sizeof bits);
    const auto firstDay = FirstDayOfWeek(data[9] % 7 + 1);
    const auto firstWeek = FirstWeekOfYear(data[9] / 7 % 3 + 1);
    QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data) + HeaderSize, qsizetype(size - HeaderSize));
    Variant value = valueOf(data[0], bits);
    if (data[0] >= 200) {
        const qsizetype cut = qsizetype(bits % std::uint64_t(text.size() + 1));
        value = text.left(cut);
        text = text.mid(cut);
    }
    try {
        const QString made = format(value, text, firstDay, firstWeek);
        if (made != format(value, text, firstDay, firstWeek))
            __builtin_trap(); // the second time comes from the kept pattern
    } catch (const RuntimeError&) {
        return 0;
    }
    return 0;
}
